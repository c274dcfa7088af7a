#include "object_walk.h"

#include "archive_session.h"

#include <Alembic/AbcGeom/All.h>
#include <Alembic/AbcMaterial/IMaterial.h>

#include <algorithm>
#include <cstdint>
#include <vector>

using namespace Alembic::AbcGeom;

namespace {

constexpr int max_depth = 1000;                      // the readers list no deeper objects either
constexpr std::uint64_t max_object_count = 10000000; // instances of instances: a small file can ask for any number

struct KindWords
{
    const char* name;
    const char* plural;
};

constexpr KindWords kind_words[object_kind_count] = {
    {"archive", "archives"},
    {"transform", "transforms"},
    {"polygon mesh", "polygon meshes"},
    {"subdivision mesh", "subdivision meshes"},
    {"curves", "curves"},
    {"points", "points"},
    {"camera", "cameras"},
    {"face set", "face sets"},
    {"light", "lights"},
    {"surface", "surfaces"},
    {"material", "materials"},
    {"group", "groups"},
    {"other object", "other objects"},
};

/// Of every object but the top one.
ObjectKind find_kind(const MetaData& meta_data)
{
    if (IXform::matches(meta_data)) return ObjectKind::TRANSFORM;
    if (IPolyMesh::matches(meta_data)) return ObjectKind::POLYGON_MESH;
    if (ISubD::matches(meta_data)) return ObjectKind::SUBDIVISION_MESH;
    if (ICurves::matches(meta_data)) return ObjectKind::CURVES;
    if (IPoints::matches(meta_data)) return ObjectKind::POINTS;
    if (ICamera::matches(meta_data)) return ObjectKind::CAMERA;
    if (IFaceSet::matches(meta_data)) return ObjectKind::FACE_SET;
    if (ILight::matches(meta_data)) return ObjectKind::LIGHT;
    if (INuPatch::matches(meta_data)) return ObjectKind::SURFACE;
    if (Alembic::AbcMaterial::IMaterial::matches(meta_data)) return ObjectKind::MATERIAL;
    return meta_data.get("schema").empty() ? ObjectKind::GROUP : ObjectKind::OTHER;
}

class Walk
{
public:
    Walk(const ArchiveSession& session, const std::function<bool(const WalkedObject&)>& visit,
         const std::function<void(const SkippedObject&)>& skip)
        : session_(session)
        , visit_(visit)
        , skip_(skip)
    {
    }

    void go(const IObject& object, int depth)
    {
        if (++count_ > max_object_count)
            throw session_.error(object.getFullName(), "instances multiply to more than 10 million objects. Name an "
                                                       "object further down.");
        WalkedObject walked{object, object.getFullName(), depth, get_object_kind(object), ""};
        if (object.isInstanceRoot()) walked.instance_source = object.instanceSourcePath();
        if (!visit_(walked) || depth == max_depth || leads_back(walked)) return;
        own_paths_.push_back(object.getPtr()->getFullName());
        std::size_t child_count = 0;
        try_to([&] { child_count = object.getNumChildren(); },
               [&] {
                   return SkippedObject{walked.path, depth, walked.kind, true, ""};
               });
        for (std::size_t i = 0; i < child_count; ++i) {
            IObject child;
            if (try_to([&] { child = object.getChild(i); }, [&] { return find_child(walked, i); }))
                go(child, depth + 1);
        }
        own_paths_.pop_back();
    }

private:
    /// False when it failed and the object, which `find()` tells, is skipped.
    template <class Read, class Find>
    bool try_to(Read&& read, Find&& find) const
    {
        try {
            read();
        } catch (const std::exception& exception) {
            SkippedObject skipped = find();
            skipped.reason = reason_in(exception.what());
            if (!skip_) throw session_.damage(skipped.path, skipped.reason);
            skip_(skipped);
            return false;
        }
        return true;
    }

    /// What is known of a child that cannot be opened.
    static SkippedObject find_child(const WalkedObject& parent, std::size_t i)
    {
        SkippedObject child;
        child.path = parent.path + " child " + std::to_string(i);
        child.depth = parent.depth + 1;
        try {
            const AbcA::ObjectHeader& header = parent.object.getChildHeader(i);
            child.path = (parent.path == "/" ? "" : parent.path) + "/" + header.getName();
            child.kind = find_kind(header.getMetaData());
        } catch (const std::exception&) {
            // Its header is lost, too: its number must do.
        }
        return child;
    }

    /// Whether the object is an instance of one that it stands below.
    bool leads_back(const WalkedObject& walked) const
    {
        return !walked.instance_source.empty() && std::find(own_paths_.begin(), own_paths_.end(),
                                                            walked.object.getPtr()->getFullName()) != own_paths_.end();
    }

    const ArchiveSession& session_;
    const std::function<bool(const WalkedObject&)>& visit_;
    const std::function<void(const SkippedObject&)>& skip_;
    std::uint64_t count_ = 0;
    std::vector<std::string> own_paths_; ///< of the stored objects from the start down to the present parent
};

} // namespace

ObjectKind get_object_kind(const IObject& object)
{
    const ObjectKind kind = find_kind(object.getMetaData());
    const bool has_schema = kind != ObjectKind::GROUP && kind != ObjectKind::OTHER;
    return !has_schema && object.getFullName() == "/" ? ObjectKind::TOP : kind;
}

const char* get_kind_name(ObjectKind kind)
{
    return kind_words[static_cast<int>(kind)].name;
}

const char* get_kind_plural(ObjectKind kind)
{
    return kind_words[static_cast<int>(kind)].plural;
}

bool is_mesh(ObjectKind kind)
{
    return kind == ObjectKind::POLYGON_MESH || kind == ObjectKind::SUBDIVISION_MESH;
}

void walk_objects(const ArchiveSession& session, const IObject& start,
                  const std::function<bool(const WalkedObject&)>& visit,
                  const std::function<void(const SkippedObject&)>& skip)
{
    Walk(session, visit, skip).go(start, 0);
}
