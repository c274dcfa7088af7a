/// Transforms, read from files that other programs may have written oddly.
#include "schema_parts.h"

#include <gtest/gtest.h>

#include <random>

using namespace schema_parts;

namespace {

IXform reopened(const ScratchFile& file, const std::string& name = "x")
{
    return IXform(open_archive(file).getTop(), name);
}

} // namespace

TEST(IXform, WhatWasWrittenIsRead)
{
    ScratchFile file("random.abc");
    std::vector<std::vector<XformSample>> written;
    std::mt19937 engine(11);
    std::uniform_real_distribution<double> number(-10.0, 10.0);
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        for (int object = 0; object < 30; ++object) {
            OXform xform(archive.getTop(), "x" + std::to_string(object));
            std::vector<XformOp> ops;
            for (int i = 0; i < object; ++i) { // from none to more channels than fit a scalar
                ops.emplace_back(static_cast<XformOperationType>(engine() % 7), static_cast<uint8_t>(engine() % 5));
            }
            std::vector<XformSample> samples(3);
            for (XformSample& sample : samples) {
                for (XformOp op : ops) {
                    for (size_t i = 0; i < op.getNumChannels(); ++i) {
                        op.setChannelValue(i, number(engine));
                    }
                    sample.addOp(op);
                }
                sample.setInheritsXforms(engine() % 2 == 0);
                xform.getSchema().set(sample);
            }
            written.push_back(samples);
        }
    }
    const IObject top = open_archive(file).getTop();
    for (size_t object = 0; object < written.size(); ++object) {
        const IXform xform(top, "x" + std::to_string(object));
        ASSERT_EQ(xform.getSchema().getNumSamples(), 3u);
        for (size_t s = 0; s < 3; ++s) {
            const XformSample& expected = written[object][s];
            const XformSample sample = xform.getSchema().getValue(s);
            EXPECT_EQ(sample.getInheritsXforms(), expected.getInheritsXforms());
            EXPECT_EQ(sample.getMatrix(), expected.getMatrix()) << "object " << object;
            ASSERT_EQ(sample.getNumOps(), expected.getNumOps());
            for (size_t i = 0; i < sample.getNumOps(); ++i) {
                EXPECT_EQ(sample[i].getOpEncoding(), expected[i].getOpEncoding());
                for (size_t c = 0; c < sample[i].getNumChannels(); ++c) {
                    EXPECT_EQ(sample[i].getChannelValue(c), expected[i].getChannelValue(c));
                    EXPECT_TRUE(sample[i].isChannelAnimated(c));
                }
            }
        }
    }
}

TEST(IXform, ASampleThatWasWrittenReplacesItsOperationsInTurn)
{
    ScratchFile file("frozen.abc");
    OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
    OXform xform(archive.getTop(), "x");
    XformSample sample;
    sample.addOp(XformOp(kTranslateOperation), V3d(1.0));
    sample.addOp(XformOp(kRotateXOperation), 10.0);
    EXPECT_FALSE(sample.getIsTopologyFrozen());
    xform.getSchema().set(sample);
    EXPECT_TRUE(sample.getIsTopologyFrozen());
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(sample.addOp(XformOp(kTranslateOperation), V3d(double(round))), 0u);
        EXPECT_THROW(sample.addOp(XformOp(kScaleOperation), V3d(1.0)), Alembic::Util::Exception);
        EXPECT_EQ(sample.addOp(XformOp(kRotateXOperation), 20.0), 1u);
        EXPECT_EQ(sample.getNumOps(), 2u);
        EXPECT_EQ(sample.getTranslation(), V3d(double(round)));
    }
    XformSample none;
    OXform(archive.getTop(), "none").getSchema().set(none);
    EXPECT_THROW(none.addOp(XformOp()), Alembic::Util::Exception);
    none.reset();
    EXPECT_FALSE(none.getIsTopologyFrozen());
}

