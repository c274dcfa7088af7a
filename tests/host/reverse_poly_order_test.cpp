/// Turning polygons round, against the obvious way.
#include "vo_poly/reverse_poly_order.h"

#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

namespace {

CoreArray<unsigned int> reversed_the_obvious_way(const CoreArray<unsigned int>& counts, CoreArray<unsigned int> indices)
{
    std::size_t begin = 0;
    for (unsigned int count : counts) {
        if (count > indices.get_count() - begin) break;
        std::reverse(indices.begin() + begin, indices.begin() + begin + count);
        begin += count;
    }
    return indices;
}

CoreArray<unsigned int> random_counts(std::mt19937& random, unsigned int kind)
{
    CoreArray<unsigned int> counts(random() % 100);
    for (unsigned int& count : counts)
        count = kind == 0 ? 4 : kind == 1 ? 3 : kind == 2 ? 3 + random() % 2 : random() % 9;
    if (kind == 3 && counts.get_count() > 20) std::fill(counts.begin() + 3, counts.begin() + 19, 4u);
    return counts;
}

} // namespace

TEST(ReversePolyOrder, AgreesWithTheObviousWayAndUndoesItself)
{
    for (unsigned int seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        const CoreArray<unsigned int> counts = random_counts(random, seed % 4);
        CoreArray<unsigned int> indices(std::accumulate(counts.begin(), counts.end(), 0u));
        std::iota(indices.begin(), indices.end(), 1000u);
        const CoreArray<unsigned int> original = indices;
        reverse_poly_order(counts, indices);
        ASSERT_EQ(indices, reversed_the_obvious_way(counts, original)) << "seed " << seed;
        reverse_poly_order(counts, indices);
        ASSERT_EQ(indices, original) << "seed " << seed;
    }
}

TEST(ReversePolyOrder, StaysInsideWhenTheCountsDoNotAddUp)
{
    for (unsigned int seed = 0; seed < 400; ++seed) {
        std::mt19937 random(seed);
        CoreArray<unsigned int> counts = random_counts(random, seed % 4);
        if (seed % 5 == 0 && !counts.is_empty()) counts[random() % counts.get_count()] = 0xffffffffu - random() % 3;
        CoreArray<unsigned int> indices(random() % 300); // a block of its own: sanitizers see every step outside
        std::iota(indices.begin(), indices.end(), 0u);
        const CoreArray<unsigned int> expected = reversed_the_obvious_way(counts, indices);
        reverse_poly_order(counts, indices);
        ASSERT_EQ(indices, expected) << "seed " << seed;
    }
}
