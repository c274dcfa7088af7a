/// One sample of a transform.
#include <Alembic/AbcGeom/XformSample.h>

#include <ImathMatrixAlgo.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

XformSample::XformSample() = default;

std::size_t XformSample::put(const XformOp& op, FilledBy way)
{
    if (filled_by_ != FilledBy::nothing && filled_by_ != way) {
        ABCA_THROW("Cannot mix addOp() and set<Foo>() methods.");
    }
    filled_by_ = way;
    if (!frozen_) {
        ops_.push_back(op);
        return ops_.size() - 1;
    }
    if (ops_.empty() || ops_[next_op_].getType() != op.getType()) {
        ABCA_THROW("Cannot update mismatched op-type in already-setted XformSample!");
    }
    const std::size_t index = next_op_;
    ops_[index] = op;
    next_op_ = (index + 1) % ops_.size();
    return index;
}

std::size_t XformSample::addOp(XformOp transOrScaleOp, const V3d& value)
{
    transOrScaleOp.setVector(value);
    return put(transOrScaleOp, FilledBy::add_op);
}

std::size_t XformSample::addOp(XformOp rotateOp, const V3d& axis, const double angleInDegrees)
{
    rotateOp.setAxis(axis);
    rotateOp.setAngle(angleInDegrees);
    return put(rotateOp, FilledBy::add_op);
}

std::size_t XformSample::addOp(XformOp matrixOp, const M44d& matrix)
{
    matrixOp.setMatrix(matrix);
    return put(matrixOp, FilledBy::add_op);
}

std::size_t XformSample::addOp(XformOp singleRotateOp, const double singleAxisRotationInDegrees)
{
    singleRotateOp.setAngle(singleAxisRotationInDegrees);
    return put(singleRotateOp, FilledBy::add_op);
}

std::size_t XformSample::addOp(const XformOp& op)
{
    return put(op, FilledBy::add_op);
}

XformOp& XformSample::operator[](const std::size_t& index)
{
    if (index >= ops_.size()) {
        ABCA_THROW("Invalid index in XformSample: " << index << ", it has " << ops_.size() << " operations.");
    }
    return ops_[index];
}

const XformOp& XformSample::operator[](const std::size_t& index) const
{
    return const_cast<XformSample&>(*this)[index];
}

XformOp XformSample::getOp(const std::size_t index) const
{
    return (*this)[index];
}

std::size_t XformSample::getNumOpChannels() const
{
    std::size_t count = 0;
    for (const XformOp& op : ops_) {
        count += op.getNumChannels();
    }
    return count;
}

void XformSample::setTranslation(const V3d& translation)
{
    XformOp op(kTranslateOperation, kTranslateHint);
    op.setTranslate(translation);
    put(op, FilledBy::set_members);
}

void XformSample::setRotation(const V3d& axis, const double angleInDegrees)
{
    XformOp op(kRotateOperation, kRotateHint);
    op.setAxis(axis);
    op.setAngle(angleInDegrees);
    put(op, FilledBy::set_members);
}

void XformSample::setXRotation(const double angleInDegrees)
{
    XformOp op(kRotateXOperation, kRotateHint);
    op.setAngle(angleInDegrees);
    put(op, FilledBy::set_members);
}

void XformSample::setYRotation(const double angleInDegrees)
{
    XformOp op(kRotateYOperation, kRotateHint);
    op.setAngle(angleInDegrees);
    put(op, FilledBy::set_members);
}

void XformSample::setZRotation(const double angleInDegrees)
{
    XformOp op(kRotateZOperation, kRotateHint);
    op.setAngle(angleInDegrees);
    put(op, FilledBy::set_members);
}

void XformSample::setScale(const V3d& scale)
{
    XformOp op(kScaleOperation, kScaleHint);
    op.setScale(scale);
    put(op, FilledBy::set_members);
}

void XformSample::setMatrix(const M44d& matrix)
{
    XformOp op(kMatrixOperation, kMatrixHint);
    op.setMatrix(matrix);
    put(op, FilledBy::set_members);
}

V3d XformSample::getTranslation() const
{
    const M44d matrix = getMatrix();
    return V3d(matrix[3][0], matrix[3][1], matrix[3][2]);
}

V3d XformSample::getAxis() const
{
    return Imath::extractQuat(getMatrix()).axis();
}

double XformSample::getAngle() const
{
    return RadiansToDegrees(Imath::extractQuat(getMatrix()).angle());
}

namespace {

V3d euler_angles_in_degrees(const M44d& matrix)
{
    V3d radians;
    Imath::extractEulerXYZ(matrix, radians);
    return V3d(RadiansToDegrees(radians.x), RadiansToDegrees(radians.y), RadiansToDegrees(radians.z));
}

} // namespace

double XformSample::getXRotation() const
{
    return euler_angles_in_degrees(getMatrix()).x;
}

double XformSample::getYRotation() const
{
    return euler_angles_in_degrees(getMatrix()).y;
}

double XformSample::getZRotation() const
{
    return euler_angles_in_degrees(getMatrix()).z;
}

V3d XformSample::getScale() const
{
    V3d scale(0.0);
    Imath::extractScaling(getMatrix(), scale, false); // a matrix that is flat has no scale to speak of
    return scale;
}

M44d XformSample::getMatrix() const
{
    M44d matrix;
    for (const XformOp& op : ops_) {
        matrix = op.transform() * matrix;
    }
    return matrix;
}

bool XformSample::isTopologyEqual(const XformSample& sample) const
{
    if (ops_.size() != sample.ops_.size()) {
        return false;
    }
    for (std::size_t i = 0; i < ops_.size(); ++i) {
        if (ops_[i].getType() != sample.ops_[i].getType()) {
            return false;
        }
    }
    return true;
}

void XformSample::reset()
{
    ops_.clear();
    next_op_ = 0;
    filled_by_ = FilledBy::nothing;
    inherits_ = true;
    frozen_ = false;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
