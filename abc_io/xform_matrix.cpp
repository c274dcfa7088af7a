/// Matrices of transforms, alone and below a parent.
#include "xform_matrix.h"

#include "abc_internal.h"

using namespace Alembic::AbcGeom;

using Matrix = GMathMatrix4x4<double>;

namespace {

Matrix blend(const Matrix& a, const Matrix& b, double weight)
{
    Matrix result;
    for (int i = 0; i < 16; ++i)
        result.get_data()[i] = (1.0 - weight) * a.get_data()[i] + weight * b.get_data()[i];
    return result;
}

/// Two samples that share no operations: element by element, which keeps no rotation orthonormal.
Matrix blend_below(const Matrix& parent, const XformSpan& span)
{
    const Matrix floor = matrix_of(span.floor), ceil = matrix_of(span.ceil);
    const bool floor_inherits = span.floor.getInheritsXforms(), ceil_inherits = span.ceil.getInheritsXforms();
    if (floor_inherits && ceil_inherits) return parent * blend(floor, ceil, span.weight);
    return blend(floor_inherits ? parent * floor : floor, ceil_inherits ? parent * ceil : ceil, span.weight);
}

} // namespace

Matrix matrix_of(const XformSample& sample)
{
    const M44d matrix = sample.getMatrix();
    return Matrix(matrix.getValue()).get_transpose();
}

Matrix matrix_of(XformSpan& span, const Matrix* parent)
{
    XformSample sample;
    if (!evaluate_xform_span(span, sample))
        return parent ? blend_below(*parent, span) : Matrix(); // intended: without a parent nothing is blended
    const Matrix local = matrix_of(sample);
    return parent && sample.getInheritsXforms() ? *parent * local : local;
}

Matrix AbcInternal::get_xform_matrix(const IXformSchema& schema, const double& time, const Matrix* parent)
{
    if (schema.getNumSamples() == 0) return parent ? *parent : Matrix();
    XformSpan span = read_xform_span(schema, time);
    return matrix_of(span, parent);
}

CoreArray<double> AbcInternal::convert_matrix_to_array(const Matrix& matrix)
{
    return CoreArray<double>(matrix.get_data(), 16);
}
