/// The Ogawa reader: opening, objects, properties and their headers.
#include "archive_bytes.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vo_test;

namespace {

/// What opening an archive whose top has these child headers, and room for one child, throws.
std::string error_of_object_headers(const std::string& headers)
{
    ArchiveBytes archive;
    const std::uint64_t top = archive.object(0, {0}, headers);
    const std::string bytes = archive.finish(top);
    return error_of([&] { OpenBytes opened(bytes); });
}

/// What asking for the properties behind these headers throws.
std::string error_of_property_headers(const std::string& headers)
{
    ArchiveBytes archive;
    const OpenBytes opened(with_properties({0, 0}, headers, archive));
    return error_of([&] { opened.properties(); });
}

} // namespace

TEST(OgawaReader, ASoundArchiveOfBytesReads)
{
    ArchiveBytes archive;
    const std::uint64_t samples = archive.blocks.group({archive.sample(bytes_of(7)), archive.sample(bytes_of(9))});
    const std::string headers = property_header(int_scalar | changed_range | metadata(1), {3, 2, 2}, "i");
    const std::uint64_t child = archive.object(archive.compound({samples}, headers), {}, "");
    const std::uint64_t top = archive.object(0, {child, 0}, object_header("o", 1) + object_header("empty"));
    const OpenBytes opened(archive.finish(top));

    EXPECT_EQ(opened.archive->getArchiveVersion(), 10812);
    EXPECT_EQ(opened.archive->getTop()->getFullName(), "/");
    EXPECT_EQ(opened.archive->getTop()->getName(), "ABC");
    EXPECT_EQ(opened.archive->getMetaData().get("a"), "b");
    EXPECT_EQ(opened.archive->getMaxNumSamplesForTimeSamplingIndex(0), 1);
    EXPECT_EQ(opened.archive->getMaxNumSamplesForTimeSamplingIndex(1), INDEX_UNKNOWN);
    EXPECT_EQ(error_of([&] { opened.archive->getTimeSampling(1); }), "Invalid index provided to getTimeSampling.");

    const AbcA::ObjectReaderPtr object = opened.archive->getTop()->getChild("o");
    EXPECT_EQ(object->getFullName(), "/o");
    EXPECT_EQ(object->getMetaData().get("x"), "y");
    AbcA::Digest hash;
    ASSERT_TRUE(object->getPropertiesHash(hash));
    EXPECT_EQ(hash[15], 'p');
    ASSERT_TRUE(object->getChildrenHash(hash));
    EXPECT_EQ(hash[0], 'c');
    EXPECT_EQ(opened.archive->getTop()->getChild("empty")->getNumChildren(), 0u);
    EXPECT_EQ(opened.archive->getTop()->getChild("absent"), nullptr);
    EXPECT_EQ(error_of([&] { opened.archive->getTop()->getChild(2); }), "Out of range index in OrData::getChild: 2");
    EXPECT_EQ(error_of([&] { opened.archive->getTop()->getChildHeader(2); }),
              "Out of range index in OrData::getChildHeader: 2");

    const AbcA::CompoundPropertyReaderPtr properties = object->getProperties();
    const AbcA::ScalarPropertyReaderPtr i = properties->getScalarProperty("i");
    for (const int index : {0, 1, 2}) {
        std::int32_t value = 0;
        i->getSample(index, &value);
        EXPECT_EQ(value, index < 2 ? 7 : 9);
    }
    EXPECT_FALSE(i->isConstant());
    EXPECT_EQ(error_of([&] { i->getSample(3, nullptr); }), "Invalid sample index: 3, should be between 0 and 2");
    EXPECT_EQ(error_of([&] { i->getSample(-1, nullptr); }), "Invalid sample index: -1, should be between 0 and 2");
    EXPECT_EQ(error_of([&] { properties->getArrayProperty("i"); }),
              "Tried to read an array property from a non-array: i, type: 1");
    EXPECT_EQ(error_of([&] { properties->getCompoundProperty("i"); }),
              "Tried to read a compound property from a non-compound: i, type: 1");
    EXPECT_EQ(error_of([&] { properties->getPropertyHeader(1); }),
              "Out of range index in CprData::getPropertyHeader: 1");
    EXPECT_EQ(properties->getScalarProperty("absent"), nullptr);
}

