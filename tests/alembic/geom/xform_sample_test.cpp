/// Operations and samples of transforms: values only, no files.
#include <Alembic/AbcGeom/XformSample.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Alembic::AbcGeom;

namespace {

constexpr XformOperationType all_types[] = {kScaleOperation,   kTranslateOperation, kRotateOperation, kMatrixOperation,
                                            kRotateXOperation, kRotateYOperation,   kRotateZOperation};

class Random
{
public:
    explicit Random(unsigned seed)
        : engine_(seed)
    {
    }
    double number(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }
    V3d vector(double low, double high) { return V3d(number(low, high), number(low, high), number(low, high)); }
    int index(int count) { return std::uniform_int_distribution<int>(0, count - 1)(engine_); }
    XformOp operation()
    {
        XformOp op(all_types[index(7)]);
        for (size_t i = 0; i < op.getNumChannels(); ++i) {
            op.setChannelValue(i, number(0.25, 2.0));
        }
        if (op.isMatrixOp()) {
            for (size_t i = 3; i < 16; i += 4) {
                op.setChannelValue(i, i == 15 ? 1.0 : 0.0); // stays affine
            }
        }
        return op;
    }

private:
    std::mt19937 engine_;
};

/// Rodrigues' formula; right-handed.
V3d rotated(const V3d& point, V3d axis, double degrees)
{
    axis.normalize();
    const double angle = degrees * M_PI / 180.0;
    return point * std::cos(angle) + axis.cross(point) * std::sin(angle) +
           axis * (axis.dot(point) * (1.0 - std::cos(angle)));
}

/// What an operation does to a point, from its channels alone.
V3d applied(const XformOp& op, const V3d& p)
{
    const auto c = [&](size_t i) { return op.getChannelValue(i); };
    switch (op.getType()) {
    case kScaleOperation:
        return V3d(p.x * c(0), p.y * c(1), p.z * c(2));
    case kTranslateOperation:
        return p + V3d(c(0), c(1), c(2));
    case kRotateOperation:
        return rotated(p, V3d(c(0), c(1), c(2)), c(3));
    case kRotateXOperation:
        return rotated(p, V3d(1, 0, 0), c(0));
    case kRotateYOperation:
        return rotated(p, V3d(0, 1, 0), c(0));
    case kRotateZOperation:
        return rotated(p, V3d(0, 0, 1), c(0));
    default:
        return V3d(p.x * c(0) + p.y * c(4) + p.z * c(8) + c(12), p.x * c(1) + p.y * c(5) + p.z * c(9) + c(13),
                   p.x * c(2) + p.y * c(6) + p.z * c(10) + c(14));
    }
}

} // namespace

TEST(XformSample, MatrixAppliesTheLastOperationFirst)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        XformSample sample;
        for (int i = random.index(7); i > 0; --i) {
            sample.addOp(random.operation());
        }
        const V3d point = random.vector(-1.0, 1.0);
        V3d expected = point;
        for (size_t i = sample.getNumOps(); i-- > 0;) {
            expected = applied(sample[i], expected);
        }
        EXPECT_LT((point * sample.getMatrix() - expected).length(), 1e-9 * (1.0 + expected.length()))
            << "seed " << seed;
    }
}

TEST(XformSample, PartsOfTheMatrixRebuildIt)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        XformSample built;
        built.setTranslation(random.vector(-5.0, 5.0));
        built.setRotation(random.vector(0.1, 1.0), random.number(-170.0, 170.0));
        built.setScale(random.vector(0.5, 2.0));
        XformSample by_euler;
        by_euler.setTranslation(built.getTranslation());
        by_euler.setZRotation(built.getZRotation());
        by_euler.setYRotation(built.getYRotation());
        by_euler.setXRotation(built.getXRotation());
        by_euler.setScale(built.getScale());
        EXPECT_TRUE(by_euler.getMatrix().equalWithAbsError(built.getMatrix(), 1e-9)) << "seed " << seed;

        XformSample turn;
        turn.setRotation(built[1].getAxis(), built[1].getAngle());
        XformSample again;
        again.setRotation(turn.getAxis(), turn.getAngle());
        EXPECT_TRUE(again.getMatrix().equalWithAbsError(turn.getMatrix(), 1e-9)) << "seed " << seed;
    }
}

