/// Two samples of a transform: the sample between them, and what there is when their operations differ.
#include <xform_samples.h>

#include <abc_pivot_data.h>
#include <gtest/gtest.h>
#include <pivot_decomposition.h>
#include <support/xform_stacks.h>
#include <xform_matrix.h>

#include <cmath>

using namespace xform_stacks;

namespace {

using Matrix = GMathMatrix4x4<double>;

XformSpan span_of(const AbcG::XformSample& floor, const AbcG::XformSample& ceil, double weight)
{
    XformSpan span;
    span.floor = floor;
    span.ceil = ceil;
    span.weight = weight;
    span.is_between = true;
    return span;
}

AbcG::XformSample axis_angle(const AbcG::V3d& axis, double degrees)
{
    AbcG::XformSample sample;
    sample.addOp(AbcG::XformOp(AbcG::kRotateOperation), axis, degrees);
    return sample;
}

AbcG::XformSample translation(double x, bool inherits = true)
{
    AbcG::XformSample sample;
    sample.addOp(AbcG::XformOp(AbcG::kTranslateOperation), AbcG::V3d(x, 0, 0));
    sample.setInheritsXforms(inherits);
    return sample;
}

AbcG::XformSample translation_and_scale(double x, double scale, bool inherits = true)
{
    AbcG::XformSample sample = translation(x, inherits);
    sample.addOp(AbcG::XformOp(AbcG::kScaleOperation), AbcG::V3d(scale));
    return sample;
}

} // namespace

TEST(XformInterpolation, BlendsChannelsAndKeepsOperationsHintsAndOrder)
{
    Random random(3);
    for (int i = 0; i < 300; ++i) {
        const std::vector<AbcG::XformOp> ops = random_canonical_operations(random);
        const AbcG::XformSample floor = random_sample(random, ops), ceil = random_sample(random, ops);
        AbcG::XformSample between = interpolate_xform(floor, ceil, 0.3);
        ASSERT_EQ(between.getNumOps(), ops.size());
        for (std::size_t op = 0; op < ops.size(); ++op) {
            ASSERT_EQ(between[op].getOpEncoding(), ops[op].getOpEncoding());
            if (!ops[op].isTranslateOp() && !ops[op].isScaleOp() && !ops[op].isMatrixOp()) continue;
            for (std::size_t c = 0; c < ops[op].getNumChannels(); ++c)
                EXPECT_EQ(between[op].getChannelValue(c),
                          (1.0 - 0.3) * floor[op].getChannelValue(c) + 0.3 * ceil[op].getChannelValue(c));
        }
    }
}

TEST(XformInterpolation, InheritsWhateverTheSamplesSay)
{
    EXPECT_TRUE(interpolate_xform(translation(0, false), translation(1, false), 0.5).getInheritsXforms());
    const Matrix parent = matrix_of(translation(100));
    XformSpan span = span_of(translation(0, false), translation(1, false), 0.5);
    EXPECT_EQ(matrix_of(span, &parent), matrix_of(translation(100.5)));
    span.is_between = false;
    EXPECT_EQ(matrix_of(span, &parent), matrix_of(translation(0)));
}

TEST(XformInterpolation, AxisAngleTakesTheShorterArcAndHitsItsEnds)
{
    Random random(7);
    for (int i = 0; i < 2000; ++i) {
        const AbcG::XformSample floor =
            axis_angle({number(random, 2), number(random, 2), number(random, 2)}, number(random, 500));
        const AbcG::XformSample ceil =
            axis_angle({number(random, 2), number(random, 2), number(random, 2)}, number(random, 500));
        const Matrix start = matrix_of(floor), end = matrix_of(ceil);
        const Matrix third = matrix_of(interpolate_xform(floor, ceil, 1.0 / 3.0)) * start.get_transpose();
        EXPECT_LT(relative_difference(third * third * third * start, end), 1e-9) << "case " << i;
        EXPECT_GE(third[0][0] + third[1][1] + third[2][2], 2.0 - 1e-9) << "more than half a turn, case " << i;
        EXPECT_LT(relative_difference(matrix_of(interpolate_xform(floor, ceil, 0.0)), start), 1e-9);
        EXPECT_LT(relative_difference(matrix_of(interpolate_xform(floor, ceil, 1.0)), end), 1e-9);
    }
}

TEST(XformInterpolation, ARotationThatVanishesHasNoAxis)
{
    const AbcG::V3d axis(0, 0, 2);
    const AbcG::XformSample middle = interpolate_xform(axis_angle(axis, -1e-7), axis_angle(axis, 1e-7), 0.5);
    EXPECT_EQ(middle[0].getAxis(), AbcG::V3d(0.0));
    EXPECT_NEAR(middle[0].getAngle(), 0.0, 1e-5);
    const AbcG::XformSample visible = interpolate_xform(axis_angle(axis, 1e-5), axis_angle(axis, 3e-5), 0.5);
    EXPECT_NEAR(visible[0].getAxis().z, 1.0, 1e-12);
    // Without an axis there is no rotation to begin with.
    const Matrix half = matrix_of(interpolate_xform(axis_angle(AbcG::V3d(0.0), 77), axis_angle(axis, 90), 0.5));
    EXPECT_LT(relative_difference(half, matrix_of(axis_angle(axis, 45))), 1e-9);
}

TEST(XformsOfDifferentOperations, AreBlendedByElementBelowAParent)
{
    const Matrix parent = matrix_of(translation_and_scale(10, 2));
    const auto blended = [&](bool floor_inherits, bool ceil_inherits) {
        XformSpan span = span_of(translation(1, floor_inherits), translation_and_scale(5, 3, ceil_inherits), 0.25);
        return matrix_of(span, &parent);
    };
    // Scale and translation along x of the floor and ceiling matrices: 1, 1 and 3, 5; below the parent 2, 12 and 6, 20.
    EXPECT_EQ(blended(true, true)[0][0], 2 * (0.75 * 1 + 0.25 * 3));
    EXPECT_EQ(blended(true, true)[0][3], 10 + 2 * (0.75 * 1 + 0.25 * 5));
    EXPECT_EQ(blended(true, false)[0][0], 0.75 * 2 + 0.25 * 3);
    EXPECT_EQ(blended(true, false)[0][3], 0.75 * 12 + 0.25 * 5);
    EXPECT_EQ(blended(false, true)[0][0], 0.75 * 1 + 0.25 * 6);
    EXPECT_EQ(blended(false, true)[0][3], 0.75 * 1 + 0.25 * 20);
    EXPECT_EQ(blended(false, false)[0][3], 0.75 * 1 + 0.25 * 5);
}

TEST(XformsOfDifferentOperations, AreNotBlendedWithoutAParentNorInComponents)
{
    XformSpan span = span_of(translation(1), translation_and_scale(5, 3, false), 0.25);
    EXPECT_EQ(matrix_of(span, nullptr), Matrix());
    const AbcPivotData data = decompose_xform(span);
    EXPECT_FALSE(data.use_matrix);
    EXPECT_TRUE(data.inherits_transform);
    EXPECT_EQ(data.get_global_matrix(), Matrix());
    EXPECT_EQ(Matrix(data.matrix.get_data()), Matrix());
}
