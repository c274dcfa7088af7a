/// AbcInternal: helpers of the readers that speak Alembic's own types.
#pragma once

#include "vo_abc_io_export.h"

#include <Alembic/AbcGeom/All.h>
#include <vo_core/core_array.h>
#include <vo_core/core_string.h>
#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_time_sampling.h>

#include <cstddef>
#include <memory>

class AbcPivotData;

/// Static helpers shared by the readers. None of them takes a lock: callers hold the handle's.
class VO_ABC_IO_EXPORT AbcInternal
{
public:
    /// The object of `full_name` ("/" separated, as Alembic gives it) below `root`. Empty components are skipped, so ""
    /// and "/" are `root` itself and doubled separators do no harm. False, `object` untouched, when a component does
    /// not exist or its object cannot be opened.
    static bool get_object_by_full_name(Alembic::Abc::IObject root, const CoreString& full_name,
                                        Alembic::Abc::IObject& object);

    /// The stored samples that cover [`start_time`, `end_time`] (seconds): from the floor sample of the start to the
    /// ceiling sample of the end, `sample_count` being the number of stored ones. Uniform when Alembic's sampling is,
    /// when they are fewer than three, or when their times are evenly spaced within 1e-8 s; explicit otherwise.
    /// Without samples the result is one sample at 0.0; an interval that ends before it starts, and whose ends have no
    /// sample between them, yields the floor sample of its start alone.
    static void get_frame_sampling(const std::shared_ptr<Alembic::AbcGeom::TimeSampling>& alembic_sampling,
                                   const size_t& sample_count, const double& start_time, const double& end_time,
                                   GMathTimeSampling& result);

    /// The transform's matrix at `time` (seconds), in the host's convention (column vectors), premultiplied by `parent`
    /// when that is given and the sample inherits transforms.
    static GMathMatrix4x4<double> get_xform_matrix(const Alembic::AbcGeom::IXformSchema& schema, const double& time,
                                                   const GMathMatrix4x4<double>* parent);

    /// The transform at `time` (seconds), decomposed into translation, rotations, scale, shear and pivots.
    static AbcPivotData get_xform_transform(const Alembic::AbcGeom::IXformSchema& schema, const double& time);

    /// The 16 values of a host matrix, row by row, not transposed.
    static CoreArray<double> convert_matrix_to_array(const GMathMatrix4x4<double>& matrix);
};
