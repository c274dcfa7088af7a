/// Layered archives: merged as the rules say, looked up by name and index, read from several threads.
#include "layer_model.h"

#include "support/scratch_file.h"

#include <Alembic/AbcCoreLayer/Read.h>
#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <gtest/gtest.h>

#include <thread>

namespace AbcA = Alembic::AbcCoreAbstract;
using namespace layer_model;
using Alembic::AbcCoreLayer::ArchiveReaderPtrs;

namespace {

/// Written scenes, weakest first, and the archive made of them.
class Layers
{
public:
    explicit Layers(std::vector<Object> scenes)
        : scenes_(std::move(scenes))
        , folder_("layer")
    {
        ArchiveReaderPtrs readers;
        for (std::size_t i = 0; i < scenes_.size(); ++i) {
            paths_.push_back(folder_.path() + std::to_string(i));
            write_scene(paths_.back(), scenes_[i]);
            readers.push_back(Alembic::AbcCoreOgawa::ReadArchive()(paths_.back()));
        }
        archive_ = Alembic::AbcCoreLayer::ReadArchive()(readers);
    }

    const std::vector<Object>& scenes() const { return scenes_; }
    const std::string& path(std::size_t i) const { return paths_[i]; }
    const AbcA::ArchiveReaderPtr& archive() const { return archive_; }

private:
    std::vector<Object> scenes_;
    ScratchFile folder_;
    std::vector<std::string> paths_;
    AbcA::ArchiveReaderPtr archive_;
};

Object object(const std::string& name, Fields metadata = {}, std::vector<Object> children = {})
{
    return Object{name, std::move(metadata), {}, std::move(children)};
}

std::string names_of_children(const AbcA::ObjectReaderPtr& parent)
{
    std::string names;
    for (std::size_t i = 0; i < parent->getNumChildren(); ++i)
        names += parent->getChildHeader(i).getName() + " ";
    return names;
}

} // namespace

TEST(Layers, AreMergedAsTheModelDoes)
{
    const unsigned seed = 987;
    std::mt19937 random(seed);
    for (int round = 0; round < 150; ++round) {
        std::vector<Object> scenes;
        for (std::size_t count = 1 + random() % 4; count > 0; --count)
            scenes.push_back(random_scene(random));
        const Layers layers(scenes);
        ASSERT_EQ(describe(layers.archive()->getTop()), describe_merged(scenes))
            << "seed " << seed << ", round " << round;
    }
}

TEST(Layers, TheArchiveSpeaksForAllLayers)
{
    const Layers layers({object("", {{"k", "weak"}, {"only", "1"}}), object("", {{"k", "strong"}})});
    AbcA::ArchiveReader& archive = *layers.archive();
    EXPECT_EQ(archive.getName(), layers.path(0) + "," + layers.path(1));
    EXPECT_EQ(archive.getMetaData().get("k"), "weak , strong");
    EXPECT_EQ(archive.getMetaData().get("only"), "1");
    EXPECT_EQ(archive.getArchiveVersion(), 10812);

    const AbcA::ObjectReaderPtr top = archive.getTop();
    EXPECT_EQ(top->getName(), "");
    EXPECT_EQ(top->getFullName(), "");
    EXPECT_FALSE(top->getParent());
    EXPECT_EQ(top->getArchive(), layers.archive());
    EXPECT_TRUE(top->getProperties()->getMetaData().matchesExactly(archive.getMetaData()));

    ASSERT_EQ(archive.getNumTimeSamplings(), 2u); // each layer brings its own first one
    EXPECT_NE(archive.getTimeSampling(0), archive.getTimeSampling(1));
    EXPECT_FALSE(archive.getTimeSampling(2));
    EXPECT_EQ(archive.getMaxNumSamplesForTimeSamplingIndex(2), 0);
}

TEST(Layers, AStrongerLayerBringsAPrunedObjectBackAtTheEnd)
{
    const Object weak = object("", {}, {object("a"), object("b"), object("c")});
    const Object pruning = object("", {}, {object("a", {{"prune", "1"}, {"replace", "1"}})});
    const Object strong = object("", {}, {object("a", {{"new", "1"}})});
    const Layers two({weak, pruning}), three({weak, pruning, strong});
    EXPECT_EQ(names_of_children(two.archive()->getTop()), "b c ");
    EXPECT_FALSE(two.archive()->getTop()->getChild("a"));
    EXPECT_EQ(names_of_children(three.archive()->getTop()), "b c a ");
    EXPECT_EQ(three.archive()->getTop()->getChild("a")->getMetaData().serialize(), "new=1");
}

