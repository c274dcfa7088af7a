/// Geometry parameters, written: what is stored, and what later samples repeat.
#include "sample_series.h"

using namespace sample_series;

namespace {

template <class WRITE>
void write_params(const ScratchFile& file, WRITE write)
{
    OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
    write(OObject(archive.getTop(), "o").getProperties(), archive);
}

ICompoundProperty params(const ScratchFile& file)
{
    return open_archive(file).getTop().getChild("o").getProperties();
}

} // namespace

TEST(OGeomParam, MetadataDescribeTheParameterAndItsValues)
{
    ScratchFile file("metadata.abc");
    write_params(file, [](OCompoundProperty parent, OArchive&) {
        AbcA::MetaData metadata;
        SetSourceName(metadata, "paint");
        OC4fGeomParam colour(parent, "colour", true, kUniformScope, 2, metadata);
        OStringGeomParam words(parent, "words", false, kUnknownScope, 1);
        EXPECT_TRUE(colour.valid() && colour.isIndexed() && !words.isIndexed());
        EXPECT_EQ(colour.getName(), "colour");
        EXPECT_EQ(colour.getScope(), kUniformScope);
        EXPECT_EQ(colour.getDataType(), DataType(kFloat32POD, 4));
        EXPECT_TRUE(colour.getIndexProperty().valid() && !words.getIndexProperty().valid());
    });
    const ICompoundProperty parent = params(file);
    const AbcA::PropertyHeader& colour = *parent.getPropertyHeader("colour");
    ASSERT_TRUE(colour.isCompound());
    const std::string expected = "arrayExtent=2;geoScope=uni;interpretation=rgba;isGeomParam=true;podExtent=4;"
                                 "podName=float32_t;sourceName=paint";
    EXPECT_EQ(colour.getMetaData().serialize(), expected);
    const ICompoundProperty inside(parent, "colour");
    ASSERT_EQ(inside.getNumProperties(), 2u);
    EXPECT_EQ(inside.getPropertyHeader(".vals")->getMetaData().serialize(), expected);
    EXPECT_EQ(inside.getPropertyHeader(".indices")->getMetaData().serialize(), "");
    EXPECT_EQ(inside.getPropertyHeader(".indices")->getDataType(), DataType(kUint32POD, 1));
    const AbcA::PropertyHeader& words = *parent.getPropertyHeader("words");
    ASSERT_TRUE(words.isArray());
    EXPECT_EQ(words.getMetaData().serialize(), "arrayExtent=1;isGeomParam=true;podExtent=1;podName=string");
}

TEST(OGeomParam, WhatIsNotGivenRepeatsOverRandomSamples)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        ScratchFile file("random.abc");
        std::mt19937 engine(seed);
        const bool indexed = engine() % 2 == 0;
        std::vector<std::vector<float>> values;
        std::vector<std::vector<uint32_t>> indices;
        write_params(file, [&](OCompoundProperty parent, OArchive&) {
            OFloatGeomParam param(parent, "p", indexed, kVertexScope, 1);
            const size_t count = 1 + engine() % 5;
            for (size_t i = 0; i < count; ++i) {
                std::vector<float> new_values(1 + engine() % 4, static_cast<float>(engine() % 50));
                std::vector<uint32_t> new_indices(engine() % 4, 0u);
                OFloatGeomParam::Sample sample;
                if (engine() % 2) sample.setVals(new_values);
                if (engine() % 2) sample.setIndices(new_indices);
                values.push_back(sample.getVals().valid() ? new_values : i ? values.back() : std::vector<float>());
                indices.push_back(sample.getIndices().valid() ? new_indices
                                  : i                         ? indices.back()
                                                              : std::vector<uint32_t>());
                param.set(sample);
                EXPECT_EQ(param.getNumSamples(), i + 1);
            }
            param.setFromPrevious();
            values.push_back(values.back());
            indices.push_back(indices.back());
        });
        const IFloatGeomParam param(params(file), "p");
        ASSERT_EQ(param.getNumSamples(), values.size()) << "seed " << seed;
        EXPECT_EQ(param.isIndexed(), indexed);
        for (size_t i = 0; i < values.size(); ++i) {
            const Numbers expected(values[i].begin(), values[i].end());
            EXPECT_EQ(numbers_of(param.getValueProperty(), i), expected) << "seed " << seed << ", sample " << i;
            if (!indexed) continue;
            const Numbers expected_indices(indices[i].begin(), indices[i].end());
            EXPECT_EQ(numbers_of(IFloatGeomParam(param).getIndexProperty(), i), expected_indices);
        }
    }
}

TEST(OGeomParam, ErrorsAndTimeSamplings)
{
    ScratchFile file("errors.abc");
    write_params(file, [](OCompoundProperty parent, OArchive& archive) {
        OV3fGeomParam first(parent, "p", false, kVertexScope, 1, TimeSamplingPtr(new TimeSampling(1.0, 5.0)));
        EXPECT_EQ(first.getTimeSampling()->getSampleTime(0), 5.0);
        EXPECT_EQ(archive.getNumTimeSamplings(), 2u);
        EXPECT_THROW(OV3fGeomParam(parent, "p", false, kVertexScope, 1), Alembic::Util::Exception);
        EXPECT_THROW(first.setFromPrevious(), Alembic::Util::Exception);
        OV3fGeomParam second(parent, "p", false, kVertexScope, 1, ErrorHandler::kQuietNoopPolicy);
        EXPECT_FALSE(second.valid());
        EXPECT_FALSE(bool(second));
        EXPECT_NE(second.getErrorHandler().getErrorLog().find("Already have a property named: p"), std::string::npos);

        OV3fGeomParam indexed(parent, "i", true, kVertexScope, 1);
        indexed.setTimeSampling(1);
        EXPECT_THROW(OV3fGeomParam().set(OV3fGeomParam::Sample()), Alembic::Util::Exception);
        EXPECT_EQ(OV3fGeomParam().getNumSamples(), 0u);
        EXPECT_FALSE(OV3fGeomParam().getTimeSampling());
        indexed.reset();
        EXPECT_FALSE(indexed.valid());
    });
    const ICompoundProperty inside(params(file), "i");
    for (const char* name : {".vals", ".indices"})
        EXPECT_EQ(inside.getPropertyHeader(name)->getTimeSampling()->getSampleTime(0), 5.0) << name;
}
