/// @file
/// What the checks of one file have read, and found out about who owns what.
#pragma once

#include "core/hdf5/read_budget.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <unordered_map>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// A budget for all checks of a file, and the owners of parts that libhdf5 must not meet in two places: it keeps such a
/// part as the first owner describes it, and hands that to the second.
class CheckLedger : public ReadBudget
{
public:
    using ReadBudget::ReadBudget;

    /// The part at `address` belongs to the one at `owner`. Throws when it is known to belong to another.
    void claim(std::uint64_t address, std::uint64_t owner)
    {
        if (owners_.emplace(address, owner).first->second != owner) ABCA_THROW("a part of the file has two owners");
    }

private:
    std::unordered_map<std::uint64_t, std::uint64_t> owners_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
