/// AbcAnimationHeader: whether a transform or a camera is animated, and over which time.
#pragma once

#include "vo_abc_io_export.h"

#include <cstdint>

/// A short description of a moving transform or camera, read before its values.
class VO_ABC_IO_EXPORT AbcAnimationHeader
{
public:
    /// True when there is more than one sample.
    bool is_animated() const { return sample_count >= 2; }

    std::int32_t sample_count =
        0;                      ///< stored samples; 1 for a transform that never changes, however often it was stored
    std::int64_t host_data = 0; ///< the host's own; never touched by a reader
    double start_time = 0.0;    ///< seconds: the first stored sample
    double end_time = 0.0;      ///< seconds: the last stored sample; start_time where there is none or only one
};
