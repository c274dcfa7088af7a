#include "user_property_conversion.h"

#include "blend.h"
#include "read_array.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace Alembic::Abc;
using namespace Alembic::Util;

namespace {

template <class T>
struct Tag
{
    using type = T;
};

/// Calls `visit(stored, host)` with the type that a sample has in memory and the type that the host gets. Nothing for
/// an unknown data type.
template <class Visit>
void with_types(PlainOldDataType pod, Visit&& visit)
{
    switch (pod) {
    case kBooleanPOD:
        return visit(Tag<bool_t>(), Tag<bool>());
    case kUint8POD:
        return visit(Tag<std::uint8_t>(), Tag<std::uint8_t>());
    case kInt8POD:
        return visit(Tag<std::int8_t>(), Tag<std::int8_t>());
    case kUint16POD:
        return visit(Tag<std::uint16_t>(), Tag<std::uint16_t>());
    case kInt16POD:
        return visit(Tag<std::int16_t>(), Tag<std::int16_t>());
    case kUint32POD:
        return visit(Tag<std::uint32_t>(), Tag<std::uint32_t>());
    case kInt32POD:
        return visit(Tag<std::int32_t>(), Tag<std::int32_t>());
    case kUint64POD:
        return visit(Tag<std::uint64_t>(), Tag<std::uint64_t>());
    case kInt64POD:
        return visit(Tag<std::int64_t>(), Tag<std::int64_t>());
    case kFloat16POD:
        return visit(Tag<float16_t>(), Tag<float>());
    case kFloat32POD:
        return visit(Tag<float>(), Tag<float>());
    case kFloat64POD:
        return visit(Tag<double>(), Tag<double>());
    case kStringPOD:
        return visit(Tag<std::string>(), Tag<CoreString>());
    case kWstringPOD:
        return visit(Tag<std::wstring>(), Tag<CoreString>());
    default:
        return;
    }
}

void append_utf8(char32_t character, std::string& text)
{
    constexpr char32_t replacement = 0xfffd;
    const bool is_surrogate = character >= 0xd800 && character <= 0xdfff;
    if (is_surrogate || character > 0x10ffff) character = replacement;
    if (character < 0x80) {
        text += static_cast<char>(character);
        return;
    }
    const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3; // bytes after the first
    const int heads[] = {0, 0xc0, 0xe0, 0xf0};
    text += static_cast<char>(heads[more] | static_cast<int>(character >> (6 * more)));
    for (int i = more - 1; i >= 0; --i)
        text += static_cast<char>(0x80 | ((character >> (6 * i)) & 0x3f));
}

CoreString to_utf8(const std::wstring& wide)
{
    std::string text;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t character = static_cast<std::make_unsigned_t<wchar_t>>(wide[i]);
        if constexpr (sizeof(wchar_t) == 2) { // pairs of surrogates
            const bool is_pair = character >= 0xd800 && character < 0xdc00 && i + 1 < wide.size();
            const char32_t low = is_pair ? static_cast<std::make_unsigned_t<wchar_t>>(wide[i + 1]) : 0;
            if (low >= 0xdc00 && low < 0xe000) {
                character = 0x10000 + ((character - 0xd800) << 10) + (low - 0xdc00);
                ++i;
            }
        }
        append_utf8(character, text);
    }
    return CoreString(text);
}

template <class Host, class Stored>
Host to_host(const Stored& value)
{
    if constexpr (std::is_same_v<Stored, std::wstring>)
        return to_utf8(value);
    else if constexpr (std::is_same_v<Stored, std::string>)
        return CoreString(value);
    else if constexpr (std::is_same_v<Stored, bool_t>)
        return value.asBool();
    else
        return static_cast<Host>(value);
}

/// Archives hold matrices for row vectors.
template <class T>
void transpose_matrices(unsigned int extent, CoreArray<T>& values)
{
    const unsigned int size = extent == 9 ? 3 : 4;
    for (std::size_t first = 0; first + extent <= values.get_count(); first += extent)
        for (unsigned int row = 0; row < size; ++row)
            for (unsigned int column = 0; column < row; ++column)
                std::swap(values[first + row * size + column], values[first + column * size + row]);
}

