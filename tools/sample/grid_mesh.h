/// GridMesh: a surface over the unit square as a polygon mesh with UVs and normals.
#pragma once

#include <Alembic/AbcGeom/OPolyMesh.h>
#include <Alembic/AbcGeom/OSubD.h>

#include <cstdint>
#include <functional>
#include <vector>

/// Shape of a grid: faces in both directions, and whether its sides meet.
struct GridSize
{
    int columns, rows;
    bool wraps_u = false, wraps_v = false;
};

/// Points, quads, UVs and normals of `surface(u, v)`, u and v from 0 to 1. The outside is where du x dv points; quads
/// are wound as archives have them, clockwise seen from outside.
class GridMesh
{
public:
    using Surface = std::function<Imath::V3f(float u, float v)>;

    GridMesh(const GridSize& size, const Surface& surface);

    /// A sample of the whole mesh, made of this object's arrays.
    Alembic::AbcGeom::OPolyMeshSchema::Sample make_sample() const;
    /// The same as the cage of a subdivision mesh: without normals.
    Alembic::AbcGeom::OSubDSchema::Sample make_subdivision_sample() const;

    /// Faces whose column and row `choose` picks.
    std::vector<std::int32_t> choose_faces(const std::function<bool(int column, int row)>& choose) const;

private:
    int point_at(int column, int row) const;
    void add_face(int column, int row);

    GridSize size_;
    int point_columns_, point_rows_;
    std::vector<Imath::V3f> points_, normals_;
    std::vector<Imath::V2f> uvs_;
    std::vector<std::int32_t> indices_, counts_;
    std::vector<std::uint32_t> uv_indices_, normal_indices_;
};
