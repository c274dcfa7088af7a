/// @file
/// Groups, opened with every check before their entries are used.
#include "ogawa/group_reader.h"

namespace Alembic::Ogawa {

GroupReader::GroupReader(const BlockBuffer& file, std::uint64_t position)
{
    if (position == empty_group) {
        file_ = &file;
        return;
    }
    if (position < header_size) return;
    const std::uint64_t count = file.read_u64(position);
    if (count > 0 && count <= file.size() / entry_size) {
        // The read above has shown that the count itself lies inside the file.
        if (count > (file.size() - position - count_size) / entry_size) throw_read_failed();
        count_ = count;
    }
    file_ = &file;
    position_ = position;
}

GroupReader GroupReader::child(std::uint64_t index) const
{
    if (index >= count_) return {};
    const Entry child = entry(index);
    if (child.is_data() || child.position() == position_) return {};
    return GroupReader(*file_, child.position());
}

} // namespace Alembic::Ogawa