TEST(IXform, MissingValuesAreZeroAndTooManyAreLeftOut)
{
    ScratchFile file("counts.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        const Part ops = tuple<uint8_t>(".ops", kUint8POD, {0x10, 0x00}, false);
        const Part inherits = scalar<OBoolProperty>(".inherits", bool_t(false), false);
        write_object<XformSchemaInfo>(archive.getTop(), "few",
                                      {ops, inherits, tuple<double>(".vals", kFloat64POD, {1, 2, 3, 4}, false)});
        write_object<XformSchemaInfo>(
            archive.getTop(), "many",
            {ops, inherits, array<ODoubleArrayProperty>(".vals", std::vector<double>{1, 2, 3, 4, 5, 6, 7}, false)});
        write_object<XformSchemaInfo>(archive.getTop(), "none", {ops, inherits});
        write_object<XformSchemaInfo>(archive.getTop(), "empty",
                                      {ops, array<ODoubleArrayProperty>(".vals", std::vector<double>(), false)});
        write_object<XformSchemaInfo>(
            archive.getTop(), "animated",
            {ops, array<OUInt32ArrayProperty>(".animChans", std::vector<uint32_t>{4000000000u, 5, 0, 99}, false)});
    }
    const auto channels = [&](const std::string& name) {
        const XformSample sample = reopened(file, name).getSchema().getValue();
        EXPECT_EQ(sample.getNumOps(), 2u);
        std::vector<double> values;
        for (size_t i = 0; i < 6; ++i) {
            values.push_back(sample[i / 3].getChannelValue(i % 3));
        }
        return values;
    };
    typedef std::vector<double> Values;
    EXPECT_EQ(channels("few"), Values({1, 2, 3, 4, 0, 0}));
    EXPECT_EQ(channels("many"), Values({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(channels("none"), Values(6, 0.0));
    EXPECT_EQ(channels("empty"), Values(6, 0.0));
    EXPECT_FALSE(reopened(file, "few").getSchema().getValue().getInheritsXforms());
    EXPECT_TRUE(reopened(file, "empty").getSchema().getValue().getInheritsXforms());
    const XformSample animated = reopened(file, "animated").getSchema().getValue();
    EXPECT_TRUE(animated[0].isXAnimated() && animated[1].isZAnimated());
    EXPECT_FALSE(animated[0].isZAnimated() || animated[1].isXAnimated());
}

TEST(IXform, APropertyIsSelectedByItsOwnTimeSampling)
{
    ScratchFile file("samplings.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        const uint32_t slow = archive.addTimeSampling(TimeSampling(10.0, 0.0));
        OCompoundProperty schema = make_schema<XformSchemaInfo>(archive.getTop(), "x");
        OBoolProperty inherits(schema, ".inherits");
        const uint8_t code = 0x40;
        OScalarProperty(schema, ".ops", DataType(kUint8POD, 1)).set(&code);
        OScalarProperty values(schema, ".vals", DataType(kFloat64POD, 1), slow);
        for (double angle = 0.0; angle < 3.0; ++angle) {
            inherits.set(angle != 1.0);
            values.set(&angle);
        }
    }
    const IXform xform = reopened(file);
    const XformSample sample = xform.getSchema().getValue(ISampleSelector(10.0));
    EXPECT_TRUE(sample.getInheritsXforms()) << "sample 2, the last";
    EXPECT_EQ(sample[0].getAngle(), 1.0) << "sample 1, at 10 s";
    EXPECT_FALSE(xform.getSchema().getInheritsXforms(ISampleSelector(1.2)));
}

TEST(IXform, AnAbsurdNumberOfOperationsIsRefused)
{
    ScratchFile file("absurd.abc");
    {
        OArchive archive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
        for (const size_t count : {size_t(300), size_t(1) << 20}) {
            write_object<XformSchemaInfo>(
                archive.getTop(), "x" + std::to_string(count),
                {array<OUcharArrayProperty>(".ops", std::vector<uint8_t>(count, uint8_t(0x10)), false)});
        }
    }
    EXPECT_EQ(reopened(file, "x300").getSchema().getValue().getNumOpChannels(), 900u);
    EXPECT_THROW(reopened(file, "x1048576"), Alembic::Util::Exception);
}
