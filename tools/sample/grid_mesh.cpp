#include "grid_mesh.h"

using namespace Alembic::AbcGeom;

namespace {

/// The outward unit normal, by differences small enough for any surface that a grid shows well.
V3f normal_at(const GridMesh::Surface& surface, float u, float v)
{
    constexpr float step = 1.0f / 1024.0f;
    const V3f du = surface(u + step, v) - surface(u - step, v);
    const V3f dv = surface(u, v + step) - surface(u, v - step);
    return du.cross(dv).normalized();
}

} // namespace

GridMesh::GridMesh(const GridSize& size, const Surface& surface)
    : size_(size)
    , point_columns_(size.columns + (size.wraps_u ? 0 : 1))
    , point_rows_(size.rows + (size.wraps_v ? 0 : 1))
{
    const auto u_of = [&](int column) { return static_cast<float>(column) / static_cast<float>(size.columns); };
    const auto v_of = [&](int row) { return static_cast<float>(row) / static_cast<float>(size.rows); };
    for (int row = 0; row < point_rows_; ++row)
        for (int column = 0; column < point_columns_; ++column) {
            points_.push_back(surface(u_of(column), v_of(row)));
            normals_.push_back(normal_at(surface, u_of(column), v_of(row)));
        }
    // Where sides meet, points are shared but UVs are not.
    for (int row = 0; row <= size.rows; ++row)
        for (int column = 0; column <= size.columns; ++column)
            uvs_.emplace_back(u_of(column), v_of(row));
    for (int row = 0; row < size.rows; ++row)
        for (int column = 0; column < size.columns; ++column)
            add_face(column, row);
}

OPolyMeshSchema::Sample GridMesh::make_sample() const
{
    return OPolyMeshSchema::Sample(
        P3fArraySample(points_), indices_, counts_,
        OV2fGeomParam::Sample(V2fArraySample(uvs_), UInt32ArraySample(uv_indices_), kFacevaryingScope),
        ON3fGeomParam::Sample(N3fArraySample(normals_), UInt32ArraySample(normal_indices_), kFacevaryingScope));
}

OSubDSchema::Sample GridMesh::make_subdivision_sample() const
{
    OSubDSchema::Sample sample(P3fArraySample(points_), indices_, counts_);
    sample.setUVs(OV2fGeomParam::Sample(V2fArraySample(uvs_), UInt32ArraySample(uv_indices_), kFacevaryingScope));
    return sample;
}

std::vector<std::int32_t> GridMesh::choose_faces(const std::function<bool(int column, int row)>& choose) const
{
    std::vector<std::int32_t> faces;
    for (int row = 0; row < size_.rows; ++row)
        for (int column = 0; column < size_.columns; ++column)
            if (choose(column, row)) faces.push_back(row * size_.columns + column);
    return faces;
}

int GridMesh::point_at(int column, int row) const
{
    return row % point_rows_ * point_columns_ + column % point_columns_;
}

void GridMesh::add_face(int column, int row)
{
    const int corners[4][2] = {{column, row}, {column, row + 1}, {column + 1, row + 1}, {column + 1, row}};
    for (const auto& [corner_column, corner_row] : corners) {
        const int point = point_at(corner_column, corner_row);
        indices_.push_back(point);
        normal_indices_.push_back(static_cast<std::uint32_t>(point));
        uv_indices_.push_back(static_cast<std::uint32_t>(corner_row * (size_.columns + 1) + corner_column));
    }
    counts_.push_back(4);
}