TEST(XformSample, AFlatMatrixHasPartsToo)
{
    XformSample flat;
    flat.addOp(XformOp(kScaleOperation)); // channels start at 0
    EXPECT_NO_THROW(flat.getScale());
    EXPECT_NO_THROW(flat.getAngle());
    EXPECT_EQ(flat.getTranslation(), V3d(0.0));
}

TEST(XformSample, AddingAndSettingDoNotMixUntilReset)
{
    XformSample sample;
    sample.addOp(XformOp(kScaleOperation), V3d(1.0));
    EXPECT_THROW(sample.setScale(V3d(1.0)), Alembic::Util::Exception);
    sample.reset();
    EXPECT_NO_THROW(sample.setScale(V3d(1.0)));
    EXPECT_THROW(sample.addOp(XformOp(kRotateXOperation), 1.0), Alembic::Util::Exception);
    EXPECT_EQ(sample.getNumOps(), 1u);
}

TEST(XformSample, AValueMustFitTheOperation)
{
    XformSample sample;
    EXPECT_THROW(sample.addOp(XformOp(kMatrixOperation), V3d(1.0)), Alembic::Util::Exception);
    EXPECT_THROW(sample.addOp(XformOp(kRotateXOperation), V3d(1.0)), Alembic::Util::Exception);
    EXPECT_THROW(sample.addOp(XformOp(kScaleOperation), V3d(1.0), 3.0), Alembic::Util::Exception);
    EXPECT_THROW(sample.addOp(XformOp(kScaleOperation), M44d()), Alembic::Util::Exception);
    EXPECT_THROW(sample.addOp(XformOp(kTranslateOperation), 3.0), Alembic::Util::Exception);
    EXPECT_EQ(sample.getNumOps(), 0u);
    EXPECT_THROW(sample[0], Alembic::Util::Exception);
    EXPECT_THROW(sample.getOp(size_t(-1)), Alembic::Util::Exception);
}

TEST(XformOp, EveryEncodingGivesAnOperation)
{
    const int last_hint[7] = {0, 4, 1, 1, 1, 1, 1};
    for (int code = 0; code < 256; ++code) {
        const XformOp op{static_cast<uint8_t>(code)};
        const int type = code >> 4, hint = code & 15;
        EXPECT_EQ(int(op.getType()), type);
        EXPECT_EQ(int(op.getHint()), type < 7 && hint <= last_hint[type] ? hint : 0) << "code " << code;
        EXPECT_EQ(int(op.getOpEncoding()), type << 4 | op.getHint());
        if (type >= 7) {
            // Nobody's operation: it has no values and does nothing.
            EXPECT_EQ(op.getNumChannels(), 0u);
            XformSample sample;
            sample.addOp(op);
            EXPECT_EQ(sample.getMatrix(), M44d());
            EXPECT_THROW(op.getAngle(), Alembic::Util::Exception);
        }
    }
}

TEST(XformOp, ChannelsAreChecked)
{
    for (const XformOperationType type : all_types) {
        XformOp op(type);
        const size_t count = op.getNumChannels();
        EXPECT_NO_THROW(op.setChannelValue(count - 1, 1.0));
        EXPECT_THROW(op.setChannelValue(count, 1.0), Alembic::Util::Exception);
        EXPECT_THROW(op.getChannelValue(count), Alembic::Util::Exception);
        EXPECT_THROW(op.getDefaultChannelValue(size_t(-1)), Alembic::Util::Exception);
        EXPECT_FALSE(op.isChannelAnimated(count));
    }
}

TEST(XformOp, DefaultsOfAllChannelsAreTheIdentity)
{
    for (const XformOperationType type : all_types) {
        XformOp op(type);
        for (size_t i = 0; i < op.getNumChannels(); ++i) {
            op.setChannelValue(i, op.getDefaultChannelValue(i));
        }
        XformSample sample;
        sample.addOp(op);
        EXPECT_EQ(sample.getMatrix(), M44d()) << "type " << int(type);
    }
}
