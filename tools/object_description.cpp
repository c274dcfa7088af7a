#include "object_description.h"

#include <abc_animation_header.h>
#include <abc_deformation_header.h>
#include <abc_input.h>
#include <fmt/format.h>

using Alembic::Abc::IObject;

namespace {

const char* get_deformation_name(AbcDeformationHeader::DeformationType type)
{
    switch (type) {
    case AbcDeformationHeader::DEFORMATION_TYPE_HOMOGENEOUS:
        return "homogeneous";
    case AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS:
        return "heterogeneous";
    default:
        return "constant";
    }
}

template <class Header>
void set_samples(ObjectDescription& description, const Header& header)
{
    description.has_samples = true;
    description.sample_count = header.sample_count;
    description.start_time = header.start_time;
    description.end_time = header.end_time;
}

using DeformationReader = bool (*)(AbcInputArchiveHandle&, const CoreString&, AbcDeformationHeader&);
using AnimationReader = bool (*)(AbcInputArchiveHandle&, const CoreString&, AbcAnimationHeader&);

bool read_deformation(DeformationReader read, const ArchiveSession& session, const CoreString& path,
                      ObjectDescription& description)
{
    AbcDeformationHeader header;
    if (!read(session.get_handle(), path, header)) return false;
    set_samples(description, header);
    description.deformation = get_deformation_name(header.deformation_type);
    return true;
}

bool read_animation(AnimationReader read, const ArchiveSession& session, const CoreString& path,
                    ObjectDescription& description)
{
    AbcAnimationHeader header;
    if (!read(session.get_handle(), path, header)) return false;
    set_samples(description, header);
    return true;
}

/// False when the object is damaged; true also for kinds without a reader.
bool read_samples(const ArchiveSession& session, const CoreString& path, ObjectDescription& description)
{
    switch (description.kind) {
    case ObjectKind::POLYGON_MESH:
    case ObjectKind::SUBDIVISION_MESH:
        return read_deformation(AbcInput::get_mesh_deformation_header, session, path, description);
    case ObjectKind::CURVES:
        return read_deformation(AbcInput::get_curve_deformation_header, session, path, description);
    case ObjectKind::POINTS:
        return read_deformation(AbcInput::get_point_deformation_header, session, path, description);
    case ObjectKind::TRANSFORM:
        return read_animation(AbcInput::get_animation_header, session, path, description);
    case ObjectKind::CAMERA:
        return read_animation(AbcInput::get_camera_animation_header, session, path, description);
    default:
        return true;
    }
}

AbcVisibilityHeader read_visibility(const IObject& object)
{
    IObject own = object;
    return AbcVisibilityHeader(&own);
}

} // namespace

std::string ObjectDescription::describe() const
{
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
    if (*deformation) add(deformation);
    if (has_samples) {
        add(counted(static_cast<std::size_t>(sample_count), "sample", "samples"));
        if (is_animated()) add(time_range(start_time, end_time));
    }
    if (visibility.is_constant_hidden()) add("hidden");
    if (visibility.is_animated())
        add("visibility animated " + time_range(visibility.time_range[0], visibility.time_range[1]));
    if (!instance_source.empty()) add("instance of " + instance_source);
    if (!problem.empty()) add("CANNOT BE READ: " + problem);
    return text;
}

void ObjectDescription::add_to(Json& json) const
{
    json["kind"] = get_kind_name(kind);
    if (has_samples) {
        json["samples"] = sample_count;
        json["start_time"] = start_time;
        json["end_time"] = end_time;
    }
    if (*deformation) json["deformation"] = deformation;
    json["visibility"] = get_visibility_name(visibility);
    if (visibility.is_animated()) json["visibility_time_range"] = {visibility.time_range[0], visibility.time_range[1]};
    if (!instance_source.empty()) json["instance_of"] = instance_source;
    if (!problem.empty()) json["problem"] = problem;
}

ObjectDescription describe_object(const ArchiveSession& session, const WalkedObject& walked,
                                  const AbcVisibilityHeader& parent_visibility)
{
    ObjectDescription description;
    description.kind = walked.kind;
    description.instance_source = walked.instance_source;
    try {
        description.visibility = read_visibility(walked.object);
        if (!read_samples(session, CoreString(walked.path), description))
            description.problem = "properties that its kind needs are missing or damaged";
    } catch (const std::exception& exception) {
        description.problem = reason_in(exception.what());
    }
    description.visibility.inherit_parent_visibility_header(parent_visibility);
    return description;
}

AbcVisibilityHeader read_inherited_visibility(const IObject& object)
{
    AbcVisibilityHeader visibility = read_visibility(object);
    for (IObject parent = object.getParent(); parent.valid(); parent = parent.getParent())
        visibility.inherit_parent_visibility_header(read_visibility(parent));
    return visibility;
}

const char* get_visibility_name(const AbcVisibilityHeader& visibility)
{
    if (visibility.is_animated()) return "animated";
    if (visibility.is_constant_hidden()) return "hidden";
    return visibility.is_constant_visible() ? "visible" : "undefined";
}
