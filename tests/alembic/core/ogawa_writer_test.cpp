/// The Ogawa writer: stored bytes, sharing, and handles released in any order.
#include "ogawa_writing.h"

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

using Alembic::AbcCoreOgawa::WriteArchive;
using Alembic::Util::Exception;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

AbcA::MetaData metadata_of(const std::string& text)
{
    AbcA::MetaData metadata;
    metadata.deserialize(text);
    return metadata;
}

std::string from_hex(const std::string& hex)
{
    std::string bytes;
    std::string digits;
    for (const char c : hex) {
        if (c != ' ') digits += c;
        if (digits.size() < 2) continue;
        bytes += char(std::stoi(digits, nullptr, 16));
        digits.clear();
    }
    return bytes;
}

std::string number_bytes(std::uint64_t number)
{
    return std::string(reinterpret_cast<const char*>(&number), sizeof number);
}

} // namespace

TEST(OgawaWriter, EveryByteOfASmallArchive)
{
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        const auto object = top->createChild(AbcA::ObjectHeader("o", AbcA::MetaData()));
        const auto properties = object->getProperties();
        const auto i = properties->createScalarProperty("i", AbcA::MetaData(), int_type, 0);
        for (const std::int32_t value : {7, 7, 9})
            i->setSample(&value);
        const auto v = properties->createArrayProperty("v", metadata_of("interpretation=vector"), point_type, 0);
        const std::vector<float> point = {1, 2, 3};
        v->setSample(array_of(point, point_type));
    });
    const std::string zeros = "00 00 00 00 00 00 00 ";
    const std::string head = from_hex(
        "04" + zeros + "00000000 04" + zeros + "3C2A0000 14" + zeros + "FB1D467EB669277FA55B582F5C2215D2 07000000 14" +
        zeros + "D3E3D855D050B118AEB77F0D29E42FE2 09000000 1C" + zeros +
        "573049C7FE2A734F94FD4C583B44E7D3 0000803F0000004000004040 02" + zeros +
        "6000000000000080 0000000000000080 02" + zeros + "2800000000000080 4400000000000080 20" + zeros +
        "238B260148559138AB4829EAA79608E6 00000000000000000000000000000000 10" + zeros +
        "61160000 03020201 69 A3381000 01 01 76 03" + zeros + "9C00000000000000 8400000000000000 DC00000000000080 02" +
        zeros + "F400000000000000 B400000000000080 26" + zeros +
        "01000000 6F 00 1909F56BFC062723C751E8B465EE728B F4CDFADCC948AE6A297DC545C73F7758 03" + zeros +
        "0000000000000000 1401000000000000 2C01000000000080");
    const std::string metadata = "_ai_AlembicVersion=" + AbcA::GetLibraryVersion();
    const std::string samplings = from_hex("03000000 000000000000F03F 01000000 0000000000000000");
    const std::string table = "\x15interpretation=vector";
    const std::uint64_t samplings_at = 0x17a + 8 + metadata.size();
    const std::uint64_t table_at = samplings_at + 8 + samplings.size();
    const std::uint64_t root_at = table_at + 8 + table.size();
    const std::uint64_t data = std::uint64_t(1) << 63;
    EXPECT_TRUE(archive.bytes() ==
                from_hex("4F67617761 FF 0001") + number_bytes(root_at) + head + number_bytes(metadata.size()) +
                    metadata + number_bytes(samplings.size()) + samplings + number_bytes(table.size()) + table +
                    number_bytes(6) + number_bytes(data | 0x10) + number_bytes(data | 0x1c) + number_bytes(0x15a) +
                    number_bytes(data | 0x17a) + number_bytes(data | samplings_at) + number_bytes(data | table_at));
}

