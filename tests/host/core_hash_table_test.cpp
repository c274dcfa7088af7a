/// Tables and sets against the standard ones.
#include "vo_core/core_hash_table.h"
#include "vo_core/core_set.h"

#include <random>
#include <string>
#include <unordered_map>

#include <gtest/gtest.h>

namespace {

/// Few hashes, so that entries crowd: look-ups and removals must walk over strangers.
struct CrowdedTraits : CoreHashTraits<CoreString>
{
    template <class Query>
    static unsigned int hash(const Query& key)
    {
        return CoreHashTraits<CoreString>::hash(key) % 7;
    }
};

template <class Traits>
void compare_with_standard_table(unsigned int seed)
{
    std::mt19937 random(seed);
    CoreHashTable<CoreString, int, Traits> table;
    std::unordered_map<std::string, int> expected;
    for (int step = 0; step < 4000; ++step) {
        const std::string key = "key" + std::to_string(random() % 300);
        if (random() % 3 != 0) {
            ASSERT_EQ(table.insert(key, step), expected.count(key) == 0) << "seed " << seed << ", step " << step;
            expected[key] = step;
        } else {
            ASSERT_EQ(table.remove(key.c_str()), expected.erase(key) == 1) << "seed " << seed << ", step " << step;
        }
    }
    ASSERT_EQ(table.get_count(), expected.size());
    for (int i = 0; i < 300; ++i) {
        const std::string key = "key" + std::to_string(i);
        const int* const value = table.find(key);
        const auto found = expected.find(key);
        ASSERT_EQ(value != nullptr, found != expected.end()) << key;
        if (value) {
            EXPECT_EQ(*value, found->second);
        }
    }
    std::size_t walked = 0;
    for (const auto& entry : table) {
        EXPECT_EQ(expected.at(entry.get_key().get_data()), entry.get_value());
        ++walked;
    }
    EXPECT_EQ(walked, expected.size());
}

} // namespace

TEST(CoreHashTable, BehavesAsTheStandardTable)
{
    for (unsigned int seed = 1; seed <= 5; ++seed) {
        compare_with_standard_table<CoreHashTraits<CoreString>>(seed);
        compare_with_standard_table<CrowdedTraits>(seed);
    }
}

TEST(CoreHashTable, IsWalkedInTheOrderOfInsertion)
{
    CoreHashTable<CoreString, int> table;
    const std::size_t empty_size = table.get_memory_size();
    for (int i = 0; i < 100; ++i)
        table.insert("object" + std::to_string(i), i);
    int expected = 0;
    for (const auto& entry : table)
        EXPECT_EQ(entry.get_value(), expected++);
    EXPECT_GE(table.get_memory_size(), empty_size + 100 * (sizeof(CoreString) + sizeof(int)));
    table.remove_all();
    EXPECT_TRUE(table.is_empty() && !table.contains("object1"));
}

TEST(CoreSet, HoldsEachValueOnce)
{
    int values[100];
    CoreSet<int*> set;
    for (int round = 0; round < 2; ++round)
        for (int& value : values)
            EXPECT_EQ(set.insert(&value), round == 0);
    EXPECT_EQ(set.get_count(), 100u);
    EXPECT_TRUE(set.remove(&values[3]));
    EXPECT_FALSE(set.remove(&values[3]) || set.contains(&values[3]));
    unsigned int walked = 0;
    for (int* value : set)
        walked += value != nullptr;
    EXPECT_EQ(walked, 99u);
}
