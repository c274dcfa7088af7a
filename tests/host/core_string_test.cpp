/// Strings, hashes, variants.
#include "vo_core/core_hash.h"
#include "vo_core/core_string.h"
#include "vo_core/core_variant.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

CoreArray<CoreString> split(const CoreString& text, const CoreString& separator, int flag)
{
    CoreArray<CoreString> parts{"left over"};
    text.split(separator, parts, flag);
    return parts;
}

} // namespace

TEST(CoreString, SplitsAtEverySeparator)
{
    EXPECT_EQ(split("/root//body", "/", 0), (CoreArray<CoreString>{"", "root", "", "body"}));
    EXPECT_EQ(split("/root//body/", "/", CoreString::SPLIT_FLAG_SKIP_EMPTY), (CoreArray<CoreString>{"root", "body"}));
    EXPECT_EQ(split("", "/", 0), (CoreArray<CoreString>{""}));
    EXPECT_EQ(split("/", "/", 0), (CoreArray<CoreString>{"", ""}));
    EXPECT_EQ(split("a::b", "::", 0), (CoreArray<CoreString>{"a", "b"}));
    EXPECT_EQ(split("abc", "", 0), (CoreArray<CoreString>{"abc"}));
}

TEST(CoreString, IsZeroTerminatedAndCountsBytes)
{
    CoreString text = "caf\xc3\xa9";
    EXPECT_EQ(text.get_count(), 5u);
    EXPECT_STREQ(text.get_data(), "caf\xc3\xa9");
    text.set_data(text.get_data() + 3); // a part of itself
    EXPECT_EQ(text, "\xc3\xa9");
    text.set_data(nullptr);
    EXPECT_TRUE(text.is_empty());
    EXPECT_EQ(CoreString(static_cast<const char*>(nullptr)), "");
}

TEST(CoreString, JoinsAndCompares)
{
    CoreString text = "a" + CoreString("b") + std::string("c");
    text += "d";
    text += 'e';
    EXPECT_EQ(text, "abcde");
    EXPECT_TRUE(text.start_with("abc") && text.start_with("") && text.end_with("de") && text.contains("cd"));
    EXPECT_FALSE(text.start_with("abcdef") || text.end_with("xabcde") || text.contains("ce"));
    EXPECT_TRUE(CoreString("a") < CoreString("b") && CoreString("b") >= "a" && CoreString("a") != "b");
}

TEST(CoreHash, IsJenkinsOneAtATime)
{
    const std::string text = "The quick brown fox jumps over the lazy dog";
    EXPECT_EQ(CoreHash::generate_jenkins("a", 1), 0xca2e9442u);
    EXPECT_EQ(CoreHash::generate_jenkins(text.data(), text.size()), 0x519e91f5u);
    EXPECT_EQ(CoreHash::generate_jenkins(nullptr, 0), 0u);
}

TEST(CoreVariant, ConvertsOnlyWhatKeepsItsValue)
{
    EXPECT_EQ(CoreVariant(2.75).get_integer(), 2);
    EXPECT_EQ(CoreVariant(1e30).get_integer(-5), -5);
    EXPECT_EQ(CoreVariant(std::numeric_limits<double>::quiet_NaN()).get_integer(7), 7);
    EXPECT_EQ(CoreVariant(true).get_number(), 1.0);
    EXPECT_EQ(CoreVariant("12").get_integer(3), 3);
    EXPECT_EQ(CoreVariant(0.1).get_string(), "0.1");
    EXPECT_EQ(CoreVariant().get_string("nothing"), "nothing");
    EXPECT_NE(CoreVariant(1), CoreVariant(1.0));
}
