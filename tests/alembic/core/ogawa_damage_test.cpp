/// Damaged Ogawa archives: cut, with bits flipped, or made to mislead.
#include "archive_bytes.h"
#include "support/scratch_file.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <random>
#include <thread>

using namespace vo_test;
using Alembic::AbcCoreOgawa::ReadArchive;
using Alembic::AbcCoreOgawa::WriteArchive;

namespace {

void write_properties(AbcA::CompoundPropertyWriter& compound, const AbcA::MetaData& metadata, int seed)
{
    const AbcA::DataType string(AbcA::kStringPOD);
    const AbcA::DataType point(AbcA::kFloat32POD, 3);
    const auto number = compound.createScalarProperty("number", metadata, AbcA::DataType(AbcA::kInt32POD, 2), 1);
    const auto points = compound.createArrayProperty("points", metadata, point, 1);
    for (int i = 0; i < 4; ++i) {
        const std::int32_t values[2] = {seed, i / 2};
        number->setSample(values);
        const std::vector<float> floats(6, float(i / 3 + seed));
        points->setSample(AbcA::ArraySample(floats.data(), point, AbcA::Dimensions(2)));
    }
    const std::string word = "word" + std::to_string(seed);
    compound.createScalarProperty("word", metadata, string, 0)->setSample(&word);
    const std::string words[3] = {"one", "", word};
    AbcA::Dimensions table;
    table.setRank(2);
    table[0] = 3;
    table[1] = 1;
    compound.createArrayProperty("words", metadata, string, 0)->setSample(AbcA::ArraySample(words, string, table));
    const std::wstring wide = L"wide";
    compound.createScalarProperty("wide", metadata, AbcA::DataType(AbcA::kWstringPOD), 0)->setSample(&wide);
    compound.createArrayProperty("none", metadata, point, 0);
    compound.createCompoundProperty("inner", metadata)->createCompoundProperty("innermost", AbcA::MetaData());
}

/// The bytes of an archive with every kind of property; `width` children, each with one child of its own.
std::string write_archive(int width)
{
    std::ostringstream stream;
    {
        AbcA::MetaData metadata;
        metadata.set("interpretation", "vector");
        const auto archive = WriteArchive()(&stream, metadata);
        archive->addTimeSampling(AbcA::TimeSampling(1.0 / 24.0, 0.5));
        const auto top = archive->getTop();
        for (int i = 0; i < width; ++i) {
            const auto child = top->createChild(AbcA::ObjectHeader("child" + std::to_string(i), metadata));
            write_properties(*child->getProperties(), metadata, i);
            metadata.set("long", std::string(300, 'x')); // too long for the table of metadata
            child->createChild(AbcA::ObjectHeader("leaf", metadata));
        }
    }
    return stream.str();
}

std::string describe_bytes(const std::string& bytes)
{
    std::string text;
    const std::string error = error_of([&] { text = describe(OpenBytes(bytes).archive->getTop()); });
    return text + error;
}

} // namespace

TEST(OgawaDamage, EveryFlippedBitCostsAnErrorAtMost)
{
    const std::string sound = write_archive(1);
    const std::string text = describe_bytes(sound);
    std::size_t harmless = 0;
    std::size_t longest = 0;
    for (std::size_t bit = 0; bit < sound.size() * 8; ++bit) {
        std::string damaged = sound;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        const std::string damaged_text = describe_bytes(damaged);
        harmless += damaged_text == text;
        longest = std::max(longest, damaged_text.size());
    }
    // What a reader does not look at (unused bits, other metadata of equal effect) is a small part of the file.
    EXPECT_LT(harmless, sound.size() * 8 / 5);
    EXPECT_LT(longest, text.size() * 20) << "damage made the archive grow";
}

TEST(OgawaDamage, OverwrittenWordsCostAnErrorAtMost)
{
    const std::string sound = write_archive(2);
    const std::string text = describe_bytes(sound);
    const unsigned seed = 20261;
    std::mt19937_64 random(seed);
    for (int round = 0; round < 4000; ++round) {
        std::string damaged = sound;
        for (int i = 0; i < 3; ++i) {
            // Whole words: positions of other blocks, sizes just above the file's, all ones, any number.
            const std::uint64_t words[] = {random() % sound.size(),
                                           sound.size() + random() % 16 - 8,
                                           ~0ull,
                                           random(),
                                           data_entry_bit | random() % sound.size(),
                                           0};
            const std::uint64_t word = words[random() % 6];
            std::memcpy(&damaged[random() % (damaged.size() - 8)], &word, 8);
        }
        EXPECT_LT(describe_bytes(damaged).size(), text.size() * 40) << "seed " << seed << ", round " << round;
    }
}

TEST(OgawaReading, FileAndStreamsGiveTheSame)
{
    const std::string bytes = write_archive(150); // more than the buffer keeps whole
    ASSERT_GT(bytes.size(), 100000u);
    const ScratchFile file("large.abc");
    std::ofstream(file.path(), std::ios::binary) << bytes;
    const std::string text = describe(ReadArchive()(file.path())->getTop());
    EXPECT_EQ(text.find("TWO SHAPES"), std::string::npos);
    EXPECT_EQ(text.find("LOST"), std::string::npos);

    EXPECT_EQ(describe_bytes(bytes), text);
    EXPECT_EQ(describe(ReadArchive(8, false)(file.path(), nullptr)->getTop()), text);
    std::istringstream first("skipped" + bytes);
    std::istringstream second(bytes);
    first.seekg(7);
    EXPECT_EQ(describe(ReadArchive({&first, &second})("streams")->getTop()), text);
}

TEST(OgawaReading, ThreadsThatShareAnArchiveReadTheSame)
{
    const std::string bytes = write_archive(150);
    const ScratchFile file("shared.abc");
    std::ofstream(file.path(), std::ios::binary) << bytes;
    const std::string text = describe_bytes(bytes);
    for (int round = 0; round < 3; ++round) {
        const AbcA::ArchiveReaderPtr archive = ReadArchive()(file.path());
        std::atomic<int> wrong{0};
        std::atomic<int> waiting{4};
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&] {
                --waiting;
                while (waiting > 0) {
                } // all at once: they race for every node and table
                wrong += describe(archive->getTop()) != text;
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(wrong, 0);
    }
}

TEST(OgawaReading, WhatWasHandedOutKeepsTheArchiveAlive)
{
    const std::string bytes = write_archive(1);
    std::istringstream stream(bytes);
    AbcA::ArrayPropertyReaderPtr points;
    AbcA::ArraySamplePtr sample;
    {
        const AbcA::ArchiveReaderPtr archive = ReadArchive({&stream})("stream");
        const AbcA::ObjectReaderPtr child = archive->getTop()->getChild("child0");
        EXPECT_EQ(child.get(), archive->getTop()->getChild(0).get()) << "one node for each object";
        EXPECT_EQ(child->getParent().get(), archive->getTop().get());
        points = child->getProperties()->getArrayProperty("points");
    }
    EXPECT_EQ(points->getObject()->getFullName(), "/child0");
    EXPECT_EQ(points->getParent()->asCompoundPtr(), points->getParent());
    EXPECT_EQ(points->getParent()->getParent(), nullptr);
    EXPECT_EQ(points->getObject()->getArchive()->getName(), "stream");
    points->getSample(3, sample);
    points.reset();
    EXPECT_EQ(static_cast<const float*>(sample->getData())[5], 1.0f);
}
