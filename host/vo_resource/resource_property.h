/// Named values that users attach to a geometry.
#pragma once

#include <cstdint>
#include <variant>

#include "vo_core/core_array.h"
#include "vo_core/core_string.h"

/// Elements of 1 to 255 values each (a number, a vector, a colour, a matrix), all of one type, in one flat array: value
/// `component` of element i stands at `i * extent + component`. Holds every type that an archive's property may have;
/// half floats come as floats, wide strings as UTF-8.
struct VO_HOST_EXPORT ResourceProperty
{
    /// Type of each value, and the alternative of `values` that holds it.
    enum Type {
        TYPE_NONE = 0, ///< no values
        TYPE_BOOL = 1,
        TYPE_INT8 = 2,
        TYPE_UINT8 = 3,
        TYPE_INT16 = 4,
        TYPE_UINT16 = 5,
        TYPE_INT32 = 6,
        TYPE_UINT32 = 7,
        TYPE_INT64 = 8,
        TYPE_UINT64 = 9,
        TYPE_FLOAT = 10,
        TYPE_DOUBLE = 11,
        TYPE_STRING = 12,
        TYPE_COUNT = 13, ///< number of types
    };
    /// What the values of one element are.
    enum Interpretation {
        INTERPRETATION_NONE = 0,   ///< plain numbers or texts
        INTERPRETATION_VECTOR = 1, ///< direction, velocity
        INTERPRETATION_POINT = 2,
        INTERPRETATION_NORMAL = 3,
        INTERPRETATION_COLOR = 4,      ///< red, green, blue and, with extent 4, alpha
        INTERPRETATION_MATRIX = 5,     ///< row by row, for column vectors; extent 9 or 16
        INTERPRETATION_QUATERNION = 6, ///< as stored, extent 4
        INTERPRETATION_BOX = 7,        ///< least corner, then greatest
        INTERPRETATION_COUNT = 8,      ///< number of interpretations
    };
    /// To what part of the geometry each element belongs.
    enum Scope {
        SCOPE_UNKNOWN = 0,
        SCOPE_CONSTANT = 1,     ///< one element for the whole object
        SCOPE_UNIFORM = 2,      ///< one per polygon or curve
        SCOPE_VARYING = 3,      ///< one per point, interpolated linearly
        SCOPE_VERTEX = 4,       ///< one per point, interpolated as the surface is
        SCOPE_FACE_VARYING = 5, ///< one per polygon corner
        SCOPE_COUNT = 6,        ///< number of scopes
    };
    using Values = std::variant<std::monostate, CoreArray<bool>, CoreArray<std::int8_t>, CoreArray<std::uint8_t>,
                                CoreArray<std::int16_t>, CoreArray<std::uint16_t>, CoreArray<std::int32_t>,
                                CoreArray<std::uint32_t>, CoreArray<std::int64_t>, CoreArray<std::uint64_t>,
                                CoreArray<float>, CoreArray<double>, CoreArray<CoreString>>;
    static_assert(std::variant_size_v<Values> == TYPE_COUNT, "one alternative for each type");

    CoreString name;                                     ///< as stored; inside compounds "compound.property"
    Values values;                                       ///< all values, element after element
    unsigned int extent = 1;                             ///< values per element, at least 1
    Interpretation interpretation = INTERPRETATION_NONE; ///< from the property's metadata
    CoreArray<unsigned int> indices; ///< element of each part of `scope`; empty: element i is part i's
    Scope scope = SCOPE_UNKNOWN;     ///< unknown for properties that are no geometry parameters
    unsigned int array_extent = 1;   ///< elements that belong to each part of `scope`, one after the other

    Type get_type() const { return static_cast<Type>(values.index()); }
    unsigned int get_value_count() const;   ///< values of all elements
    unsigned int get_element_count() const; ///< whole elements; 0 when `extent` is 0
    /// The property's values as texts, "1.5" or "true", element after element.
    CoreArray<CoreString> get_values_as_text() const;
    bool operator==(const ResourceProperty& other) const;
    bool operator!=(const ResourceProperty& other) const { return !(*this == other); }
    /// Bytes of the record and of what it owns.
    std::size_t get_memory_size() const;

    /// The enumerator's own name; "TYPE_UNKNOWN", "INTERPRETATION_UNKNOWN" or "SCOPE_INVALID" for any other value.
    static const char* get_type_name(const Type& type);
    static const char* get_interpretation_name(const Interpretation& interpretation);
    static const char* get_scope_name(const Scope& scope);
};
