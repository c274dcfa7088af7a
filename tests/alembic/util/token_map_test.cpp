/// Token maps: what is parsed, what is written, what is refused.
#include <Alembic/Util/Naming.h>
#include <Alembic/Util/TokenMap.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace Alembic::Util;

TEST(TokenMap, ParsesPairsAndStopsAtAPieceWithoutAssignment)
{
    const auto parsed = [](const std::string& config) { return TokenMap(config).get(); };
    EXPECT_EQ(parsed(""), "");
    EXPECT_EQ(parsed("b=2;a=1"), "a=1;b=2");
    EXPECT_EQ(parsed("a=1;a=2"), "a=2");
    EXPECT_EQ(parsed("a=1;stray;b=2"), "a=1");
    EXPECT_EQ(parsed("stray"), "");
    EXPECT_EQ(parsed("a=1;"), "a=1");
    EXPECT_EQ(parsed(";a=1"), "");
    EXPECT_EQ(TokenMap("a=x=y").value("a"), "x=y");
    EXPECT_EQ(TokenMap("=v").value(""), "v");
    EXPECT_TRUE(TokenMap("e=").tokenExists("e"));
    EXPECT_EQ(parsed("e=;f=1"), "f=1");
    EXPECT_EQ(TokenMap("a:1,b:2", ',', ':').value("b"), "2");
}

TEST(TokenMap, UniqueKeepsTheFirstValue)
{
    EXPECT_EQ(TokenMap("a=1;a=2", ';', '=', true).value("a"), "1");
    EXPECT_THROW(TokenMap("a=1;a=2", ';', '=', true, false), Exception);
}

TEST(TokenMap, WhatIsWrittenReadsBackOrIsRefused)
{
    const unsigned seed = 4711;
    std::mt19937 random(seed);
    const auto word = [&] {
        std::string text;
        for (size_t length = random() % 4; length > 0; --length)
            text += "abc;=x"[random() % 6];
        return text;
    };
    int refused = 0;
    for (int round = 0; round < 2000; ++round) {
        TokenMap map;
        bool has_separator = false;
        for (size_t count = random() % 5; count > 0; --count) {
            const std::string token = word();
            const std::string value = word() + "v"; // an empty one is left out
            map.setValue(token, value);
        }
        for (const auto& pair : map)
            has_separator = has_separator || (pair.first + pair.second).find_first_of(";=") != std::string::npos;
        if (has_separator) {
            EXPECT_THROW(map.get(';', '=', true), Exception);
            ++refused;
        } else {
            ASSERT_EQ(TokenMap(map.get(';', '=', true)), map) << "seed " << seed << ": " << map.get();
        }
    }
    EXPECT_GT(refused, 100);
    EXPECT_LT(refused, 1900);
}

TEST(Naming, FixedNamesAreStandard)
{
    for (const char* name : {"", "9a", "a b", "-", "\xc3\xa4", "ok", "_1"}) {
        std::string fixed = name;
        makeStandardName(fixed, 'x');
        EXPECT_TRUE(isStandardName(fixed)) << name;
        if (isStandardName(name)) {
            EXPECT_EQ(fixed, name);
        }
    }
    std::string name = "9-b";
    makeStandardName(name);
    EXPECT_EQ(name, "__b");
    EXPECT_THROW(makeStandardName(name, '9'), Exception);
}
