/// Array samples and their keys, memory for them, scalar samples, data types.
#include <Alembic/AbcCoreAbstract/All.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <numeric>
#include <sstream>

using namespace Alembic::AbcCoreAbstract;

namespace {

template <class T>
std::string digest(const std::vector<T>& values, uint8_t extent = 1)
{
    const DataType type(PODTraitsFromType<T>::pod_enum, extent);
    return ArraySample(values.data(), type, Dimensions(values.size() / extent)).getKey().digest.str();
}

} // namespace

TEST(ArraySample, KeysAreTheDigestsOfStoredBytes)
{
    EXPECT_EQ(digest<float>({1, 2, 3}, 3), "573049c7fe2a734f94fd4c583b44e7d3");
    EXPECT_EQ(digest<bool_t>({false}), "b55cff6ee5ab10468335f878aa2d6251");
    EXPECT_EQ(digest<bool_t>({true}), "16fe7483905cce7a85670e43e4678877");
    EXPECT_EQ(digest<std::string>({"abc", ""}), "32121f664fc9366ad16c0e4df4936c76");
    EXPECT_EQ(digest<std::wstring>({L"abcd"}), "0c0b0e5b5c617fa37f24dddd25799d30");
    EXPECT_EQ(digest<float>({}), std::string(32, '0'));

    const std::vector<float> values = {1, 2, 3, 4, 5, 6};
    const ArraySample points(values.data(), DataType(kFloat32POD, 3), Dimensions(2));
    const ArraySample::Key key = points.getKey();
    EXPECT_EQ(key.numBytes, 24u);
    EXPECT_EQ(key.origPOD, kFloat32POD);
    EXPECT_EQ(key.readPOD, kFloat32POD);

    UnorderedMapUtil<int>::umap_type map;
    map[key] = 7;
    EXPECT_EQ(map.count(points.getKey()), 1u);
    EXPECT_EQ(map.count(ArraySampleKey()), 0u);
    EXPECT_TRUE(ArraySampleKey() < key && key > ArraySampleKey() && key != ArraySampleKey());
}

TEST(ArraySample, IsValidWithATypeAndDataOrARank)
{
    const float value = 0;
    EXPECT_FALSE(ArraySample().valid());
    EXPECT_TRUE(ArraySample(nullptr, DataType(kFloat32POD, 3), Dimensions(0)).valid());
    EXPECT_FALSE(ArraySample(nullptr, DataType(kFloat32POD, 3), Dimensions()).valid());
    EXPECT_FALSE(ArraySample(&value, DataType(), Dimensions(1)).valid());
    ArraySample sample(&value, DataType(kFloat32POD), Dimensions(1));
    EXPECT_TRUE(sample.valid());
    sample.reset();
    EXPECT_FALSE(sample.valid());
}

TEST(AllocateArraySample, GivesWritableMemoryOfEverySize)
{
    // Below and above the size from which memory is allocated in another way.
    for (const size_t count : {size_t(1), size_t(1000), (size_t(4) << 20) / 12, (size_t(9) << 20) / 12 + 1}) {
        const ArraySamplePtr sample = AllocateArraySample(DataType(kFloat32POD, 3), Dimensions(count));
        ASSERT_TRUE(sample && sample->getData());
        EXPECT_EQ(sample->size(), count);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(sample->getData()) % alignof(double), 0u);
        std::memset(const_cast<void*>(sample->getData()), 1, count * 12);
    }
}

TEST(AllocateArraySample, StringsAreEmptyAndDestroyed)
{
    const ArraySamplePtr sample = AllocateArraySample(DataType(kStringPOD, 2), Dimensions(3));
    std::string* const strings = static_cast<std::string*>(const_cast<void*>(sample->getData()));
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(strings[i], "");
        strings[i] = "long enough to be allocated somewhere else";
    }
    EXPECT_NE(TAllocateArraySample<std::wstring>(1, Dimensions(2))->getData(), nullptr);
}

