/// The Ogawa writer: requests it refuses, and targets that fail.
#include "core/ogawa/limits.h"
#include "ogawa_writing.h"
#include "support/limited_stream.h"
#include "support/scratch_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

using Alembic::AbcCoreOgawa::WriteArchive;
using Alembic::Util::Exception;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST(OgawaWriter, WrongRequestsAreRefusedAndLeaveNoTrace)
{
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        const auto object = top->createChild(AbcA::ObjectHeader("o", AbcA::MetaData()));
        const auto child = [&](const std::string& name, const AbcA::MetaData& metadata) {
            return error_of([&] { object->createChild(AbcA::ObjectHeader(name, metadata)); });
        };
        EXPECT_EQ(child("x", AbcA::MetaData()), "");
        EXPECT_EQ(child("x", AbcA::MetaData()), "Already have an Object named: x");
        EXPECT_EQ(child("", AbcA::MetaData()), "Object not given a name, parent is: /o");
        EXPECT_EQ(child("a/b", AbcA::MetaData()), "Object has illegal name: a/b");
        AbcA::MetaData bad_metadata;
        bad_metadata.set("key", "a;b");
        EXPECT_THAT(child("y", bad_metadata), StartsWith("TokenMap::get: Token-Value pair "));

        const auto properties = object->getProperties();
        const auto property = [&](const std::string& name, const AbcA::MetaData& metadata, const AbcA::DataType& type,
                                  std::uint32_t sampling) {
            return error_of([&] { properties->createScalarProperty(name, metadata, type, sampling); });
        };
        EXPECT_EQ(property("p", AbcA::MetaData(), int_type, 0), "");
        EXPECT_EQ(property("p", AbcA::MetaData(), int_type, 0), "Already have a property named: p");
        EXPECT_EQ(property("", AbcA::MetaData(), int_type, 0), "Invalid name");
        EXPECT_EQ(property("a/b", AbcA::MetaData(), int_type, 0), "Invalid name");
        EXPECT_THAT(property("q", bad_metadata, int_type, 0), StartsWith("TokenMap::get: Token-Value pair "));
        EXPECT_EQ(property("q", AbcA::MetaData(), int_type, 7), "Invalid index provided to getTimeSampling.");
        for (const AbcA::DataType& type :
             {AbcA::DataType(), AbcA::DataType(AbcA::kFloat32POD, 0), AbcA::DataType(AbcA::kNumPlainOldDataTypes, 1)}) {
            EXPECT_EQ(property("q", AbcA::MetaData(), type, 0), "createScalarProperty, illegal DataType provided.");
            EXPECT_EQ(error_of([&] { properties->createArrayProperty("q", AbcA::MetaData(), type, 0); }),
                      "createArrayProperty, illegal DataType provided.");
        }

        EXPECT_EQ(error_of([&] { object->getChildHeader(5); }), "Out of range index in OwData::getChildHeader: 5");
        EXPECT_EQ(error_of([&] { properties->getPropertyHeader(9); }),
                  "Out of range index in CpwData::getPropertyHeader: 9");
    });
    ASSERT_TRUE(archive.is_complete());
    std::vector<std::string> names;
    for (const RawProperty& property : archive.properties(archive.compound({0}))) {
        names.push_back(property.name);
        EXPECT_EQ(property.sample_count, 0u);
    }
    EXPECT_THAT(names, ElementsAre("p"));
    EXPECT_EQ(archive.object({0}).size(), 3u);
}

