#include "user_property_values.h"

#include "indexed_parameter.h"
#include "log_message.h"
#include "sample_span.h"
#include "user_property_conversion.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

using namespace Alembic::AbcGeom;

namespace {

using Indices = CoreArray<unsigned int>;

template <class Reason>
bool refuse(const UserProperty& property, const Reason& reason)
{
    log_message(log_level_warning, [&](CoreLogStream& stream) {
        stream << "The property '" << property.name.c_str() << "' of the object '"
               << property.parent.getObject().getFullName().c_str() << "' is not loaded: " << reason << ".\n";
    });
    return false;
}

std::size_t sample_count(const UserProperty& property)
{
    if (property.header.isScalar()) return IScalarProperty(property.parent, property.header.getName()).getNumSamples();
    return property.values().getNumSamples();
}

bool is_constant(const UserProperty& property)
{
    if (property.header.isScalar()) return IScalarProperty(property.parent, property.header.getName()).isConstant();
    return property.values().isConstant();
}

ResourceProperty::Scope scope_of(const UserProperty& property)
{
    if (!property.is_parameter) return ResourceProperty::SCOPE_UNKNOWN;
    switch (GetGeometryScope(property.header.getMetaData())) {
    case kConstantScope:
        return ResourceProperty::SCOPE_CONSTANT;
    case kUniformScope:
        return ResourceProperty::SCOPE_UNIFORM;
    case kVaryingScope:
        return ResourceProperty::SCOPE_VARYING;
    case kVertexScope:
        return ResourceProperty::SCOPE_VERTEX;
    case kFacevaryingScope:
        return ResourceProperty::SCOPE_FACE_VARYING;
    default:
        return ResourceProperty::SCOPE_UNKNOWN;
    }
}

/// Elements that belong together in one part of the scope, as the metadata say; 1 unless they say more.
unsigned int array_extent_of(const UserProperty& property)
{
    const std::string text = property.header.getMetaData().get("arrayExtent");
    const unsigned long long extent = std::strtoull(text.c_str(), nullptr, 10);
    return extent > 1 && extent <= std::numeric_limits<std::int32_t>::max() ? static_cast<unsigned int>(extent) : 1;
}

/// The record without its values.
ResourceProperty describe(const UserProperty& property)
{
    const PropertyHeader values = property.value_header();
    ResourceProperty result;
    result.name = CoreString(property.name);
    result.extent = values.getDataType().getExtent();
    result.interpretation = interpretation_of(property.header.getMetaData(), result.extent);
    result.scope = scope_of(property);
    result.array_extent = property.is_parameter ? array_extent_of(property) : 1;
    return result;
}

/// Reads the values at one sample.
bool read_values(const UserProperty& property, const ISampleSelector& selector, ResourceProperty& result)
{
    const PropertyHeader header = property.value_header();
    if (header.isScalar()) {
        read_scalar_values(IScalarProperty(property.parent, header.getName()), selector, result);
        return true;
    }
    const IArrayProperty values = property.values();
    const std::uint64_t count = std::uint64_t(element_count(values, selector));
    if (count * result.extent > std::numeric_limits<unsigned int>::max())
        return refuse(property, "it has more values than an array can hold");
    read_array_values(values, selector, result);
    return true;
}

/// Reads the indices at one sample; none where none are stored.
bool read_indices(const UserProperty& property, const ISampleSelector& selector, Indices& indices)
{
    indices.resize(0);
    const IArrayProperty stored = property.indices();
    if (!stored.valid() || stored.getNumSamples() == 0) return true;
    if (stored.getDataType() != DataType(Alembic::Util::kUint32POD, 1))
        return refuse(property, "its indices are no unsigned 32-bit numbers");
    return read_array(stored, selector, indices) || refuse(property, "it has more indices than an array can hold");
}

bool check_indices(const UserProperty& property, const ResourceProperty& result)
{
    const unsigned int count = result.get_element_count();
    if (indices_are_below(result.indices, count)) return true;
    const unsigned int largest = *std::max_element(result.indices.begin(), result.indices.end());
    return refuse(property, "it has the index " + std::to_string(largest) + ", but only " + std::to_string(count) +
                                " elements. The archive is damaged");
}

/// Where `time` falls between two samples of the values; none when one sample is to be taken as it is.
std::optional<SampleSpan> find_span(const UserProperty& property, double time)
{
    if (is_constant(property)) return std::nullopt;
    return find_sample_span(*property.value_header().getTimeSampling(), sample_count(property), time);
}

bool is_floating(const UserProperty& property)
{
    const Alembic::Util::PlainOldDataType pod = property.value_header().getDataType().getPod();
    return pod == Alembic::Util::kFloat16POD || pod == Alembic::Util::kFloat32POD || pod == Alembic::Util::kFloat64POD;
}

} // namespace

AbcInput::PropertyType read_property_type(const UserProperty& property)
{
    const ResourceProperty described = describe(property);
    AbcInput::PropertyType type;
    type.type = type_of(property.value_header().getDataType().getPod());
    type.extent = described.extent;
    type.interpretation = described.interpretation;
    type.scope = described.scope;
    type.is_array = !property.header.isScalar();
    type.is_indexed = property.is_indexed();
    type.sample_count = static_cast<unsigned int>(sample_count(property));
    type.is_constant = is_constant(property);
    if (const IArrayProperty indices = property.indices(); indices.valid()) {
        type.sample_count = std::max(type.sample_count, static_cast<unsigned int>(indices.getNumSamples()));
        type.is_constant = type.is_constant && indices.isConstant();
    }
    return type;
}

bool read_nearest_property(const UserProperty& property, double time, ResourceProperty& result)
{
    const ISampleSelector nearest(time, ISampleSelector::kNearIndex);
    ResourceProperty read = describe(property);
    if (!read_values(property, nearest, read) || !read_indices(property, nearest, read.indices) ||
        !check_indices(property, read))
        return false;
    result = std::move(read);
    return true;
}

bool interpolate_property(const UserProperty& property, double time, ResourceProperty& result)
{
    const std::optional<SampleSpan> span = is_floating(property) ? find_span(property, time) : std::nullopt;
    if (!span) return read_nearest_property(property, time, result);

    // Values and indices have samplings of their own: each is looked up by time.
    ResourceProperty floor = describe(property), ceil = floor;
    if (!read_indices(property, ISampleSelector(time, ISampleSelector::kFloorIndex), floor.indices) ||
        !read_indices(property, ISampleSelector(time, ISampleSelector::kCeilIndex), ceil.indices))
        return false;
    if (floor.indices != ceil.indices) return read_nearest_property(property, time, result);
    if (!read_values(property, span->floor, floor) || !read_values(property, span->ceil, ceil)) return false;
    if (floor.get_value_count() != ceil.get_value_count()) return read_nearest_property(property, time, result);
    if (!check_indices(property, floor)) return false;
    blend_values(floor, ceil, (time - span->floor_time) * (1.0 / (span->ceil_time - span->floor_time)));
    result = std::move(floor);
    return true;
}