TEST(OgawaWriter, RepeatsAreStoredAsChangedRanges)
{
    struct Case
    {
        const char* samples; ///< one letter per sample; '=' sets from the previous one
        std::uint32_t first, last;
        const char* stored;
        bool has_range;
    };
    const std::vector<Case> cases = {
        {"", 0, 0, "", false},
        {"A", 0, 0, "A", false},
        {"AAA", 0, 0, "A", false},
        {"ABC", 1, 2, "ABC", false},
        {"AAB", 2, 2, "AB", true},
        {"ABBB", 1, 1, "AB", true},
        {"AAABCCBBB", 3, 6, "ABCCB", true},
        {"A=B=C==", 2, 4, "ABBC", true},
        {"ABA", 1, 2, "ABA", false},
    };
    const RawArchive archive = written_by([&](const AbcA::ObjectWriterPtr& top) {
        for (const Case& c : cases) {
            const auto properties =
                top->createChild(AbcA::ObjectHeader(std::string("o") + c.samples, AbcA::MetaData()))->getProperties();
            const auto scalar = properties->createScalarProperty("s", AbcA::MetaData(), int_type, 0);
            const auto array = properties->createArrayProperty("a", AbcA::MetaData(), int_type, 0);
            for (const char letter : std::string(c.samples)) {
                if (letter == '=') {
                    scalar->setFromPreviousSample();
                    array->setFromPreviousSample();
                    continue;
                }
                const std::vector<std::int32_t> values = {letter, letter};
                scalar->setSample(values.data());
                array->setSample(array_of(values, int_type));
            }
            EXPECT_EQ(array->getNumSamples(), std::string(c.samples).size());
        }
    });
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const Case& c = cases[i];
        const auto compound = archive.compound({i});
        const auto headers = archive.properties(compound);
        for (std::size_t p = 0; p < 2; ++p) {
            SCOPED_TRACE(std::string(c.samples) + (p == 0 ? " scalar" : " array"));
            EXPECT_EQ(headers[p].sample_count, std::string(c.samples).size());
            EXPECT_EQ(headers[p].first_changed, c.first);
            EXPECT_EQ(headers[p].last_changed, c.last);
            EXPECT_EQ(headers[p].has_changed_range, c.has_range);
            std::string stored;
            const auto samples = archive.group(compound[p]);
            for (std::size_t k = 0; k < samples.size(); k += p + 1)
                stored += archive.data(samples[k])[16];
            EXPECT_EQ(stored, c.stored);
        }
    }
}

TEST(OgawaWriter, EqualSamplesShareOneBlock)
{
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        const auto properties = top->getProperties();
        const auto set = [&](const char* name, const AbcA::DataType& type, const AbcA::ArraySample& sample) {
            properties->createArrayProperty(name, AbcA::MetaData(), type, 0)->setSample(sample);
        };
        const std::vector<float> floats = {0, 0, 0, 0, 0, 0};
        const std::vector<std::int64_t> integers = {0, 0, 0};
        const std::vector<std::uint8_t> zero(1);
        const std::vector<std::string> strings(1);
        set("floats", AbcA::DataType(AbcA::kFloat32POD), array_of(floats, AbcA::DataType(AbcA::kFloat32POD)));
        set("points", point_type, array_of(floats, point_type));
        set("integers", AbcA::DataType(AbcA::kInt64POD), array_of(integers, AbcA::DataType(AbcA::kInt64POD)));
        set("zero", AbcA::DataType(AbcA::kUint8POD), array_of(zero, AbcA::DataType(AbcA::kUint8POD)));
        set("string", string_type, array_of(strings, string_type));
    });
    const auto compound = archive.compound({});
    std::vector<std::uint64_t> blocks;
    for (std::size_t i = 0; i < 5; ++i)
        blocks.push_back(archive.group(compound[i])[0]);
    EXPECT_EQ(blocks[0], blocks[1]) << "numbers are compared by their bytes";
    EXPECT_EQ(blocks[0], blocks[2]);
    EXPECT_EQ(archive.data(blocks[3]), archive.data(blocks[4])) << "a zero and an empty string look alike";
    EXPECT_NE(blocks[3], blocks[4]) << "but are never the same";
}

TEST(OgawaWriter, ManyDifferentSamplesAreAllFoundAgain)
{
    constexpr std::int32_t count = 5000;
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        for (const char* name : {"a", "b"}) {
            const auto property = top->getProperties()->createScalarProperty(name, AbcA::MetaData(), int_type, 0);
            for (std::int32_t i = 0; i < count; ++i)
                property->setSample(&i);
        }
    });
    const auto compound = archive.compound({});
    EXPECT_EQ(archive.group(compound[0]).size(), std::size_t(count));
    EXPECT_EQ(archive.group(compound[0]), archive.group(compound[1]));
    EXPECT_EQ(archive.properties(compound)[0].width, 2u) << "the number of samples needs two bytes";
}

