/// The large archives that the benchmarks read, written through the Alembic interface.
#pragma once

#include <functional>
#include <string>

/// Writes one archive at a path. The values are made beforehand, so that calling it is writing and nothing else.
using SceneWriter = std::function<void(const std::string& path)>;

/// One million quads, 8 samples of positions and indexed face-varying normals, indexed face-varying UVs: /root/grid.
SceneWriter make_mesh_scene();

/// Two million points with ids and velocities, 4 samples: /cloud.
SceneWriter make_points_scene();

/// 200,000 b-spline curves of 8 points with widths, 4 samples: /hair.
SceneWriter make_curves_scene();

/// `groups` transforms of `props` animated transforms, each over one small mesh: /group0/prop0/shape and so on.
void write_hierarchy_scene(const std::string& path, int groups, int props);

/// Folder with mesh.abc, points.abc, curves.abc, hierarchy.abc and hierarchy_small.abc; writes those that are missing.
void write_missing_scenes(const std::string& folder);
