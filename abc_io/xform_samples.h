/// Samples of a transform: those around a time, and the one between two.
#pragma once

#include <Alembic/AbcGeom/All.h>

/// The samples that a transform has at a time: one, or two with the time between them.
struct XformSpan
{
    Alembic::AbcGeom::XformSample floor; ///< the only one unless is_between; without operations when none is stored
    Alembic::AbcGeom::XformSample ceil;
    double weight = 0.0; ///< 0 at floor, 1 at ceil
    bool is_between = false;
};

/// Reads the samples at `time` (seconds). Before the first sample, after the last, and up to 0.0001 s after any, that
/// sample alone.
XformSpan read_xform_span(const Alembic::AbcGeom::IXformSchema& schema, double time);

/// Sets `sample` to the span's only sample, or to the one between its two. False, `sample` untouched, when their
/// operations differ in number or type.
bool evaluate_xform_span(XformSpan& span, Alembic::AbcGeom::XformSample& sample);

/// The sample at `weight` between two of the same number and types of operations: rotations along the shorter arc,
/// everything else channel by channel. It has the hints of `floor` and inherits, whatever the two say.
Alembic::AbcGeom::XformSample interpolate_xform(const Alembic::AbcGeom::XformSample& floor,
                                                const Alembic::AbcGeom::XformSample& ceil, double weight);
