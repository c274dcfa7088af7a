/// Instances: names and parents through them, writing them, and files in which they lead nowhere or in circles.
#include "scratch.h"

#include <gmock/gmock.h>

#include <sstream>

namespace abc_tests {
namespace {

using ::testing::HasSubstr;

/// An instance as a hostile or careless writer might store it.
void store_instance(OObject parent, const std::string& name, const std::string& source)
{
    AbcA::MetaData meta_data;
    meta_data.set("isInstance", "1");
    OObject instance(parent, name, meta_data);
    OStringProperty(instance.getProperties(), ".instanceSource").set(source);
}

size_t count_objects(const IObject& object)
{
    size_t count = 1;
    for (size_t i = 0; i < object.getNumChildren(); ++i)
        count += count_objects(object.getChild(i));
    return count;
}

TEST(Instance, ReadsAsItsSourceUnderItsOwnName)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OObject top = archive.getTop(), source(top, "source"), below(source, "below"), group(top, "group");
        OInt32Property(below.getProperties(), "n").set(42);
        EXPECT_TRUE(group.addChildInstance(source, "copy"));
        OObject outer(top, "outer");
        EXPECT_TRUE(outer.addChildInstance(group, "nested"));
        store_instance(top, "through", "/outer/nested/copy/below"); // the source lies below instances
        store_instance(top, "again", "/group/copy");                // the source is an instance
    }
    IArchive archive(ReadArchive(), file.path());
    const IObject top = archive.getTop(), group = top.getChild("group");
    EXPECT_TRUE(group.isChildInstance(0) && group.isChildInstance("copy"));
    EXPECT_FALSE(group.isChildInstance("none"));

    const IObject copy(group, "copy");
    EXPECT_TRUE(copy.isInstanceRoot() && copy.isInstanceDescendant());
    EXPECT_EQ(copy.getName(), "copy");
    EXPECT_EQ(copy.getFullName(), "/group/copy");
    EXPECT_EQ(copy.getHeader().getFullName(), "/source");
    EXPECT_EQ(copy.instanceSourcePath(), "/source");
    EXPECT_EQ(copy.getInstancePtr()->getFullName(), "/group/copy");
    const IObject below = copy.getChild(0);
    EXPECT_EQ(below.getFullName(), "/group/copy/below");
    EXPECT_TRUE(below.isInstanceDescendant() && !below.isInstanceRoot());
    EXPECT_EQ(below.instanceSourcePath(), "");
    EXPECT_EQ(below.getParent().getFullName(), "/group/copy");
    EXPECT_TRUE(below.getParent().isInstanceRoot());
    EXPECT_EQ(below.getParent().getParent().getFullName(), "/group");
    EXPECT_FALSE(below.getParent().getParent().isInstanceDescendant());

    const IObject nested = top.getChild("outer").getChild("nested").getChild("copy").getChild("below");
    EXPECT_EQ(nested.getFullName(), "/outer/nested/copy/below");
    EXPECT_EQ(IInt32Property(nested.getProperties(), "n").getValue(), 42);
    EXPECT_EQ(IInt32Property(top.getChild("through").getProperties(), "n").getValue(), 42);
    EXPECT_EQ(top.getChild("again").getChild("below").getFullName(), "/again/below");
    // Every object but the top is reached as often as it is seen: source 2, group 3, outer 4, through 1, again 2.
    EXPECT_EQ(count_objects(top), 1u + 2 + 3 + 4 + 1 + 2);
    EXPECT_FALSE(top.getChild("source").isInstanceDescendant());
}

TEST(Instance, WriterRefusesWhatCannotBe)
{
    ScratchFile file, other_file;
    OArchive archive(WriteArchive(), file.path()), other(WriteArchive(), other_file.path());
    OObject top = archive.getTop(), a(top, "a"), b(a, "b"), ab(top, "ab"), elsewhere(other.getTop(), "elsewhere");
    EXPECT_FALSE(b.addChildInstance(OObject(), "x"));
    EXPECT_FALSE(OObject().addChildInstance(a, "x"));
    EXPECT_FALSE(b.addChildInstance(ab, ""));
    EXPECT_FALSE(b.addChildInstance(b, "x"));
    EXPECT_FALSE(b.addChildInstance(a, "x"));
    EXPECT_FALSE(b.addChildInstance(top, "x"));
    EXPECT_FALSE(b.addChildInstance(elsewhere, "x"));
    EXPECT_TRUE(ab.addChildInstance(a, "x")); // "a" begins the name "ab" but is not above it
    EXPECT_FALSE(b.addChildInstance(ab.getChild("x"), "y"));
    EXPECT_THAT(thrown_text([&] { ab.addChildInstance(a, "x"); }),
                HasSubstr("OObject::addChildInstance()\nERROR: EXCEPTION:\nAlready have an Object named: x"));

    std::stringstream stream, other_stream; // archives in streams have no names to tell them apart by
    OArchive unnamed(WriteArchive()(&stream, AbcA::MetaData())), also(WriteArchive()(&other_stream, AbcA::MetaData()));
    OObject here(unnamed.getTop(), "here"), there(also.getTop(), "there");
    EXPECT_FALSE(here.addChildInstance(there, "x"));
}

