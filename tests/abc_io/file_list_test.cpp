/// AbcFileList: order, extension, hash.
#include <abc_file_list.h>

#include <gtest/gtest.h>

using Names = CoreArray<CoreString>;

TEST(FileList, AnEmptyListNamesNothingAndIsInvalid)
{
    const AbcFileList list;
    EXPECT_TRUE(list.is_empty());
    EXPECT_FALSE(list.is_valid());
    EXPECT_TRUE(list.get_as_reversed_vector().empty());
}

TEST(FileList, AlembicGetsTheLastNameFirst)
{
    const AbcFileList list(Names{"a.abc", "b.abc", "c.abc"});
    EXPECT_EQ(list.get_as_reversed_vector(), (std::vector<std::string>{"c.abc", "b.abc", "a.abc"}));
}

TEST(FileList, TheOrderOfNamesIsPartOfTheKey)
{
    const AbcFileList ab(Names{"a.abc", "b.abc"}), ba(Names{"b.abc", "a.abc"}), copy = ab;
    EXPECT_EQ(ab, copy);
    EXPECT_EQ(ab.get_hash(), copy.get_hash());
    EXPECT_NE(ab, ba);
    EXPECT_NE(ab.get_hash(), ba.get_hash());
    EXPECT_EQ(AbcFileList().get_hash(), 0u);
}

TEST(FileList, TheHashIsOneBlockStepPerName)
{
    // An empty name hashes to 0, so that the step only rotates, multiplies and adds: worked out by hand.
    EXPECT_EQ(AbcFileList(CoreString("")).get_hash(), 0xe6546b64u);
    const std::uint32_t rotated = (0xe6546b64u << 13) | (0xe6546b64u >> 19);
    EXPECT_EQ(AbcFileList(Names{"", ""}).get_hash(), rotated * 5 + 0xe6546b64u);
}

TEST(FileList, ClearKeepsTheExtension)
{
    AbcFileList list(CoreString("a.abc"));
    list.clear();
    EXPECT_TRUE(list.is_empty());
    ASSERT_EQ(list.get_extensions().get_count(), 1u);
    EXPECT_EQ(list.get_extensions()[0], "abc");
    EXPECT_EQ(AbcFileList::extension, list.get_extensions());
}