TEST(OgawaWriter, WideStringsAreComparedByTheDigestOfTheirFirstQuarter)
{
    const std::vector<std::wstring> first = {L"abcd"}, alike = {L"abce"}, other = {L"bbcd"}, two = {L"ab", L"d"};
    const RawArchive archive = written_by([&](const AbcA::ObjectWriterPtr& top) {
        const auto array = top->getProperties()->createArrayProperty("w", AbcA::MetaData(), wide_string_type, 0);
        array->setSample(array_of(first, wide_string_type));
        array->setSample(array_of(alike, wide_string_type));
        array->setSample(array_of(other, wide_string_type));
        array->setSample(array_of(two, wide_string_type));
        array->setSample(array_of(std::vector<std::wstring>(), wide_string_type));
    });
    const auto compound = archive.compound({});
    const auto samples = archive.group(compound[0]);
    ASSERT_EQ(samples.size(), 8u) << "the second repeats the first";
    const std::string digest = from_hex("0c0b0e5b5c617fa37f24dddd25799d30");
    EXPECT_EQ(archive.data(samples[0]), digest + from_hex("61000000 62000000 63000000 64000000 00000000"));
    EXPECT_EQ(archive.data(samples[2]).substr(16), from_hex("62000000 62000000 63000000 64000000 00000000"));
    EXPECT_EQ(archive.data(samples[4]), digest + from_hex("61000000 62000000 00000000 64000000 00000000"))
        << "as many characters, but two strings";
    EXPECT_EQ(samples[6], std::uint64_t(1) << 63);
    EXPECT_EQ(archive.data(samples[1]), number_bytes(1)) << "strings always have their dimensions";
    EXPECT_EQ(archive.data(samples[7]), number_bytes(0));
}

TEST(OgawaWriter, DimensionsAreStoredFromRankTwoOnAndDoNotMakeAChange)
{
    const std::vector<std::int32_t> values = {1, 2, 3, 4, 5, 6};
    const auto shaped = [&](std::size_t count, std::vector<std::uint64_t> shape) {
        AbcA::Dimensions dimensions;
        dimensions.setRank(shape.size());
        std::copy(shape.begin(), shape.end(), dimensions.rootPtr());
        return AbcA::ArraySample(values.data() + 6 - count, int_type, dimensions);
    };
    const RawArchive archive = written_by([&](const AbcA::ObjectWriterPtr& top) {
        const auto array = top->getProperties()->createArrayProperty("a", AbcA::MetaData(), int_type, 0);
        array->setSample(shaped(6, {6}));
        array->setSample(shaped(4, {2, 2}));
        array->setSample(shaped(4, {1, 4})); // the same values: a repeat
        array->setSample(shaped(6, {3, 2}));
        array->setSample(shaped(0, {}));
        array->setSample(shaped(0, {0, 4}));
    });
    const auto compound = archive.compound({});
    const auto samples = archive.group(compound[0]);
    ASSERT_EQ(samples.size(), 10u);
    EXPECT_EQ(archive.data(samples[1]), "");
    EXPECT_EQ(archive.data(samples[3]), number_bytes(2) + number_bytes(2));
    EXPECT_EQ(samples[5], samples[3]) << "the repeat keeps the shape of the sample before";
    EXPECT_EQ(samples[0], samples[6]) << "the values themselves are shared";
    EXPECT_EQ(archive.data(samples[7]), number_bytes(3) + number_bytes(2));
    EXPECT_EQ(samples[8], std::uint64_t(1) << 63);
    EXPECT_EQ(archive.properties(compound)[0].last_changed, 4u) << "nothing has no shape";
    EXPECT_EQ(archive.properties(compound)[0].sample_count, 6u);
}

TEST(OgawaWriter, MetadataIsSharedUpTo254StringsOf255Bytes)
{
    const RawArchive archive = written_by([](const AbcA::ObjectWriterPtr& top) {
        const auto add = [&](const std::string& name, const std::string& value) {
            AbcA::MetaData metadata;
            metadata.set("k", value);
            top->getProperties()->createScalarProperty(name, metadata, int_type, 0);
        };
        add("longest", std::string(253, 'x'));
        add("too long", std::string(254, 'x'));
        for (int i = 0; i < 300; ++i)
            add("p" + std::to_string(i), std::to_string(i));
        add("again", "5");
        add("none", "");
        add(std::string(300, 'n'), "5");
    });
    const auto headers = archive.properties(archive.compound({}));
    ASSERT_EQ(headers.size(), 305u);
    EXPECT_EQ(headers[0].metadata_index, 1u);
    EXPECT_EQ(headers[1].metadata_index, 255u);
    EXPECT_EQ(headers[1].metadata, "k=" + std::string(254, 'x'));
    EXPECT_EQ(headers[1].width, 2u) << "256 does not fit a byte";
    EXPECT_EQ(headers[2].metadata_index, 2u);
    EXPECT_EQ(headers[2 + 252].metadata_index, 254u);
    EXPECT_EQ(headers[2 + 253].metadata_index, 255u);
    EXPECT_EQ(headers[2 + 253].metadata, "k=253");
    EXPECT_EQ(headers[302].metadata_index, headers[2 + 5].metadata_index);
    EXPECT_EQ(headers[303].metadata_index, 0u);
    EXPECT_EQ(headers[304].name, std::string(300, 'n'));
    const std::string table = archive.data(archive.root()[5]);
    EXPECT_EQ(table.substr(0, 3), "\xffk=");
}

