/// Matrices, rotations and transforms against elementary ones.
#include "vo_gmath/gmath_transform.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

using Vec3 = GMathVec3<double>;
using Matrix = GMathMatrix4x4<double>;

const struct
{
    unsigned int code;
    const char* axes; ///< in the order they act on a point
} orders[] = {{0x2001, "XYZ"}, {0x1101, "XZY"}, {0x0001, "YZX"}, {0x2101, "YXZ"}, {0x1001, "ZXY"}, {0x0101, "ZYX"}};

double max_difference(const Matrix& a, const Matrix& b)
{
    double largest = 0.0;
    for (int i = 0; i < 16; ++i)
        largest = std::max(largest, std::abs(a.get_data()[i] - b.get_data()[i]));
    return largest;
}

class Random
{
public:
    explicit Random(unsigned int seed)
        : engine_(seed)
    {
    }
    double number(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine_); }
    Vec3 vector(double low, double high) { return {number(low, high), number(low, high), number(low, high)}; }

private:
    std::mt19937 engine_;
};

// Written out entry by entry, as a text book has them: a quarter turn takes Y to Z, Z to X, X to Y.
Matrix elementary_rotation(char axis, double degrees)
{
    const double c = std::cos(degrees * std::acos(-1.0) / 180.0), s = std::sin(degrees * std::acos(-1.0) / 180.0);
    const double x[16] = {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1};
    const double y[16] = {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1};
    const double z[16] = {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return Matrix(axis == 'X' ? x : axis == 'Y' ? y : z);
}

Matrix product_of_rotations(const char* axes, const Vec3& degrees)
{
    Matrix result;
    for (const char* axis = axes; *axis; ++axis)
        result = elementary_rotation(*axis, degrees[*axis - 'X']) * result; // the later acts on the left
    return result;
}

GMathTransform random_transform(Random& random, unsigned int order, unsigned int orientation_order)
{
    GMathTransform transform;
    transform.set_translation(random.vector(-10, 10));
    transform.set_rotation(random.vector(-360, 360));
    transform.set_shear(random.vector(-1, 1));
    transform.set_scale(random.vector(0.1, 3));
    transform.set_rotate_orientation(random.vector(-180, 180));
    transform.set_rotate_pivot(random.vector(-5, 5));
    transform.set_scale_pivot(random.vector(-5, 5));
    transform.set_rotate_pivot_translation(random.vector(-5, 5));
    transform.set_scale_pivot_translation(random.vector(-5, 5));
    transform.set_rotation_order(order);
    transform.set_rotate_orientation_order(orientation_order);
    return transform;
}

} // namespace

TEST(GMathMatrix4x4, AnInverseUndoesTheMatrix)
{
    for (unsigned int seed = 0; seed < 500; ++seed) {
        Random random(seed);
        Matrix matrix, inverse;
        for (int i = 0; i < 16; ++i)
            matrix.get_data()[i] = random.number(-2, 2);
        if (!matrix.compute_inverse(inverse)) continue;
        double scale = 1.0;
        for (int i = 0; i < 16; ++i)
            scale = std::max(scale, std::abs(inverse.get_data()[i]));
        EXPECT_LT(max_difference(matrix * inverse, Matrix()), 1e-13 * scale * scale) << "seed " << seed;
        EXPECT_EQ(matrix.get_transpose().get_transpose(), matrix);
    }
}

TEST(GMathMatrix4x4, ASingularMatrixHasNoInverse)
{
    Matrix untouched = Matrix::make_translation({1, 2, 3});
    EXPECT_FALSE(Matrix::make_scale({1, 0, 1}).compute_inverse(untouched));
    EXPECT_EQ(untouched, Matrix::make_translation({1, 2, 3}));
}

TEST(GMathMatrix4x4, TranslatesPointsNotVectors)
{
    const Matrix matrix = Matrix::make_translation({1, 2, 3}) * Matrix::make_scale({2, 2, 2});
    EXPECT_EQ(matrix.transform_point({1, 1, 1}), (Vec3{3, 4, 5})) << "the right factor acts first";
    EXPECT_EQ(matrix.transform_vector({1, 1, 1}), (Vec3{2, 2, 2}));
    EXPECT_EQ(matrix[2][3], 3.0);
}

TEST(GMathRotation, EveryOrderIsTheProductOfItsAxesAndComesBackAsAngles)
{
    for (const auto& order : orders)
        for (unsigned int seed = 0; seed < 200; ++seed) {
            Random random(seed);
            Vec3 degrees = random.vector(-180, 180);
            if (seed % 4 == 0) degrees[order.axes[1] - 'X'] = seed % 8 == 0 ? 90.0 : -90.0; // gimbal lock
            const Matrix matrix = GMathRotation::compute_matrix(degrees, order.code);
            EXPECT_LT(max_difference(matrix, product_of_rotations(order.axes, degrees)), 1e-14)
                << order.axes << ", seed " << seed;
            const Vec3 angles = GMathRotation::compute_angles(matrix, order.code);
            EXPECT_LT(max_difference(matrix, GMathRotation::compute_matrix(angles, order.code)), 1e-14)
                << order.axes << ", seed " << seed;
        }
}

