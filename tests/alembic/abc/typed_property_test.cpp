/// Typed properties: every type comes back as it was written; what matches what; samples of one type seen as another.
#include "scratch.h"

#include <gmock/gmock.h>

#include <cstring>
#include <random>

namespace abc_tests {
namespace {

using ::testing::HasSubstr;

constexpr uint32_t SEED = 20240611;

/// Random numbers in place: every type but strings is an array of its numbers.
template <class TRAITS>
struct Numbers
{
    typedef typename TRAITS::value_type Value;
    static void fill(Value& value, std::mt19937& random)
    {
        typedef typename PODTraitsFromEnum<TRAITS::pod_enum>::value_type Number;
        static_assert(sizeof(Value) == TRAITS::extent * sizeof(Number), "numbers side by side");
        for (int i = 0; i < TRAITS::extent; ++i) {
            const Number number = static_cast<Number>(static_cast<float>(random() % 200) / 2.0f);
            std::memcpy(reinterpret_cast<char*>(&value) + i * sizeof(Number), &number, sizeof number);
        }
    }
    static bool equal(const Value& a, const Value& b) { return std::memcmp(&a, &b, sizeof a) == 0; }
};
template <class TEXT>
struct Texts
{
    static void fill(TEXT& value, std::mt19937& random)
    {
        value.clear();
        for (size_t i = random() % 30; i > 0; --i)
            value.push_back(static_cast<typename TEXT::value_type>('a' + random() % 26));
    }
    static bool equal(const TEXT& a, const TEXT& b) { return a == b; }
};
template <>
struct Numbers<StringTPTraits> : Texts<std::string>
{
};
template <>
struct Numbers<WstringTPTraits> : Texts<std::wstring>
{
};
template <>
struct Numbers<BooleanTPTraits>
{
    static void fill(bool_t& value, std::mt19937& random) { value = random() % 2 == 0; }
    static bool equal(bool_t a, bool_t b) { return a == b; }
};

template <class TRAITS>
class TypedProperty : public ::testing::Test
{
protected:
    typedef typename TRAITS::value_type Value;

    std::vector<std::vector<Value>> random_samples(std::mt19937& random)
    {
        std::vector<std::vector<Value>> samples(4);
        for (size_t s = 0; s + 1 < samples.size(); ++s) { // the last one stays empty
            samples[s].resize(1 + random() % 50, DefaultValue<Value>::get());
            for (Value& value : samples[s])
                Numbers<TRAITS>::fill(value, random);
        }
        return samples;
    }
};

typedef ::testing::Types<BooleanTPTraits, Uint8TPTraits, Int8TPTraits, Uint16TPTraits, Int16TPTraits, Uint32TPTraits,
                         Int32TPTraits, Uint64TPTraits, Int64TPTraits, Float16TPTraits, Float32TPTraits,
                         Float64TPTraits, StringTPTraits, WstringTPTraits, V2sTPTraits, V2iTPTraits, V2fTPTraits,
                         V2dTPTraits, V3sTPTraits, V3iTPTraits, V3fTPTraits, V3dTPTraits, P2sTPTraits, P2iTPTraits,
                         P2fTPTraits, P2dTPTraits, P3sTPTraits, P3iTPTraits, P3fTPTraits, P3dTPTraits, Box2sTPTraits,
                         Box2iTPTraits, Box2fTPTraits, Box2dTPTraits, Box3sTPTraits, Box3iTPTraits, Box3fTPTraits,
                         Box3dTPTraits, M33fTPTraits, M33dTPTraits, M44fTPTraits, M44dTPTraits>
    FirstTypes; // testing::Types takes 50 at most
typedef ::testing::Types<QuatfTPTraits, QuatdTPTraits, C3hTPTraits, C3fTPTraits, C3cTPTraits, C4hTPTraits, C4fTPTraits,
                         C4cTPTraits, N2fTPTraits, N2dTPTraits, N3fTPTraits, N3dTPTraits>
    OtherTypes;

TYPED_TEST_SUITE_P(TypedProperty);

TYPED_TEST_P(TypedProperty, RandomValuesComeBack)
{
    typedef TypeParam Traits;
    std::mt19937 random(SEED);
    SCOPED_TRACE("seed " + std::to_string(SEED) + ", " + Traits::name());
    const auto samples = this->random_samples(random);
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OObject object(archive.getTop(), "o");
        OTypedScalarProperty<Traits> scalar(object.getProperties(), "scalar");
        OTypedArrayProperty<Traits> array(object.getProperties(), "array",
                                          AbcA::TimeSamplingPtr(new AbcA::TimeSampling(0.5, 10.0)));
        for (const auto& sample : samples) {
            if (!sample.empty()) scalar.set(sample.front());
            array.set(sample);
        }
        scalar.setFromPrevious();
    }
    IArchive archive(ReadArchive(), file.path());
    const ICompoundProperty properties = archive.getTop().getChild("o").getProperties();
    const ITypedScalarProperty<Traits> scalar(properties, "scalar", kStrictMatching);
    const ITypedArrayProperty<Traits> array(properties, "array", kStrictMatching);
    ASSERT_EQ(scalar.getNumSamples(), samples.size());
    ASSERT_EQ(array.getNumSamples(), samples.size());
    EXPECT_EQ(array.getTimeSampling()->getSampleTime(1), 10.5);
    EXPECT_EQ(scalar.getMetaData().get("interpretation"), Traits::interpretation());
    for (size_t s = 0; s < samples.size(); ++s) {
        const size_t of_scalar = std::min<size_t>(s, samples.size() - 2); // the last scalar repeats
        EXPECT_TRUE(Numbers<Traits>::equal(scalar.getValue(s), samples[of_scalar].front()));
        const auto sample = array.getValue(ISampleSelector(10.0 + 0.5 * double(s)));
        ASSERT_TRUE(sample && sample->valid());
        ASSERT_EQ(sample->size(), samples[s].size());
        for (size_t i = 0; i < samples[s].size(); ++i)
            EXPECT_TRUE(Numbers<Traits>::equal((*sample)[i], samples[s][i]));
    }

