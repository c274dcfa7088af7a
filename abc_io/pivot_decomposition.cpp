/// The walk from a transform's operations to the host's components.
#include "pivot_decomposition.h"

#include "abc_internal.h"
#include "rotation_order.h"
#include "xform_matrix.h"

#include <string>

using namespace Alembic::AbcGeom;

namespace {

using Vec3 = GMathTransform::Vec3;

/// How far the walk through the operations has come: it counts down, and an operation is accepted only while the walk
/// has not passed its place.
enum Stage {
    STAGE_START = 14,
    STAGE_TRANSLATION = 13,
    STAGE_ROTATE_PIVOT_TRANSLATION = 11,
    STAGE_ROTATE_PIVOT = 10,
    STAGE_SINGLE_ROTATION = 9,
    STAGE_ROTATION = 8,
    STAGE_ORIENTATION = 7,
    STAGE_SINGLE_ORIENTATION = 6,
    STAGE_SCALE_PIVOT_TRANSLATION = 5,
    STAGE_SCALE_PIVOT = 4,
    STAGE_SHEAR = 3,
    STAGE_SCALE = 2,
};

Vec3 host_vector(const V3d& v)
{
    return {v.x, v.y, v.z};
}

Vec3 euler_angles(const XformOp& axis_angle)
{
    return {axis_angle.getXRotation(), axis_angle.getYRotation(), axis_angle.getZRotation()};
}

/// 0, 1 or 2 for a rotation about X, Y or Z.
int single_axis(const XformOp& op)
{
    return op.isRotateXOp() ? 0 : op.isRotateYOp() ? 1 : 2;
}

/// Angles about single axes, each axis at most once.
struct SingleAngles
{
    Vec3 degrees{0.0, 0.0, 0.0};
    bool seen[3] = {false, false, false};

    bool add(int axis, double angle)
    {
        if (seen[axis]) return false;
        seen[axis] = true;
        degrees[static_cast<std::size_t>(axis)] = angle;
        return true;
    }
};

/// The walk through one sample's operations. Every member that takes an operation answers false when it stands where
/// the components have no place for it. Operations of hints that the components do not know are passed over.
class PivotWalk
{
public:
    bool add(const XformOp& op)
    {
        switch (op.getType()) {
        case kTranslateOperation:
            return add_translation(op);
        case kRotateOperation:
            return op.getHint() == kRotateOrientationHint ? add_orientation(op) : add_rotation(op);
        case kRotateXOperation:
        case kRotateYOperation:
        case kRotateZOperation:
            return op.getHint() == kRotateOrientationHint ? add_single_orientation(op) : add_single_rotation(op);
        case kMatrixOperation:
            return op.getHint() == kMayaShearHint && add_shear(op.getMatrix());
        case kScaleOperation:
            if (!pass(STAGE_SHEAR, STAGE_SCALE)) return false;
            transform_.set_scale(host_vector(op.getScale()));
            return true;
        }
        return true;
    }

    GMathTransform get_transform() const
    {
        GMathTransform transform = transform_;
        transform.set_rotation(rotation_.degrees);
        transform.set_rotation_order(rotation_order_of(rotation_axes_));
        transform.set_rotate_orientation(orientation_.degrees);
        transform.set_rotate_orientation_order(rotation_order_of(orientation_axes_));
        return transform;
    }

private:
    /// Goes on to stage `next` unless the walk is beyond `last` already.
    bool pass(int last, int next)
    {
        if (stage_ < last) return false;
        stage_ = next;
        return true;
    }

