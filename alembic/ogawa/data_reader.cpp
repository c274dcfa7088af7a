/// @file
/// Data, opened with every check before its size is used.
#include "ogawa/data_reader.h"

#include <stdexcept>

namespace Alembic::Ogawa {

DataReader::DataReader(const BlockBuffer& file, Entry entry)
{
    if (!entry.is_data() || (entry.position() != 0 && entry.position() < header_size)) return;
    if (entry.position() != 0) {
        const std::uint64_t size = file.read_u64(entry.position());
        if (size > file.size()) throw std::runtime_error("Ogawa IData illegal size.");
        // The read above has shown that the size itself lies inside the file.
        if (size > file.size() - entry.position() - count_size) throw_read_failed();
        position_ = entry.position() + count_size;
        size_ = size;
    }
    file_ = &file;
}

DataReader::DataReader(const BlockBuffer& file, const GroupReader& group, std::uint64_t index)
{
    if (index < group.count()) *this = DataReader(file, group.entry(index));
}

void DataReader::read(std::uint64_t offset, void* into, std::size_t size) const
{
    if (offset > size_ || size > size_ - offset) throw_read_failed();
    if (size > 0) file_->read(position_ + offset, into, size);
}

} // namespace Alembic::Ogawa
