/// AbcDeformationHeader: how the geometry of an object changes over time.
#pragma once

#include "vo_abc_io_export.h"

#include <cstdint>

/// A short description of a moving geometry, read before the geometry itself.
class VO_ABC_IO_EXPORT AbcDeformationHeader
{
public:
    enum DeformationType : std::int32_t {
        DEFORMATION_TYPE_CONSTANT = 0,      ///< neither positions nor topology change
        DEFORMATION_TYPE_HOMOGENEOUS = 1,   ///< positions change; counts and indices are the same in every sample
        DEFORMATION_TYPE_HETEROGENEOUS = 2, ///< the topology changes between samples
        DEFORMATION_TYPE_COUNT = 3,         ///< number of types; no reader yields it
    };

    /// The enumerator's own name; "DEFORMATION_TYPE_UNKNOWN" for any other value.
    static const char* get_deformation_type_name(const DeformationType& type);

    DeformationType deformation_type = DEFORMATION_TYPE_CONSTANT; ///< from the schema's topology variance
    std::int32_t sample_count = 0;                                ///< stored samples of the object's positions
    double start_time = 0.0;                                      ///< seconds: the first stored sample
    double end_time = 0.0;                                        ///< seconds: the last stored sample
};
