/// read_array: an array sample straight from the file into a host array.
#pragma once

#include <Alembic/Abc/All.h>
#include <vo_core/core_array.h>
#include <vo_gmath/gmath_vec3.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

/// What one element of a host array is made of: `extent` numbers of type `Scalar`, and nothing else.
template <class T>
struct ElementLayout
{
    static_assert(std::is_arithmetic_v<T>, "state the layout of this element type");
    using Scalar = T;
    static constexpr std::size_t extent = 1;
};
template <class T>
struct ElementLayout<GMathVec3<T>>
{
    using Scalar = T;
    static constexpr std::size_t extent = 3;
};

/// True when elements of `type` are, byte for byte, elements T: as many numbers, as wide, integers for integers (of
/// either sign) and floating-point for floating-point.
template <class T>
bool has_layout_of(const Alembic::Abc::DataType& type)
{
    using Layout = ElementLayout<T>;
    static_assert(sizeof(T) == Layout::extent * sizeof(typename Layout::Scalar), "the element type has padding");
    using namespace Alembic::Util;
    const PlainOldDataType pod = type.getPod();
    const bool is_floating = pod == kFloat16POD || pod == kFloat32POD || pod == kFloat64POD;
    const bool is_integer = pod >= kUint8POD && pod <= kInt64POD;
    if (!is_floating && !is_integer) return false;
    return is_floating == std::is_floating_point_v<typename Layout::Scalar> && type.getExtent() == Layout::extent &&
           type.getNumBytes() == sizeof(T);
}

/// Elements of the sample that `selector` finds in the property; 0 without samples. Reads no data.
inline std::size_t element_count(const Alembic::Abc::IArrayProperty& property,
                                 const Alembic::Abc::ISampleSelector& selector)
{
    if (!property.valid() || property.getNumSamples() == 0) return 0;
    Alembic::Util::Dimensions dimensions;
    property.getDimensions(dimensions, selector);
    return dimensions.numPoints();
}

/// Whether a host array of T can hold a sample of `count` elements of the property, element for element.
template <class T>
bool can_hold(const Alembic::Abc::IArrayProperty& property, std::size_t count)
{
    return property.valid() && property.getNumSamples() > 0 && has_layout_of<T>(property.getDataType()) &&
           count <= std::numeric_limits<unsigned int>::max();
}

/// Reads one sample of an array property into `values`: one allocation (none when it fits), one read, no copy. The
/// selector is applied to the property's own sampling; an index beyond its last sample reads that one. Old values are
/// not kept, even if the read then fails. False, `values` untouched, when the property is invalid or has no samples, or
/// when its elements are not, byte for byte, T. Errors of the file are Alembic's exceptions.
template <class T>
bool read_array(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                CoreArray<T>& values)
{
    const std::size_t count = element_count(property, selector);
    if (!can_hold<T>(property, count)) return false;
    values.resize_for_overwrite(count);
    if (count > 0) Alembic::Abc::IArrayProperty(property).getAs(values.get_data(), selector); // getAs is not const
    return true;
}
