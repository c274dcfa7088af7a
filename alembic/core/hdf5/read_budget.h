/// @file
/// How much of a file its checks may read.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Bytes that checks may still look at. What a sound file describes itself with belongs to one object each, and is
/// looked at a few times: a file that shares it between objects could make checks read it as often as there are
/// objects.
class ReadBudget
{
public:
    explicit ReadBudget(std::uint64_t bytes)
        : left_(bytes)
    {
    }

    /// Throws when there are not as many left.
    void take(std::uint64_t bytes)
    {
        if (bytes > left_) ABCA_THROW("parts of the file overlap");
        left_ -= bytes;
    }

    std::uint64_t left() const { return left_; }

    /// As if nothing had been taken since so many were left.
    void restore(std::uint64_t left) { left_ = left; }

private:
    std::uint64_t left_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
