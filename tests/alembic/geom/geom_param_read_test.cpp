/// Geometry parameters, read: plain and indexed ones, and what damaged files hold.
#include "schema_parts.h"

#include <gtest/gtest.h>

#include <random>

using namespace schema_parts;

namespace {

/// A parameter as it is stored when indexed, whatever the indices.
void write_indexed(OCompoundProperty parent, const std::string& name, const std::vector<V2f>& vals,
                   const std::vector<uint32_t>& indices)
{
    MetaData metadata;
    metadata.set("isGeomParam", "true");
    metadata.set("podName", "float32_t");
    metadata.set("podExtent", "2");
    metadata.set("interpretation", "vector");
    metadata.set("geoScope", "fvr");
    OCompoundProperty param(parent, name, metadata);
    OV2fArrayProperty(param, ".vals", metadata).set(V2fArraySample(vals));
    OUInt32ArrayProperty(param, ".indices").set(UInt32ArraySample(indices));
}

std::vector<V2f> elements(const V2fArraySamplePtr& sample)
{
    return std::vector<V2f>(sample->get(), sample->get() + sample->size());
}

} // namespace

TEST(GeomParam, ExpandedAndIndexedAgree)
{
    ScratchFile file("random.abc");
    std::mt19937 engine(3);
    std::vector<std::vector<V2f>> expanded;
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OCompoundProperty top = archive.getTop().getProperties();
        for (int i = 0; i < 40; ++i) {
            const bool indexed = i % 2 == 0;
            std::vector<V2f> vals(1 + engine() % 50);
            for (V2f& value : vals) {
                value = V2f(float(engine()), float(engine()));
            }
            std::vector<uint32_t> indices(indexed ? 1 + engine() % 200 : vals.size());
            std::vector<V2f> all;
            for (size_t k = 0; k < indices.size(); ++k) {
                indices[k] = indexed ? uint32_t(engine() % vals.size()) : uint32_t(k);
                all.push_back(vals[indices[k]]);
            }
            OV2fGeomParam param(top, "p" + std::to_string(i), indexed, kFacevaryingScope, 1);
            param.set(OV2fGeomParam::Sample(V2fArraySample(vals), UInt32ArraySample(indices), kFacevaryingScope));
            expanded.push_back(all);
        }
    }
    const IArchive archive = open_archive(file);
    for (size_t i = 0; i < expanded.size(); ++i) {
        const IV2fGeomParam param(archive.getTop().getProperties(), "p" + std::to_string(i));
        EXPECT_EQ(param.isIndexed(), i % 2 == 0);
        EXPECT_EQ(elements(param.getExpandedValue().getVals()), expanded[i]);
        const IV2fGeomParam::Sample indexed = param.getIndexedValue();
        std::vector<V2f> rebuilt;
        for (size_t k = 0; k < indexed.getIndices()->size(); ++k) {
            rebuilt.push_back((*indexed.getVals())[(*indexed.getIndices())[k]]);
        }
        EXPECT_EQ(rebuilt, expanded[i]) << "param " << i;
        EXPECT_EQ(indexed.isIndexed(), param.isIndexed());
        EXPECT_EQ(indexed.getScope(), kFacevaryingScope);
    }
}

TEST(GeomParam, AnIndexWithoutValueIsAnError)
{
    ScratchFile file("damaged.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OCompoundProperty top = archive.getTop().getProperties();
        const std::vector<V2f> vals(3, V2f(1, 2));
        write_indexed(top, "just beyond", vals, {0, 1, 2, 3});
        write_indexed(top, "far beyond", vals, {4294967295u});
        write_indexed(top, "no values", {}, {0});
        write_indexed(top, "nothing", {}, {});
        write_indexed(top, "no indices", vals, {});
    }
    const ICompoundProperty top = open_archive(file).getTop().getProperties();
    for (const char* name : {"just beyond", "far beyond", "no values"}) {
        const IV2fGeomParam param(top, name);
        EXPECT_NO_THROW(param.getIndexedValue()) << name;
        try {
            param.getExpandedValue();
            FAIL() << name << " was expanded";
        } catch (const Alembic::Util::Exception& error) {
            EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
        }
    }
    EXPECT_EQ(IV2fGeomParam(top, "nothing").getExpandedValue().getVals()->size(), 0u);
    EXPECT_EQ(IV2fGeomParam(top, "no indices").getExpandedValue().getVals()->size(), 3u) << "the values as they are";
}

