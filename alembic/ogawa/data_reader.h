/// @file
/// Data of the container: a size and as many bytes.
#pragma once

#include "ogawa/group_reader.h"

namespace Alembic::Ogawa {

/// A data block. Copies are cheap: it is a position and a size, the bytes stay in the file until asked for.
class DataReader
{
public:
    /// No data: false, size 0.
    DataReader() = default;

    /// The data that an entry of a group in `file` refers to; `file` outlives it. No data when the entry is a group or
    /// its position lies in the header. Throws std::runtime_error "Ogawa IData illegal size." when the size is above
    /// the file's, "Ogawa IStreams::read failed." when the bytes do not lie inside the file.
    DataReader(const BlockBuffer& file, Entry entry);

    /// Child `index` of a group in `file`; no data when there is no such child. Throws as above.
    DataReader(const BlockBuffer& file, const GroupReader& group, std::uint64_t index);

    explicit operator bool() const { return file_ != nullptr; }
    std::uint64_t position() const { return position_; }
    std::uint64_t size() const { return size_; }

    /// Copies `size` bytes from `offset` to `into`. Throws "Ogawa IStreams::read failed." when they are not all inside
    /// this data; `into` is untouched then.
    void read(std::uint64_t offset, void* into, std::size_t size) const;

private:
    const BlockBuffer* file_ = nullptr;
    std::uint64_t position_ = 0; ///< of the bytes, after the size
    std::uint64_t size_ = 0;
};

} // namespace Alembic::Ogawa