TEST(OgawaReader, EveryRefusalOfARootHasItsText)
{
    const auto error = [](void (*damage)(ArchiveBytes&)) {
        ArchiveBytes archive;
        damage(archive);
        const std::uint64_t top = archive.object(0, {}, "");
        const std::string bytes = archive.finish(top);
        return error_of([&] { OpenBytes opened(bytes); });
    };
    EXPECT_EQ(error([](ArchiveBytes&) {}), "");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.file_version = bytes_of(1); }), "Unsupported file version detected: 1");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.file_version = "abc"; }), "Unsupported file version detected: -1");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.library_version = bytes_of(9998); }),
              "Unsupported Alembic version detected: 9998");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.library_version = ""; }), "Unsupported Alembic version detected: 0");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.time_samplings += std::string(15, '\0'); }),
              "Read invalid: TimeSamples info.");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.time_samplings.resize(20); }), "Read invalid: TimeSamples sample times.");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.time_samplings = bytes_of(1, 1.0, 0); }),
              "Read invalid: TimeSamples sample times.");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.time_samplings = bytes_of(1, 1.0, ~0u, 0.0); }),
              "Read invalid: TimeSamples sample times.");
    EXPECT_NE(error([](ArchiveBytes& a) { a.time_samplings = bytes_of(1, -1.0, 1, 0.0); }), "");
    EXPECT_NE(error([](ArchiveBytes& a) { a.time_samplings = bytes_of(1, std::nan(""), 1, 0.0); }), "");
    EXPECT_NE(error([](ArchiveBytes& a) { a.time_samplings = bytes_of(1, 1.0, 2, 0.5, 0.5); }), "");
    EXPECT_EQ(error([](ArchiveBytes& a) {
                  a.metadata_table = "\x05"
                                     "four";
              }),
              "Read invalid: Indexed MetaData string.");
    EXPECT_EQ(error([](ArchiveBytes& a) { a.metadata_table = std::string(65537, '\0'); }),
              "Read invalid: Indexed MetaData buffer unexpectedly big.");
    EXPECT_EQ(error([](ArchiveBytes& a) {
                  a.metadata_table = "";
                  a.metadata = "";
                  a.time_samplings = "";
              }),
              "");
}

TEST(OgawaReader, ARootOfOtherKindsIsNoArchive)
{
    for (std::size_t wrong = 0; wrong < 7; ++wrong) {
        ContainerBytes blocks;
        std::vector<std::uint64_t> root(6, data_entry_bit);
        root[2] = 0;
        if (wrong < 6)
            root[wrong] ^= data_entry_bit;
        else
            root.pop_back();
        const std::string bytes = blocks.finish(blocks.group(root));
        EXPECT_EQ(error_of([&] { OpenBytes opened(bytes); }), "Invalid Alembic file.") << wrong;
    }
    std::string open_still = ContainerBytes().finish(0);
    open_still[5] = 0;
    EXPECT_EQ(error_of([&] { OpenBytes opened(open_still); }),
              "Ogawa streams not cleanly closed while being written. ");
    EXPECT_EQ(error_of([] { OpenBytes opened("text"); }), "Could not open as Ogawa file from provided streams.");
    EXPECT_EQ(error_of([] { Alembic::AbcCoreOgawa::ReadArchive()("/nowhere.abc"); }),
              "Could not open as Ogawa file: /nowhere.abc");
}

TEST(OgawaReader, EveryRefusalOfObjectHeadersHasItsText)
{
    EXPECT_EQ(error_of_object_headers("123"), "Read invalid: Object Headers name size.");
    EXPECT_EQ(error_of_object_headers(bytes_of(0u) + "x"), "Read invalid: Object Headers name and MetaData index.");
    EXPECT_EQ(error_of_object_headers(bytes_of(3u) + "abc"), "Read invalid: Object Headers name and MetaData index.");
    EXPECT_EQ(error_of_object_headers(bytes_of(~0u) + "abc"), "Read invalid: Object Headers name and MetaData index.");
    EXPECT_EQ(error_of_object_headers(object_header("a", 255) + "123"), "Read invalid: Object Headers MetaData size.");
    EXPECT_EQ(error_of_object_headers(object_header("a", 255) + bytes_of(5u) + "k=v;"),
              "Read invalid: Object Headers MetaData string.");
    EXPECT_EQ(error_of_object_headers(object_header("a", 2)), "Read invalid: Object Headers MetaData index.");
    EXPECT_EQ(error_of_object_headers(object_header("a", 255) + bytes_of(3u) + "k=v"), "");
    EXPECT_EQ(error_of_object_headers(object_header("a") + object_header("b")),
              "Read invalid: Object Headers of more children than the 1 in the group.");
}

