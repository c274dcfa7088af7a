/// SceneGatherer: what an archive shows at a time, read object by object.
#pragma once

#include "archive_session.h"
#include "object_walk.h"
#include "shutter.h"
#include "world_scene.h"

#include <set>
#include <string>
#include <vector>

/// Reads the meshes, curves and points of an archive. What cannot be read is left out with a warning on standard error,
/// once for all pictures.
class SceneGatherer
{
public:
    /// Lists the object of that full name and all below it; "" is everything. Throws ToolError when there is none.
    SceneGatherer(const ArchiveSession& session, const std::string& object_path, bool wants_velocities);

    /// What is visible at the time of the shutter.
    WorldScene gather(const Shutter& shutter);

    /// Whether there was something to read and every attempt to read failed.
    bool has_only_failed() const { return get_left_out_count() > 0 && read_count_ == 0; }
    /// Objects that could not be read, at one time or another; each was named in a warning.
    std::size_t get_left_out_count() const { return unlisted_count_ + unreadable_.size(); }

private:
    struct Item
    {
        std::string path;
        ObjectKind kind;
    };
    class Motion;

    void gather_item(const Item& item, Motion& motion, WorldScene& scene);
    WorldMesh gather_mesh(const Item& item, Motion& motion);
    WorldCurves gather_curves(const Item& item, Motion& motion);
    WorldPoints gather_points(const Item& item, Motion& motion);
    /// Moves points along their velocities, where they have any.
    static void follow(const CoreArray<Vec3>& velocities, double seconds, CoreArray<Vec3>& positions);
    std::vector<CreaseEdge> read_creases(const std::string& path, double time, const MeshGeometry& mesh);
    void warn(const std::string& what);

    const ArchiveSession& session_;
    const bool wants_velocities_;
    std::vector<Item> items_;
    std::set<std::string> warnings_; ///< those given
    std::size_t read_count_ = 0, unlisted_count_ = 0;
    std::set<std::string> unreadable_; ///< paths
};
