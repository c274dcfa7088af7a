/// Storage rules of CoreArray and CoreVector.
#include "vo_core/core_array.h"
#include "vo_core/core_vector.h"

#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Counts its live instances and throws at a chosen construction.
struct Counted
{
    static inline int alive = 0;
    static inline int constructions_left = -1; ///< -1: never throws

    int value;

    Counted(int v = 0)
        : value(v)
    {
        construct();
    }
    Counted(const Counted& other)
        : value(other.value)
    {
        construct();
    }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --alive; }
    bool operator==(const Counted& other) const { return value == other.value; }

private:
    static void construct()
    {
        if (constructions_left == 0) throw std::runtime_error("no more");
        if (constructions_left > 0) --constructions_left;
        ++alive;
    }
};

template <class T>
bool is_aligned(const T* pointer, std::size_t alignment)
{
    return reinterpret_cast<std::uintptr_t>(pointer) % alignment == 0;
}

} // namespace

TEST(CoreArray, KeepsItsStorageAndItsElementsWhenTheNewSizeFits)
{
    CoreArray<int> array{1, 2, 3, 4};
    const int* const storage = array.get_data();
    array.resize(2);
    array.resize_for_overwrite(3);
    array.resize(4);
    EXPECT_EQ(array.get_data(), storage);
    EXPECT_EQ(array.get_count(), 4u);
    EXPECT_EQ(array[0], 1);
    EXPECT_EQ(array[3], 4) << "trivial elements are not filled, so the old value is still there";
    array = CoreArray<int>{7, 8};
    array = {5};
    const CoreArray<int> other{9};
    array = other;
    EXPECT_EQ(array, other);
}

TEST(CoreArray, GrowingKeepsTheFirstElements)
{
    CoreArray<std::string> texts{"a", "b"};
    texts.resize(5);
    EXPECT_EQ(texts, (CoreArray<std::string>{"a", "b", "", "", ""}));
    CoreArray<double> numbers{1.5, 2.5};
    numbers.resize(100000);
    EXPECT_EQ(numbers[1], 2.5);
}

TEST(CoreArray, MovingHandsTheStorageOver)
{
    CoreArray<int> source{1, 2, 3};
    const int* const storage = source.get_data();
    CoreArray<int> moved(std::move(source));
    EXPECT_EQ(moved.get_data(), storage);
    EXPECT_EQ(source.get_count(), 0u);
    EXPECT_EQ(source.get_data(), nullptr);
    CoreArray<int> target{9, 9};
    target = std::move(moved);
    EXPECT_EQ(target.get_data(), storage);
    EXPECT_TRUE(moved.is_empty());
    CoreArray<int>& same = target;
    target = std::move(same);
    EXPECT_EQ(target, (CoreArray<int>{1, 2, 3}));
}

TEST(CoreArray, LargeBlocksAreAlignedToHugePages)
{
    const std::size_t large_count = CoreMemory::large_block_bytes / sizeof(float);
    CoreArray<float> large(large_count), small(1000);
    EXPECT_TRUE(is_aligned(large.get_data(), CoreMemory::huge_page_bytes));
    EXPECT_TRUE(is_aligned(small.get_data(), alignof(float)));
    struct alignas(128) Wide
    {
        char bytes[128];
    };
    EXPECT_TRUE(is_aligned(CoreArray<Wide>(3).get_data(), 128));
}

TEST(CoreArray, ASizeThatCannotBeHeldIsRefusedAndChangesNothing)
{
    CoreArray<int> array{1, 2};
    EXPECT_THROW(array.resize((std::size_t(1) << 32) + 1), std::length_error);
    struct Huge
    {
        char bytes[std::size_t(1) << 40];
    };
    CoreArray<Huge> huge;
    EXPECT_THROW(huge.resize(0xffffffffu), std::bad_alloc);
    EXPECT_EQ(array, (CoreArray<int>{1, 2}));
    EXPECT_TRUE(huge.is_empty());
}

TEST(CoreArray, ThrowingElementsNeitherLeakNorDieTwice)
{
    for (int budget = 0; budget < 12; ++budget) {
        Counted::constructions_left = -1;
        {
            CoreArray<Counted> source{Counted(1), Counted(2), Counted(3)}, target{Counted(4)};
            Counted::constructions_left = budget;
            try {
                target = source;
                CoreArray<Counted> copy(source);
                copy.resize(5);
                EXPECT_EQ(target, source);
            } catch (const std::runtime_error&) {
                EXPECT_EQ(source[2].value, 3);
                EXPECT_LE(target.get_count(), 3u);
            }
        }
        EXPECT_EQ(Counted::alive, 0) << "after " << budget << " constructions";
    }
    Counted::constructions_left = -1;
}

TEST(CoreVector, BehavesAsAStandardVectorUnderRandomChanges)
{
    const unsigned int seed = 20260117;
    std::mt19937 random(seed);
    CoreVector<std::string> vector;
    std::vector<std::string> expected;
    for (int step = 0; step < 5000; ++step) {
        const unsigned int choice = random() % 10;
        const std::size_t index = expected.empty() ? 0 : random() % expected.size();
        if (choice < 6 || expected.empty()) {
            const std::string text = std::string(random() % 40, 'x') + std::to_string(step);
            vector.add(text);
            expected.push_back(text);
        } else if (choice == 6) {
            vector.add(vector[index]); // an element of its own, which growing moves
            expected.push_back(std::string(expected[index]));
        } else if (choice == 7) {
            vector.remove(index);
            expected.erase(expected.begin() + index);
        } else if (choice == 8) {
            vector.remove_unordered(index);
            expected[index] = expected.back();
            expected.pop_back();
        } else if (random() % 100 == 0) {
            vector.remove_all();
            expected.clear();
        }
        ASSERT_EQ(vector.get_count(), expected.size()) << "seed " << seed << ", step " << step;
    }
    EXPECT_EQ(std::vector<std::string>(vector.begin(), vector.end()), expected) << "seed " << seed;
}
