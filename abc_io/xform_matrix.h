/// Matrices of transforms, in the host's convention.
#pragma once

#include "xform_samples.h"

#include <vo_gmath/gmath_matrix4x4.h>

/// The sample's matrix for column vectors: Alembic's, transposed.
GMathMatrix4x4<double> matrix_of(const Alembic::AbcGeom::XformSample& sample);

/// The matrix of a span, below `parent` if that is given and what is evaluated inherits. Two samples with different
/// operations are blended element by element, below a parent only: without one the result is the identity.
GMathMatrix4x4<double> matrix_of(XformSpan& span, const GMathMatrix4x4<double>* parent);
