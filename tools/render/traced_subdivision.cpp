/// Subdivision meshes as limit surfaces.
#include "face_filter.h"
#include "group_colors.h"
#include "traced_geometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned int max_face_corners = 15; // of the tracer
constexpr unsigned int max_point_faces = 60;  // the tracer's rings of faces round a point end at 64
constexpr float quads_per_mesh = 300000.0f;   // that faces are divided into, as far as the next two limits allow
constexpr float min_rate = 2.0f, max_rate = 32.0f;

constexpr unsigned int uv_topology = 1;

/// A face with a point twice has no place on a surface.
bool has_distinct_points(const WorldMesh& mesh, std::size_t first, std::size_t count)
{
    const unsigned int* const begin = mesh.geometry.face_indices.get_data() + first;
    for (std::size_t i = 1; i < count; ++i)
        if (std::find(begin, begin + i, begin[i]) != begin + i) return false;
    return true;
}

class TracedSubdivision : public TracedGeometry
{
public:
    TracedSubdivision(RTCDevice device, const WorldMesh& mesh)
        : groups_(mesh.geometry.face_groups)
        , colors_(make_group_colors(mesh))
        , step_count_(mesh.positions.size())
        , has_uvs_(!mesh.geometry.uv_maps.is_empty())
        , has_velocities_(!mesh.velocities.is_empty())
    {
        for_each_drawable_face(mesh, [&](unsigned int face, std::size_t first, std::size_t count) {
            if (!has_distinct_points(mesh, first, count)) return;
            faces_.push_back(face);
            for (std::size_t i = 0; i < count; ++i)
                corners_.push_back(static_cast<unsigned int>(first + i));
        });
        if (faces_.empty()) return;
        create(device, RTC_GEOMETRY_TYPE_SUBDIVISION, step_count_);
        add_faces(mesh);
        for (unsigned int step = 0; step < step_count_; ++step)
            add_vectors(RTC_BUFFER_TYPE_VERTEX, step, mesh.positions[step]);
        add_attributes(mesh);
        add_creases(mesh.creases);
        const float rate = std::sqrt(quads_per_mesh / static_cast<float>(faces_.size()));
        rtcSetGeometryTessellationRate(get(), std::clamp(std::floor(rate), min_rate, max_rate));
        rtcCommitGeometry(get());
        corners_ = {}; // the tracer has them
    }

    void describe(const RTCHit& hit, float time, SurfacePoint& point) const override
    {
        Vec3 along_u, along_v;
        const auto step = static_cast<unsigned int>(std::lround(time * static_cast<float>(step_count_ - 1)));
        interpolate(hit, RTC_BUFFER_TYPE_VERTEX, step, nullptr, &along_u, &along_v);
        const Vec3 facet_normal = normalize({hit.Ng_x, hit.Ng_y, hit.Ng_z}, {0, 1, 0});
        point.normal = normalize(cross(along_u, along_v), facet_normal);
        point.geometric_normal = dot(facet_normal, point.normal) < 0.0f ? -facet_normal : facet_normal;
        point.color = colors_[groups_[faces_[hit.primID]]];
        point.has_uv = has_uvs_;
        Vec3 uv{};
        if (has_uvs_) interpolate(hit, RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, 0, &uv, nullptr, nullptr);
        point.u = uv.x;
        point.v = uv.y;
        point.velocity = {};
        if (has_velocities_)
            interpolate(hit, RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, velocity_slot(), &point.velocity, nullptr, nullptr);
    }

private:
    unsigned int velocity_slot() const { return has_uvs_ ? 1 : 0; }

    void add_indices(unsigned int topology, const CoreArray<unsigned int>& indices)
    {
        auto* out = add_buffer<unsigned int>(RTC_BUFFER_TYPE_INDEX, topology, RTC_FORMAT_UINT, corners_.size());
        for (const unsigned int corner : corners_)
            *out++ = indices[corner];
    }