    // What goes into the caller's memory is what a sample holds.
    std::vector<typename Traits::value_type> memory(samples[0].size(),
                                                    DefaultValue<typename Traits::value_type>::get());
    array.getAs(memory.data(), 0);
    for (size_t i = 0; i < memory.size(); ++i)
        EXPECT_TRUE(Numbers<Traits>::equal(memory[i], samples[0][i]));
    // The samples outlive all handles.
    auto kept = array.getValue(0);
    archive.reset();
    EXPECT_EQ(kept->size(), samples[0].size());
}

REGISTER_TYPED_TEST_SUITE_P(TypedProperty, RandomValuesComeBack);
INSTANTIATE_TYPED_TEST_SUITE_P(First, TypedProperty, FirstTypes);
INSTANTIATE_TYPED_TEST_SUITE_P(Other, TypedProperty, OtherTypes);

ALEMBIC_ABC_DECLARE_TYPE_TRAITS(V3f, kFloat32POD, 3, "velocity", VelocityTPTraits);

TEST(Matching, OfTypedProperties)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OCompoundProperty p = archive.getTop().getProperties();
        OV3fProperty(p, "vector").set(V3f(1.0f));
        OTypedArrayProperty<VelocityTPTraits>(p, "velocity").set(std::vector<V3f>(2, V3f(3.0f)));
        OFloatArrayProperty(p, "floats").set(std::vector<float>(6, 1.0f));
        const float three[6] = {1, 2, 3, 4, 5, 6};
        OArrayProperty(p, "threes", AbcA::DataType(kFloat32POD, 3))
            .set(AbcA::ArraySample(three, AbcA::DataType(kFloat32POD, 3), Dimensions(2)));
        OFloatProperty(p, "float").set(1.0f);
    }
    IArchive archive(ReadArchive(), file.path());
    const ICompoundProperty p = archive.getTop().getProperties();
    const auto header = [&](const char* name) { return *p.getPropertyHeader(name); };

    EXPECT_TRUE(IV3fProperty::matches(header("vector")));
    EXPECT_FALSE(IP3fProperty::matches(header("vector")));
    EXPECT_TRUE(IP3fProperty::matches(header("vector"), kNoMatching));
    EXPECT_FALSE(IV3fArrayProperty::matches(header("vector"), kNoMatching)); // not an array
    EXPECT_FALSE(IV3dProperty::matches(header("vector"), kNoMatching));
    EXPECT_NE(thrown_text([&] { IP3fProperty(p, "vector", kStrictMatching); }), "");
    EXPECT_EQ(IP3fProperty(p, "vector").getValue(), V3f(1.0f));

    // A type without interpretation: properties without one, arrays of any extent.
    EXPECT_FALSE(IFloatArrayProperty::matches(header("velocity")));
    EXPECT_TRUE(IFloatArrayProperty::matches(header("velocity"), kNoMatching));
    EXPECT_TRUE(IFloatArrayProperty::matches(header("threes")));
    EXPECT_FALSE(IFloatProperty::matches(header("vector"), kNoMatching));
    EXPECT_EQ(IFloatArrayProperty(p, "threes").getValue()->size(), 2u);
    EXPECT_EQ(IFloatArrayProperty(p, "threes").getValue()->getDataType().getExtent(), 3);
    EXPECT_EQ((*ITypedArrayProperty<VelocityTPTraits>(p, "velocity", kStrictMatching).getValue())[1], V3f(3.0f));

    EXPECT_TRUE(IV3fProperty::matches(header("vector").getMetaData()));
    EXPECT_FALSE(IV3fProperty::matches(header("float").getMetaData()));
    EXPECT_TRUE(IV3fProperty::matches(header("float").getMetaData(), kNoMatching));
    EXPECT_FALSE(OV3fProperty::matches(header("float").getMetaData(), kNoMatching)); // writing classes always compare
}