    bool add_translation(const XformOp& op)
    {
        const Vec3 value = host_vector(op.getTranslate());
        switch (op.getHint()) {
        case kTranslateHint:
            if (!pass(STAGE_START, STAGE_TRANSLATION)) return false;
            transform_.set_translation(value);
            return true;
        case kRotatePivotTranslationHint:
            // From 12 on: 11 is left by such a translation itself.
            if (!pass(STAGE_ROTATE_PIVOT_TRANSLATION + 1, STAGE_ROTATE_PIVOT_TRANSLATION)) return false;
            transform_.set_rotate_pivot_translation(value);
            return true;
        case kRotatePivotPointHint:
            if (has_rotate_pivot_) return true; // the inverse
            if (!pass(STAGE_ROTATE_PIVOT_TRANSLATION, STAGE_ROTATE_PIVOT)) return false;
            transform_.set_rotate_pivot(value);
            return has_rotate_pivot_ = true;
        case kScalePivotTranslationHint:
            if (!pass(STAGE_SINGLE_ORIENTATION, STAGE_SCALE_PIVOT_TRANSLATION)) return false;
            transform_.set_scale_pivot_translation(value);
            return true;
        case kScalePivotPointHint:
            if (has_scale_pivot_) return true; // the inverse
            if (!pass(STAGE_SCALE_PIVOT_TRANSLATION, STAGE_SCALE_PIVOT)) return false;
            transform_.set_scale_pivot(value);
            return has_scale_pivot_ = true;
        }
        return true;
    }

    bool add_rotation(const XformOp& op)
    {
        if (!pass(STAGE_SINGLE_ROTATION, STAGE_ROTATION)) return false;
        rotation_.degrees = euler_angles(op);
        rotation_axes_ = "XYZ";
        return true;
    }

    bool add_single_rotation(const XformOp& op)
    {
        const int axis = single_axis(op);
        if (stage_ < STAGE_SINGLE_ROTATION || !rotation_.add(axis, op.getAngle())) return false;
        rotation_axes_.insert(rotation_axes_.begin(), "XYZ"[axis]);
        stage_ = STAGE_SINGLE_ROTATION;
        return true;
    }

    bool add_orientation(const XformOp& op)
    {
        // Intended: accepted once the walk is past its place, so that after a rotation it goes into the matrix.
        if (stage_ > STAGE_SINGLE_ORIENTATION) return false;
        orientation_.degrees = euler_angles(op);
        stage_ = STAGE_ORIENTATION;
        return true;
    }

    bool add_single_orientation(const XformOp& op)
    {
        const int axis = single_axis(op);
        if (stage_ < STAGE_SINGLE_ORIENTATION || !orientation_.add(axis, op.getAngle())) return false;
        // Intended: the axis stands before the rotation's axes, not before the orientation's own.
        orientation_axes_ = "XYZ"[axis] + rotation_axes_;
        stage_ = STAGE_SINGLE_ORIENTATION;
        return true;
    }

    bool add_shear(const M44d& matrix)
    {
        if (!pass(STAGE_SCALE_PIVOT, STAGE_SHEAR)) return false;
        transform_.set_shear({matrix[1][0], matrix[2][0], matrix[2][1]});
        return true;
    }

    int stage_ = STAGE_START;
    bool has_rotate_pivot_ = false;
    bool has_scale_pivot_ = false;
    SingleAngles rotation_;
    SingleAngles orientation_;
    std::string rotation_axes_;
    std::string orientation_axes_;
    GMathTransform transform_;
};

bool walk(const XformSample& sample, GMathTransform& transform)
{
    PivotWalk walk;
    for (std::size_t i = 0; i < sample.getNumOps(); ++i)
        if (!walk.add(sample[i])) return false;
    transform = walk.get_transform();
    return true;
}

} // namespace

bool decompose_xform(const XformSample& sample, AbcPivotData& data)
{
    data = AbcPivotData();
    data.inherits_transform = sample.getInheritsXforms();
    const bool is_empty = sample.getNumOps() == 0;
    if (!is_empty && walk(sample, data.transform)) return true;
    data.matrix = AbcInternal::convert_matrix_to_array(matrix_of(sample));
    data.use_matrix = true;
    return is_empty;
}

AbcPivotData decompose_xform(XformSpan& span)
{
    AbcPivotData data;
    XformSample sample;
    if (evaluate_xform_span(span, sample)) {
        decompose_xform(sample, data);
    } else {
        // Intended: nothing is blended, and the matrix that is stored is not used.
        data.matrix = AbcInternal::convert_matrix_to_array(matrix_of(span, nullptr));
    }
    return data;
}

AbcPivotData AbcInternal::get_xform_transform(const IXformSchema& schema, const double& time)
{
    XformSpan span = read_xform_span(schema, time);
    return decompose_xform(span);
}
