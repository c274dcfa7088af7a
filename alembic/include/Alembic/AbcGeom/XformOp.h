/// One operation of a transform: its type, what it is meant for, and its numbers.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <array>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// What an operation is meant for; the low four bits of a stored operation. Each type has its own list.
enum MatrixHint {
    kMatrixHint = 0,
    kMayaShearHint = 1, ///< the matrix is a shear
};
enum RotateHint {
    kRotateHint = 0,
    kRotateOrientationHint = 1,
};
enum ScaleHint {
    kScaleHint = 0,
};
enum TranslateHint {
    kTranslateHint = 0,
    kScalePivotPointHint = 1,
    kScalePivotTranslationHint = 2,
    kRotatePivotPointHint = 3,
    kRotatePivotTranslationHint = 4,
};

/// Angles are degrees. Members that ask for what the type has not throw Util::Exception, and so does a channel index
/// that is out of range.
class ALEMBIC_EXPORT XformOp
{
public:
    typedef XformOp this_type;

    /// A translation with hint 0.
    XformOp();

    /// A hint that the type has not becomes 0. Intended: all channels start at 0, those of scales and matrices too.
    XformOp(const XformOperationType type, const uint8_t hint = 0);

    /// A stored operation: `type << 4 | hint`. An unknown type has no channels and does nothing.
    XformOp(const uint8_t encodedOp);

    XformOperationType getType() const { return type_; }

    /// Resets the hint and keeps the channels that the new type has.
    void setType(const XformOperationType type);

    uint8_t getHint() const { return hint_; }

    /// A hint that the type has not becomes 0.
    void setHint(const uint8_t hint);

    /// Whether the first, second or third number changes over the samples; false for rotations about x, y or z. Known
    /// only of operations that were read.
    bool isXAnimated() const;
    bool isYAnimated() const;
    bool isZAnimated() const;
    /// Whether the angle of a rotation changes over the samples.
    bool isAngleAnimated() const;
    /// Whether one channel changes over the samples; false for an index out of range.
    bool isChannelAnimated(std::size_t index) const;

    /// 3 for scales and translations, 4 for a rotation about an axis (x y z angle), 1 about x, y or z, 16 for a matrix.
    std::size_t getNumChannels() const;
    /// The channel's value in an operation that does nothing: 1 for scales and the matrix's diagonal, else 0.
    double getDefaultChannelValue(std::size_t index) const;
    double getChannelValue(std::size_t index) const;
    void setChannelValue(std::size_t index, double value);

    /// The first three channels; not of matrices and of rotations about x, y or z.
    void setVector(const V3d& vec);
    void setTranslate(const V3d& translation);
    void setScale(const V3d& scale);
    void setAxis(const V3d& axis);
    void setAngle(const double angle);
    void setMatrix(const M44d& matrix);

    /// Set the angle of a rotation about that axis.
    void setXRotation(const double angle);
    void setYRotation(const double angle);
    void setZRotation(const double angle);

    V3d getVector() const;
    V3d getTranslate() const;
    V3d getScale() const;
    V3d getAxis() const;
    double getAngle() const;
    M44d getMatrix() const;

    /// The angle about that axis; of a rotation about any axis, the angle that its Euler angles (xyz) have.
    double getXRotation() const;
    double getYRotation() const;
    double getZRotation() const;

    bool isTranslateOp() const { return type_ == kTranslateOperation; }
    bool isScaleOp() const { return type_ == kScaleOperation; }
    /// Intended: true for the rotation about any axis alone, not for those about x, y or z.
    bool isRotateOp() const { return type_ == kRotateOperation; }
    bool isMatrixOp() const { return type_ == kMatrixOperation; }
    bool isRotateXOp() const { return type_ == kRotateXOperation; }
    bool isRotateYOp() const { return type_ == kRotateYOperation; }
    bool isRotateZOp() const { return type_ == kRotateZOperation; }

    /// As stored: `type << 4 | hint`.
    uint8_t getOpEncoding() const;

private:
    friend class IXformSchema;
    friend class XformSample;

    bool is_single_axis_rotation() const;
    double euler_angle(int axis, XformOperationType single_axis_type) const;
    void check_channel(std::size_t index) const;
    void mark_animated(std::size_t channel) { animated_ |= static_cast<uint16_t>(1u << channel); }
    /// The matrix that the operation stands for; the identity for an unknown type.
    M44d transform() const;

    XformOperationType type_ = kTranslateOperation;
    uint8_t hint_ = 0;
    uint16_t animated_ = 0; ///< one bit a channel
    std::array<double, 16> channels_{};
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
