#include "value_difference.h"

#include "stored_view.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace {

template <class T>
constexpr bool is_text = std::is_same_v<T, std::string> || std::is_same_v<T, std::wstring>;

/// Distance of two numbers. 64-bit integers are subtracted as such: double does not hold them all.
template <class A, class B>
double distance(A a, B b)
{
    if constexpr (std::is_same_v<A, B> && std::is_integral_v<A>) {
        return a > b ? static_cast<double>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b))
                     : static_cast<double>(static_cast<std::uint64_t>(b) - static_cast<std::uint64_t>(a));
    } else {
        const double first = static_cast<double>(a), second = static_cast<double>(b);
        if (first == second || (std::isnan(first) && std::isnan(second))) return 0.0;
        const double difference = std::fabs(first - second);
        return std::isnan(difference) ? std::numeric_limits<double>::infinity() : difference;
    }
}

/// Visits both samples' values with their own types.
template <class Work>
void with_types(const AbcA::ArraySample& a, const AbcA::ArraySample& b, Work&& work)
{
    with_stored_type(a.getDataType().getPod(), [&](auto* a_type) {
        using A = std::remove_cv_t<std::remove_pointer_t<decltype(a_type)>>;
        with_stored_type(b.getDataType().getPod(), [&](auto* b_type) {
            using B = std::remove_cv_t<std::remove_pointer_t<decltype(b_type)>>;
            if constexpr (is_text<A> == is_text<B> && (!is_text<A> || std::is_same_v<A, B>))
                work(static_cast<const A*>(a.getData()), static_cast<const B*>(b.getData()));
        });
    });
}

template <class T>
std::string value_text(const T& value)
{
    if constexpr (std::is_same_v<T, std::string>)
        return '"' + value + '"';
    else if constexpr (std::is_same_v<T, std::wstring>)
        return '"' + std::string(value.begin(), value.end()) + '"';
    else if constexpr (std::is_integral_v<T>)
        return fmt::format("{}", value);
    else
        return fmt::format("{:.9g}", static_cast<double>(value));
}

} // namespace

bool are_comparable(const AbcA::DataType& a, const AbcA::DataType& b)
{
    const auto is_string = [](const AbcA::DataType& type) { return type.getPod() >= Alembic::Util::kStringPOD; };
    if (a.getExtent() != b.getExtent()) return false;
    return a.getPod() == b.getPod() || (!is_string(a) && !is_string(b));
}

ValueDifference find_difference(const AbcA::ArraySample& a, const AbcA::ArraySample& b, double tolerance)
{
    ValueDifference difference;
    difference.element_count = a.size();
    const std::size_t extent = a.getDataType().getExtent();
    with_types(a, b, [&](const auto* first, const auto* second) {
        using Value = std::remove_cv_t<std::remove_pointer_t<decltype(first)>>;
        difference.is_numeric = !is_text<Value>;
        for (std::uint64_t element = 0; element < difference.element_count; ++element) {
            double element_distance = 0.0;
            for (std::size_t i = element * extent; i < (element + 1) * extent; ++i) {
                if constexpr (is_text<Value>)
                    element_distance = std::max(element_distance, first[i] == second[i] ? 0.0 : 1.0);
                else
                    element_distance = std::max(element_distance, distance(first[i], second[i]));
            }
            if (element_distance == 0.0 || (difference.is_numeric && element_distance <= tolerance)) continue;
            ++difference.differing_count;
            if (element_distance <= difference.greatest) continue;
            difference.greatest = element_distance;
            difference.element = element;
        }
    });
    if (difference.differing_count > 0) {
        difference.first = element_text(a, difference.element);
        difference.second = element_text(b, difference.element);
    }
    return difference;
}

std::string element_text(const AbcA::ArraySample& sample, std::uint64_t element)
{
    const std::size_t extent = sample.getDataType().getExtent();
    std::string text;
    with_types(sample, sample, [&](const auto* values, const auto*) {
        for (std::size_t i = 0; i < extent; ++i)
            text += (i > 0 ? ", " : "") + value_text(values[element * extent + i]);
    });
    return extent == 1 ? text : "(" + text + ")";
}
