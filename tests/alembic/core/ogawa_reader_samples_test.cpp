/// The Ogawa reader: samples, their shapes and conversions.
#include "archive_bytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vo_test;

namespace {

/// An archive whose top has one array property "a" of that type with one sample made of these blocks.
OpenBytes open_array(std::uint32_t info, const std::vector<std::string>& blocks)
{
    ArchiveBytes archive;
    std::vector<std::uint64_t> entries;
    for (const std::string& block : blocks)
        entries.push_back(archive.blocks.data(block));
    return OpenBytes(
        with_properties({archive.blocks.group(entries)}, property_header(info | constant, {1}, "a"), archive));
}

const std::string digest(16, 'd');

/// `value` stored as one kind of number, read as another.
template <class To, class From>
To read_as(AbcA::PlainOldDataType from_pod, From value, AbcA::PlainOldDataType to_pod)
{
    const OpenBytes opened = open_array(array | pod(from_pod) | extent(1), {digest + bytes_of(value), ""});
    To read[2] = {};
    opened.properties()->getArrayProperty("a")->getAs(0, read, to_pod);
    return read[0];
}

} // namespace

TEST(OgawaReaderSamples, SamplesOfTheWrongSizeAreErrors)
{
    const auto error = [](const std::string& block) {
        ArchiveBytes archive;
        const std::uint64_t samples = archive.blocks.group({archive.blocks.data(block)});
        const OpenBytes opened(with_properties({samples}, property_header(int_scalar | constant, {1}, "i"), archive));
        std::int32_t value = 0;
        return error_of([&] { opened.properties()->getScalarProperty("i")->getSample(0, &value); });
    };
    const std::string text = "ScalarPropertyReader::getSample size is not correct expected: 20 got: ";
    EXPECT_EQ(error(digest + bytes_of(1)), "");
    EXPECT_EQ(error(digest + "123"), text + "19");
    EXPECT_EQ(error(digest + "12345"), text + "21");
    EXPECT_EQ(error(""), text + "0");

    const OpenBytes opened = open_array(float_array, {"short", ""});
    AbcA::ArraySamplePtr sample;
    EXPECT_EQ(error_of([&] { opened.properties()->getArrayProperty("a")->getSample(0, sample); }),
              "Incorrect data, expected to be empty or to have a key and data");
}

TEST(OgawaReaderSamples, ASampleThatIsNotStoredIsAnError)
{
    ArchiveBytes archive;
    const std::uint64_t one = archive.blocks.group({archive.sample(bytes_of(1.0f))});
    const std::string headers = property_header(int_scalar, {3}, "i") + property_header(float_array, {3}, "a");
    const OpenBytes opened(with_properties({one, one}, headers, archive));
    const AbcA::ScalarPropertyReaderPtr i = opened.properties()->getScalarProperty("i");
    const AbcA::ArrayPropertyReaderPtr a = opened.properties()->getArrayProperty("a");
    float value = 0.0f;
    AbcA::ArraySamplePtr sample;
    AbcA::ArraySampleKey key;
    EXPECT_EQ(error_of([&] { i->getSample(0, &value); }), "");
    EXPECT_EQ(error_of([&] { i->getSample(2, &value); }), "ReadData invalid: Null IDataPtr.");
    EXPECT_EQ(error_of([&] { a->getSample(0, sample); }), "") << "without dimensions the size tells them";
    EXPECT_EQ(error_of([&] { a->getSample(2, sample); }), "ReadData invalid: Null IDataPtr.");
    EXPECT_EQ(error_of([&] { a->getAs(1, &value, AbcA::kFloat32POD); }), "ReadData invalid: Null IDataPtr.");
    EXPECT_FALSE(a->getKey(1, key));
}

TEST(OgawaReaderSamples, ShapesThatDoNotFitTheBytesAreWorkedOutAnew)
{
    const auto shape = [](std::uint32_t info, const std::string& values, const std::string& dimensions) {
        const OpenBytes opened = open_array(info, {digest + values, dimensions});
        const AbcA::ArrayPropertyReaderPtr a = opened.properties()->getArrayProperty("a");
        AbcA::Dimensions found;
        a->getDimensions(0, found);
        AbcA::ArraySamplePtr sample;
        a->getSample(0, sample);
        EXPECT_EQ(sample->getDimensions(), found);
        std::ostringstream text;
        text << found;
        return text.str();
    };
    const auto dims = [](std::initializer_list<std::uint64_t> sizes) {
        std::string bytes;
        for (const std::uint64_t size : sizes)
            bytes += bytes_of(size);
        return bytes;
    };
    const auto line = [](std::uint64_t size) {
        std::ostringstream text;
        text << AbcA::Dimensions(size);
        return text.str();
    };
    const std::string six(24, 'f');
    EXPECT_NE(shape(float_array, six, dims({2, 3})), line(6)) << "a shape that fits is kept";
    EXPECT_EQ(shape(float_array, six, ""), line(6));
    EXPECT_EQ(shape(float_array, six, dims({2, 4})), line(6));
    EXPECT_EQ(shape(float_array, six, dims({1ull << 62, 4})), line(6)) << "the product overflows to 0";
    EXPECT_EQ(shape(float_array, six, "1234567"), line(6));
    EXPECT_EQ(shape(float_array, six + "12", ""), line(7)) << "rounded up";
    const std::uint32_t strings = array | pod(AbcA::kStringPOD) | extent(1);
    EXPECT_EQ(shape(strings, std::string("a\0b\0", 4), dims({2})), line(2));
    EXPECT_EQ(shape(strings, std::string("a\0b\0", 4), ""), line(2));
    EXPECT_EQ(shape(strings, std::string("a\0b\0", 4), dims({1ull << 40})), line(2));
}

