/// One sample of a transform: a stack of operations, and whether the ancestors' transforms apply.
#pragma once

#include <Alembic/AbcGeom/XformOp.h>

#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// The first operation is the outermost. Angles are degrees.
class ALEMBIC_EXPORT XformSample
{
public:
    typedef XformSample this_type;

    /// No operations; inherits.
    XformSample();

    /// Append an operation and return its index: a scale or translation with its vector, a rotation with axis and
    /// angle, a matrix, a rotation about x, y or z with its angle, an operation as it is.
    /// Once the sample was written, they replace the operations one after another instead, round and round, and throw
    /// where the type differs. They throw on a sample that was filled by the set members below.
    std::size_t addOp(XformOp transOrScaleOp, const V3d& value);
    std::size_t addOp(XformOp rotateOp, const V3d& axis, const double angleInDegrees);
    std::size_t addOp(XformOp matrixOp, const M44d& matrix);
    std::size_t addOp(XformOp singleRotateOp, const double singleAxisRotationInDegrees);
    std::size_t addOp(const XformOp& op);

    /// An index out of range throws.
    XformOp getOp(const std::size_t index) const;
    XformOp& operator[](const std::size_t& index);
    const XformOp& operator[](const std::size_t& index) const;

    std::size_t getNumOps() const { return ops_.size(); }
    /// The channels of all operations together.
    std::size_t getNumOpChannels() const;

    void setInheritsXforms(bool inherits) { inherits_ = inherits; }
    /// False: the transforms of the ancestors do not apply.
    bool getInheritsXforms() const { return inherits_; }

    /// Each appends one operation with hint 0, or replaces the next one once the sample was written. They throw on a
    /// sample that was filled by addOp.
    void setTranslation(const V3d& translation);
    void setRotation(const V3d& axis, const double angleInDegrees);
    void setXRotation(const double angleInDegrees);
    void setYRotation(const double angleInDegrees);
    void setZRotation(const double angleInDegrees);
    void setScale(const V3d& scale);
    void setMatrix(const M44d& matrix);

    /// Parts of getMatrix().
    V3d getTranslation() const;
    V3d getAxis() const;
    double getAngle() const;
    double getXRotation() const;
    double getYRotation() const;
    double getZRotation() const;
    V3d getScale() const;

    /// The product of the operations for row vectors: `p * getMatrix()`, the last operation applied first.
    M44d getMatrix() const;

    /// Whether both have the same number and types of operations. Hints, values and inheritance do not count.
    bool isTopologyEqual(const XformSample& sample) const;

    /// True once a writing schema took the sample.
    bool getIsTopologyFrozen() const { return frozen_; }

    /// As new.
    void reset();

private:
    friend class IXformSchema;
    friend class OXformSchema;

    /// How the operations came in; the two ways do not mix.
    enum class FilledBy {
        nothing,
        add_op,
        set_members,
    };

    void freezeTopology() { frozen_ = true; }
    std::size_t put(const XformOp& op, FilledBy way);

    std::vector<XformOp> ops_;
    std::size_t next_op_ = 0; ///< which operation is replaced next, once frozen
    FilledBy filled_by_ = FilledBy::nothing;
    bool inherits_ = true;
    bool frozen_ = false;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
