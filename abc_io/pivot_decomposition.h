/// From the operations of a transform to the host's components.
#pragma once

#include "abc_pivot_data.h"
#include "xform_samples.h"

/// Sets `data` to the sample: to its components when its operations come in their order, each at most once and pivots
/// with their inverses, to its matrix otherwise. False in the latter case. A sample without operations goes into the
/// matrix, too, and that is no failure.
bool decompose_xform(const Alembic::AbcGeom::XformSample& sample, AbcPivotData& data);

/// The components of a span. Two samples with different operations cannot be blended: the identity then.
AbcPivotData decompose_xform(XformSpan& span);