TEST(OgawaReaderSamples, TheRestOfAnElementThatIsCutReadsAsZero)
{
    const OpenBytes opened = open_array(float_array, {digest + bytes_of(1.0f) + "\1", ""});
    const AbcA::ArrayPropertyReaderPtr a = opened.properties()->getArrayProperty("a");
    AbcA::ArraySamplePtr sample;
    a->getSample(0, sample);
    ASSERT_EQ(sample->size(), 2u);
    std::uint32_t bits = 0;
    std::memcpy(&bits, static_cast<const char*>(sample->getData()) + 4, 4);
    EXPECT_EQ(bits, 1u);
    double doubles[3] = {-1.0, -1.0, -1.0};
    a->getAs(0, doubles, AbcA::kFloat64POD);
    EXPECT_EQ(doubles[0], 1.0);
    EXPECT_GT(doubles[1], 0.0);
    EXPECT_EQ(doubles[2], -1.0) << "no more is written than there are elements";
}

TEST(OgawaReaderSamples, PartsTogetherAreTheWhole)
{
    const OpenBytes opened = open_array(
        float_array, {digest + bytes_of(1.0f) + bytes_of(2.0f) + bytes_of(3.0f) + "\1", bytes_of(std::uint64_t(4))});
    const AbcA::ArrayPropertyReaderPtr a = opened.properties()->getArrayProperty("a");
    float whole[4], parts[4];
    a->getAs(0, whole, AbcA::kFloat32POD);
    for (const std::size_t first : {0u, 1u, 3u, 4u}) {
        std::fill_n(parts, 4, -1.0f);
        ASSERT_TRUE(a->getPart(0, 0, first, parts));
        ASSERT_TRUE(a->getPart(0, first, 4 - first, parts + first));
        EXPECT_EQ(std::memcmp(parts, whole, sizeof whole), 0) << first;
    }
    EXPECT_EQ(error_of([&] { a->getPart(0, 2, 3, parts); }), "Elements 2 to 2 + 3 of 4 were asked for");
    EXPECT_THROW(a->getPart(0, ~std::uint64_t(0), 2, parts), Alembic::Util::Exception);
    EXPECT_THROW(a->getPart(1, 0, 1, parts), Alembic::Util::Exception);

    const std::uint32_t strings = array | pod(AbcA::kStringPOD) | extent(1);
    const OpenBytes texts = open_array(strings, {digest + std::string("a\0", 2), ""});
    EXPECT_FALSE(texts.properties()->getArrayProperty("a")->getPart(0, 0, 1, parts));
}

TEST(OgawaReaderSamples, StringsEndAtTheirZeros)
{
    const std::uint32_t strings = array | pod(AbcA::kStringPOD) | extent(1);
    const OpenBytes opened = open_array(strings, {digest + std::string("ab\0\0cut", 7), bytes_of(std::uint64_t(2))});
    AbcA::ArraySamplePtr sample;
    opened.properties()->getArrayProperty("a")->getSample(0, sample);
    EXPECT_EQ(static_cast<const std::string*>(sample->getData())[0], "ab");
    EXPECT_EQ(static_cast<const std::string*>(sample->getData())[1], "");
    const OpenBytes few = open_array(strings, {digest + std::string("ab\0cut", 6), bytes_of(std::uint64_t(2))});
    EXPECT_EQ(error_of([&] { few.properties()->getArrayProperty("a")->getSample(0, sample); }),
              "Incorrect data, expected 2 strings, got: 1");

    // Longer than the chunks that strings are read in, with zeros on their borders.
    std::string long_text;
    std::vector<std::string> words;
    for (std::size_t i = 0; i < 40; ++i)
        words.emplace_back(i * 100 + 4095 - i, static_cast<char>('a' + i % 26));
    for (const std::string& word : words)
        long_text += word + '\0';
    const OpenBytes many = open_array(strings, {digest + long_text, ""});
    many.properties()->getArrayProperty("a")->getSample(0, sample);
    ASSERT_EQ(sample->size(), words.size());
    for (std::size_t i = 0; i < words.size(); ++i)
        EXPECT_EQ(static_cast<const std::string*>(sample->getData())[i], words[i]);
    std::vector<std::string> copied(words.size());
    many.properties()->getArrayProperty("a")->getAs(0, copied.data(), AbcA::kStringPOD);
    EXPECT_EQ(copied, words);
    EXPECT_EQ(error_of([&] { many.properties()->getArrayProperty("a")->getAs(0, copied.data(), AbcA::kInt8POD); }),
              "Cannot convert the data to or from a string, or wstring.");
}

