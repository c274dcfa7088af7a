/// Constructor arguments, sample selectors, archive information, schema metadata.
#include "scratch.h"

#include <cfloat>

namespace abc_tests {
namespace {

TEST(Argument, LaterOnesWinAndAnyOrderWorks)
{
    AbcA::MetaData meta_data;
    meta_data.set("k", "v");
    const AbcA::TimeSamplingPtr sampling(new AbcA::TimeSampling(0.5, 0.0));
    EXPECT_EQ(GetErrorHandlerPolicyFromArgs(QUIET, NOISY), NOISY);
    EXPECT_EQ(GetErrorHandlerPolicyFromArgs(1u, QUIET, meta_data), QUIET);
    EXPECT_EQ(GetErrorHandlerPolicyFromArgs(Argument()), THROW);
    EXPECT_EQ(GetTimeSamplingIndex(meta_data, 3u, THROW), 3u);
    EXPECT_EQ(GetTimeSamplingIndex(0), 0u);
    EXPECT_EQ(GetTimeSampling(QUIET, sampling), sampling);
    EXPECT_EQ(GetTimeSampling(QUIET), nullptr);
    EXPECT_EQ(GetMetaData(meta_data).get("k"), "v");
    EXPECT_EQ(GetSchemaInterpMatching(kStrictMatching, QUIET), kStrictMatching);
    EXPECT_EQ(GetSchemaInterpMatching(QUIET), kNoMatching);
    EXPECT_TRUE(IsSparse(1u, kSparse));
    EXPECT_FALSE(IsSparse(1u));
    IObject quiet(IObject(), "none", QUIET);
    EXPECT_EQ(GetErrorHandlerPolicy(quiet, Argument()), QUIET);
    EXPECT_EQ(GetErrorHandlerPolicy(quiet, NOISY), NOISY);
    EXPECT_EQ(GetErrorHandlerPolicy(AbcA::ObjectReaderPtr(), 1u), THROW);
}

TEST(SampleSelector, ClampsToTheSamplesThatAreThere)
{
    const AbcA::TimeSamplingPtr sampling(new AbcA::TimeSampling(1.0, 10.0));
    EXPECT_EQ(ISampleSelector().getIndex(sampling, 5), 0);
    EXPECT_EQ(ISampleSelector(3).getIndex(sampling, 5), 3);
    EXPECT_EQ(ISampleSelector(7).getIndex(sampling, 5), 4);
    EXPECT_EQ(ISampleSelector(index_t(-4)).getIndex(sampling, 5), 0); // time 0, before the first
    EXPECT_EQ(ISampleSelector(2).getIndex(sampling, 0), -1);
    EXPECT_EQ(ISampleSelector(99.0, ISampleSelector::kCeilIndex).getIndex(sampling, 0), -1);
    EXPECT_EQ(ISampleSelector(11.4, ISampleSelector::kFloorIndex).getIndex(sampling, 5), 1);
    EXPECT_EQ(ISampleSelector(11.4, ISampleSelector::kCeilIndex).getIndex(sampling, 5), 2);
    EXPECT_EQ(ISampleSelector(11.4).getIndex(sampling, 5), 1);
    EXPECT_EQ(ISampleSelector(99.0).getIndex(sampling, 5), 4);
    const ISampleSelector truncated = 1.9; // not spelled as a time: an index
    EXPECT_EQ(truncated.getRequestedIndex(), 1);
    EXPECT_EQ(ISampleSelector(0.5).getRequestedIndex(), -1);
    EXPECT_EQ(ISampleSelector(5).getRequestedTime(), 0.0);
}

TEST(ArchiveInfo, ComesBackWithTheMetadataGiven)
{
    ScratchFile file;
    AbcA::MetaData meta_data;
    meta_data.set("more", "1");
    CreateArchiveWithInfo(WriteArchive(), file.path(), 23.976, "the application", "the description", meta_data);
    IArchive archive(ReadArchive(), file.path());
    std::string application, library, date, description;
    uint32_t version = 0;
    double fps = 0.0;
    GetArchiveInfo(archive, application, library, version, date, description, fps);
    EXPECT_EQ(application, "the application");
    EXPECT_EQ(description, "the description");
    EXPECT_EQ(library, AbcA::GetLibraryVersion());
    EXPECT_EQ(version, uint32_t(ALEMBIC_LIBRARY_VERSION));
    EXPECT_EQ(date.size(), 24u); // Sat Nov 21 04:17:09 2026
    EXPECT_DOUBLE_EQ(fps, 23.976);
    EXPECT_EQ(archive.getTop().getMetaData().get("more"), "1");
    EXPECT_EQ(archive.getTop().getMetaData().get(kDCCFPSKey), "23.976000");
}

/// The range of an archive with so many samples on the default sampling, on one from 2 s and on one from 5 s, each with
/// steps of 1 s.
std::pair<double, double> range_of(int on_default, int from_2, int from_5)
{
    ScratchFile file;
    {
        OArchive archive(WriteArchive(), file.path());
        OCompoundProperty p = archive.getTop().getProperties();
        const uint32_t samplings[3] = {0, archive.addTimeSampling(AbcA::TimeSampling(1.0, 2.0)),
                                       archive.addTimeSampling(AbcA::TimeSampling(1.0, 5.0))};
        const int counts[3] = {on_default, from_2, from_5};
        for (int s = 0; s < 3; ++s) {
            OInt32Property property(p, "p" + std::to_string(s), samplings[s]);
            for (int i = 0; i < counts[s]; ++i)
                property.set(i);
        }
    }
    IArchive archive(ReadArchive(), file.path());
    std::pair<double, double> range;
    GetArchiveStartAndEndTime(archive, range.first, range.second);
    return range;
}

TEST(ArchiveTimeRange, PrefersSamplingsWithSeveralSamples)
{
    typedef std::pair<double, double> Range;
    EXPECT_EQ(range_of(9, 2, 4), Range(2.0, 8.0));
    EXPECT_EQ(range_of(9, 1, 3), Range(5.0, 7.0));
    EXPECT_EQ(range_of(9, 1, 1), Range(2.0, 5.0));
    EXPECT_EQ(range_of(9, 1, 0), Range(2.0, 2.0));
    EXPECT_EQ(range_of(9, 0, 0), Range(0.0, 8.0));
    EXPECT_EQ(range_of(0, 0, 0), Range(DBL_MAX, -DBL_MAX));
}

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("Test_Demo_v1", "Test_Base_v1", ".demo", true, DemoInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("", "", ".any", false, AnyInfo);
typedef ISchemaObject<ISchema<DemoInfo>> IDemo;
typedef OSchemaObject<OSchema<DemoInfo>> ODemo;

TEST(Schema, MetadataNameItUnlessSparse)
{
    ScratchFile file;
    AbcA::MetaData mine;
    mine.set("mine", "1");
    {
        OArchive archive(WriteArchive(), file.path());
        ODemo full(archive.getTop(), "full", mine, AbcA::TimeSamplingPtr(new AbcA::TimeSampling(0.5, 0.0)));
        ODemo sparse(archive.getTop(), "sparse", kSparse, mine);
        EXPECT_TRUE(full && sparse && full.getSchema());
        EXPECT_TRUE(ODemo::matches(full.getHeader()));
        EXPECT_FALSE(ODemo::matches(sparse.getHeader()));
    }
    IArchive archive(ReadArchive(), file.path());
    const IObject full = archive.getTop().getChild("full"), sparse = archive.getTop().getChild("sparse");
    EXPECT_EQ(full.getMetaData().serialize(),
              "mine=1;schema=Test_Demo_v1;schemaBaseType=Test_Base_v1;schemaObjTitle=Test_Demo_v1:.demo");
    const IDemo demo(full);
    EXPECT_EQ(demo.getSchema().getMetaData().serialize(), "schema=Test_Demo_v1;schemaBaseType=Test_Base_v1");
    EXPECT_EQ(sparse.getMetaData().serialize(), "mine=1");
    EXPECT_EQ(IDemo(sparse).getSchema().getMetaData().serialize(), "replace=1");

    EXPECT_TRUE(IDemo::matches(full.getHeader()) && IDemo::matches(full.getMetaData(), kSchemaTitleMatching));
    EXPECT_FALSE(IDemo::matches(sparse.getHeader()) || IDemo::matches(sparse.getHeader(), kSchemaTitleMatching));
    EXPECT_TRUE(IDemo::matches(sparse.getHeader(), kNoMatching));
    EXPECT_TRUE(ISchema<DemoInfo>::matches(full.getMetaData()));
    EXPECT_FALSE(IDemo::matches(demo.getSchema().getMetaData())); // a compound has no object title
    EXPECT_TRUE(ISchema<DemoInfo>::matches(demo.getSchema().getHeader()));
    EXPECT_TRUE(ISchemaObject<ISchema<AnyInfo>>::matches(sparse.getHeader()));
    EXPECT_EQ(IDemo::getSchemaObjTitle(), "Test_Demo_v1:.demo");

    IObject* by_base = new IDemo(full);
    EXPECT_TRUE(by_base->valid());
    by_base->reset();
    EXPECT_FALSE(*by_base);
    delete by_base;
}

} // namespace
} // namespace abc_tests
