/// The tools of the other tests: a sound archive is read without an error, taken apart and put together as it was.
#include "support/archive_walk.h"
#include "support/container_tree.h"
#include "support/reader_run.h"
#include "support/scenes.h"
#include "support/stored_headers.h"

#include <gtest/gtest.h>

using namespace vo_fuzz;

TEST(Scenes, AreSoundAndAlwaysTheSame)
{
    for (const std::string& scene : {small_scene(), full_scene(), layer_of_scene(1), layer_of_scene(2)}) {
        const WalkReport report = walk_bytes(scene);
        EXPECT_EQ(report.errors, std::set<std::string>());
        EXPECT_GT(report.samples, 20u);
        const ReaderReport readers = run_readers_on_bytes(scene);
        EXPECT_TRUE(readers.opened);
        EXPECT_GT(readers.successes, 20u);
        EXPECT_EQ(readers.errors, std::set<std::string>());
        EXPECT_EQ(readers.broken, std::set<std::string>());
        EXPECT_EQ(readers.messages, std::vector<std::string>());
    }
    EXPECT_EQ(small_scene(), small_scene());
    EXPECT_LT(small_scene().size(), 5000u);
    EXPECT_EQ(full_scene(), full_scene());
}

TEST(ContainerTree, TakenApartAndPutTogetherReadsTheSame)
{
    const std::string scene = full_scene();
    EXPECT_EQ(ContainerTree(scene).file(), scene) << "the scene came out of a tree itself";
    ArchiveTree tree(scene);
    tree.edit_header("/root/mesh", ".geom/P", [](StoredProperty&) {});
    tree.edit_children("/root", [](std::vector<StoredObject>&) {});
    EXPECT_NE(tree.file(), scene) << "headers with wider numbers";
    const WalkReport before = walk_bytes(scene), after = walk_bytes(tree.file());
    EXPECT_EQ(after.errors, std::set<std::string>());
    EXPECT_EQ(after.samples, before.samples);
}
