/// Polygon meshes as triangles.
#include "face_filter.h"
#include "group_colors.h"
#include "traced_geometry.h"
#include "triangulation.h"

#include <algorithm>

namespace {

/// Positions in the mesh's arrays of corners.
struct Triangle
{
    unsigned int corners[3];
    unsigned int face;
};

std::vector<Triangle> find_triangles(const WorldMesh& mesh)
{
    std::vector<Triangle> triangles;
    std::vector<Vec3> polygon;
    std::vector<unsigned int> corners;
    for_each_drawable_face(mesh, [&](unsigned int face, std::size_t first, std::size_t count) {
        polygon.clear();
        corners.clear();
        for (std::size_t i = 0; i < count; ++i)
            polygon.push_back(mesh.positions.front()[mesh.geometry.face_indices[first + i]]);
        triangulate(polygon, corners);
        const auto base = static_cast<unsigned int>(first);
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
            triangles.push_back({{base + corners[i], base + corners[i + 1], base + corners[i + 2]}, face});
    });
    return triangles;
}

class TracedPolygons : public TracedGeometry
{
public:
    TracedPolygons(RTCDevice device, WorldMesh mesh)
        : mesh_(std::move(mesh))
        , triangles_(find_triangles(mesh_))
        , colors_(make_group_colors(mesh_))
    {
        if (triangles_.empty()) return;
        create(device, RTC_GEOMETRY_TYPE_TRIANGLE, mesh_.positions.size());
        for (unsigned int step = 0; step < mesh_.positions.size(); ++step)
            add_vectors(RTC_BUFFER_TYPE_VERTEX, step, mesh_.positions[step]);
        auto* indices =
            add_buffer<std::array<unsigned int, 3>>(RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, triangles_.size());
        for (const Triangle& triangle : triangles_)
            *indices++ = {point_of(triangle, 0), point_of(triangle, 1), point_of(triangle, 2)};
        rtcCommitGeometry(get());
        mesh_.positions.clear(); // the tracer has its own
    }

    void describe(const RTCHit& hit, float, SurfacePoint& point) const override
    {
        const Triangle& triangle = triangles_[hit.primID];
        const float weights[3] = {1.0f - hit.u - hit.v, hit.u, hit.v};
        point.geometric_normal = normalize({hit.Ng_x, hit.Ng_y, hit.Ng_z}, {0, 1, 0});
        point.normal = point.geometric_normal;
        point.color = colors_[mesh_.geometry.face_groups[triangle.face]];
        if (!mesh_.geometry.normal_maps.is_empty()) {
            const Vec3 normal = blend(triangle, weights, mesh_.geometry.normal_maps[0]);
            point.normal = normalize(normal, point.geometric_normal);
        }
        point.has_uv = !mesh_.geometry.uv_maps.is_empty();
        if (point.has_uv) {
            const Vec3 uv = blend(triangle, weights, mesh_.geometry.uv_maps[0]);
            point.u = uv.x;
            point.v = uv.y;
        }
        point.velocity = {};
        if (mesh_.velocities.is_empty()) return;
        for (int i = 0; i < 3; ++i)
            point.velocity = point.velocity + mesh_.velocities[point_of(triangle, i)] * weights[i];
    }

private:
    unsigned int point_of(const Triangle& triangle, int corner) const
    {
        return mesh_.geometry.face_indices[triangle.corners[corner]];
    }

    template <class Map>
    static Vec3 blend(const Triangle& triangle, const float (&weights)[3], const Map& map)
    {
        Vec3 sum{};
        for (int i = 0; i < 3; ++i)
            sum = sum + map.values[map.indices[triangle.corners[i]]] * weights[i];
        return sum;
    }

    WorldMesh mesh_;
    std::vector<Triangle> triangles_;
    std::vector<Vec3> colors_; ///< of the groups
};

} // namespace

std::unique_ptr<TracedGeometry> trace_polygons(RTCDevice device, WorldMesh mesh)
{
    return std::make_unique<TracedPolygons>(device, std::move(mesh));
}
