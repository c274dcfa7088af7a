/// Sums and limits over counts and indices, in loops that become vector code.
#include "topology.h"

#include "sample_pieces.h"

#include <vo_poly/reverse_poly_order.h>

#include <algorithm>
#include <limits>

namespace {

// Loops over a block of fixed length become vector code at -O2.
constexpr std::size_t block = 64;

/// Bitwise or of f(value) over all values.
template <class Function>
unsigned int any_bits(const unsigned int* values, std::size_t count, Function f)
{
    unsigned int bits = 0;
    std::size_t i = 0;
    for (; i + block <= count; i += block)
        for (std::size_t k = 0; k < block; ++k)
            bits |= f(values[i + k]);
    for (; i < count; ++i)
        bits |= f(values[i]);
    return bits;
}

constexpr unsigned int sign_bit = 0x80000000u;

/// Sum of the counts in 64 bits; -1 when one of them, read as a signed number, is negative.
std::int64_t sum_of_counts(const CoreArray<unsigned int>& counts)
{
    const std::size_t count = counts.get_count();
    const unsigned int* values = counts.get_data();
    unsigned int bits = 0;
    std::int64_t sum = 0;
    std::size_t i = 0;
    for (; i + block <= count; i += block)
        for (std::size_t k = 0; k < block; ++k) {
            bits |= values[i + k];
            sum += values[i + k];
        }
    for (; i < count; ++i) {
        bits |= values[i];
        sum += values[i];
    }
    return (bits & sign_bit) ? -1 : sum;
}

} // namespace

bool face_counts_add_up(const CoreArray<unsigned int>& face_counts, std::size_t index_count)
{
    return sum_of_counts(face_counts) == static_cast<std::int64_t>(index_count);
}

bool counts_fit(const CoreArray<unsigned int>& counts, std::size_t point_count)
{
    const std::int64_t sum = sum_of_counts(counts);
    return sum >= 0 && static_cast<std::uint64_t>(sum) <= point_count;
}

bool indices_are_below(const unsigned int* indices, std::size_t count, std::uint64_t end)
{
    if (end == 0) return count == 0;
    // An index above the last, or one with its sign bit set, leaves the sign bit in one of the two.
    const auto last = static_cast<unsigned int>(std::min<std::uint64_t>(end - 1, std::numeric_limits<int>::max()));
    return !(any_bits(indices, count, [last](unsigned int index) { return index | (last - index); }) & sign_bit);
}

bool indices_are_below(const CoreArray<unsigned int>& indices, std::uint64_t end)
{
    return indices_are_below(indices.get_data(), indices.get_count(), end);
}

bool read_corner_indices(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                         std::uint64_t end, const CoreArray<unsigned int>& face_counts,
                         CoreArray<unsigned int>& indices)
{
    bool are_sound = true;
    const unsigned int* face = face_counts.get_data();
    const unsigned int* const faces_end = face + face_counts.get_count();
    const auto check_and_turn = [&](unsigned int* corners, std::size_t count, std::size_t known) {
        are_sound = indices_are_below(corners + known, count - known, end) && are_sound;
        return reverse_whole_polygons(face, faces_end, corners, count);
    };
    return read_array_and(property, selector, indices, check_and_turn) && are_sound;
}
