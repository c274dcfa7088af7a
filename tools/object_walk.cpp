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

class Walk
{
public:
    Walk(const ArchiveSession& session, const std::function<bool(const WalkedObject&)>& visit,
         const std::function<void(const ToolError&)>& skip)
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
        try_to(walked.path, [&] { child_count = object.getNumChildren(); });
        for (std::size_t i = 0; i < child_count; ++i) {
            IObject child;
            if (try_to(walked.path, [&] { child = object.getChild(i); })) go(child, depth + 1);
        }
        own_paths_.pop_back();
    }

private:
    /// False when it failed and the object is skipped.
    template <class Read>
    bool try_to(const std::string& path, Read&& read) const
    {
        try {
            session_.on_object(path, read);
        } catch (const ToolError& error) {
            if (!skip_) throw;
            skip_(error);
            return false;
        }
        return true;
    }

    /// Whether the object is an instance of one that it stands below.
    bool leads_back(const WalkedObject& walked) const
    {
        return !walked.instance_source.empty() && std::find(own_paths_.begin(), own_paths_.end(),
                                                            walked.object.getPtr()->getFullName()) != own_paths_.end();
    }

    const ArchiveSession& session_;
    const std::function<bool(const WalkedObject&)>& visit_;
    const std::function<void(const ToolError&)>& skip_;
    std::uint64_t count_ = 0;
    std::vector<std::string> own_paths_; ///< of the stored objects from the start down to the present parent
};

} // namespace

ObjectKind get_object_kind(const IObject& object)
{
    const MetaData& meta_data = object.getMetaData();
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
    if (object.getFullName() == "/") return ObjectKind::TOP;
    return meta_data.get("schema").empty() ? ObjectKind::GROUP : ObjectKind::OTHER;
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
                  const std::function<void(const ToolError&)>& skip)
{
    Walk(session, visit, skip).go(start, 0);
}
