#include "property_values.h"

#include <Alembic/Abc/IArrayProperty.h>
#include <Alembic/Abc/ICompoundProperty.h>
#include <Alembic/Abc/ISampleSelector.h>
#include <Alembic/Abc/IScalarProperty.h>
#include <abc_input.h>

#include <cstdint>
#include <optional>
#include <sstream>
#include <vector>

using namespace Alembic::Abc;

namespace {

constexpr std::size_t max_shown_count = 16; // elements; more are for machines, not for a terminal

template <class T>
Json to_json(const void* data, std::size_t count)
{
    const T* const values = static_cast<const T*>(data);
    if (count == 1) return Json(values[0]);
    Json json = Json::array();
    for (std::size_t i = 0; i < count; ++i)
        json.push_back(values[i]);
    return json;
}

template <>
Json to_json<Alembic::Util::float16_t>(const void* data, std::size_t count)
{
    const auto* const halves = static_cast<const Alembic::Util::float16_t*>(data);
    const std::vector<float> values(halves, halves + count);
    return to_json<float>(values.data(), count);
}

template <>
Json to_json<Alembic::Util::bool_t>(const void* data, std::size_t count)
{
    const auto* const flags = static_cast<const Alembic::Util::bool_t*>(data);
    Json json = Json::array();
    for (std::size_t i = 0; i < count; ++i)
        json.push_back(static_cast<bool>(flags[i]));
    return count == 1 ? json[0] : json;
}

/// `count` numbers or texts of a type, as they lie in memory; null for a type that JSON has no words for.
Json to_json(PlainOldDataType type, const void* data, std::size_t count)
{
    using namespace Alembic::Util;
    switch (type) {
    case kBooleanPOD:
        return to_json<bool_t>(data, count);
    case kUint8POD:
        return to_json<std::uint8_t>(data, count);
    case kInt8POD:
        return to_json<std::int8_t>(data, count);
    case kUint16POD:
        return to_json<std::uint16_t>(data, count);
    case kInt16POD:
        return to_json<std::int16_t>(data, count);
    case kUint32POD:
        return to_json<std::uint32_t>(data, count);
    case kInt32POD:
        return to_json<std::int32_t>(data, count);
    case kUint64POD:
        return to_json<std::uint64_t>(data, count);
    case kInt64POD:
        return to_json<std::int64_t>(data, count);
    case kFloat16POD:
        return to_json<float16_t>(data, count);
    case kFloat32POD:
        return to_json<float>(data, count);
    case kFloat64POD:
        return to_json<double>(data, count);
    case kStringPOD:
        return to_json<std::string>(data, count);
    default:
        return Json();
    }
}

Json read_scalar(const IScalarProperty& property, const ISampleSelector& selector)
{
    const DataType& type = property.getDataType();
    if (property.getNumSamples() == 0) return Json();
    if (type.getPod() == Alembic::Util::kWstringPOD) return Json();
    if (type.getPod() == Alembic::Util::kStringPOD) {
        std::vector<std::string> texts(type.getExtent());
        property.get(texts.data(), selector);
        return to_json(type.getPod(), texts.data(), texts.size());
    }
    std::vector<std::uint64_t> bytes(type.getNumBytes() / sizeof(std::uint64_t) + 1); // aligned for every number
    property.get(bytes.data(), selector);
    return to_json(type.getPod(), bytes.data(), type.getExtent());
}

Json read_array(const IArrayProperty& property, const ISampleSelector& selector)
{
    if (property.getNumSamples() == 0) return Json();
    const DataType& type = property.getDataType();
    Dimensions dimensions;
    property.getDimensions(dimensions, selector);
    if (dimensions.numPoints() > max_shown_count) {
        std::ostringstream name;
        name << type;
        return {{"type", name.str()}, {"count", dimensions.numPoints()}};
    }
    ArraySamplePtr sample;
    property.get(sample, selector);
    if (!sample || sample->size() == 0) return Json::array();
    return to_json(type.getPod(), sample->getData(), sample->size() * type.getExtent());
}

/// The value of a property of a compound; an indexed geometry parameter shows its values. Nothing when there is no such
/// property.
std::optional<Json> read_property(const ICompoundProperty& parent, const std::string& name,
                                  const ISampleSelector& selector)
{
    if (const PropertyHeader* const header = parent.getPropertyHeader(name)) {
        if (header->isScalar()) return read_scalar(IScalarProperty(parent, name), selector);
        if (header->isArray()) return read_array(IArrayProperty(parent, name), selector);
        const ICompoundProperty indexed(parent, name);
        if (const PropertyHeader* const values = indexed.getPropertyHeader(".vals"); values && values->isArray())
            return read_array(IArrayProperty(indexed, ".vals"), selector);
    }
    // A name may be that of a compound, a dot and the name of a property in it.
    for (std::size_t dot = name.find('.'); dot != name.npos; dot = name.find('.', dot + 1)) {
        const PropertyHeader* const header = parent.getPropertyHeader(name.substr(0, dot));
        if (!header || !header->isCompound()) continue;
        const ICompoundProperty compound(parent, name.substr(0, dot));
        if (const auto value = read_property(compound, name.substr(dot + 1), selector)) return value;
    }
    return std::nullopt;
}

/// The compounds of that name in the object's schemas.
std::vector<ICompoundProperty> find_groups(const IObject& object, const std::string& group)
{
    std::vector<ICompoundProperty> groups;
    const ICompoundProperty properties = object.getProperties();
    for (std::size_t i = 0; i < properties.getNumProperties(); ++i) {
        const PropertyHeader& header = properties.getPropertyHeader(i);
        if (!header.isCompound()) continue;
        const ICompoundProperty schema(properties, header.getName());
        const PropertyHeader* const found = schema.getPropertyHeader(group);
        if (found && found->isCompound()) groups.emplace_back(schema, group);
    }
    return groups;
}

} // namespace

Json read_property_values(const ArchiveSession& session, const std::string& object_path, double time)
{
    const IObject object = session.find(object_path);
    Json json = Json::object();
    CoreVector<CoreString> names;
    if (!AbcInput::get_property_names(session.get_handle(), CoreString(object_path), names)) return json;

    std::vector<ICompoundProperty> groups = find_groups(object, ".userProperties");
    for (const ICompoundProperty& group : find_groups(object, ".arbGeomParams"))
        groups.push_back(group);
    const ISampleSelector selector(time, ISampleSelector::kNearIndex);
    for (const CoreString& name : names) {
        Json& value = json[name.get_data()];
        for (const ICompoundProperty& group : groups)
            if (const auto found = read_property(group, name.get_data(), selector)) {
                value = *found;
                break;
            }
    }
    return json;
}
