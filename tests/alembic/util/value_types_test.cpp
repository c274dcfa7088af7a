/// Small values: plain data types, booleans, digests, dimensions, exceptions, testable classes.
#include <Alembic/Util/All.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace Alembic::Util;

TEST(PlainOldDataType, NamesAndNumbersBelongTogether)
{
    for (int i = 0; i < kNumPlainOldDataTypes; ++i) {
        const PlainOldDataType pod = static_cast<PlainOldDataType>(i);
        EXPECT_EQ(PODFromName(PODName(pod)), pod);
        EXPECT_GT(PODNumBytes(pod), 0u);
    }
    EXPECT_STREQ(Float16PODTraits::name(), "float16_t");
    EXPECT_STREQ(PODTraitsFromType<std::wstring>::name(), "wstring");
    EXPECT_EQ(PODFromName("float"), kUnknownPOD);
    for (const PlainOldDataType none : {kUnknownPOD, kNumPlainOldDataTypes}) {
        EXPECT_STREQ(PODName(none), "UNKNOWN");
        EXPECT_EQ(PODNumBytes(none), 0u);
        PODSetDefault(none, nullptr);
    }
}

TEST(PlainOldDataType, DefaultsAreAssigned)
{
    std::string text = "long enough to be allocated somewhere else";
    PODSetDefault(kStringPOD, &text);
    EXPECT_EQ(text, "");
    float number = 3.0f;
    PODSetDefault(kFloat32POD, &number);
    EXPECT_EQ(number, 0.0f);
}

TEST(BoolT, ComparesByTruth)
{
    EXPECT_EQ(bool_t(byte_t(2)), bool_t(true));
    EXPECT_TRUE(bool_t(byte_t(2)) == true);
    EXPECT_TRUE(false != bool_t(true));
    EXPECT_TRUE(!bool_t());
    bool_t b;
    b = byte_t(7);
    EXPECT_TRUE(b.asBool());
}

TEST(Digest, OrdersByWordsAndPrintsBytes)
{
    Digest a, b;
    a[0] = 0xAB;
    b[15] = 0x01;
    std::ostringstream text;
    text << a;
    EXPECT_EQ(text.str(), "ab" + std::string(30, '0'));
    EXPECT_EQ(b.str(), std::string(30, '0') + "01");
    EXPECT_TRUE(b < a && a > b && a != b && a >= b && b <= a);
}

TEST(Dimensions, KeepExtentsWhenTheRankChanges)
{
    Dimensions dims(5);
    for (const size_t rank : {3, 1, 4, 0, 2}) {
        const Dimensions before = dims;
        dims.setRank(rank);
        ASSERT_EQ(dims.rank(), rank);
        for (size_t i = 0; i < rank; ++i) {
            EXPECT_EQ(dims[i], i < before.rank() ? before[i] : 0u) << "axis " << i << " of " << rank;
            dims.rootPtr()[i] = rank * 10 + i;
        }
    }
    EXPECT_EQ(dims.numPoints(), 20u * 21u);
    EXPECT_EQ(Dimensions().numPoints(), 0u);
    EXPECT_EQ(Dimensions(0).numPoints(), 0u);

    const BaseDimensions<int32_t> narrow(dims);
    EXPECT_TRUE(narrow == dims);
    EXPECT_TRUE(Dimensions(narrow) == dims);
    EXPECT_TRUE(Dimensions(3) != Dimensions(4) && Dimensions(0) != Dimensions());
    std::ostringstream text;
    text << dims;
    EXPECT_EQ(text.str(), "20 21");
}

TEST(Exception, IsBothAStringAndAnException)
{
    try {
        ALEMBIC_THROW("index " << 3);
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "index 3");
    }
    EXPECT_EQ(Exception("text"), std::string("text"));
}

namespace {

class Handle
{
public:
    explicit Handle(bool is_set)
        : is_set_(is_set)
    {
    }
    virtual ~Handle() = default;
    virtual bool valid() const { return is_set_; }
    ALEMBIC_OPERATOR_BOOL(valid());

private:
    bool is_set_;
};

class NeverValid : public Handle
{
public:
    NeverValid()
        : Handle(true)
    {
    }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(false);
};

bool as_result(const Handle& handle)
{
    return handle;
}

} // namespace

TEST(OperatorBool, TestsAndNothingElse)
{
    const Handle set(true), unset(false);
    EXPECT_TRUE(set && !unset);
    EXPECT_TRUE(as_result(set));
    EXPECT_FALSE(as_result(unset));
    EXPECT_FALSE(static_cast<bool>(NeverValid()));
    EXPECT_TRUE(!NeverValid());
    static_assert(!std::is_convertible<Handle, int>::value, "a handle is no number");
}
