/// Transforms and cameras, written: limits of what a file holds, what is noted of their samples, topology errors.
#include "sample_series.h"

#include <algorithm>
#include <cmath>

using namespace sample_series;

namespace {

OArchive new_archive(const ScratchFile& file)
{
    return OArchive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
}

/// `rotations` operations of one channel, and as many matrices as asked for.
XformSample stack(size_t matrices, size_t rotations, double value)
{
    XformSample sample;
    M44d matrix;
    matrix[3][0] = value;
    for (size_t i = 0; i < matrices; ++i)
        sample.addOp(XformOp(kMatrixOperation), matrix);
    for (size_t i = 0; i < rotations; ++i)
        sample.addOp(XformOp(kRotateXOperation), value + static_cast<double>(i));
    return sample;
}

ICompoundProperty xform_compound(const ScratchFile& file, const std::string& name)
{
    return ICompoundProperty(open_archive(file).getTop().getChild(name).getProperties(), ".xform");
}

} // namespace

TEST(OXform, ChannelsAreAScalarWhileTheyFitAndAnArrayBeyond)
{
    ScratchFile file("channels.abc");
    const size_t counts[] = {255, 257};
    {
        OArchive archive = new_archive(file);
        XformSample refused = stack(15, 256 - 240, 0);
        EXPECT_THROW(OXform(archive.getTop(), "256").getSchema().set(refused), Alembic::Util::Exception);
        for (size_t count : counts) {
            OXform x(archive.getTop(), std::to_string(count));
            for (int i = 0; i < 2; ++i) {
                XformSample sample = stack(15, count - 240, i);
                x.getSchema().set(sample);
            }
            x.getSchema().setFromPrevious();
        }
    }
    for (size_t count : counts) {
        const ICompoundProperty compound = xform_compound(file, std::to_string(count));
        EXPECT_EQ(compound.getPropertyHeader(".vals")->isScalar(), count == 255) << count;
        const IXformSchema schema = IXform(open_archive(file).getTop(), std::to_string(count)).getSchema();
        ASSERT_EQ(schema.getNumSamples(), 3u);
        for (int i = 0; i < 3; ++i) {
            const XformSample expected = stack(15, count - 240, std::min(i, 1));
            EXPECT_EQ(schema.getValue(i).getMatrix(), expected.getMatrix()) << count << ", sample " << i;
        }
    }
}

TEST(OXform, MoreOperationsThanAFileHoldsAreRefused)
{
    ScratchFile file("operations.abc");
    {
        OArchive archive = new_archive(file);
        OXform fits(archive.getTop(), "fits"), refused(archive.getTop(), "refused", ErrorHandler::kQuietNoopPolicy);
        XformSample most = stack(0, 255, 1.0), too_many = stack(0, 256, 1.0);
        fits.getSchema().set(most);
        refused.getSchema().set(too_many);
        EXPECT_NE(refused.getSchema().getErrorHandler().getErrorLog().find("256 operations"), std::string::npos);
        EXPECT_EQ(refused.getSchema().getNumSamples(), 0u);
        EXPECT_FALSE(too_many.getIsTopologyFrozen());
    }
    EXPECT_EQ(IXform(open_archive(file).getTop(), "fits").getSchema().getNumOps(), 255u);
    EXPECT_EQ(xform_compound(file, "refused").getNumProperties(), 0u);
}

TEST(OXform, AnimatedChannelsAndIdentityAreNotedOverRandomSamples)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        ScratchFile file("animated.abc");
        std::mt19937 engine(seed);
        std::vector<uint32_t> animated;
        bool is_identity = true;
        {
            OArchive archive = new_archive(file);
            OXform x(archive.getTop(), "x");
            OXformSchema copy = x.getSchema(); // the list is written when the last copy goes
            std::vector<std::vector<double>> samples(1 + engine() % 4, std::vector<double>(6));
            const unsigned rarity = 1 + engine() % 12;
            for (auto& channels : samples)
                for (size_t c = 0; c < 6; ++c) {
                    const double identity = c < 3 ? 0.0 : 1.0;
                    // Below and above what counts as a change.
                    const double change[] = {0.0, 4e-13, 5.0};
                    channels[c] = identity + change[engine() % rarity == 0 ? 1 + engine() % 2 : 0];
                }
            for (size_t c = 0; c < 6; ++c)
                for (const auto& channels : samples) {
                    is_identity = is_identity && std::abs(channels[c] - (c < 3 ? 0.0 : 1.0)) <= 1e-12;
                    if (std::abs(channels[c] - samples[0][c]) > 1e-12 && (animated.empty() || animated.back() != c))
                        animated.push_back(static_cast<uint32_t>(c));
                }
            for (const auto& v : samples) {
                XformSample sample;
                sample.addOp(XformOp(kTranslateOperation), V3d(v[0], v[1], v[2]));
                sample.addOp(XformOp(kScaleOperation), V3d(v[3], v[4], v[5]));
                copy.set(sample);
            }
        }
        const ICompoundProperty compound = xform_compound(file, "x");
        ASSERT_EQ(compound.getPropertyHeader("isNotConstantIdentity") == nullptr, is_identity) << "seed " << seed;
        ASSERT_EQ(compound.getPropertyHeader(".animChans") == nullptr, animated.empty()) << "seed " << seed;
        if (animated.empty()) continue;
        EXPECT_EQ(numbers_of(IArrayProperty(compound, ".animChans"), 0), Numbers(animated.begin(), animated.end()));
    }
}

