/// Transform made of components: composing them and finding them in a matrix.
#include "vo_gmath/gmath_transform.h"

#include <algorithm>
#include <cmath>

namespace {

using Vec3 = GMathTransform::Vec3;
using Matrix = GMathTransform::Matrix;

Matrix shear_matrix(const Vec3& shear)
{
    Matrix matrix;
    matrix[0][1] = shear.x;
    matrix[0][2] = shear.y;
    matrix[1][2] = shear.z;
    return matrix;
}

Vec3 get_column(const Matrix& matrix, int column)
{
    return {matrix[0][column], matrix[1][column], matrix[2][column]};
}

// A unit direction at right angles to both; either may be zero, or both may point the same way.
Vec3 any_perpendicular(const Vec3& a, const Vec3& b)
{
    const Vec3 normal = cross(a, b);
    if (normal.get_length() > 1e-7 * a.get_length() * b.get_length()) return normal * (1.0 / normal.get_length());
    const Vec3& line = dot(a, a) > 0.0 ? a : b;
    if (dot(line, line) == 0.0) return {1.0, 0.0, 0.0};
    int axis = 0; // the one that leans least towards the line
    for (int i = 1; i < 3; ++i)
        if (std::abs(line[i]) < std::abs(line[axis])) axis = i;
    Vec3 unit{};
    unit[axis] = 1.0;
    const Vec3 rest = cross(line, unit);
    return rest * (1.0 / rest.get_length());
}

double get_largest(const Matrix& matrix)
{
    double largest = 0.0;
    for (int i = 0; i < 16; ++i)
        largest = std::max(largest, std::abs(matrix.get_data()[i]));
    return largest;
}

bool is_affine(const Matrix& matrix)
{
    for (int i = 0; i < 16; ++i)
        if (!std::isfinite(matrix.get_data()[i])) return false;
    return matrix[3][0] == 0.0 && matrix[3][1] == 0.0 && matrix[3][2] == 0.0 && matrix[3][3] == 1.0;
}

bool nearly_equal(const Matrix& a, const Matrix& b)
{
    const double tolerance = 1e-12 * std::max(get_largest(a), get_largest(b));
    for (int i = 0; i < 16; ++i)
        if (!(std::abs(a.get_data()[i] - b.get_data()[i]) <= tolerance)) return false;
    return true;
}

} // namespace

Matrix GMathTransform::compute_global_matrix() const
{
    return has_matrix_ ? matrix_ : compose();
}

Matrix GMathTransform::compose() const
{
    const Matrix rotation = GMathRotation::compute_matrix(rotation_, rotation_order_) *
                            GMathRotation::compute_matrix(rotate_orientation_, rotate_orientation_order_);
    const Matrix scale = shear_matrix(shear_) * Matrix::make_scale(scale_);
    return Matrix::make_translation(translation_) * Matrix::make_translation(rotate_pivot_translation_) *
           Matrix::make_translation(rotate_pivot_) * rotation * Matrix::make_translation(-rotate_pivot_) *
           Matrix::make_translation(scale_pivot_translation_) * Matrix::make_translation(scale_pivot_) * scale *
           Matrix::make_translation(-scale_pivot_);
}

bool GMathTransform::set_global_matrix(const Matrix& matrix)
{
    const unsigned int rotation_order = rotation_order_;
    *this = GMathTransform();
    rotation_order_ = rotation_order;
    const bool affine = is_affine(matrix);
    if (affine) decompose(matrix);
    matrix_ = matrix;
    has_matrix_ = true;
    return affine && nearly_equal(compose(), matrix);
}

void GMathTransform::decompose(const Matrix& matrix)
{
    // The 3x3 part is rotation * (unit upper triangle * scale): its columns are made orthonormal one after the other.
    // The third axis completes a right-handed frame, so a mirror goes into the scale.
    translation_ = get_column(matrix, 3);
    const Vec3 columns[3] = {get_column(matrix, 0), get_column(matrix, 1), get_column(matrix, 2)};
    double largest = 0.0;
    for (const Vec3& column : columns)
        largest = std::max(largest, column.get_length());
    const double negligible = 1e-14 * largest;
    const auto without_noise = [negligible](double value) { return std::abs(value) > negligible ? value : 0.0; };

    Vec3 axes[3];
    const double length = columns[0].get_length();
    axes[0] = length > negligible ? columns[0] * (1.0 / length) : any_perpendicular(columns[1], columns[2]);
    const double xy = dot(axes[0], columns[1]);
    const Vec3 second = columns[1] - axes[0] * xy;
    const double second_length = second.get_length();
    axes[1] = second_length > negligible ? second * (1.0 / second_length) : any_perpendicular(axes[0], columns[2]);
    axes[2] = cross(axes[0], axes[1]);

    scale_ = {without_noise(dot(axes[0], columns[0])), without_noise(dot(axes[1], columns[1])),
              without_noise(dot(axes[2], columns[2]))};
    const double xz = dot(axes[0], columns[2]), yz = dot(axes[1], columns[2]);
    shear_.x = scale_.y != 0.0 ? xy / scale_.y : 0.0;
    shear_.y = scale_.z != 0.0 ? xz / scale_.z : 0.0;
    shear_.z = scale_.z != 0.0 ? yz / scale_.z : 0.0;

    Matrix rotation;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            rotation[row][column] = axes[column][row];
    rotation_ = GMathRotation::compute_angles(rotation, rotation_order_);
}

bool GMathTransform::operator==(const GMathTransform& other) const
{
    return translation_ == other.translation_ && rotation_ == other.rotation_ && shear_ == other.shear_ &&
           scale_ == other.scale_ && rotate_orientation_ == other.rotate_orientation_ &&
           rotate_pivot_ == other.rotate_pivot_ && scale_pivot_ == other.scale_pivot_ &&
           rotate_pivot_translation_ == other.rotate_pivot_translation_ &&
           scale_pivot_translation_ == other.scale_pivot_translation_ && rotation_order_ == other.rotation_order_ &&
           rotate_orientation_order_ == other.rotate_orientation_order_ && has_matrix_ == other.has_matrix_ &&
           (!has_matrix_ || matrix_ == other.matrix_);
}
