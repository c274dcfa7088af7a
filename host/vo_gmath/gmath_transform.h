/// Transform made of translation, rotation, shear, scale and their pivots.
#pragma once

#include "vo_gmath/gmath_matrix4x4.h"
#include "vo_gmath/gmath_rotation.h"

/// The components, all lengths in scene units and angles in degrees, compose for column vectors to
///   T * Rpt * Rp * R * Ro * Rp^-1 * Spt * Sp * Sh * S * Sp^-1
/// with T translation, Rpt rotate pivot translation, Rp rotate pivot, R rotation, Ro rotate orientation, Spt scale
/// pivot translation, Sp scale pivot, Sh shear and S scale. The identity by default.
class VO_HOST_EXPORT GMathTransform
{
public:
    using Vec3 = GMathVec3<double>;
    using Matrix = GMathMatrix4x4<double>;

    const Vec3& get_translation() const { return translation_; }
    const Vec3& get_rotation() const { return rotation_; } ///< degrees about X, Y, Z
    /// XY, XZ and YZ: the elements (row 0, column 1), (0, 2) and (1, 2) of the shear matrix.
    const Vec3& get_shear() const { return shear_; }
    const Vec3& get_scale() const { return scale_; }
    const Vec3& get_rotate_orientation() const { return rotate_orientation_; } ///< degrees about X, Y, Z
    const Vec3& get_rotate_pivot() const { return rotate_pivot_; }
    const Vec3& get_scale_pivot() const { return scale_pivot_; }
    const Vec3& get_rotate_pivot_translation() const { return rotate_pivot_translation_; }
    const Vec3& get_scale_pivot_translation() const { return scale_pivot_translation_; }
    /// A GMathRotation::Order.
    unsigned int get_rotation_order() const { return rotation_order_; }
    unsigned int get_rotate_orientation_order() const { return rotate_orientation_order_; }

    void set_translation(const Vec3& value) { set(translation_, value); }
    void set_rotation(const Vec3& degrees) { set(rotation_, degrees); }
    void set_shear(const Vec3& value) { set(shear_, value); }
    void set_scale(const Vec3& value) { set(scale_, value); }
    void set_rotate_orientation(const Vec3& degrees) { set(rotate_orientation_, degrees); }
    void set_rotate_pivot(const Vec3& value) { set(rotate_pivot_, value); }
    void set_scale_pivot(const Vec3& value) { set(scale_pivot_, value); }
    void set_rotate_pivot_translation(const Vec3& value) { set(rotate_pivot_translation_, value); }
    void set_scale_pivot_translation(const Vec3& value) { set(scale_pivot_translation_, value); }
    void set_rotation_order(const unsigned int& order) { set(rotation_order_, order); }
    void set_rotate_orientation_order(const unsigned int& order) { set(rotate_orientation_order_, order); }

    /// The product above; exactly the matrix that was set, as long as no component was set after it.
    Matrix compute_global_matrix() const;
    /// Takes the matrix and decomposes it into translation, rotation (in the present rotation order), shear and scale;
    /// pivots and orientation become zero. False when the components cannot express it (its last row is not 0 0 0 1, a
    /// value is not finite, or it is singular in a way that shear and scale cannot follow): `compute_global_matrix`
    /// still returns it, and the components keep what can be read from it until one of them is set.
    bool set_global_matrix(const Matrix& matrix);

    /// Same components and same exact matrix, if one was set.
    bool operator==(const GMathTransform& other) const;
    bool operator!=(const GMathTransform& other) const { return !(*this == other); }

private:
    template <class T>
    void set(T& component, const T& value)
    {
        component = value;
        has_matrix_ = false;
    }
    Matrix compose() const;
    void decompose(const Matrix& matrix);

    Vec3 translation_{0.0, 0.0, 0.0};
    Vec3 rotation_{0.0, 0.0, 0.0};
    Vec3 shear_{0.0, 0.0, 0.0};
    Vec3 scale_{1.0, 1.0, 1.0};
    Vec3 rotate_orientation_{0.0, 0.0, 0.0};
    Vec3 rotate_pivot_{0.0, 0.0, 0.0};
    Vec3 scale_pivot_{0.0, 0.0, 0.0};
    Vec3 rotate_pivot_translation_{0.0, 0.0, 0.0};
    Vec3 scale_pivot_translation_{0.0, 0.0, 0.0};
    unsigned int rotation_order_ = GMathRotation::ORDER_XYZ;
    unsigned int rotate_orientation_order_ = GMathRotation::ORDER_XYZ;
    bool has_matrix_ = false; ///< whether matrix_ is what set_global_matrix was given and still holds
    Matrix matrix_;
};