TEST(AllocateArraySample, RefusesWhatCannotBe)
{
    EXPECT_FALSE(AllocateArraySample(DataType(), Dimensions(3)));
    for (const DataType type : {DataType(kFloat64POD, 16), DataType(kStringPOD)}) {
        EXPECT_THROW(AllocateArraySample(type, Dimensions(std::numeric_limits<uint64_t>::max())), Exception);
        Dimensions wrapping(uint64_t(1) << 40); // the product is a multiple of 2^64
        wrapping.setRank(2);
        wrapping[1] = uint64_t(1) << 40;
        EXPECT_THROW(AllocateArraySample(type, wrapping), Exception);
        wrapping[1] = 0;
        EXPECT_EQ(AllocateArraySample(type, wrapping)->getData(), nullptr);
    }
    EXPECT_THROW(TAllocateArraySample<float>(256, Dimensions(1)), Exception);
    const ArraySamplePtr empty = TAllocateArraySample<float>(3, Dimensions(0));
    EXPECT_TRUE(empty->valid());
    EXPECT_EQ(empty->getData(), nullptr);
}

TEST(DataType, OrdersAndPrints)
{
    std::ostringstream text;
    text << DataType(kFloat32POD, 3) << " " << DataType(kInt8POD) << " " << DataType();
    EXPECT_EQ(text.str(), "float32_t[3] int8_t UNKNOWN");
    EXPECT_EQ(DataType(kFloat32POD, 3).getNumBytes(), 12u);
    EXPECT_EQ(DataType().getNumBytes(), 0u);
    EXPECT_TRUE(DataType(kInt8POD, 4) < DataType(kInt16POD, 1) && DataType(kInt8POD, 1) < DataType(kInt8POD, 2));
}

TEST(ScalarSample, HoldsAndComparesEachType)
{
    for (int i = 0; i < kNumPlainOldDataTypes; ++i) {
        const DataType type(static_cast<PlainOldDataType>(i), 3);
        ScalarSample a(type), b(type);
        EXPECT_TRUE(a == b && !(a < b) && a.equalWithRelAbsError(b, 0.0)) << type;
    }
    EXPECT_THROW(ScalarSample(DataType(kUnknownPOD, 1)), Exception);
    EXPECT_THROW(ScalarSample(DataType(kFloat32POD, 0)), Exception);

    const std::string words[2] = {"a", "c"};
    ScalarSample text(DataType(kStringPOD, 2));
    EXPECT_TRUE(text < words);
    text.copyFrom(words);
    EXPECT_TRUE(text == words);
    const std::string greater[2] = {"b", ""};
    EXPECT_TRUE(text < greater);
    text.setToDefault();
    EXPECT_FALSE(text == words);

    const double numbers[2] = {1000.0, 0.0}, close[2] = {1000.5, 0.0005}, far[2] = {1002.0, 0.0};
    ScalarSample pair(DataType(kFloat64POD, 2));
    pair.copyFrom(numbers);
    EXPECT_TRUE(pair.equalWithRelAbsError(close, 1e-3)); // the first by its relation, the second absolutely
    EXPECT_FALSE(pair.equalWithRelAbsError(far, 1e-3));
    EXPECT_FALSE(pair == close);
    EXPECT_FALSE(pair == text);
}

TEST(ReadArraySampleID, IsTrueWithASample)
{
    EXPECT_FALSE(ReadArraySampleID());
    EXPECT_TRUE(ReadArraySampleID(ArraySampleKey(), std::make_shared<ArraySample>()));
}

TEST(LibraryVersion, NamesTheVersionOfTheHeaders)
{
    EXPECT_EQ(GetLibraryVersionShort(), "1.8.12");
    EXPECT_EQ(GetLibraryVersion().rfind("Alembic 1.8.12 (built ", 0), 0u);
    EXPECT_EQ(ALEMBIC_LIBRARY_VERSION, 10812);
}
