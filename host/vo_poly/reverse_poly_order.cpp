/// Turning polygons round: bound by memory, so that loading a mesh hardly notices it.
#include "vo_poly/reverse_poly_order.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t block_polygons = 8; ///< polygons that are tested together for being all alike

bool are_all(const unsigned int* counts, unsigned int count)
{
    unsigned int difference = 0;
    for (std::size_t i = 0; i < block_polygons; ++i)
        difference |= counts[i] ^ count;
    return difference == 0;
}

void reverse_quad(unsigned int* corners)
{
    using Quad [[gnu::vector_size(16)]] = unsigned int;
    Quad quad;
    std::memcpy(&quad, corners, sizeof(quad));
    quad = __builtin_shufflevector(quad, quad, 3, 2, 1, 0);
    std::memcpy(corners, &quad, sizeof(quad));
}

void reverse_triangle(unsigned int* corners)
{
    std::swap(corners[0], corners[2]);
}

// Two to five corners, without a branch on how many: meshes that mix triangles and quads defeat branch prediction.
void reverse_few(unsigned int* corners, unsigned int count)
{
    const unsigned int first = corners[0], second = corners[1];
    const unsigned int last = corners[count - 1], last_but_one = corners[count - 2];
    corners[0] = last;
    corners[count - 1] = first;
    corners[1] = last_but_one;
    corners[count - 2] = second;
}

} // namespace

std::size_t reverse_whole_polygons(const unsigned int*& count, const unsigned int* counts_end, unsigned int* indices,
                                   std::size_t index_count)
{
    unsigned int* corners = indices;
    std::size_t left = index_count; // indices from `corners` on

    while (count != counts_end) {
        const bool is_block = static_cast<std::size_t>(counts_end - count) >= block_polygons;
        if (is_block && left >= 4 * block_polygons && are_all(count, 4)) {
            for (std::size_t i = 0; i < block_polygons; ++i)
                reverse_quad(corners + 4 * i);
            corners += 4 * block_polygons;
            left -= 4 * block_polygons;
            count += block_polygons;
        } else if (is_block && left >= 3 * block_polygons && are_all(count, 3)) {
            for (std::size_t i = 0; i < block_polygons; ++i)
                reverse_triangle(corners + 3 * i);
            corners += 3 * block_polygons;
            left -= 3 * block_polygons;
            count += block_polygons;
        } else {
            const unsigned int* const stop = is_block ? count + block_polygons : counts_end;
            for (; count != stop; ++count) {
                if (*count > left) return index_count - left;
                if (*count >= 2 && *count <= 5)
                    reverse_few(corners, *count);
                else if (*count > 5)
                    std::reverse(corners, corners + *count);
                corners += *count;
                left -= *count;
            }
        }
    }
    return index_count - left;
}

void reverse_poly_order(const CoreArray<unsigned int>& counts, CoreArray<unsigned int>& indices)
{
    const unsigned int* count = counts.get_data();
    reverse_whole_polygons(count, count + counts.get_count(), indices.get_data(), indices.get_count());
}
