/// AbcPivotData: a transform at one time, decomposed or as a matrix.
#pragma once

#include "vo_abc_io_export.h"

#include <vo_core/core_array.h>
#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_transform.h>

#include <cstddef>

/// A local transform as the host edits it: components where the stored operations are in the order that the components
/// compose in, the whole matrix otherwise. Holds nothing of the archive.
class VO_ABC_IO_EXPORT AbcPivotData
{
public:
    /// The identity.
    AbcPivotData();

    /// The transform's matrix for column vectors: that of `transform`, times `matrix` when `use_matrix` is set. A
    /// matrix of fewer than 16 values counts as the identity.
    GMathMatrix4x4<double> get_global_matrix() const;

    /// Bytes of this record and of its matrix.
    std::size_t get_memory_size() const;

    GMathTransform transform; ///< lengths in archive units, angles in degrees; the identity when use_matrix is set
    bool inherits_transform = true; ///< false: the ancestors' transforms do not apply
    CoreArray<double> matrix; ///< 16 values, row by row, for column vectors; the identity unless use_matrix is set
    bool use_matrix = false;  ///< the transform is in `matrix`, not in the components
};
