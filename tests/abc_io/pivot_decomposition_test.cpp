/// Components of transforms: which stacks have them, and which codes the orders get.
#include <pivot_decomposition.h>

#include <gtest/gtest.h>
#include <support/xform_stacks.h>
#include <xform_matrix.h>

#include <utility>
#include <vector>

using namespace xform_stacks;

namespace {

using Matrix = GMathMatrix4x4<double>;

// The operations that the tables below are made of.
constexpr std::pair<AbcG::XformOperationType, int> translate{AbcG::kTranslateOperation, AbcG::kTranslateHint},
    scale_pivot{AbcG::kTranslateOperation, AbcG::kScalePivotPointHint},
    scale_pivot_translate{AbcG::kTranslateOperation, AbcG::kScalePivotTranslationHint},
    rotate_pivot{AbcG::kTranslateOperation, AbcG::kRotatePivotPointHint},
    rotate_pivot_translate{AbcG::kTranslateOperation, AbcG::kRotatePivotTranslationHint},
    rotate{AbcG::kRotateOperation, AbcG::kRotateHint}, rotate_x{AbcG::kRotateXOperation, AbcG::kRotateHint},
    rotate_y{AbcG::kRotateYOperation, AbcG::kRotateHint}, rotate_z{AbcG::kRotateZOperation, AbcG::kRotateHint},
    orient{AbcG::kRotateOperation, AbcG::kRotateOrientationHint},
    orient_x{AbcG::kRotateXOperation, AbcG::kRotateOrientationHint},
    orient_y{AbcG::kRotateYOperation, AbcG::kRotateOrientationHint},
    orient_z{AbcG::kRotateZOperation, AbcG::kRotateOrientationHint},
    shear{AbcG::kMatrixOperation, AbcG::kMayaShearHint}, matrix{AbcG::kMatrixOperation, AbcG::kMatrixHint},
    scale{AbcG::kScaleOperation, AbcG::kScaleHint};

using Stack = std::vector<std::pair<AbcG::XformOperationType, int>>;

std::vector<AbcG::XformOp> operations(const Stack& stack)
{
    std::vector<AbcG::XformOp> ops;
    for (const auto& [type, hint] : stack)
        ops.emplace_back(type, std::uint8_t(hint));
    return ops;
}

AbcG::XformSample translation(double x)
{
    AbcG::XformSample sample;
    sample.addOp(AbcG::XformOp(AbcG::kTranslateOperation), AbcG::V3d(x, 0, 0));
    return sample;
}

/// Whether the stack has components; either way the record is checked to be complete.
bool has_components(const Stack& stack)
{
    Random random(11);
    AbcG::XformSample sample = random_sample(random, operations(stack));
    sample.setInheritsXforms(false);
    AbcPivotData data;
    data.transform.set_translation({9, 9, 9}); // what was there before must not stay
    const bool done = decompose_xform(sample, data);
    EXPECT_EQ(data.use_matrix, !done);
    EXPECT_FALSE(data.inherits_transform);
    if (data.use_matrix) {
        EXPECT_EQ(data.transform, GMathTransform());
        EXPECT_EQ(data.get_global_matrix(), matrix_of(sample));
    } else {
        EXPECT_EQ(Matrix(data.matrix.get_data()), Matrix());
    }
    return done;
}

GMathTransform components(const Stack& stack)
{
    Random random(11);
    AbcPivotData data;
    EXPECT_TRUE(decompose_xform(random_sample(random, operations(stack)), data));
    return data.transform;
}

} // namespace

TEST(PivotDecomposition, AcceptsTheHostsOrderAndNoOther)
{
    EXPECT_TRUE(has_components({translate, rotate_pivot_translate, rotate_pivot, rotate_z, rotate_y, rotate_x, orient_x,
                                rotate_pivot, scale_pivot_translate, scale_pivot, shear, scale, scale_pivot}));
    EXPECT_TRUE(has_components({translate, rotate, scale}));
    EXPECT_TRUE(has_components({scale}));

    EXPECT_FALSE(has_components({rotate_x, translate}));
    EXPECT_FALSE(has_components({translate, translate}));
    EXPECT_FALSE(has_components({rotate_x, rotate_y, rotate_x}));
    EXPECT_FALSE(has_components({rotate, rotate_x}));
    EXPECT_FALSE(has_components({rotate, rotate}));
    EXPECT_FALSE(has_components({rotate_pivot, rotate_pivot_translate, rotate_x, rotate_pivot}));
    EXPECT_FALSE(has_components({rotate_pivot_translate, rotate_pivot_translate}));
    EXPECT_FALSE(has_components({rotate_x, rotate_pivot, rotate_pivot}));
    EXPECT_FALSE(has_components({orient_x, rotate_x}));
    EXPECT_FALSE(has_components({orient_x, orient_x}));
    EXPECT_FALSE(has_components({scale_pivot, scale_pivot_translate}));
    EXPECT_FALSE(has_components({scale, shear}));
    EXPECT_FALSE(has_components({scale, scale}));
    EXPECT_FALSE(has_components({scale, rotate_x}));
    EXPECT_FALSE(has_components({shear, scale_pivot, scale_pivot}));
    EXPECT_FALSE(has_components({matrix}));
    EXPECT_FALSE(has_components({translate, matrix, scale}));
}