TEST(Layers, ThePruneAndReplaceMarksAreMetadata)
{
    AbcA::MetaData metadata;
    Alembic::AbcCoreLayer::SetPrune(metadata, true);
    Alembic::AbcCoreLayer::SetReplace(metadata, true);
    EXPECT_EQ(metadata.serialize(), "prune=1;replace=1");
    Alembic::AbcCoreLayer::SetPrune(metadata, false);
    EXPECT_EQ(metadata.serialize(), "replace=1");
}

TEST(Layers, HashesAreThoseOfAnObjectThatOneLayerHas)
{
    const Layers layers({object("", {}, {object("both"), object("one")}), object("", {}, {object("both")})});
    const AbcA::ObjectReaderPtr top = layers.archive()->getTop();
    AbcA::Digest digest, alone;
    EXPECT_FALSE(top->getPropertiesHash(digest));
    EXPECT_FALSE(top->getChild("both")->getPropertiesHash(digest));
    ASSERT_TRUE(top->getChild("one")->getPropertiesHash(digest));
    const AbcA::ArchiveReaderPtr weak = Alembic::AbcCoreOgawa::ReadArchive()(layers.path(0));
    weak->getTop()->getChild("one")->getPropertiesHash(alone);
    EXPECT_EQ(digest, alone);
}

TEST(Layers, WrongRequestsAreRefused)
{
    Object scene = object("", {}, {object("a")});
    scene.properties = {{"n", {}, AbcA::kScalarProperty, 1, {}}};
    const Layers layers({scene, scene});
    const AbcA::ObjectReaderPtr top = layers.archive()->getTop();
    EXPECT_FALSE(top->getChild("absent"));
    EXPECT_FALSE(top->getChildHeader("absent"));
    EXPECT_FALSE(top->getChild(1));
    EXPECT_THROW(top->getChildHeader(1), AbcA::Exception);

    const AbcA::CompoundPropertyReaderPtr properties = top->getProperties();
    EXPECT_FALSE(properties->getProperty("absent"));
    EXPECT_FALSE(properties->getScalarProperty("absent"));
    EXPECT_THROW(properties->getPropertyHeader(1), AbcA::Exception);
    EXPECT_THROW(properties->getArrayProperty("n"), AbcA::Exception);
    EXPECT_THROW(properties->getCompoundProperty("n"), AbcA::Exception);

    ArchiveReaderPtrs none, null(1);
    EXPECT_THROW(Alembic::AbcCoreLayer::ReadArchive()(none), AbcA::Exception);
    EXPECT_THROW(Alembic::AbcCoreLayer::ReadArchive()(null), AbcA::Exception);
}

TEST(Layers, PartsKeepTheArchive)
{
    AbcA::CompoundPropertyReaderPtr inner;
    AbcA::ObjectReaderPtr child;
    {
        Object scene = object("", {}, {object("a", {}, {object("b")})});
        scene.properties = {{"c", {}, AbcA::kCompoundProperty, 0, {{"n", {}, AbcA::kScalarProperty, 7, {}}}}};
        Layers layers({scene, scene});
        inner = layers.archive()->getTop()->getProperties()->getCompoundProperty("c");
        child = layers.archive()->getTop()->getChild("a");
    }
    std::int32_t value = 0;
    inner->getScalarProperty("n")->getSample(0, &value);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(inner->getParent()->getObject()->getFullName(), "");
    EXPECT_EQ(child->getChild("b")->getFullName(), "/a/b");
    EXPECT_TRUE(child->getArchive());
}

// Threads that walk a fresh archive together meet at every object; all must see the same tree.
TEST(Layers, AreReadFromSeveralThreads)
{
    const unsigned seed = 5150;
    std::mt19937 random(seed);
    for (int round = 0; round < 20; ++round) {
        const Layers layers({random_scene(random), random_scene(random), random_scene(random)});
        const std::string expected = describe_merged(layers.scenes());
        std::vector<std::string> seen(4);
        std::vector<std::thread> threads;
        for (std::string& text : seen)
            threads.emplace_back([&] { text = describe(layers.archive()->getTop()); });
        for (std::thread& thread : threads)
            thread.join();
        for (const std::string& text : seen)
            ASSERT_EQ(text, expected) << "seed " << seed << ", round " << round;
    }
}