TEST(OgawaWriter, WrongSamplesAreRefusedAndAppendNothing)
{
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        const auto properties = top->getProperties();
        const auto strings = properties->createArrayProperty("s", AbcA::MetaData(), string_type, 0);
        const std::vector<std::string> with_zero = {"fine", std::string("a\0b", 3)};
        EXPECT_EQ(error_of([&] { strings->setFromPreviousSample(); }),
                  "Can't set from previous sample before any samples have been written");
        EXPECT_THAT(error_of([&] { strings->setSample(array_of(with_zero, string_type)); }),
                    StartsWith("Illegal NULL character found in string data "));
        const std::vector<std::wstring> wide_with_zero = {std::wstring(1, L'\0')};
        EXPECT_THAT(error_of([&] {
                        properties->createArrayProperty("w", AbcA::MetaData(), wide_string_type, 0)
                            ->setSample(array_of(wide_with_zero, wide_string_type));
                    }),
                    StartsWith("Illegal NULL character found in wstring data "));
        EXPECT_EQ(error_of([&] { strings->setSample(array_of(std::vector<std::int32_t>{1}, int_type)); }),
                  "DataType on ArraySample iSamp: int32_t, does not match the DataType of the Array property: string");
        EXPECT_EQ(error_of([&] { strings->setSample(AbcA::ArraySample(nullptr, string_type, AbcA::Dimensions(2))); }),
                  "Sample of property 's' has a size but no data");
        AbcA::Dimensions impossible(std::uint64_t(1) << 62);
        EXPECT_THAT(error_of([&] { strings->setSample(AbcA::ArraySample(&with_zero, string_type, impossible)); }),
                    StartsWith("Sample of property 's' has an impossible size: "));
        AbcA::Dimensions huge(std::uint64_t(1) << 62);
        huge.setRank(2);
        huge[1] = 16;
        EXPECT_THAT(error_of([&] { strings->setSample(AbcA::ArraySample(&with_zero, string_type, huge)); }),
                    StartsWith("Sample of property 's' has impossible dimensions: "));
        EXPECT_EQ(error_of([&] { properties->createScalarProperty("n", AbcA::MetaData(), int_type, 0)->setSample(0); }),
                  "Sample of property 'n' has a size but no data");
    });
    ASSERT_TRUE(archive.is_complete());
    const std::vector<RawProperty> properties = archive.properties(archive.compound({}));
    EXPECT_EQ(properties.size(), 3u);
    for (const RawProperty& property : properties)
        EXPECT_EQ(property.sample_count, 0u) << property.name;
}

TEST(OgawaWriter, NothingIsNestedDeeperThanReadersGo)
{
    using Alembic::AbcCoreOgawa::max_depth;
    std::stringstream stream;
    {
        AbcA::ObjectWriterPtr object = WriteArchive()(&stream, AbcA::MetaData())->getTop();
        AbcA::CompoundPropertyWriterPtr compound = object->getProperties();
        for (std::uint32_t i = 0; i < max_depth; ++i) {
            object = object->createChild(AbcA::ObjectHeader("o", AbcA::MetaData()));
            compound = compound->createCompoundProperty("c", AbcA::MetaData());
        }
        EXPECT_THAT(
            error_of([&] { object->createChild(AbcA::ObjectHeader("p", AbcA::MetaData())); }),
            StartsWith("Object 'p' would be nested deeper than 1200 objects, which readers refuse, parent is: /o"));
        EXPECT_THAT(
            error_of([&] { compound->createCompoundProperty("p", AbcA::MetaData()); }),
            StartsWith("Compound property 'p' would be nested deeper than 1200 compounds, which readers refuse"));
        compound->createScalarProperty("deepest", AbcA::MetaData(), int_type, 0);
    }
    AbcA::ObjectReaderPtr object = Alembic::AbcCoreOgawa::ReadArchive({&stream})("stream")->getTop();
    AbcA::CompoundPropertyReaderPtr compound = object->getProperties();
    std::uint32_t depth = 0;
    for (; object->getNumChildren() == 1; ++depth) {
        object = object->getChild(0);
        compound = compound->getCompoundProperty("c");
    }
    EXPECT_EQ(depth, max_depth) << "all that was written can be read";
    EXPECT_TRUE(compound->getPropertyHeader("deepest"));
}