TEST(OgawaWriter, TimeSamplingsAreKeptOnceWithTheLargestNumberOfSamples)
{
    std::stringstream stream;
    {
        const AbcA::ArchiveWriterPtr archive = WriteArchive()(&stream, AbcA::MetaData());
        const AbcA::TimeSampling acyclic(AbcA::TimeSamplingType(AbcA::TimeSamplingType::kAcyclic), {0.0, 0.5, 2.0});
        EXPECT_EQ(archive->addTimeSampling(AbcA::TimeSampling()), 0u);
        EXPECT_EQ(archive->addTimeSampling(acyclic), 1u);
        EXPECT_EQ(archive->addTimeSampling(AbcA::TimeSampling(0.04, 1.0)), 2u);
        EXPECT_EQ(archive->addTimeSampling(acyclic), 1u);
        EXPECT_EQ(archive->getNumTimeSamplings(), 3u);
        EXPECT_EQ(error_of([&] { archive->getTimeSampling(3); }), "Invalid index provided to getTimeSampling.");
        EXPECT_EQ(archive->getMaxNumSamplesForTimeSamplingIndex(3), INDEX_UNKNOWN);

        const auto properties = archive->getTop()->getProperties();
        const auto changing = properties->createScalarProperty("changing", AbcA::MetaData(), int_type, 1);
        for (const std::int32_t value : {1, 2, 3})
            changing->setSample(&value);
        const std::int32_t more = 4;
        EXPECT_EQ(error_of([&] { changing->setSample(&more); }),
                  "Can not write more samples than we have times for when using Acyclic sampling.");
        EXPECT_EQ(error_of([&] { changing->setFromPreviousSample(); }),
                  "Can not set more samples than we have times for when using Acyclic sampling.");
        EXPECT_EQ(changing->getNumSamples(), 3u);
        auto constant = properties->createScalarProperty("constant", AbcA::MetaData(), int_type, 0);
        for (int i = 0; i < 5; ++i)
            constant->setSample(&more);
        EXPECT_NE(error_of([&] { constant->setTimeSamplingIndex(1); }), "") << "five samples, three times";
        EXPECT_NE(error_of([&] { constant->setTimeSamplingIndex(3); }), "");
        constant->setTimeSamplingIndex(2);
        EXPECT_EQ(constant->getTimeSampling(), archive->getTimeSampling(2));
        constant.reset();
        EXPECT_EQ(archive->getMaxNumSamplesForTimeSamplingIndex(2), 1);
        archive->setMaxNumSamplesForTimeSamplingIndex(0, 12);
    }
    const RawArchive archive(stream.str());
    const std::string identity = "0C000000 000000000000F03F 01000000 0000000000000000";
    const std::string acyclic = "03000000 FFFFFFFFFFFF9F7F 03000000 0000000000000000 000000000000E03F 0000000000000040";
    const std::string uniform = "01000000 7B14AE47E17AA43F 01000000 000000000000F03F";
    EXPECT_EQ(archive.data(archive.root()[4]), from_hex(identity + acyclic + uniform));
    EXPECT_EQ(archive.properties(archive.compound({}))[1].time_sampling_index, 2u);
}