TEST(OgawaReader, EveryRefusalOfPropertyHeadersHasItsText)
{
    const std::string sound = property_header(int_scalar | constant, {1}, "a");
    EXPECT_EQ(error_of_property_headers(sound + sound + sound),
              "Read invalid: a compound has headers for more properties than the 2 in its group.");
    EXPECT_EQ(error_of_property_headers("123"), "Read invalid: Property header start.");
    EXPECT_EQ(error_of_property_headers(property_header(scalar | pod(14) | extent(1), {1}, "a")),
              "Read invalid POD type: 14");
    EXPECT_EQ(error_of_property_headers(property_header(scalar | extent(0), {1}, "a")),
              "Read invalid: Property Header extent 0.");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant | 0xc, {1}, "a")),
              "Read invalid: Property Header bad uint32 hint.");
    EXPECT_EQ(error_of_property_headers(bytes_of(int_scalar | changed_range) + "\3\1"),
              "Read invalid: Property Header bad uint32 hint.");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant | with_time, {1, 1}, "a")),
              "Invalid index provided to getTimeSampling.");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant, {1}, "")),
              "Read invalid: Property Headers name.");
    EXPECT_EQ(error_of_property_headers(bytes_of(int_scalar | constant) + "\1\5four"),
              "Read invalid: Property Headers name.");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant | metadata(2), {1}, "a")),
              "Read invalid: Property Header MetaData index.");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant | metadata(255), {1}, "a") + "\5k=v;"),
              "Read invalid: Property Header MetaData string.");
    for (const std::vector<int>& samples : {std::vector<int>{3, 2, 1}, {3, 1, 3}, {1, 1, 1}, {2, 1, 255}})
        EXPECT_NE(error_of_property_headers(property_header(int_scalar | changed_range, samples, "a")), "");
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar, {0}, "a")), "") << "no samples, no changes";
    EXPECT_EQ(error_of_property_headers(property_header(int_scalar | constant, {1}, "a")), "");
}

TEST(OgawaReader, OfTwoWithOneNameTheLastIsFoundAndTheyCountOnce)
{
    ArchiveBytes archive;
    const std::string headers =
        property_header(int_scalar | constant, {1}, "a") + property_header(float_array | constant, {0}, "a");
    const std::uint64_t compound = archive.compound({0, 0}, headers);
    const std::uint64_t top = archive.object(compound, {archive.object(0, {0}, object_header("deep")), 0, 0},
                                             object_header("twin") + object_header("other") + object_header("twin"));
    const OpenBytes opened(archive.finish(top));
    EXPECT_EQ(opened.properties()->getNumProperties(), 1u);
    EXPECT_TRUE(opened.properties()->getPropertyHeader("a")->isArray());
    EXPECT_EQ(opened.archive->getTop()->getNumChildren(), 2u);
    EXPECT_EQ(opened.archive->getTop()->getChild("twin")->getNumChildren(), 0u);
    EXPECT_EQ(opened.archive->getTop()->getChild(0)->getNumChildren(), 1u);
}

TEST(OgawaReader, GroupsOfTheWrongKindAreErrorsWhereTheyAreUsed)
{
    ArchiveBytes archive;
    const std::uint64_t data = archive.blocks.data("data");
    const std::string headers = property_header(int_scalar | constant, {1}, "scalar") +
                                property_header(float_array | constant, {1}, "array") +
                                property_header(0, {}, "compound");
    const std::uint64_t compound = archive.compound({data, data, data}, headers);
    const std::uint64_t child = archive.blocks.group({data, data}); // an object whose properties are data
    const std::uint64_t top = archive.object(compound, {data, child}, object_header("wrong") + object_header("bare"));
    const OpenBytes opened(archive.finish(top));
    const auto properties = opened.properties();
    EXPECT_EQ(error_of([&] { properties->getScalarProperty("scalar"); }),
              "Scalar Property not backed by a valid group.");
    EXPECT_EQ(error_of([&] { properties->getArrayProperty("array"); }), "Array Property not backed by a valid group.");
    EXPECT_EQ(error_of([&] { properties->getCompoundProperty("compound"); }),
              "Compound Property not backed by a valid group.");
    EXPECT_EQ(opened.archive->getTop()->getChildHeader("wrong")->getFullName(), "/wrong");
    EXPECT_EQ(error_of([&] { opened.archive->getTop()->getChild("wrong"); }), "Invalid object data group");
    EXPECT_EQ(error_of([&] { opened.archive->getTop()->getChild("bare")->getProperties(); }),
              "Invalid data in CprImpl(Object)");
}