TEST(GeomParam, ExpandingLeavesTheIndicesOfAReusedSample)
{
    ScratchFile file("reused.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        write_indexed(archive.getTop().getProperties(), "p", {V2f(1, 2), V2f(3, 4)}, {1, 1, 0});
    }
    const IV2fGeomParam param(open_archive(file).getTop().getProperties(), "p");
    IV2fGeomParam::Sample sample;
    param.getExpanded(sample);
    EXPECT_EQ(sample.getIndices(), nullptr);
    param.getIndexed(sample);
    param.getExpanded(sample);
    EXPECT_EQ(sample.getVals()->size(), 3u);
    EXPECT_EQ(sample.getIndices()->size(), 3u);
    sample.reset();
    EXPECT_FALSE(sample.valid());
    EXPECT_FALSE(sample.isIndexed());
}

TEST(GeomParam, WhatIsNoParameterIsRefused)
{
    ScratchFile file("refused.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        OCompoundProperty top = archive.getTop().getProperties();
        OFloatProperty(top, "scalar").set(1.0f);
        OCompoundProperty(top, "compound");
        OV3fArrayProperty(top, "other").set(V3fArraySample(std::vector<V3f>(2)));
        MetaData claims;
        claims.set("podName", "float32_t");
        claims.set("podExtent", "2");
        claims.set("arrayExtent", "-7");
        claims.set("geoScope", "nowhere");
        OCompoundProperty(top, "empty claim", claims);
        OFloatArrayProperty(top, "odd", claims).set(FloatArraySample(std::vector<float>(2)));
    }
    const ICompoundProperty top = open_archive(file).getTop().getProperties();
    for (const char* name : {"scalar", "compound", "other", "empty claim", "absent"}) {
        EXPECT_THROW(IV2fGeomParam(top, name), Alembic::Util::Exception) << name;
        const IV2fGeomParam quiet(top, name, ErrorHandler::kQuietNoopPolicy);
        EXPECT_FALSE(quiet.valid()) << name;
        EXPECT_NE(quiet.getErrorHandler().getErrorLog(), "") << name;
        EXPECT_FALSE(quiet.getExpandedValue().valid()) << name;
    }
    const IFloatGeomParam odd(top, "odd");
    EXPECT_EQ(odd.getArrayExtent(), 1u);
    EXPECT_EQ(odd.getScope(), kUnknownScope);
}

TEST(GeomParam, ATypeWithoutInterpretationTakesAnyExtent)
{
    ScratchFile file("extents.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        MetaData metadata;
        metadata.set("podName", "float32_t");
        metadata.set("podExtent", "4");
        OCompoundProperty param(archive.getTop().getProperties(), "p", metadata);
        const std::vector<float> rows = {0, 1, 2, 3, 10, 11, 12, 13};
        OArrayProperty(param, ".vals", DataType(kFloat32POD, 4), metadata)
            .set(ArraySample(rows.data(), DataType(kFloat32POD, 4), Dimensions(2)));
        OUInt32ArrayProperty(param, ".indices").set(UInt32ArraySample(std::vector<uint32_t>{1, 0, 1}));
    }
    const IFloatGeomParam param(open_archive(file).getTop().getProperties(), "p");
    const FloatArraySamplePtr vals = param.getExpandedValue().getVals();
    ASSERT_EQ(vals->size(), 3u);
    EXPECT_EQ(vals->getDataType(), DataType(kFloat32POD, 4));
    EXPECT_EQ(std::vector<float>(vals->get(), vals->get() + 12),
              std::vector<float>({10, 11, 12, 13, 0, 1, 2, 3, 10, 11, 12, 13}));
}