TEST(OgawaWriter, WhatCannotBeWrittenDoesNotCostTheOldFile)
{
    AbcA::MetaData bad_metadata;
    bad_metadata.set("a=b", "c");
    ScratchFile file("kept.abc");
    std::ofstream(file.path()) << "precious";
    EXPECT_THROW(WriteArchive()(file.path(), bad_metadata), Exception);
    EXPECT_EQ(file.bytes(), "precious");
}

TEST(OgawaWriter, WhereverWritingFailsTheArchiveIsNeverMarkedComplete)
{
    const auto write = [](std::ostream& stream) {
        const auto top = WriteArchive()(&stream, AbcA::MetaData())->getTop();
        for (int i = 0; i < 20; ++i) {
            const auto child = top->createChild(AbcA::ObjectHeader("o" + std::to_string(i), AbcA::MetaData()));
            const auto array = child->getProperties()->createArrayProperty("a", AbcA::MetaData(), int_type, 0);
            std::vector<std::int32_t> values(20000 * (i % 3 + 1), i);
            for (int sample = 0; sample < 3; ++sample) {
                values[0] = sample;
                array->setSample(array_of(values, int_type));
            }
        }
    };
    std::stringstream whole;
    write(whole);
    ASSERT_TRUE(RawArchive(whole.str()).is_complete());
    const std::size_t size = whole.str().size();
    std::mt19937 random(5);
    testing::internal::CaptureStderr();
    for (int round = 0; round < 40; ++round) {
        const std::size_t capacity = round < 20 ? random() % size : size - 1 - random() % 4000;
        LimitedBuffer buffer(capacity);
        std::ostream stream(&buffer);
        const std::string error = error_of([&] { write(stream); });
        const std::string bytes = buffer.str();
        if (round < 20) {
            EXPECT_THAT(error, HasSubstr("Could not write to the given ostream")) << capacity;
        }
        EXPECT_FALSE(bytes.size() > 16 && (bytes[5] != 0 || bytes.substr(8, 8) != std::string(8, '\0'))) << capacity;
    }
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("an archive is not complete"))
        << "a failure at the very end has nowhere else to go";
}

TEST(OgawaWriter, AfterAFailureEveryCallFails)
{
    LimitedBuffer buffer(100000);
    std::ostream stream(&buffer);
    const auto archive = WriteArchive()(&stream, AbcA::MetaData());
    const auto array = archive->getTop()->getProperties()->createArrayProperty("a", AbcA::MetaData(), int_type, 0);
    const std::vector<std::int32_t> large(50000);
    const std::vector<std::int32_t> empty;
    array->setSample(array_of(empty, int_type));
    const std::string error = error_of([&] { array->setSample(array_of(large, int_type)); });
    EXPECT_THAT(error, StartsWith("Could not write"));
    EXPECT_EQ(error_of([&] { array->setSample(array_of(empty, int_type)); }), error);
    EXPECT_EQ(error_of([&] { array->setFromPreviousSample(); }), error);
    EXPECT_EQ(error_of([&] { archive->getTop()->createChild(AbcA::ObjectHeader("x", AbcA::MetaData())); }), error);
    EXPECT_EQ(error_of([&] { archive->addTimeSampling(AbcA::TimeSampling(2.0, 0.0)); }), error);
    EXPECT_EQ(array->getNumSamples(), 1u);
}

TEST(OgawaWriter, TargetsThatCannotBeUsedAreRefused)
{
    const WriteArchive write;
    EXPECT_EQ(error_of([&] { write("no_such_folder/x.abc", AbcA::MetaData()); }),
              "Could not open file: no_such_folder/x.abc");
    EXPECT_THAT(error_of([&] { write("/dev/full", AbcA::MetaData()); }), HasSubstr("/dev/full (No space left"));
    EXPECT_EQ(error_of([&] { write(static_cast<std::ostream*>(nullptr), AbcA::MetaData()); }),
              "Could not use the given ostream.");
}
