/// Rotations between two others: the shorter arc at constant speed, both ends hit, for every order.
#include <rotation_interpolation.h>
#include <rotation_order.h>

#include <gtest/gtest.h>
#include <support/xform_stacks.h>
#include <vo_gmath/gmath_rotation.h>

#include <cmath>
#include <string>

using namespace xform_stacks;

namespace {

using Angles = GMathVec3<double>;
using Matrix = GMathMatrix4x4<double>;

constexpr unsigned int seed = 51;
const std::string three_axes[] = {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"};

/// About the axes one after the other, first axis first, without the code under test.
Matrix rotation(const std::string& axes, const Angles& degrees)
{
    Matrix result;
    for (const char letter : axes) {
        Angles one{0.0, 0.0, 0.0};
        one[std::size_t(letter - 'X')] = degrees[std::size_t(letter - 'X')];
        result = GMathRotation::compute_matrix(one, GMathRotation::ORDER_XYZ) * result;
    }
    return result;
}

Matrix interpolated(const std::string& axes, const Angles& from, const Angles& to, double weight)
{
    return rotation(axes, interpolate_angles(axes, from, to, weight));
}

Angles random_angles(Random& random, const std::string& axes)
{
    Angles degrees{0.0, 0.0, 0.0};
    for (const char letter : axes)
        degrees[std::size_t(letter - 'X')] = angle(random);
    return degrees;
}

double trace(const Matrix& matrix)
{
    return matrix[0][0] + matrix[1][1] + matrix[2][2];
}

} // namespace

TEST(RotationOrder, TheFirstTwoAxesDecide)
{
    EXPECT_EQ(rotation_order_of("XYZ"), 0x2001u);
    EXPECT_EQ(rotation_order_of("XZ"), 0x1101u);
    EXPECT_EQ(rotation_order_of("YZX"), 0x0001u);
    EXPECT_EQ(rotation_order_of("YXZ"), 0x2101u);
    EXPECT_EQ(rotation_order_of("ZXY"), 0x1001u);
    EXPECT_EQ(rotation_order_of("ZYX"), 0x0101u);
    EXPECT_EQ(rotation_order_of("XXYZ"), 0x2001u);
    EXPECT_EQ(rotation_order_of("YYXZ"), 0x2101u);
    EXPECT_EQ(rotation_order_of("ZZYX"), 0x1001u);
    EXPECT_EQ(rotation_order_of(""), 0x2001u);
    EXPECT_EQ(rotation_order_of("Y"), 0x2001u);
}

TEST(RotationInterpolation, FourQuartersOfTheWayAreTheShorterArc)
{
    Random random(seed);
    for (int i = 0; i < 3000; ++i) {
        const std::string axes = three_axes[i % 6];
        const Angles from = random_angles(random, axes), to = random_angles(random, axes);
        const Matrix start = rotation(axes, from), end = rotation(axes, to);
        const Matrix quarter = interpolated(axes, from, to, 0.25) * start.get_transpose();
        const Matrix whole = quarter * quarter * quarter * quarter * start;
        EXPECT_LT(relative_difference(whole, end), 1e-9) << axes << ", seed " << seed << ", case " << i;
        EXPECT_GE(trace(quarter), 1.0 + 2.0 * std::cos(std::acos(-1.0) / 4.0) - 1e-9) << "more than half a turn";
        EXPECT_LT(relative_difference(interpolated(axes, from, to, 1e-9), start), 1e-7);
        EXPECT_LT(relative_difference(interpolated(axes, from, to, 1.0 - 1e-9), end), 1e-7);
    }
}

TEST(RotationInterpolation, OneAxisTurnsTheShortWayRoundAndStaysOnTheAxis)
{
    Random random(seed);
    for (int i = 0; i < 3000; ++i) {
        const std::string axes(1, "XYZ"[i % 3]);
        const auto axis = std::size_t(i % 3);
        const Angles from = random_angles(random, axes), to = random_angles(random, axes);
        const double turn = std::remainder(to[axis] - from[axis], 360.0);
        if (std::abs(turn) > 179.9) continue; // either way is as short
        const double weight = (number(random, 1.0) + 1.0) / 2.0;
        const Angles degrees = interpolate_angles(axes, from, to, weight);
        const double off = std::remainder(degrees[axis] - (from[axis] + weight * turn), 360.0);
        EXPECT_NEAR(off, 0.0, 1e-9) << axes << " from " << from[axis] << " to " << to[axis] << " at " << weight;
        EXPECT_EQ(degrees[(axis + 1) % 3], 0.0);
        EXPECT_EQ(degrees[(axis + 2) % 3], 0.0);
    }
}

// Between the ends, the part about the third axis is lost; at the ends there is none, whatever the middle angle.
TEST(RotationInterpolation, TwoAxesHitBothEnds)
{
    Random random(seed);
    for (int i = 0; i < 3000; ++i) {
        const std::string axes = three_axes[i % 6].substr(0, 2);
        const Angles from = random_angles(random, axes), to = random_angles(random, axes);
        EXPECT_LT(relative_difference(interpolated(axes, from, to, 0.0), rotation(axes, from)), 1e-7)
            << axes << ", seed " << seed << ", case " << i;
        EXPECT_LT(relative_difference(interpolated(axes, from, to, 1.0), rotation(axes, to)), 1e-7);
        const Angles between = interpolate_angles(axes, from, to, 0.5);
        EXPECT_EQ(between[std::size_t(three_axes[i % 6][2] - 'X')], 0.0);
    }
}

TEST(RotationInterpolation, MovesInSmallStepsThroughGimbalLock)
{
    constexpr int steps = 500;
    const Angles ends[][2] = {
        {{30, 80, 10}, {30, 100, 10}}, {{0, 90, 0}, {90, 90, 0}}, {{10, -90, 20}, {170, 90, -60}}};
    for (const std::string& axes : three_axes) {
        for (const Angles* end : ends) {
            Matrix last = rotation(axes, end[0]);
            for (int i = 1; i <= steps; ++i) {
                const Matrix next = interpolated(axes, end[0], end[1], double(i) / steps);
                ASSERT_LT(relative_difference(next, last), 3.15 / steps) << axes << ", step " << i;
                last = next;
            }
            EXPECT_LT(relative_difference(last, rotation(axes, end[1])), 1e-9) << axes;
        }
    }
}

TEST(RotationInterpolation, AtRestTheAnglesAreThoseStored)
{
    const Angles degrees(270.0, 120.0, -400.0);
    EXPECT_EQ(interpolate_angles("XYZ", degrees, degrees, 0.3), degrees);
}
