/// @file
/// The bytes of a file up to where it says that it ends.
#pragma once

#include "ogawa/byte_source.h"

#include <Alembic/Util/Config.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// libhdf5 refuses to read behind that end, which may come before that of the file: to the checks it is the same.
class BoundedSource final : public Ogawa::ByteSource
{
public:
    /// The whole file. Throws as FileSource does.
    explicit BoundedSource(const std::string& name)
        : file_(name)
        , size_(file_.size())
    {
    }

    /// What comes from `end` on is not there.
    void end_at(std::uint64_t end) { size_ = std::min(size_, end); }

    std::uint64_t size() const override { return size_; }
    void read(std::uint64_t position, void* into, std::size_t size) const override
    {
        if (position > size_ || size > size_ - position) Ogawa::throw_read_failed();
        file_.read(position, into, size);
    }

private:
    Ogawa::FileSource file_;
    std::uint64_t size_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