TEST(PivotDecomposition, AnOrientationAboutAnyAxisIsAcceptedOnlyPastItsPlace)
{
    EXPECT_FALSE(has_components({translate, rotate, orient, scale}));
    EXPECT_FALSE(has_components({rotate_x, orient}));
    EXPECT_FALSE(has_components({orient}));
    EXPECT_TRUE(has_components({rotate_x, orient_x, orient}));
    EXPECT_TRUE(has_components({rotate_x, orient_x, orient, orient_y}));
    EXPECT_TRUE(has_components({scale, orient, scale_pivot_translate}));
}

TEST(PivotDecomposition, OrdersAreThoseInWhichTheAxesAct)
{
    EXPECT_EQ(components({rotate_z, rotate_y, rotate_x}).get_rotation_order(), 0x2001u);
    EXPECT_EQ(components({rotate_y, rotate_z, rotate_x}).get_rotation_order(), 0x1101u);
    EXPECT_EQ(components({rotate_x, rotate_z, rotate_y}).get_rotation_order(), 0x0001u);
    EXPECT_EQ(components({rotate_z, rotate_x, rotate_y}).get_rotation_order(), 0x2101u);
    EXPECT_EQ(components({rotate_y, rotate_x, rotate_z}).get_rotation_order(), 0x1001u);
    EXPECT_EQ(components({rotate_x, rotate_y, rotate_z}).get_rotation_order(), 0x0101u);
    EXPECT_EQ(components({rotate}).get_rotation_order(), 0x2001u);
    EXPECT_EQ(components({scale}).get_rotation_order(), 0x2001u);
}

TEST(PivotDecomposition, TheOrderOfTheOrientationFollowsThatOfTheRotation)
{
    EXPECT_EQ(components({rotate_z, rotate_y, rotate_x, orient_x}).get_rotate_orientation_order(), 0x2001u);
    EXPECT_EQ(components({rotate_z, rotate_y, rotate_x, orient_z, orient_y}).get_rotate_orientation_order(), 0x2101u);
    EXPECT_EQ(components({rotate_x, rotate_y, rotate_z, orient_x}).get_rotate_orientation_order(), 0x1101u);
    EXPECT_EQ(components({rotate_x, rotate_y, rotate_z, orient_z}).get_rotate_orientation_order(), 0x1001u);
    EXPECT_EQ(components({orient_z, orient_y}).get_rotate_orientation_order(), 0x2001u);
}

TEST(PivotDecomposition, NoOperationsAreTheIdentityAsAMatrix)
{
    AbcPivotData data;
    EXPECT_TRUE(decompose_xform(AbcG::XformSample(), data));
    EXPECT_TRUE(data.use_matrix);
    EXPECT_TRUE(data.inherits_transform);
    EXPECT_EQ(data.get_global_matrix(), Matrix());
}

TEST(PivotDecomposition, NumbersThatAreNoneDoNoHarm)
{
    for (const double bad : {std::nan(""), HUGE_VAL, 1e308}) {
        AbcG::XformSample sample = translation(1), other = translation(3);
        for (const auto& type : {AbcG::kRotateXOperation, AbcG::kRotateYOperation}) {
            sample.addOp(AbcG::XformOp(type), bad);
            other.addOp(AbcG::XformOp(type), 1.0);
        }
        sample.addOp(AbcG::XformOp(AbcG::kRotateOperation), AbcG::V3d(bad), bad);
        other.addOp(AbcG::XformOp(AbcG::kRotateOperation), AbcG::V3d(1.0), 1.0);
        AbcPivotData data;
        decompose_xform(interpolate_xform(sample, other, 0.5), data);
        EXPECT_FALSE(data.use_matrix);
        EXPECT_EQ(data.transform.get_translation().x, 2.0) << "what is near a bad number stays good";
        data.get_global_matrix();
    }
}

TEST(PivotData, TheMatrixActsBeforeTheComponents)
{
    AbcPivotData data;
    data.transform.set_translation({1, 2, 3});
    data.matrix[0] = 5;
    EXPECT_EQ(data.get_global_matrix()[0][0], 1);
    data.use_matrix = true;
    EXPECT_EQ(data.get_global_matrix()[0][0], 5);
    EXPECT_EQ(data.get_global_matrix()[2][3], 3);
    EXPECT_EQ(data.transform.get_translation().z, 3);

    const AbcPivotData moved = std::move(data);
    EXPECT_EQ(data.get_global_matrix()[0][3], 1) << "what was moved from has no matrix";
    EXPECT_GE(moved.get_memory_size(), sizeof(AbcPivotData) + 16 * sizeof(double));
}
