/// @file
/// A group of the container: a count and the entries of its children, read one at a time.
#pragma once

#include "ogawa/block_buffer.h"
#include "ogawa/format.h"

namespace Alembic::Ogawa {

/// What an entry of a group refers to.
class Entry
{
public:
    explicit Entry(std::uint64_t bits)
        : bits_(bits)
    {
    }
    bool is_data() const { return (bits_ & data_bit) != 0; }
    bool is_group() const { return !is_data(); }
    std::uint64_t position() const { return bits_ & position_mask; }

private:
    std::uint64_t bits_;
};

/// A group. Copies are cheap: a group is its position and count, the entries stay in the file until asked for.
class GroupReader
{
public:
    /// No group: false, no children.
    GroupReader() = default;

    /// The group at `position` of `file`, which outlives it; position 0 is the empty group. A count of 0, or one that
    /// no file of this size can hold, gives an empty group too. No group when the position lies in the header. Throws
    /// std::runtime_error "Ogawa IStreams::read failed." when the entries do not lie inside the file.
    GroupReader(const BlockBuffer& file, std::uint64_t position);

    explicit operator bool() const { return file_ != nullptr; }
    std::uint64_t position() const { return position_; }
    std::uint64_t count() const { return count_; }

    /// Entry `index`, which must be below the count.
    Entry entry(std::uint64_t index) const
    {
        return Entry(file_->read_u64(position_ + count_size + index * entry_size));
    }

    bool is_data(std::uint64_t index) const { return index < count_ && entry(index).is_data(); }
    bool is_group(std::uint64_t index) const { return index < count_ && entry(index).is_group(); }

    /// Child group `index`. No group when there is no such child, it is data, or it is this group itself. Throws as the
    /// constructor does.
    GroupReader child(std::uint64_t index) const;

private:
    const BlockBuffer* file_ = nullptr;
    std::uint64_t position_ = 0;
    std::uint64_t count_ = 0;
};

} // namespace Alembic::Ogawa
