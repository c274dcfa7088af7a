#include "scene_geometry.h"

#include <abc_deformation_header.h>
#include <abc_input.h>
#include <fmt/format.h>
#include <vo_poly/reverse_poly_order.h>

#include <algorithm>
#include <utility>

namespace {

constexpr const char* unreadable = "cannot be read: what is stored does not fit together. Was the export interrupted?";

using Matrix = GMathMatrix4x4<double>;
using Positions = CoreArray<GMathVec3<float>>;

/// Whether points can be followed from sample to sample: positions between samples then belong to the same faces.
bool is_homogeneous(const AbcDeformationHeader& header)
{
    return header.deformation_type == AbcDeformationHeader::DEFORMATION_TYPE_HOMOGENEOUS;
}

template <class Map>
bool map_fits(const Map& map, std::size_t corner_count)
{
    const unsigned int value_count = map.values.get_count();
    return map.indices.get_count() == corner_count &&
           std::all_of(map.indices.begin(), map.indices.end(), [&](unsigned int index) { return index < value_count; });
}

/// Drops maps that an export could not write.
template <class Map>
void keep_fitting_maps(CoreArray<Map>& maps, std::size_t corner_count)
{
    Map* const kept =
        std::stable_partition(maps.begin(), maps.end(), [&](const Map& map) { return map_fits(map, corner_count); });
    maps.resize(static_cast<std::size_t>(kept - maps.begin()));
}

/// Replaces positions and normals of the nearest sample by those at the time itself.
void interpolate(const ArchiveSession& session, double time, MeshGeometry& mesh)
{
    Positions positions, velocities;
    if (AbcInput::evaluate_mesh_deformation(session.get_handle(), time, positions, velocities, false) &&
        positions.get_count() == mesh.positions.get_count()) {
        mesh.positions = std::move(positions);
        mesh.velocities = std::move(velocities);
    }
    CoreArray<GeometryNormalMap> normal_maps;
    if (AbcInput::evaluate_mesh_normals(session.get_handle(), time, normal_maps) && !normal_maps.is_empty())
        mesh.normal_maps = std::move(normal_maps);
}

/// Sets a geometry on the session's handle. False for what cannot be read.
bool bind(const ArchiveSession& session, const std::string& path, ObjectKind kind, AbcDeformationHeader& header)
{
    AbcInputArchiveHandle& handle = session.get_handle();
    const CoreString name(path);
    if (kind == ObjectKind::CURVES) return AbcInput::get_curve_deformation_header(handle, name, header);
    if (kind == ObjectKind::POINTS) return AbcInput::get_point_deformation_header(handle, name, header);
    return AbcInput::get_mesh_deformation_header(handle, name, header);
}

/// Velocities that do not belong to the positions are none.
void keep_fitting_velocities(const Positions& positions, Positions& velocities)
{
    if (velocities.get_count() != positions.get_count()) velocities.clear();
}

GMathVec3<double> column(const Matrix& matrix, int index)
{
    return {matrix[0][index], matrix[1][index], matrix[2][index]};
}

/// Moves normals by the cofactors of the matrix: its inverse transposed, but for a factor, and there also when it has
/// no inverse.
void transform_normals(const Matrix& matrix, bool is_mirrored, Positions& normals)
{
    const GMathVec3<double> x = column(matrix, 0), y = column(matrix, 1), z = column(matrix, 2);
    const double sign = is_mirrored ? -1.0 : 1.0;
    const GMathVec3<double> yz = cross(y, z) * sign, zx = cross(z, x) * sign, xy = cross(x, y) * sign;
    for (GMathVec3<float>& normal : normals) {
        GMathVec3<double> moved = yz * double(normal.x) + zx * double(normal.y) + xy * double(normal.z);
        const double length = moved.get_length();
        if (!(length > 0.0)) continue;
        moved = moved * (1.0 / length);
        normal = {float(moved.x), float(moved.y), float(moved.z)};
    }
}

} // namespace

MeshGeometry load_mesh_geometry(const ArchiveSession& session, const std::string& path, double time)
{
    return session.on_object(path, [&] {
        MeshGeometry mesh;
        const CoreString name(path);
        CoreVector<CoreString> property_names;
        AbcDeformationHeader header;
        if (!AbcInput::load_mesh(session.get_files(), name, time, mesh.positions, mesh.velocities, mesh.face_indices,
                                 mesh.face_counts, mesh.face_groups, mesh.group_names, mesh.uv_maps, mesh.normal_maps,
                                 property_names, nullptr) ||
            !AbcInput::get_mesh_deformation_header(session.get_handle(), name, header))
            throw session.error(path, std::string("the mesh ") + unreadable);
        if (is_homogeneous(header)) interpolate(session, time, mesh);
        keep_fitting_velocities(mesh.positions, mesh.velocities);
        keep_fitting_maps(mesh.uv_maps, mesh.face_indices.get_count());
        keep_fitting_maps(mesh.normal_maps, mesh.face_indices.get_count());
        return mesh;
    });
}

