/// WorldScene: what an archive shows at one time, in world space.
#pragma once

#include "crease_edges.h"
#include "scene_geometry.h"
#include "vector_math.h"

#include <abc_curve_header.h>

#include <string>
#include <vector>

/// What all geometries have. Lengths in archive units.
struct WorldObject
{
    std::string path;
    /// At each step of the shutter, one per point: one step where nothing moves, else as many as the shutter has, or
    /// two, its ends, where all points move straight on.
    std::vector<CoreArray<Vec3>> positions;
    CoreArray<Vec3> velocities;  ///< units a second, transforms included: one per point
    float max_radius = 0.0f;     ///< that the archive tells of threads
    std::vector<char> is_usable; ///< per point: whether it can be drawn; others stand at the origin
};

struct WorldMesh : WorldObject
{
    bool is_subdivision = false;
    MeshGeometry geometry;           ///< without its positions; a face index may be equal to the number of points
    std::vector<CreaseEdge> creases; ///< of a subdivision mesh
};

struct WorldCurves : WorldObject
{
    AbcCurveHeader curves;     ///< without its positions
    float radius_scale = 1.0f; ///< that the transform gives to the curves' radii
};

struct WorldPoints : WorldObject
{
};

struct WorldScene
{
    std::vector<WorldMesh> meshes;
    std::vector<WorldCurves> curves;
    std::vector<WorldPoints> points;

    /// Calls `use(object)` for each.
    template <class Use>
    void for_each_object(Use&& use) const
    {
        for (const WorldMesh& mesh : meshes)
            use(static_cast<const WorldObject&>(mesh));
        for (const WorldCurves& object : curves)
            use(static_cast<const WorldObject&>(object));
        for (const WorldPoints& object : points)
            use(static_cast<const WorldObject&>(object));
    }
};
