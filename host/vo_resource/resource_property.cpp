/// Named values that users attach to a geometry.
#include "vo_resource/resource_property.h"

#include <type_traits>

#include "vo_core/core_log_stream.h"

namespace {

// Calls `function` with the array of values; `otherwise` is the result when there is none.
template <class Result, class Function>
Result with_array(const ResourceProperty::Values& values, Result otherwise, Function&& function)
{
    return std::visit(
        [&](const auto& array) -> Result {
            if constexpr (std::is_same_v<std::decay_t<decltype(array)>, std::monostate>)
                return otherwise;
            else
                return function(array);
        },
        values);
}

template <std::size_t Count>
const char* name_of(const char* const (&names)[Count], int value, const char* unknown)
{
    return value >= 0 && value < static_cast<int>(Count) ? names[value] : unknown;
}

} // namespace

unsigned int ResourceProperty::get_value_count() const
{
    return with_array(values, 0u, [](const auto& array) { return array.get_count(); });
}

unsigned int ResourceProperty::get_element_count() const
{
    return extent == 0 ? 0 : get_value_count() / extent;
}

CoreArray<CoreString> ResourceProperty::get_values_as_text() const
{
    return with_array(values, CoreArray<CoreString>(), [](const auto& array) {
        CoreArray<CoreString> texts(array.get_count());
        for (unsigned int i = 0; i < array.get_count(); ++i) {
            CoreLogStream text;
            text << array[i];
            texts[i] = text.get_string();
        }
        return texts;
    });
}

bool ResourceProperty::operator==(const ResourceProperty& other) const
{
    return name == other.name && extent == other.extent && interpretation == other.interpretation &&
           scope == other.scope && array_extent == other.array_extent && indices == other.indices &&
           values == other.values;
}

std::size_t ResourceProperty::get_memory_size() const
{
    std::size_t size = sizeof(*this) + name.get_size() + 1 + indices.get_memory_size() - sizeof(indices);
    size +=
        with_array(values, std::size_t(0), [](const auto& array) { return array.get_memory_size() - sizeof(array); });
    if (const CoreArray<CoreString>* texts = std::get_if<CoreArray<CoreString>>(&values))
        for (const CoreString& text : *texts)
            size += text.get_size() + 1;
    return size;
}

const char* ResourceProperty::get_type_name(const Type& type)
{
    static const char* const names[] = {"TYPE_NONE",   "TYPE_BOOL",   "TYPE_INT8",   "TYPE_UINT8", "TYPE_INT16",
                                        "TYPE_UINT16", "TYPE_INT32",  "TYPE_UINT32", "TYPE_INT64", "TYPE_UINT64",
                                        "TYPE_FLOAT",  "TYPE_DOUBLE", "TYPE_STRING", "TYPE_COUNT"};
    return name_of(names, type, "TYPE_UNKNOWN");
}

const char* ResourceProperty::get_interpretation_name(const Interpretation& interpretation)
{
    static const char* const names[] = {"INTERPRETATION_NONE",       "INTERPRETATION_VECTOR", "INTERPRETATION_POINT",
                                        "INTERPRETATION_NORMAL",     "INTERPRETATION_COLOR",  "INTERPRETATION_MATRIX",
                                        "INTERPRETATION_QUATERNION", "INTERPRETATION_BOX",    "INTERPRETATION_COUNT"};
    return name_of(names, interpretation, "INTERPRETATION_UNKNOWN");
}

const char* ResourceProperty::get_scope_name(const Scope& scope)
{
    static const char* const names[] = {"SCOPE_UNKNOWN", "SCOPE_CONSTANT",     "SCOPE_UNIFORM", "SCOPE_VARYING",
                                        "SCOPE_VERTEX",  "SCOPE_FACE_VARYING", "SCOPE_COUNT"};
    return name_of(names, scope, "SCOPE_INVALID");
}
