/// One operation of a transform.
#include <Alembic/AbcGeom/XformOp.h>

#include <ImathMatrixAlgo.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int type_count = 7;
constexpr std::size_t channel_counts[type_count] = {3, 3, 4, 16, 1, 1, 1};
constexpr uint8_t last_hints[type_count] = {kScaleHint,
                                            kRotatePivotTranslationHint,
                                            kRotateOrientationHint,
                                            kMayaShearHint,
                                            kRotateOrientationHint,
                                            kRotateOrientationHint,
                                            kRotateOrientationHint};

bool is_known(XformOperationType type)
{
    return type >= 0 && type < type_count;
}

uint8_t known_hint(XformOperationType type, uint8_t hint)
{
    return is_known(type) && hint <= last_hints[type] ? hint : uint8_t(0);
}

} // namespace

XformOp::XformOp() = default;

XformOp::XformOp(const XformOperationType type, const uint8_t hint)
    : type_(type)
    , hint_(known_hint(type, hint))
{
}

XformOp::XformOp(const uint8_t encodedOp)
    : XformOp(static_cast<XformOperationType>(encodedOp >> 4), encodedOp & 0xf)
{
}

void XformOp::setType(const XformOperationType type)
{
    type_ = type;
    hint_ = 0;
    animated_ = 0;
    for (std::size_t i = getNumChannels(); i < channels_.size(); ++i) {
        channels_[i] = 0.0;
    }
}

void XformOp::setHint(const uint8_t hint)
{
    hint_ = known_hint(type_, hint);
}

bool XformOp::is_single_axis_rotation() const
{
    return isRotateXOp() || isRotateYOp() || isRotateZOp();
}

bool XformOp::isXAnimated() const
{
    return !is_single_axis_rotation() && isChannelAnimated(0);
}

bool XformOp::isYAnimated() const
{
    return !is_single_axis_rotation() && isChannelAnimated(1);
}

bool XformOp::isZAnimated() const
{
    return !is_single_axis_rotation() && isChannelAnimated(2);
}

bool XformOp::isAngleAnimated() const
{
    return is_single_axis_rotation() ? isChannelAnimated(0) : isRotateOp() && isChannelAnimated(3);
}

bool XformOp::isChannelAnimated(std::size_t index) const
{
    return index < getNumChannels() && (animated_ >> index & 1) != 0;
}

std::size_t XformOp::getNumChannels() const
{
    return is_known(type_) ? channel_counts[type_] : 0;
}

void XformOp::check_channel(std::size_t index) const
{
    if (index >= getNumChannels()) {
        ABCA_THROW("Channel index " << index << " is out of range: a transform operation of type " << int(type_)
                                    << " has " << getNumChannels() << " channels.");
    }
}

double XformOp::getDefaultChannelValue(std::size_t index) const
{
    check_channel(index);
    return isScaleOp() || (isMatrixOp() && index % 5 == 0) ? 1.0 : 0.0;
}

double XformOp::getChannelValue(std::size_t index) const
{
    check_channel(index);
    return channels_[index];
}

void XformOp::setChannelValue(std::size_t index, double value)
{
    check_channel(index);
    channels_[index] = value;
}

void XformOp::setVector(const V3d& vec)
{
    if (getNumChannels() < 3 || isMatrixOp()) {
        ABCA_THROW("Meaningless to set a vector on a matrix or on a rotation about one axis.");
    }
    for (int i = 0; i < 3; ++i) {
        channels_[i] = vec[i];
    }
}

V3d XformOp::getVector() const
{
    if (getNumChannels() < 3 || isMatrixOp()) {
        ABCA_THROW("Meaningless to get a vector from a matrix or from a rotation about one axis.");
    }
    return V3d(channels_[0], channels_[1], channels_[2]);
}

void XformOp::setTranslate(const V3d& translation)
{
    if (!isTranslateOp()) {
        ABCA_THROW("Meaningless to set translate vector on non-translate op.");
    }
    setVector(translation);
}

V3d XformOp::getTranslate() const
{
    if (!isTranslateOp()) {
        ABCA_THROW("Meaningless to get translate vector from non-translate op.");
    }
    return getVector();
}