TEST(Instance, LoopsAndDeadEndsAreErrors)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OObject top = archive.getTop(), a(top, "a"), b(top, "b"), in_b(b, "in_b");
        store_instance(a, "of_parent", "/a");
        store_instance(a, "of_top", "/");
        store_instance(a, "of_nothing", "/nowhere/at/all");
        store_instance(a, "of_itself", "/a/of_itself");
        store_instance(a, "of_b", "/b");
        store_instance(in_b, "of_a", "/a"); // /a/of_b/in_b/of_a/of_b/... without end
        store_instance(top, "ping", "/pong");
        store_instance(top, "pong", "/ping");
        AbcA::MetaData meta_data;
        meta_data.set("isInstance", "1");
        OObject(a, "without_source", meta_data);
        OObject wrong(a, "wrong_source", meta_data);
        OInt32Property(wrong.getProperties(), ".instanceSource").set(1);
        OObject unset(a, "unset_source", meta_data);
        OStringProperty(unset.getProperties(), ".instanceSource");
    }
    IArchive archive(ReadArchive(), file.path());
    const IObject top = archive.getTop(), a = top.getChild("a");
    EXPECT_EQ(thrown_text([&] { a.getChild("of_parent"); }),
              "IObject::getChild()\nERROR: EXCEPTION:\nInstance /a/of_parent of /a would contain itself");
    EXPECT_THAT(thrown_text([&] { a.getChild("of_top"); }), HasSubstr("would contain itself"));
    EXPECT_THAT(thrown_text([&] { a.getChild("of_nothing"); }), HasSubstr("there is no such object"));
    EXPECT_THAT(thrown_text([&] { a.getChild("of_itself"); }), HasSubstr("in a circle"));
    EXPECT_THAT(thrown_text([&] { top.getChild("ping"); }), HasSubstr("in a circle"));
    EXPECT_THAT(thrown_text([&] { a.getChild("without_source"); }), HasSubstr("does not tell"));
    EXPECT_THAT(thrown_text([&] { a.getChild("wrong_source"); }), HasSubstr("does not tell"));
    EXPECT_NE(thrown_text([&] { a.getChild("unset_source"); }), "");

    const IObject of_a = top.getChild("b").getChild("in_b").getChild("of_a");
    EXPECT_EQ(of_a.getFullName(), "/b/in_b/of_a");
    EXPECT_THAT(thrown_text([&] { of_a.getChild("of_b"); }), HasSubstr("/b/in_b/of_a/of_b of /b would contain itself"));
    const IObject in_b = a.getChild("of_b").getChild("in_b");
    EXPECT_THAT(thrown_text([&] { in_b.getChild("of_a"); }), HasSubstr("would contain itself"));

    // Under a quiet policy the tree can be walked to its end, and the log tells what is missing.
    const IObject quiet_top(archive, kTop, QUIET);
    EXPECT_LT(count_objects(quiet_top), 100u);
    EXPECT_THAT(quiet_top.getErrorHandler().getErrorLog(), HasSubstr("Instance /ping of /pong"));
}

TEST(Instance, ALongChainIsFollowedAndAnExplodingOneIsCut)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OObject top = archive.getTop(), end(top, "i0");
        for (int i = 1; i <= 101; ++i)
            store_instance(top, "i" + std::to_string(i), "/i" + std::to_string(i - 1));
        // Each step of a path of 40 is an instance of the next object, whose path has 40 such steps.
        for (int level = 0; level < 8; ++level) {
            const std::string next = "/e" + std::to_string(level + 1);
            OObject e(top, "e" + std::to_string(level));
            std::string path = next;
            for (int i = 0; i < 40; ++i)
                path += "/s";
            store_instance(e, "s", path);
        }
        OObject(top, "e8");
    }
    IArchive archive(ReadArchive(), file.path());
    EXPECT_EQ(archive.getTop().getChild("i100").getHeader().getFullName(), "/i0");
    EXPECT_THAT(thrown_text([&] { archive.getTop().getChild("i101"); }),
                HasSubstr("leads through more than 100 instances, or in a circle"));
    EXPECT_NE(thrown_text([&] { archive.getTop().getChild("e0").getChild("s"); }), "");
}

} // namespace
} // namespace abc_tests
