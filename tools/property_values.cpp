#include "property_values.h"

#include <abc_input.h>

#include <algorithm>
#include <cctype>
#include <type_traits>
#include <variant>

namespace {

constexpr unsigned int max_shown_count = 16; // elements; more are for machines, not for a terminal

Json value_to_json(const CoreString& text)
{
    return text.get_data();
}
template <class T>
Json value_to_json(const T& number)
{
    return number;
}

/// One element: its value, or the array of its values.
template <class T>
Json element_to_json(const CoreArray<T>& values, std::size_t first, unsigned int extent)
{
    if (extent == 1) return value_to_json(values[first]);
    Json json = Json::array();
    for (unsigned int i = 0; i < extent; ++i)
        json.push_back(value_to_json(values[first + i]));
    return json;
}

Json elements_to_json(const ResourceProperty& property, bool is_array)
{
    return std::visit(
        [&](const auto& values) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(values)>, std::monostate>) {
                return Json();
            } else {
                const unsigned int count = property.get_element_count();
                if (!is_array) return count == 0 ? Json() : element_to_json(values, 0, property.extent);
                Json json = Json::array();
                for (unsigned int i = 0; i < count; ++i)
                    json.push_back(element_to_json(values, std::size_t(i) * property.extent, property.extent));
                return json;
            }
        },
        property.values);
}

/// "float" for "TYPE_FLOAT" after `prefix`, "TYPE_".
std::string short_name(std::string name, const std::string& prefix)
{
    name.erase(0, prefix.size());
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return name;
}

Json to_json(const ResourceProperty& property, const AbcInput::PropertyType& type)
{
    const unsigned int count = property.get_element_count();
    const bool is_parameter = type.scope != ResourceProperty::SCOPE_UNKNOWN || type.is_indexed;
    if (!is_parameter && count <= max_shown_count) return elements_to_json(property, type.is_array);
    Json json;
    if (is_parameter) json["scope"] = short_name(ResourceProperty::get_scope_name(property.scope), "SCOPE_");
    json["type"] = short_name(ResourceProperty::get_type_name(property.get_type()), "TYPE_");
    json["extent"] = property.extent;
    json["count"] = count;
    if (count <= max_shown_count) json["values"] = elements_to_json(property, true);
    if (!type.is_indexed) return json;
    json["index_count"] = property.indices.get_count();
    if (property.indices.get_count() > max_shown_count) return json;
    json["indices"] = Json::array();
    for (const unsigned int index : property.indices)
        json["indices"].push_back(index);
    return json;
}

} // namespace

Json read_property_values(const ArchiveSession& session, const std::string& object_path, double time)
{
    Json json = Json::object();
    // A handle of its own, set on the object whatever its kind.
    AbcInputArchiveHandle handle = session.get_handle();
    handle.set_object(new Alembic::Abc::IObject(session.find(object_path)), AbcInputArchiveHandle::OBJECT_TYPE_NONE);
    CoreVector<CoreString> names;
    if (!AbcInput::get_property_names(handle, CoreString(object_path), names)) return json;
    for (const CoreString& name : names) {
        AbcInput::PropertyType type;
        ResourceProperty property;
        Json& value = json[name.get_data()];
        if (AbcInput::get_property_type(handle, name, type) &&
            AbcInput::evaluate_property(handle, name, time, property))
            value = to_json(property, type);
    }
    return json;
}
