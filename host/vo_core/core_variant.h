/// One value of one of a few types.
#pragma once

#include <cstdint>
#include <variant>

#include "vo_core/core_string.h"

/// Holds nothing, a bool, an integer, a number or a text. The getters convert between them and answer `fallback` where
/// no conversion keeps the value.
class VO_HOST_EXPORT CoreVariant
{
public:
    enum Type {
        TYPE_NONE = 0,
        TYPE_BOOL = 1,
        TYPE_INTEGER = 2, ///< 64 bits, signed
        TYPE_NUMBER = 3,  ///< double
        TYPE_STRING = 4,
    };

    CoreVariant() = default;
    CoreVariant(bool value)
        : value_(value)
    {
    }
    CoreVariant(int value)
        : value_(std::int64_t(value))
    {
    }
    CoreVariant(unsigned int value)
        : value_(std::int64_t(value))
    {
    }
    CoreVariant(std::int64_t value)
        : value_(value)
    {
    }
    CoreVariant(double value)
        : value_(value)
    {
    }
    CoreVariant(const char* value)
        : value_(CoreString(value))
    {
    }
    CoreVariant(CoreString value)
        : value_(std::move(value))
    {
    }

    Type get_type() const { return static_cast<Type>(value_.index()); }
    bool is_none() const { return get_type() == TYPE_NONE; }

    bool get_bool(bool fallback = false) const;                   ///< a number is true unless it is 0
    std::int64_t get_integer(std::int64_t fallback = 0) const;    ///< a number is truncated when it fits
    double get_number(double fallback = 0.0) const;               ///< a bool is 0 or 1
    CoreString get_string(const CoreString& fallback = "") const; ///< numbers in their shortest form

    bool operator==(const CoreVariant& other) const { return value_ == other.value_; } ///< same type, same value
    bool operator!=(const CoreVariant& other) const { return !(*this == other); }

private:
    std::variant<std::monostate, bool, std::int64_t, double, CoreString> value_;
};