    void add_faces(const WorldMesh& mesh)
    {
        rtcSetGeometryTopologyCount(get(), has_uvs_ ? 2 : 1);
        auto* counts = add_buffer<unsigned int>(RTC_BUFFER_TYPE_FACE, 0, RTC_FORMAT_UINT, faces_.size());
        for (const unsigned int face : faces_)
            *counts++ = mesh.geometry.face_counts[face];
        add_indices(0, mesh.geometry.face_indices);
        rtcSetGeometrySubdivisionMode(get(), 0, RTC_SUBDIVISION_MODE_PIN_CORNERS);
    }

    void add_attributes(const WorldMesh& mesh)
    {
        rtcSetGeometryVertexAttributeCount(get(), (has_uvs_ ? 1 : 0) + (has_velocities_ ? 1 : 0));
        if (has_uvs_) {
            const GeometryUvMap& map = mesh.geometry.uv_maps[0];
            add_indices(uv_topology, map.indices);
            rtcSetGeometrySubdivisionMode(get(), uv_topology, RTC_SUBDIVISION_MODE_PIN_BOUNDARY);
            CoreArray<Vec3> values = map.values;
            for (Vec3& value : values)
                if (!is_drawable(value)) value = {};
            add_vectors(RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, 0, values);
            rtcSetGeometryVertexAttributeTopology(get(), 0, uv_topology);
        }
        if (!has_velocities_) return;
        add_vectors(RTC_BUFFER_TYPE_VERTEX_ATTRIBUTE, velocity_slot(), mesh.velocities);
        rtcSetGeometryVertexAttributeTopology(get(), velocity_slot(), 0);
    }

    void add_creases(const std::vector<CreaseEdge>& creases)
    {
        if (creases.empty()) return;
        auto* edges = add_buffer<std::array<unsigned int, 2>>(RTC_BUFFER_TYPE_EDGE_CREASE_INDEX, 0, RTC_FORMAT_UINT2,
                                                              creases.size());
        auto* weights = add_buffer<float>(RTC_BUFFER_TYPE_EDGE_CREASE_WEIGHT, 0, RTC_FORMAT_FLOAT, creases.size());
        for (const CreaseEdge& crease : creases) {
            *edges++ = {crease.points[0], crease.points[1]};
            *weights++ = crease.sharpness;
        }
    }

    void interpolate(const RTCHit& hit, RTCBufferType type, unsigned int slot, Vec3* value, Vec3* along_u,
                     Vec3* along_v) const
    {
        alignas(16) float values[3][4] = {}; // the tracer reads and writes four at once
        RTCInterpolateArguments arguments{};
        arguments.geometry = get();
        arguments.primID = hit.primID;
        arguments.u = hit.u;
        arguments.v = hit.v;
        arguments.bufferType = type;
        arguments.bufferSlot = slot;
        arguments.P = value ? values[0] : nullptr;
        arguments.dPdu = along_u ? values[1] : nullptr;
        arguments.dPdv = along_v ? values[2] : nullptr;
        arguments.valueCount = 3;
        rtcInterpolate(&arguments);
        if (value) *value = {values[0][0], values[0][1], values[0][2]};
        if (along_u) *along_u = {values[1][0], values[1][1], values[1][2]};
        if (along_v) *along_v = {values[2][0], values[2][1], values[2][2]};
    }

    CoreArray<unsigned int> groups_;    ///< of the mesh's faces
    std::vector<Vec3> colors_;          ///< of the groups
    std::vector<unsigned int> faces_;   ///< of the mesh that are drawn
    std::vector<unsigned int> corners_; ///< theirs
    const std::size_t step_count_;
    const bool has_uvs_, has_velocities_;
};

} // namespace

bool can_subdivide(const WorldMesh& mesh)
{
    std::vector<unsigned int> face_counts(mesh.is_usable.size(), 0);
    bool fits = true;
    for_each_drawable_face(mesh, [&](unsigned int, std::size_t first, std::size_t count) {
        fits = fits && count <= max_face_corners;
        for (std::size_t i = 0; i < count; ++i)
            ++face_counts[mesh.geometry.face_indices[first + i]];
    });
    return fits && std::all_of(face_counts.begin(), face_counts.end(),
                               [](unsigned int count) { return count <= max_point_faces; });
}

std::unique_ptr<TracedGeometry> trace_subdivision(RTCDevice device, WorldMesh mesh)
{
    return std::make_unique<TracedSubdivision>(device, mesh);
}
