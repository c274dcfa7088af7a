/// Object kinds, and the one walk over the objects of an archive.
#pragma once

#include <Alembic/Abc/IObject.h>

#include <functional>
#include <string>

class ArchiveSession;

/// What an object is, by the schema in its header.
enum class ObjectKind {
    TOP,       ///< the archive's top object
    TRANSFORM, ///< and the readers' five geometries and cameras
    POLYGON_MESH,
    SUBDIVISION_MESH,
    CURVES,
    POINTS,
    CAMERA,
    FACE_SET,
    LIGHT,
    SURFACE,
    MATERIAL,
    GROUP, ///< an object without schema
    OTHER, ///< any other schema
};
constexpr int object_kind_count = static_cast<int>(ObjectKind::OTHER) + 1;

ObjectKind get_object_kind(const Alembic::Abc::IObject& object);
/// "polygon mesh", "polygon meshes".
const char* get_kind_name(ObjectKind kind);
const char* get_kind_plural(ObjectKind kind);
bool is_mesh(ObjectKind kind);

/// An object on the walk. Its parent is the last object before it of a depth less by one.
struct WalkedObject
{
    Alembic::Abc::IObject object;
    std::string path; ///< full name; below an instance that of the instance
    int depth = 0;    ///< 0 where the walk starts
    ObjectKind kind = ObjectKind::OTHER;
    std::string instance_source; ///< full name of the object that an instance stands for; empty for all others
};

/// An object that the walk cannot open, or whose children it cannot list.
struct SkippedObject
{
    std::string path; ///< full name; where the name is lost that of the parent, and the number of the child
    int depth = 0;
    ObjectKind kind = ObjectKind::OTHER;
    bool was_visited = false; ///< only its children are lost
    std::string reason;       ///< why
};

/// Calls `visit` for `start` and every object below it, parents before children, children in stored order. `visit`
/// tells whether to go on below the object. Below an instance of one of its own ancestors, and below 1000 levels, there
/// is no going on. Throws ToolError for an object that cannot be opened, or hands it to `skip` and goes on with the
/// next one; throws when instances multiply beyond 10 million objects.
void walk_objects(const ArchiveSession& session, const Alembic::Abc::IObject& start,
                  const std::function<bool(const WalkedObject&)>& visit,
                  const std::function<void(const SkippedObject&)>& skip = nullptr);