TEST(OgawaReaderSamples, NumbersThatDoNotFitBecomeTheNearestThatDoes)
{
    const double big = 1e300;
    const double nan = std::nan("");
    EXPECT_EQ(read_as<std::uint8_t>(AbcA::kFloat64POD, big, AbcA::kUint8POD), 255);
    EXPECT_EQ(read_as<std::uint8_t>(AbcA::kFloat64POD, -0.5, AbcA::kUint8POD), 0);
    EXPECT_EQ(read_as<std::int8_t>(AbcA::kFloat64POD, -1e9, AbcA::kInt8POD), -128);
    EXPECT_EQ(read_as<std::int64_t>(AbcA::kFloat64POD, big, AbcA::kInt64POD), INT64_MAX);
    EXPECT_EQ(read_as<std::int64_t>(AbcA::kFloat32POD, -1e30f, AbcA::kInt64POD), INT64_MIN);
    EXPECT_EQ(read_as<std::uint64_t>(AbcA::kFloat64POD, big, AbcA::kUint64POD), UINT64_MAX);
    EXPECT_EQ(read_as<std::int32_t>(AbcA::kFloat64POD, nan, AbcA::kInt32POD), 0);
    EXPECT_EQ(read_as<std::int32_t>(AbcA::kFloat32POD, 2147483648.0f, AbcA::kInt32POD), INT32_MAX);
    EXPECT_EQ(read_as<std::int32_t>(AbcA::kFloat64POD, -2.9, AbcA::kInt32POD), -2);
    EXPECT_EQ(read_as<float>(AbcA::kFloat64POD, big, AbcA::kFloat32POD), std::numeric_limits<float>::max());
    EXPECT_EQ(read_as<double>(AbcA::kFloat32POD, std::numeric_limits<float>::infinity(), AbcA::kFloat64POD),
              std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(read_as<float>(AbcA::kFloat64POD, nan, AbcA::kFloat32POD)));
    EXPECT_EQ(read_as<std::uint64_t>(AbcA::kInt8POD, std::int8_t(-1), AbcA::kUint64POD), 0u);
    EXPECT_EQ(read_as<std::int8_t>(AbcA::kUint64POD, UINT64_MAX, AbcA::kInt8POD), 127);
    EXPECT_EQ(read_as<std::int64_t>(AbcA::kUint64POD, UINT64_MAX, AbcA::kInt64POD), INT64_MAX);
    EXPECT_EQ(read_as<float>(AbcA::kUint8POD, std::uint8_t(200), AbcA::kFloat32POD), 200.0f);
    EXPECT_EQ(float(read_as<AbcA::float16_t>(AbcA::kUint16POD, std::uint16_t(65535), AbcA::kFloat16POD)), 65504.0f);
    EXPECT_EQ(float(read_as<AbcA::float16_t>(AbcA::kFloat64POD, -big, AbcA::kFloat16POD)), -65504.0f);
    EXPECT_EQ(read_as<std::int16_t>(AbcA::kFloat16POD, AbcA::float16_t(-1.5f), AbcA::kInt16POD), -1);
    EXPECT_EQ(read_as<std::int32_t>(AbcA::kBooleanPOD, std::uint8_t(0x80), AbcA::kInt32POD), 1);
    EXPECT_TRUE(read_as<AbcA::bool_t>(AbcA::kFloat32POD, 0.25f, AbcA::kBooleanPOD).asBool());
    EXPECT_FALSE(read_as<AbcA::bool_t>(AbcA::kInt64POD, std::int64_t(0), AbcA::kBooleanPOD).asBool());
}

TEST(OgawaReaderSamples, ConvertingInPiecesGivesWhatOnePieceWould)
{
    std::string values;
    std::vector<double> expected;
    for (int i = 0; i < 30000; ++i) {
        values += bytes_of(std::int16_t(i - 15000));
        expected.push_back(i - 15000);
    }
    const std::uint32_t points = array | pod(AbcA::kInt16POD) | extent(3);
    const OpenBytes opened = open_array(points, {digest + values, ""});
    std::vector<double> read(expected.size());
    opened.properties()->getArrayProperty("a")->getAs(0, read.data(), AbcA::kFloat64POD);
    EXPECT_EQ(read, expected);
}