TEST(TypedArraySample, ConvertsWithinOneStoredTypeOnly)
{
    const std::vector<V3f> values = {V3f(1.0f), V3f(2.0f)};
    const V3fArraySample vectors(values);
    const P3fArraySample points = vectors;
    EXPECT_EQ(points.get(), values.data());
    EXPECT_EQ(points.size(), 2u);
    N3fArraySample normals;
    EXPECT_FALSE(normals);
    normals = vectors;
    EXPECT_EQ(normals[1], V3f(2.0f));
    EXPECT_EQ(thrown_text([&] { V3dArraySample doubles(vectors); }),
              "Invalid DataType in TypedArraySample. Expected: float64_t[3], but got: float32_t[3]");
    EXPECT_TRUE(FloatArraySample::emptySample().valid());
    EXPECT_TRUE(FloatArraySample(std::vector<float>()).valid());
    EXPECT_NE(thrown_text([] { FloatArraySample(std::vector<float>(3), Dimensions(5)); }), "");
}

TEST(ArrayProperty, SelectsWithItsOwnSamplingAndCount)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OCompoundProperty p = archive.getTop().getProperties();
        OInt32ArrayProperty array(p, "array", archive.addTimeSampling(AbcA::TimeSampling(1.0, 0.0)));
        array.setTimeSampling(AbcA::TimeSamplingPtr(new AbcA::TimeSampling(0.25, 1.0)));
        for (int32_t s = 0; s < 3; ++s)
            array.set(std::vector<int32_t>(size_t(s) + 1, s));
        OInt32ArrayProperty(p, "empty");
        OInt32Property(p, "unset");
    }
    IArchive archive(ReadArchive(), file.path());
    const ICompoundProperty p = archive.getTop().getProperties();
    const IInt32ArrayProperty array(p, "array");
    int32_t memory[3] = {-1, -1, -1};
    array.getAs(memory, ISampleSelector(1.25, ISampleSelector::kFloorIndex));
    EXPECT_EQ(memory[1], 1);
    EXPECT_EQ(memory[2], -1); // nothing beyond the sample's two values
    array.getAs(memory, 99);  // beyond the last: the last
    EXPECT_EQ(memory[2], 2);
    double converted[3] = {};
    array.getAs(converted, kFloat64POD, ISampleSelector(99.0));
    EXPECT_EQ(converted[0], 2.0);
    EXPECT_EQ(array.getValue(-5)->size(), 1u); // negative: time 0
    Dimensions dimensions;
    array.getDimensions(dimensions, 1);
    EXPECT_EQ(dimensions.numPoints(), 2u);
    AbcA::ArraySampleKey key;
    EXPECT_TRUE(array.getKey(key, 2));
    EXPECT_TRUE(key.digest == array.getValue(2)->getKey().digest);

    // Nothing stored: no key; reading is an error that leaves the output alone.
    const IInt32ArrayProperty empty(p, "empty");
    EXPECT_FALSE(empty.getKey(key));
    EXPECT_THAT(thrown_text([&] { empty.getValue(); }), HasSubstr("IArrayProperty::get()\nERROR: EXCEPTION:\n"));
    const IInt32Property unset(p, "unset", QUIET);
    int32_t value = 77;
    unset.get(value);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(unset.getValue(), 0);
    EXPECT_THAT(unset.getErrorHandler().getErrorLog(), HasSubstr("IScalarProperty::get()"));
}

} // namespace
} // namespace abc_tests
