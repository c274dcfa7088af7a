/// One value of one of a few types.
#include "vo_core/core_variant.h"

#include "vo_core/core_log_stream.h"

bool CoreVariant::get_bool(bool fallback) const
{
    if (const bool* value = std::get_if<bool>(&value_)) return *value;
    if (const std::int64_t* value = std::get_if<std::int64_t>(&value_)) return *value != 0;
    if (const double* value = std::get_if<double>(&value_)) return *value != 0.0;
    return fallback;
}

std::int64_t CoreVariant::get_integer(std::int64_t fallback) const
{
    if (const bool* value = std::get_if<bool>(&value_)) return *value ? 1 : 0;
    if (const std::int64_t* value = std::get_if<std::int64_t>(&value_)) return *value;
    constexpr double limit = 9223372036854775808.0; // 2^63; also refuses what is not a number
    if (const double* value = std::get_if<double>(&value_))
        if (*value >= -limit && *value < limit) return static_cast<std::int64_t>(*value);
    return fallback;
}

double CoreVariant::get_number(double fallback) const
{
    if (const bool* value = std::get_if<bool>(&value_)) return *value ? 1.0 : 0.0;
    if (const std::int64_t* value = std::get_if<std::int64_t>(&value_)) return static_cast<double>(*value);
    if (const double* value = std::get_if<double>(&value_)) return *value;
    return fallback;
}

CoreString CoreVariant::get_string(const CoreString& fallback) const
{
    if (const CoreString* value = std::get_if<CoreString>(&value_)) return *value;
    CoreLogStream text;
    switch (get_type()) {
    case TYPE_BOOL:
        text << std::get<bool>(value_);
        break;
    case TYPE_INTEGER:
        text << std::get<std::int64_t>(value_);
        break;
    case TYPE_NUMBER:
        text << std::get<double>(value_);
        break;
    default:
        return fallback;
    }
    return text.get_string();
}
