/// @file
/// What back ends keep of a property: its header, and which of its samples are stored.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Which of a property's samples are stored: the first one, and those from the first to the last change.
struct SampleRange
{
    std::uint32_t count = 0;         ///< samples that were set, repeats included
    std::uint32_t first_changed = 0; ///< 0: no sample differs from sample 0
    std::uint32_t last_changed = 0;

    /// The position among the stored samples of sample `index`, which must be below the count.
    std::uint64_t stored_index(std::uint64_t index) const
    {
        if (index < first_changed || last_changed == 0) return 0;
        if (index >= last_changed) return std::uint64_t(last_changed) - first_changed + 1;
        return index - first_changed + 1;
    }

    /// The sample that is stored for sample `index`: itself, or the one that it repeats.
    std::uint64_t stored_sample(std::uint64_t index) const
    {
        if (index < first_changed) return 0;
        return index > last_changed ? last_changed : index;
    }
};

/// One property of a compound.
struct PropertyRecord
{
    AbcA::PropertyHeader header;
    SampleRange samples;      ///< of a simple property
    bool scalar_like = false; ///< an array whose samples all have one element
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
