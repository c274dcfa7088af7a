/// Every hostile archive that is known, read in every way there is: an error or a sound part, in bounded time.
///
/// VO_WRITE_CORPUS=1 in the environment writes the files of the shapes anew, after a generator was changed.
#include "support/archive_walk.h"
#include "support/processor_clock.h"
#include "support/reader_run.h"
#include "support/scenes.h"
#include "support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace vo_fuzz;

namespace {

namespace fs = std::filesystem;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(__OPTIMIZE__)
constexpr double most_seconds = 10.0; // for all ways of reading together, in a program several times as slow
#else
constexpr double most_seconds = 1.0;
#endif

std::string read_file(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<fs::path> corpus_files(const std::string& folder)
{
    std::vector<fs::path> files;
    if (fs::exists(fs::path(VO_CORPUS_DIR) / folder))
        for (const auto& entry : fs::directory_iterator(fs::path(VO_CORPUS_DIR) / folder))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// Reads in all ways; the report of the readers.
ReaderReport replay(const std::string& name, const std::string& bytes)
{
    const ProcessorClock clock;
    walk_bytes(bytes, true);
    const ReaderReport report = run_readers_on_bytes(bytes);
    EXPECT_EQ(report.broken, std::set<std::string>()) << name;
    const ReaderReport layered = run_readers_on_layers({layer_of_scene(1), bytes, layer_of_scene(2)});
    EXPECT_EQ(layered.broken, std::set<std::string>()) << name << ", as a layer";
    EXPECT_LT(clock.seconds(), most_seconds) << name;
    return report;
}

void replay_shapes(const std::vector<Shape>& shapes)
{
    for (const Shape& shape : shapes) {
        const ReaderReport report = replay(shape.name, shape.bytes);
        EXPECT_EQ(report.opened, shape.opening == Shape::OPENS) << shape.name;
    }
}

} // namespace

TEST(Replay, ContainerShapes)
{
    replay_shapes(container_shapes());
}

TEST(Replay, HeaderShapes)
{
    replay_shapes(header_shapes());
}

TEST(Replay, ValueShapes)
{
    replay_shapes(value_shapes());
}

TEST(Replay, WhatFuzzersFound)
{
    for (const fs::path& path : corpus_files("found"))
        replay(path.filename(), read_file(path));
}

#ifdef ALEMBIC_WITH_HDF5
TEST(Replay, SoundHdf5Archives)
{
    const std::vector<fs::path> files = corpus_files("hdf5");
    EXPECT_EQ(files.size(), 4u);
    for (const fs::path& path : files)
        EXPECT_TRUE(replay(path.filename(), read_file(path)).opened) << path.filename();
}
#endif

TEST(Replay, ObjectsNestedAMillionTimes)
{
    const std::string bytes = a_million_objects_deep();
    EXPECT_EQ(replay("a million objects", bytes).broken, std::set<std::string>());
}

TEST(Replay, CompoundsNestedAMillionTimes)
{
    const std::string bytes = a_million_compounds_deep();
    EXPECT_EQ(replay("a million compounds", bytes).broken, std::set<std::string>());
}

TEST(Corpus, HoldsEveryShapeAsItsGeneratorMakesIt)
{
    const fs::path folder = fs::path(VO_CORPUS_DIR) / "shapes";
    if (std::getenv("VO_WRITE_CORPUS")) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        for (const Shape& shape : all_shapes())
            std::ofstream(folder / (shape.name + ".abc"), std::ios::binary) << shape.bytes;
    }
    std::size_t count = 0;
    for (const Shape& shape : all_shapes()) {
        EXPECT_TRUE(read_file(folder / (shape.name + ".abc")) == shape.bytes) << shape.name;
        ++count;
    }
    EXPECT_EQ(corpus_files("shapes").size(), count) << "each shape has a name of its own, and there are no other files";
}