TEST(GMathRotation, NearGimbalLockTheAnglesStillMakeTheRotation)
{
    for (const auto& order : orders)
        for (unsigned int seed = 0; seed < 200; ++seed) {
            Random random(seed);
            Vec3 degrees = random.vector(-180, 180);
            const double off = std::pow(10.0, -double(seed % 14));
            degrees[order.axes[1] - 'X'] = seed % 2 == 0 ? 90.0 - off : off - 90.0;
            const Matrix matrix = GMathRotation::compute_matrix(degrees, order.code);
            const Vec3 angles = GMathRotation::compute_angles(matrix, order.code);
            EXPECT_LT(max_difference(matrix, GMathRotation::compute_matrix(angles, order.code)), 2e-12)
                << order.axes << ", " << off << " degrees off, seed " << seed;
        }
}

TEST(GMathTransform, ComposesAllComponentsInTheirOrder)
{
    for (const auto& order : orders)
        for (const auto& orientation : orders) {
            Random random(order.code + orientation.code);
            const GMathTransform t = random_transform(random, order.code, orientation.code);
            Matrix shear;
            shear[0][1] = t.get_shear().x;
            shear[0][2] = t.get_shear().y;
            shear[1][2] = t.get_shear().z;
            // One point through one step after the other, the innermost first.
            Vec3 point = random.vector(-3, 3);
            const Vec3 start = point;
            point = point - t.get_scale_pivot();
            point = Matrix::make_scale(t.get_scale()).transform_point(point);
            point = shear.transform_point(point);
            point = point + t.get_scale_pivot() + t.get_scale_pivot_translation() - t.get_rotate_pivot();
            point = product_of_rotations(orientation.axes, t.get_rotate_orientation()).transform_point(point);
            point = product_of_rotations(order.axes, t.get_rotation()).transform_point(point);
            point = point + t.get_rotate_pivot() + t.get_rotate_pivot_translation() + t.get_translation();
            const Vec3 difference = t.compute_global_matrix().transform_point(start) - point;
            EXPECT_LT(difference.get_length(), 1e-12) << order.axes << " oriented " << orientation.axes;
        }
}

TEST(GMathTransform, AMatrixThatIsSetComesBackAndIsDecomposed)
{
    for (const auto& order : orders)
        for (unsigned int seed = 0; seed < 100; ++seed) {
            Random random(seed);
            GMathTransform source = random_transform(random, order.code, order.code);
            if (seed % 3 == 0) source.set_scale(random.vector(-3, -0.1)); // mirrored
            const Matrix matrix = source.compute_global_matrix();

            GMathTransform transform;
            transform.set_rotation_order(order.code);
            transform.set_rotate_pivot({1, 2, 3});
            EXPECT_TRUE(transform.set_global_matrix(matrix)) << order.axes << ", seed " << seed;
            EXPECT_EQ(transform.compute_global_matrix(), matrix);
            transform.set_translation(transform.get_translation()); // from here on the components alone count
            EXPECT_LT(max_difference(transform.compute_global_matrix(), matrix), 1e-11) << order.axes << ", " << seed;
        }
}

TEST(GMathTransform, SingularMatricesAreDecomposedWhereShearAndScaleCan)
{
    const Matrix turn = GMathRotation::compute_matrix({30, 40, 50}, 0x2001);
    for (int zeros = 0; zeros < 8; ++zeros) {
        const Vec3 scale{zeros & 1 ? 0.0 : 2.0, zeros & 2 ? 0.0 : 3.0, zeros & 4 ? 0.0 : -4.0};
        GMathTransform transform;
        const Matrix matrix = Matrix::make_translation({1, 2, 3}) * turn * Matrix::make_scale(scale);
        EXPECT_TRUE(transform.set_global_matrix(matrix)) << "zeros " << zeros;
        transform.set_shear(transform.get_shear());
        EXPECT_LT(max_difference(transform.compute_global_matrix(), matrix), 1e-12) << "zeros " << zeros;
    }
}

TEST(GMathTransform, AMatrixThatCannotBeDecomposedIsKept)
{
    Matrix projective, dependent, infinite;
    projective[3][2] = 0.5;
    dependent[1][1] = 0.0;
    dependent[0][1] = 1.0; // the second column is the first: no shear makes that from a zero scale
    infinite[0][0] = std::numeric_limits<double>::infinity();
    for (const Matrix& matrix : {projective, dependent, infinite}) {
        GMathTransform transform;
        EXPECT_FALSE(transform.set_global_matrix(matrix));
        EXPECT_EQ(transform.compute_global_matrix(), matrix);
        GMathTransform copy(transform);
        EXPECT_EQ(copy, transform);
        copy.set_scale({1, 1, 1});
        EXPECT_NE(copy.compute_global_matrix(), matrix) << "a component was set";
    }
}
