/// Geometry of an archive's objects at one time, as exports want it.
#pragma once

#include "archive_session.h"
#include "object_walk.h"

#include <abc_curve_header.h>
#include <vo_core/core_array.h>
#include <vo_core/core_string.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>
#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_vec3.h>

#include <string>

/// A polygon or subdivision mesh in the host's winding, lengths in archive units. Every index of a map is below the
/// number of its values.
struct MeshGeometry
{
    CoreArray<GMathVec3<float>> positions;    ///< one per point
    CoreArray<GMathVec3<float>> velocities;   ///< units a second: one per position, or empty
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
    AbcCurveHeader curves;                  ///< positions at the time, the rest of the nearest sample
    CoreArray<GMathVec3<float>> velocities; ///< units a second: one per position, or empty
};

struct PointsGeometry
{
    std::string path;
    CoreArray<GMathVec3<float>> positions;
    CoreArray<GMathVec3<float>> velocities; ///< units a second: one per position, or empty
};

/// The object of a full name at `time` (seconds), positions and normals interpolated between samples of one topology,
/// else those of the nearest sample. Empty without samples. Throws ToolError for what cannot be read. A face index may
/// be equal to the number of positions: see check_face_indices.
MeshGeometry load_mesh_geometry(const ArchiveSession& session, const std::string& path, double time);
CurvesGeometry load_curves_geometry(const ArchiveSession& session, const std::string& path, double time);
PointsGeometry load_points_geometry(const ArchiveSession& session, const std::string& path, double time);

/// Throws ToolError for a mesh with a face index that is not below the number of its positions: the reader accepts one
/// that is one too high, a file for others must not have it.
void check_face_indices(const ArchiveSession& session, const std::string& path, const MeshGeometry& mesh);

/// The time of the sample that `time` falls on or follows, of a mesh or curves whose topology changes. `time` itself
/// for all others, and before the first and after the last sample. Throws ToolError for what cannot be read.
double find_topology_time(const ArchiveSession& session, const std::string& path, ObjectKind kind, double time);

/// Whether a mesh, curves or points show at `time`, ancestors included. True for what cannot be read.
bool is_visible(const ArchiveSession& session, const std::string& path, ObjectKind kind, double time);

/// Moves geometry by a matrix for column vectors, velocities left out. Normals become unit vectors; a mesh that is
/// mirrored is wound the other way round, so that its outside stays outside.
void transform_geometry(const GMathMatrix4x4<double>& matrix, MeshGeometry& mesh);
void transform_positions(const GMathMatrix4x4<double>& matrix, CoreArray<GMathVec3<float>>& positions);
void transform_vectors(const GMathMatrix4x4<double>& matrix, CoreArray<GMathVec3<float>>& vectors);