CurvesGeometry load_curves_geometry(const ArchiveSession& session, const std::string& path, double time)
{
    return session.on_object(path, [&] {
        CurvesGeometry geometry;
        AbcDeformationHeader header;
        const CoreString name(path);
        if (!AbcInput::load_curve(session.get_files(), name, time, geometry.curves, nullptr) ||
            !AbcInput::get_curve_deformation_header(session.get_handle(), name, header))
            throw session.error(path, std::string("the curves ") + unreadable);
        Positions positions;
        if (AbcInput::evaluate_curve_deformation(session.get_handle(), time, positions, geometry.velocities, false) &&
            is_homogeneous(header) && positions.get_count() == geometry.curves.positions.get_count())
            geometry.curves.positions = std::move(positions);
        keep_fitting_velocities(geometry.curves.positions, geometry.velocities);
        return geometry;
    });
}

PointsGeometry load_points_geometry(const ArchiveSession& session, const std::string& path, double time)
{
    return session.on_object(path, [&] {
        PointsGeometry points;
        points.path = path;
        CoreVector<CoreString> property_names;
        if (!AbcInput::load_points(session.get_handle(), CoreString(path), time, points.positions, points.velocities,
                                   false, property_names, nullptr))
            throw session.error(path, std::string("the points ") + unreadable);
        keep_fitting_velocities(points.positions, points.velocities);
        return points;
    });
}

void check_face_indices(const ArchiveSession& session, const std::string& path, const MeshGeometry& mesh)
{
    const unsigned int* const highest = std::max_element(mesh.face_indices.begin(), mesh.face_indices.end());
    if (highest != mesh.face_indices.end() && *highest >= mesh.positions.get_count())
        throw session.error(path, fmt::format("a face index is {}, the mesh has {} points. Was the export interrupted?",
                                              *highest, mesh.positions.get_count()));
}

double find_topology_time(const ArchiveSession& session, const std::string& path, ObjectKind kind, double time)
{
    return session.on_object(path, [&] {
        AbcDeformationHeader header;
        GMathTimeSampling sampling;
        if (!bind(session, path, kind, header) ||
            header.deformation_type != AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS ||
            time < header.start_time || time > header.end_time)
            return time;
        const AbcInputArchiveHandle& handle = session.get_handle();
        const bool is_known = is_mesh(kind)                ? AbcInput::get_mesh_sampling(handle, time, time, sampling)
                              : kind == ObjectKind::CURVES ? AbcInput::get_curve_sampling(handle, time, time, sampling)
                                                           : false; // points are moved along by their own reader
        if (!is_known || sampling.get_sample_count() == 0) return time;
        return std::min(sampling.get_start_time(), time);
    });
}

bool is_visible(const ArchiveSession& session, const std::string& path, ObjectKind kind, double time)
{
    AbcDeformationHeader header; // read for its effect: it sets the object on the handle
    return !bind(session, path, kind, header) || AbcInput::is_object_visible_at(session.get_handle(), time);
}

void transform_geometry(const Matrix& matrix, MeshGeometry& mesh)
{
    transform_positions(matrix, mesh.positions);
    const bool is_mirrored = dot(cross(column(matrix, 0), column(matrix, 1)), column(matrix, 2)) < 0.0;
    for (GeometryNormalMap& map : mesh.normal_maps)
        transform_normals(matrix, is_mirrored, map.values);
    if (!is_mirrored) return;
    reverse_poly_order(mesh.face_counts, mesh.face_indices);
    for (GeometryUvMap& map : mesh.uv_maps)
        reverse_poly_order(mesh.face_counts, map.indices);
    for (GeometryNormalMap& map : mesh.normal_maps)
        reverse_poly_order(mesh.face_counts, map.indices);
}

void transform_positions(const Matrix& matrix, CoreArray<GMathVec3<float>>& positions)
{
    for (GMathVec3<float>& position : positions) {
        const GMathVec3<double> moved = matrix.transform_point({position.x, position.y, position.z});
        position = {float(moved.x), float(moved.y), float(moved.z)};
    }
}

void transform_vectors(const Matrix& matrix, CoreArray<GMathVec3<float>>& vectors)
{
    for (GMathVec3<float>& vector : vectors) {
        const GMathVec3<double> moved = matrix.transform_vector({vector.x, vector.y, vector.z});
        vector = {float(moved.x), float(moved.y), float(moved.z)};
    }
}
