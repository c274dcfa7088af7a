/// Geometry of an archive's objects at one time, as exports want it.
#pragma once

#include "archive_session.h"

#include <vo_core/core_array.h>
#include <vo_core/core_string.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>
#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_vec3.h>

#include <string>

/// A polygon or subdivision mesh in the host's winding, lengths in archive units. Every face index is below the number of
/// positions, every index of a map below the number of its values.
struct MeshGeometry
{
    CoreArray<GMathVec3<float>> positions;    ///< one per point
    CoreArray<unsigned int> face_counts;      ///< corners of each face
    CoreArray<unsigned int> face_indices;     ///< positions of all corners, face after face
    CoreArray<unsigned int> face_groups;      ///< a group for each face
    CoreArray<CoreString> group_names;        ///< at least one where there are faces
    CoreArray<GeometryUvMap> uv_maps;         ///< an index for each corner
    CoreArray<GeometryNormalMap> normal_maps; ///< none or one: an index for each corner
};

/// Curves through or along control points.
struct CurvesGeometry
{
    CoreArray<GMathVec3<float>> positions; ///< control points of all curves, curve after curve
    CoreArray<unsigned int> vertex_counts; ///< of each curve; together at most as many as positions
    bool is_periodic = false;              ///< every curve is closed
};

struct PointsGeometry
{
    std::string path;
    CoreArray<GMathVec3<float>> positions;
    CoreArray<GMathVec3<float>> velocities; ///< units a second: one per position, or empty
};

/// The object of a full name at `time` (seconds), positions and normals interpolated between samples of one topology.
/// Empty without samples. Throws ToolError for what cannot be read.
MeshGeometry load_mesh_geometry(const ArchiveSession& session, const std::string& path, double time);
CurvesGeometry load_curves_geometry(const ArchiveSession& session, const std::string& path, double time);
PointsGeometry load_points_geometry(const ArchiveSession& session, const std::string& path, double time);

/// Moves geometry by a matrix for column vectors. Normals become unit vectors; a mesh that is mirrored is wound the other
/// way round, so that its outside stays outside.
void transform_geometry(const GMathMatrix4x4<double>& matrix, MeshGeometry& mesh);
void transform_positions(const GMathMatrix4x4<double>& matrix, CoreArray<GMathVec3<float>>& positions);
void transform_vectors(const GMathMatrix4x4<double>& matrix, CoreArray<GMathVec3<float>>& vectors);
