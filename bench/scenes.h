/// The large archives that the benchmarks read, written through the Alembic interface.
#pragma once

#include <string>

/// One million quads, 8 samples of positions and indexed face-varying normals, indexed face-varying UVs: /root/grid.
void write_mesh_scene(const std::string& path);

/// Two million points with ids and velocities, 4 samples: /cloud.
void write_points_scene(const std::string& path);

/// 200,000 b-spline curves of 8 points with widths, 4 samples: /hair.
void write_curves_scene(const std::string& path);

/// `groups` transforms of `props` animated transforms, each over one small mesh: /group0/prop0/shape and so on.
void write_hierarchy_scene(const std::string& path, int groups, int props);

/// Folder with mesh.abc, points.abc, curves.abc, hierarchy.abc and hierarchy_small.abc; writes those that are missing.
void write_missing_scenes(const std::string& folder);