void XformOp::setScale(const V3d& scale)
{
    if (!isScaleOp()) {
        ABCA_THROW("Meaningless to set scale vector on non-scale op.");
    }
    setVector(scale);
}

V3d XformOp::getScale() const
{
    if (!isScaleOp()) {
        ABCA_THROW("Meaningless to get scale vector from non-scale op.");
    }
    return getVector();
}

void XformOp::setAxis(const V3d& axis)
{
    if (!isRotateOp()) {
        ABCA_THROW("Meaningless to set rotation axis on non-rotation or fixed angle rotation op.");
    }
    setVector(axis);
}

V3d XformOp::getAxis() const
{
    switch (type_) {
    case kRotateOperation:
        return getVector();
    case kRotateXOperation:
        return V3d(1, 0, 0);
    case kRotateYOperation:
        return V3d(0, 1, 0);
    case kRotateZOperation:
        return V3d(0, 0, 1);
    default:
        ABCA_THROW("Meaningless to get rotation axis from non-rotation op.");
    }
}

void XformOp::setAngle(const double angle)
{
    if (!isRotateOp() && !is_single_axis_rotation()) {
        ABCA_THROW("Meaningless to set rotation angle on non-rotation op.");
    }
    channels_[isRotateOp() ? 3 : 0] = angle;
}

double XformOp::getAngle() const
{
    if (!isRotateOp() && !is_single_axis_rotation()) {
        ABCA_THROW("Meaningless to get rotation angle from non-rotation op.");
    }
    return channels_[isRotateOp() ? 3 : 0];
}

void XformOp::setMatrix(const M44d& matrix)
{
    if (!isMatrixOp()) {
        ABCA_THROW("Can't set matrix on non-matrix op.");
    }
    for (int i = 0; i < 16; ++i) {
        channels_[i] = matrix[i / 4][i % 4];
    }
}

M44d XformOp::getMatrix() const
{
    if (!isMatrixOp()) {
        ABCA_THROW("Can't get matrix from non-matrix op.");
    }
    return transform();
}

void XformOp::setXRotation(const double angle)
{
    if (!isRotateXOp()) {
        ABCA_THROW("Meaningless to set x rotation on an op that is not a rotation about x.");
    }
    setAngle(angle);
}

void XformOp::setYRotation(const double angle)
{
    if (!isRotateYOp()) {
        ABCA_THROW("Meaningless to set y rotation on an op that is not a rotation about y.");
    }
    setAngle(angle);
}

void XformOp::setZRotation(const double angle)
{
    if (!isRotateZOp()) {
        ABCA_THROW("Meaningless to set z rotation on an op that is not a rotation about z.");
    }
    setAngle(angle);
}

double XformOp::euler_angle(int axis, XformOperationType single_axis_type) const
{
    if (type_ == single_axis_type) {
        return channels_[0];
    }
    if (!isRotateOp()) {
        ABCA_THROW("Meaningless to get rotation angle from non-rotation op.");
    }
    V3d angles;
    Imath::extractEulerXYZ(transform(), angles);
    return RadiansToDegrees(angles[axis]);
}

double XformOp::getXRotation() const
{
    return euler_angle(0, kRotateXOperation);
}

double XformOp::getYRotation() const
{
    return euler_angle(1, kRotateYOperation);
}

double XformOp::getZRotation() const
{
    return euler_angle(2, kRotateZOperation);
}

uint8_t XformOp::getOpEncoding() const
{
    return static_cast<uint8_t>((type_ & 0xf) << 4 | (hint_ & 0xf));
}

M44d XformOp::transform() const
{
    M44d matrix;
    switch (type_) {
    case kScaleOperation:
        matrix.setScale(getVector());
        break;
    case kTranslateOperation:
        matrix.setTranslation(getVector());
        break;
    case kRotateOperation:
    case kRotateXOperation:
    case kRotateYOperation:
    case kRotateZOperation:
        matrix.setAxisAngle(getAxis(), DegreesToRadians(getAngle()));
        break;
    case kMatrixOperation:
        for (int i = 0; i < 16; ++i) {
            matrix[i / 4][i % 4] = channels_[i];
        }
        break;
    }
    return matrix;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
