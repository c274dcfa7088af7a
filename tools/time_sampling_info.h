/// What a time sampling of an archive is, in words and in JSON.
#pragma once

#include "text.h"

#include <Alembic/Abc/IArchive.h>

#include <cstdint>
#include <string>

/// The frames a second that samples `time_per_sample` seconds apart look like: a usual rate that is nearer than a
/// thousandth, else the quotient itself; 0 when the distance is not positive.
double guess_frame_rate(double time_per_sample);

/// One time sampling of an archive.
struct TimeSamplingInfo
{
    TimeSamplingInfo(Alembic::Abc::IArchive& archive, std::uint32_t sampling_index);

    /// "1: uniform, at most 24 samples, 0 s to 0.958333 s, looks like 24 a second"
    std::string describe() const;
    /// Whether the frame rate means something: samples have it, or a sampling of one sample at most has a usual one,
    /// which writers fill in. The default sampling of every archive does not count as such.
    bool tells_frame_rate() const;
    Json to_json() const;

    std::uint32_t index;
    const char* kind = ""; ///< "uniform", "cyclic" or "acyclic"
    std::int64_t max_sample_count =
        -1;                           ///< most samples that a property on this sampling has; -1: the file does not say
    double time_per_cycle = 0.0;      ///< seconds; 0 when acyclic
    std::vector<double> stored_times; ///< seconds: of one cycle, or all of an acyclic sampling
    double start_time = 0.0;          ///< seconds: the first sample
    double end_time = 0.0;            ///< seconds: the last one
    double frame_rate = 0.0;          ///< a second, as the samples look like; 0: no telling
};