TEST(OgawaWriter, WritersThatAreGoneLeaveTheirHeaders)
{
    written_by([](const AbcA::ObjectWriterPtr& top) {
        auto child = top->createChild(AbcA::ObjectHeader("child", metadata_of("a=b")));
        const auto grandchild = child->createChild(AbcA::ObjectHeader("deep", AbcA::MetaData()));
        EXPECT_EQ(grandchild->getFullName(), "/child/deep");
        EXPECT_EQ(top->getChild("child"), child);
        EXPECT_EQ(top->getProperties(), top->getProperties());
        EXPECT_EQ(top->getArchive()->getTop(), top);
        child.reset();
        EXPECT_NE(top->getChild("child"), nullptr) << "its own child keeps it";
        EXPECT_EQ(top->getParent(), nullptr);

        auto compound = top->getProperties()->createCompoundProperty("c", AbcA::MetaData());
        auto property = compound->createArrayProperty("p", AbcA::MetaData(), point_type, 0);
        EXPECT_EQ(property->getObject(), top);
        EXPECT_EQ(property->getParent(), compound);
        EXPECT_EQ(top->getProperties()->getProperty("c")->asCompoundPtr(), compound);
        EXPECT_EQ(compound->getProperty("p")->asArrayPtr(), property);
        property.reset();
        EXPECT_EQ(compound->getProperty("p"), nullptr);
        ASSERT_NE(compound->getPropertyHeader("p"), nullptr);
        EXPECT_EQ(compound->getPropertyHeader(0).getDataType(), point_type);
        EXPECT_EQ(compound->getPropertyHeader("q"), nullptr);
    });
    written_by([](const AbcA::ObjectWriterPtr& top) {
        top->createChild(AbcA::ObjectHeader("child", metadata_of("a=b")));
        EXPECT_EQ(top->getChild("child"), nullptr);
        EXPECT_EQ(top->getChildHeader(0).getMetaData().get("a"), "b");
        EXPECT_EQ(top->getNumChildren(), 1u);
        EXPECT_THROW(top->createChild(AbcA::ObjectHeader("child", AbcA::MetaData())), Exception);
    });
}

TEST(OgawaWriter, TheOrderInWhichHandlesAreReleasedDoesNotMatter)
{
    std::string expected;
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::stringstream stream;
        std::vector<std::shared_ptr<void>> handles;
        {
            const auto archive = WriteArchive()(&stream, AbcA::MetaData());
            const auto top = archive->getTop();
            const auto a = top->createChild(AbcA::ObjectHeader("a", AbcA::MetaData()));
            const auto b = a->createChild(AbcA::ObjectHeader("b", AbcA::MetaData()));
            const auto a_properties = a->getProperties();
            const auto compound = a_properties->createCompoundProperty("c", AbcA::MetaData());
            const auto inner = compound->createCompoundProperty("d", AbcA::MetaData());
            const auto array = inner->createArrayProperty("array", AbcA::MetaData(), int_type, 0);
            const auto scalar = b->getProperties()->createScalarProperty("scalar", AbcA::MetaData(), int_type, 0);
            const std::vector<std::int32_t> values = {1, 2, 3};
            array->setSample(array_of(values, int_type));
            for (const std::int32_t value : values)
                scalar->setSample(&value);
            handles = {archive, top, a, b, a_properties, compound, inner, array, scalar};
        }
        std::shuffle(handles.begin(), handles.end(), std::mt19937(seed));
        while (!handles.empty()) {
            ASSERT_FALSE(RawArchive(stream.str()).is_complete()) << "seed " << seed;
            handles.pop_back();
        }
        const RawArchive archive(stream.str());
        ASSERT_TRUE(archive.is_complete()) << "seed " << seed;
        // The last 32 bytes of the top object's headers are hashes of all there is.
        const std::string hashes = archive.data(archive.object({}).back());
        if (expected.empty()) expected = hashes;
        EXPECT_EQ(hashes, expected) << "seed " << seed;
    }
}

TEST(OgawaWriter, SeveralThreadsWriteArchivesOfTheirOwn)
{
    std::vector<std::string> written(4);
    std::vector<std::thread> threads;
    for (std::string& bytes : written)
        threads.emplace_back([&bytes] {
            bytes = written_by([](const AbcA::ObjectWriterPtr& top) {
                        for (int i = 0; i < 200; ++i) {
                            const auto child =
                                top->createChild(AbcA::ObjectHeader("o" + std::to_string(i), metadata_of("k=v")));
                            const auto p =
                                child->getProperties()->createScalarProperty("p", metadata_of("l=m"), int_type, 0);
                            for (std::int32_t sample = 0; sample < 20; ++sample)
                                p->setSample(&sample);
                        }
                    }).bytes();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(RawArchive(written[0]).is_complete());
    for (const std::string& bytes : written)
        EXPECT_TRUE(bytes == written[0]);
}
