/// TimeCut: which samples a copy keeps, and the time samplings they then have.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <optional>
#include <vector>

/// From one time to another, seconds, both included.
struct TimeSpan
{
    double start = 0.0, end = 0.0;
};

/// Samples of a property: first to last, both included.
struct SampleSpan
{
    std::int64_t first = 0, last = -1;
};

/// The time samplings of an archive, cut to a span of time. Samples that the span begins or ends between are kept, so
/// that every time in it has the value that it had.
class TimeCut
{
public:
    /// Without a span everything is kept, and samplings stay what they are.
    TimeCut(Alembic::AbcCoreAbstract::ArchiveReader& archive, const std::optional<TimeSpan>& span);

    /// What sampling `index` of the archive becomes.
    const Alembic::AbcCoreAbstract::TimeSampling& get_sampling(std::uint32_t index) const
    {
        return cuts_[index].sampling;
    }
    std::uint32_t get_count() const { return static_cast<std::uint32_t>(cuts_.size()); }
    bool is_cut() const { return is_cut_; }

    /// The samples to keep of a property of `sample_count` samples on sampling `index`.
    SampleSpan get_samples(std::uint32_t index, std::int64_t sample_count) const;

private:
    struct Cut
    {
        Alembic::AbcCoreAbstract::TimeSampling sampling;
        SampleSpan samples; ///< of a property that has them all
    };

    static Cut cut(const Alembic::AbcCoreAbstract::TimeSampling& sampling, const TimeSpan& span);

    std::vector<Cut> cuts_;
    bool is_cut_;
};
