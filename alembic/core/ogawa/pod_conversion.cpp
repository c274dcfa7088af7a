/// @file
/// Clamping casts between all number types.
#include "core/ogawa/pod_conversion.h"

#include <cstdint>
#include <limits>
#include <type_traits>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// A half computes as the float it stands for.
template <class Number>
constexpr bool is_half = std::is_same_v<Number, AbcA::float16_t>;
template <class Number>
constexpr bool is_real = std::is_floating_point_v<Number> || is_half<Number>;

/// Whole to whole: clamped without ever mixing signs in a comparison.
template <class To, class From>
To convert_whole(From value)
{
    using Limits = std::numeric_limits<To>;
    if constexpr (std::is_signed_v<From>) {
        if (value < 0) {
            if constexpr (std::is_signed_v<To>)
                return value < static_cast<std::int64_t>(Limits::lowest()) ? Limits::lowest() : static_cast<To>(value);
            else
                return 0;
        }
    }
    return static_cast<std::uint64_t>(value) > static_cast<std::uint64_t>(Limits::max()) ? Limits::max()
                                                                                         : static_cast<To>(value);
}

/// Real to whole: towards zero. The largest value may round up on becoming a From, hence `>=`.
template <class To, class From>
To real_to_whole(From value)
{
    using Limits = std::numeric_limits<To>;
    if (value >= static_cast<From>(Limits::max())) return Limits::max();
    if (value <= static_cast<From>(Limits::lowest())) return Limits::lowest();
    return value == value ? static_cast<To>(value) : To(0);
}

/// To a half, from a number or the float of another half.
template <class From>
AbcA::float16_t to_half(From value)
{
    constexpr int largest = 65504;
    if constexpr (std::is_floating_point_v<From>) {
        if (value > From(largest))
            value = From(largest);
        else if (value < -From(largest))
            value = -From(largest);
        return AbcA::float16_t(static_cast<float>(value));
    } else {
        const std::int32_t whole = convert_whole<std::int32_t>(value);
        return AbcA::float16_t(static_cast<float>(whole > largest ? largest : whole < -largest ? -largest : whole));
    }
}

template <class To, class From>
To convert_number(From value)
{
    if constexpr (is_half<From>)
        return convert_number<To>(static_cast<float>(value)); // every target but half is reached as from a float
    else if constexpr (is_half<To>)
        return to_half(value);
    else if constexpr (is_real<From> && !is_real<To>)
        return real_to_whole<To>(value);
    else if constexpr (is_real<From> && sizeof(From) > sizeof(To)) {
        constexpr From largest = static_cast<From>(std::numeric_limits<To>::max());
        return static_cast<To>(value > largest ? largest : value < -largest ? -largest : value);
    } else if constexpr (is_real<To>)
        return static_cast<To>(value);
    else
        return convert_whole<To>(value);
}

template <class From, class To>
void convert_to(const From* from, To* to, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = convert_number<To>(from[i]);
}

template <class From>
void convert_to(const From* from, AbcA::bool_t* to, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        to[i] = AbcA::bool_t(from[i] != From(0));
}

/// Calls `use` with a null pointer of the POD's type: bytes for bools, which are 0 or 1 only by convention.
template <class Use>
void with_type(AbcA::PlainOldDataType pod, const Use& use)
{
    switch (pod) {
    case AbcA::kBooleanPOD:
        return use(static_cast<AbcA::bool_t*>(nullptr));
    case AbcA::kUint8POD:
        return use(static_cast<std::uint8_t*>(nullptr));
    case AbcA::kInt8POD:
        return use(static_cast<std::int8_t*>(nullptr));
    case AbcA::kUint16POD:
        return use(static_cast<std::uint16_t*>(nullptr));
    case AbcA::kInt16POD:
        return use(static_cast<std::int16_t*>(nullptr));
    case AbcA::kUint32POD:
        return use(static_cast<std::uint32_t*>(nullptr));
    case AbcA::kInt32POD:
        return use(static_cast<std::int32_t*>(nullptr));
    case AbcA::kUint64POD:
        return use(static_cast<std::uint64_t*>(nullptr));
    case AbcA::kInt64POD:
        return use(static_cast<std::int64_t*>(nullptr));
    case AbcA::kFloat16POD:
        return use(static_cast<AbcA::float16_t*>(nullptr));
    case AbcA::kFloat32POD:
        return use(static_cast<float*>(nullptr));
    case AbcA::kFloat64POD:
        return use(static_cast<double*>(nullptr));
    default:
        ABCA_THROW("Cannot convert the data to or from a string, or wstring.");
    }
}

} // namespace

void convert_numbers(AbcA::PlainOldDataType from_pod, const void* from, AbcA::PlainOldDataType to_pod, void* to,
                     std::size_t count)
{
    with_type(from_pod, [&](auto* from_type) {
        with_type(to_pod, [&](auto* to_type) {
            using From = std::remove_pointer_t<decltype(from_type)>;
            using To = std::remove_pointer_t<decltype(to_type)>;
            if constexpr (std::is_same_v<From, AbcA::bool_t>) {
                const auto* const bytes = static_cast<const std::uint8_t*>(from);
                for (std::size_t i = 0; i < count; ++i)
                    static_cast<To*>(to)[i] = To(bytes[i] != 0);
            } else {
                convert_to(static_cast<const From*>(from), static_cast<To*>(to), count);
            }
        });
    });
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