template <class T>
void set_values(CoreArray<T>&& values, ResourceProperty& result)
{
    if (result.interpretation == ResourceProperty::INTERPRETATION_MATRIX) transpose_matrices(result.extent, values);
    result.values = std::move(values);
}

/// Copies values that are no numbers, or that no array can be read into directly.
template <class Stored, class Host>
CoreArray<Host> read_converted(const IArrayProperty& property, const ISampleSelector& selector, std::size_t count)
{
    ArraySamplePtr sample;
    property.get(sample, selector);
    CoreArray<Host> values;
    if (!sample || !sample->getData()) return values;
    const auto* const stored = static_cast<const Stored*>(sample->getData());
    values.resize(std::min(count, sample->size() * sample->getDataType().getExtent()));
    std::transform(stored, stored + values.get_count(), values.begin(), to_host<Host, Stored>);
    return values;
}

} // namespace

ResourceProperty::Type type_of(PlainOldDataType pod)
{
    ResourceProperty::Values values;
    with_types(pod, [&](auto, auto host) { values = CoreArray<typename decltype(host)::type>(); });
    return static_cast<ResourceProperty::Type>(values.index());
}

ResourceProperty::Interpretation interpretation_of(const MetaData& metadata, unsigned int extent)
{
    const std::string text = metadata.get("interpretation");
    if (text == "vector") return ResourceProperty::INTERPRETATION_VECTOR;
    if (text == "point") return ResourceProperty::INTERPRETATION_POINT;
    if (text == "normal") return ResourceProperty::INTERPRETATION_NORMAL;
    if (text == "rgb" || text == "rgba") return ResourceProperty::INTERPRETATION_COLOR;
    if (text == "matrix" && (extent == 9 || extent == 16)) return ResourceProperty::INTERPRETATION_MATRIX;
    if (text == "quat") return ResourceProperty::INTERPRETATION_QUATERNION;
    if (text == "box") return ResourceProperty::INTERPRETATION_BOX;
    return ResourceProperty::INTERPRETATION_NONE;
}

void read_scalar_values(const IScalarProperty& property, const ISampleSelector& selector, ResourceProperty& result)
{
    with_types(property.getDataType().getPod(), [&](auto stored_tag, auto host_tag) {
        using Stored = typename decltype(stored_tag)::type;
        using Host = typename decltype(host_tag)::type;
        CoreArray<Host> values;
        if (property.getNumSamples() > 0) {
            std::vector<Stored> stored(property.getDataType().getExtent());
            property.get(stored.data(), selector);
            values.resize(stored.size());
            std::transform(stored.begin(), stored.end(), values.begin(), to_host<Host, Stored>);
        }
        set_values(std::move(values), result);
    });
}

void read_array_values(const IArrayProperty& property, const ISampleSelector& selector, ResourceProperty& result)
{
    const std::size_t count = element_count(property, selector) * property.getDataType().getExtent();
    with_types(property.getDataType().getPod(), [&](auto stored_tag, auto host_tag) {
        using Stored = typename decltype(stored_tag)::type;
        using Host = typename decltype(host_tag)::type;
        CoreArray<Host> values;
        if constexpr (std::is_arithmetic_v<Stored> || std::is_same_v<Stored, float16_t>) {
            values.resize_for_overwrite(count);
            constexpr PlainOldDataType host_pod = PODTraitsFromType<Host>::pod_enum;
            if (count > 0) IArrayProperty(property).getAs(values.get_data(), host_pod, selector); // not const
        } else if (count > 0) {
            values = read_converted<Stored, Host>(property, selector, count);
        }
        set_values(std::move(values), result);
    });
}

void blend_values(ResourceProperty& floor, const ResourceProperty& ceil, double weight)
{
    if (auto* const floats = std::get_if<CoreArray<float>>(&floor.values)) {
        const auto& next = std::get<CoreArray<float>>(ceil.values);
        blend(floats->get_data(), next.get_data(), floats->get_data(), floats->get_count(), weight,
              BlendRounding::FLOAT_PRODUCTS);
    } else if (auto* const doubles = std::get_if<CoreArray<double>>(&floor.values)) {
        const auto& next = std::get<CoreArray<double>>(ceil.values);
        for (unsigned int i = 0; i < doubles->get_count(); ++i)
            (*doubles)[i] = (1.0 - weight) * (*doubles)[i] + weight * next[i];
    }
}
