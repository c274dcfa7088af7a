/// Metadata: the stored text, comparisons, and that copies share without being seen to.
#include <Alembic/AbcCoreAbstract/MetaData.h>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace Alembic::AbcCoreAbstract;

namespace {

MetaData from_text(const std::string& text)
{
    MetaData data;
    data.deserialize(text);
    return data;
}

std::string thrown_text(const std::function<void()>& call)
{
    try {
        call();
    } catch (const Exception& error) {
        return error;
    }
    return "";
}

} // namespace

TEST(MetaData, TextReadsBackSortedWithTheFirstOfEqualKeys)
{
    EXPECT_EQ(from_text("b=2;a=1;b=3").serialize(), "a=1;b=2");
    EXPECT_EQ(from_text("a=x=y").get("a"), "x=y");
    EXPECT_EQ(from_text("a=1;stray;b=2").serialize(), "a=1");
    EXPECT_EQ(from_text("").size(), 0u);

    MetaData data = from_text("a=1");
    data.deserialize("a=2;b=3");
    EXPECT_EQ(data.serialize(), "a=1;b=3");
    data.set("empty", "");
    EXPECT_EQ(data.serialize(), "a=1;b=3");
    data.set("c", "x;y");
    EXPECT_EQ(thrown_text([&] { data.serialize(); }).rfind("TokenMap::get: Token-Value pair ", 0), 0u);
}

TEST(MetaData, AddsAndRefuses)
{
    MetaData data = from_text("k=v");
    EXPECT_EQ(thrown_text([&] { data.setUnique("k", "v"); }), "");
    EXPECT_EQ(thrown_text([&] { data.setUnique("k", "w"); }), "Key: k already exists in MetaData");
    EXPECT_EQ(thrown_text([&] { data.getRequired("l"); }), "Key: l did not exist in MetaData");
    EXPECT_EQ(thrown_text([&] { data.appendUnique(from_text("a=1;k=other")); }), "Key: k already exists in MetaData");
    EXPECT_EQ(data.serialize(), "k=v"); // the refused one left nothing behind

    data.appendOnlyUnique(from_text("k=other;l=m"));
    EXPECT_EQ(data.serialize(), "k=v;l=m");
    data.append(from_text("k=other;n=o"));
    EXPECT_EQ(data.serialize(), "k=other;l=m;n=o");
    data.append(data);
    EXPECT_EQ(data.serialize(), "k=other;l=m;n=o");
}

TEST(MetaData, Compares)
{
    const MetaData wide = from_text("a=1;b=2"), part = from_text("a=1"), other = from_text("b=3;c=4");
    EXPECT_TRUE(wide.matches(part) && wide.matches(MetaData()) && wide.matches(wide));
    EXPECT_FALSE(part.matches(wide) || wide.matches(other));
    EXPECT_TRUE(part.matchesOverlap(wide) && part.matchesOverlap(other));
    EXPECT_FALSE(wide.matchesOverlap(other));
    EXPECT_TRUE(wide.matchesExactly(from_text("b=2;a=1")) && MetaData().matchesExactly(from_text("")));
    EXPECT_FALSE(wide.matchesExactly(part));
}

TEST(MetaData, ChangingACopyLeavesTheOriginal)
{
    MetaData original = from_text("a=1");
    MetaData copy = original;
    EXPECT_EQ(&*copy.begin(), &*original.begin()); // shared so far
    copy.set("a", "2");
    EXPECT_EQ(original.get("a"), "1");
    EXPECT_EQ(copy.get("a"), "2");

    const auto* const own = &*copy.begin();
    copy.set("a", "3");
    EXPECT_EQ(&*copy.begin(), own); // alone: changed in place

    MetaData moved = std::move(copy);
    EXPECT_EQ(moved.get("a"), "3");
    copy = moved;
    copy = copy;
    EXPECT_EQ(copy.get("a"), "3");
    original = MetaData();
    EXPECT_EQ(original.size(), 0u);
}

// Copies of one original, changed and destroyed on several threads at once.
TEST(MetaData, CopiesBelongToTheirThreads)
{
    const MetaData original = from_text("a=1;b=2");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([copy = original, t]() mutable {
            for (int i = 0; i < 2000; ++i) {
                MetaData mine = copy;
                mine.set("a", std::to_string(t));
                copy = i % 2 ? mine : copy;
                ASSERT_EQ(mine.get("b"), "2");
            }
            ASSERT_EQ(copy.get("a"), std::to_string(t));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(original.get("a"), "1");
}