TEST(OXform, TheFirstSampleDecidesTheOperations)
{
    ScratchFile file("topology.abc");
    {
        OArchive archive = new_archive(file);
        OXform x(archive.getTop(), "x"), without(archive.getTop(), "without");
        XformSample one = stack(0, 1, 1.0), two = stack(0, 2, 1.0), other = stack(1, 0, 1.0), none;
        EXPECT_THROW(x.getSchema().setFromPrevious(), Alembic::Util::Exception);
        x.getSchema().set(one);
        EXPECT_THROW(x.getSchema().set(two), Alembic::Util::Exception);
        EXPECT_THROW(x.getSchema().set(other), Alembic::Util::Exception);
        EXPECT_THROW(x.getSchema().set(none), Alembic::Util::Exception);
        x.getSchema().set(one);
        without.getSchema().set(none);
        XformSample not_inheriting;
        not_inheriting.setInheritsXforms(false);
        without.getSchema().set(not_inheriting);
        EXPECT_THROW(without.getSchema().set(two), Alembic::Util::Exception);
    }
    EXPECT_EQ(IXform(open_archive(file).getTop(), "x").getSchema().getNumSamples(), 2u);
    const IXformSchema without = IXform(open_archive(file).getTop(), "without").getSchema();
    EXPECT_EQ(without.getNumSamples(), 2u);
    EXPECT_FALSE(without.getInheritsXforms(1));
}

TEST(OCamera, SamplesReadBackWithFewAndManyFilmBackOperations)
{
    for (size_t op_count : {0, 1, 127, 128, 255, 256}) {
        ScratchFile file("camera.abc");
        std::mt19937 engine(static_cast<unsigned>(op_count));
        std::vector<CameraSample> samples(3);
        {
            OArchive archive = new_archive(file);
            OCamera camera(archive.getTop(), "c");
            for (CameraSample& sample : samples) {
                sample.setFocalLength(engine() % 100);
                sample.setFarClippingPlane(engine());
                for (size_t i = 0; i < op_count; ++i) {
                    FilmBackXformOp op(static_cast<FilmBackXformOperationType>(i % 2), "hint " + std::to_string(i));
                    op.setChannelValue(1, engine());
                    sample.addOp(op);
                }
                camera.getSchema().set(sample);
            }
            CameraSample other = samples[0];
            other.addOp(FilmBackXformOp());
            EXPECT_THROW(camera.getSchema().set(other), Alembic::Util::Exception);
            camera.getSchema().setFromPrevious();
            EXPECT_EQ(camera.getSchema().getNumSamples(), 4u);
        }
        const ICameraSchema schema = ICamera(open_archive(file).getTop(), "c").getSchema();
        ASSERT_EQ(schema.getNumSamples(), 4u);
        for (size_t s = 0; s < 4; ++s) {
            const CameraSample &expected = samples[std::min<size_t>(s, 2)], sample = schema.getValue(s);
            for (size_t i = 0; i < 16; ++i)
                EXPECT_EQ(sample.getCoreValue(i), expected.getCoreValue(i));
            ASSERT_EQ(sample.getNumOps(), op_count);
            for (size_t i = 0; i < op_count; ++i) {
                EXPECT_EQ(sample[i].getTypeAndHint(), expected[i].getTypeAndHint());
                EXPECT_EQ(sample[i].getChannelValue(1), expected[i].getChannelValue(1));
            }
        }
    }
}
