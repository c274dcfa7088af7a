/// @file
/// Parses the table of indexed metadata.
#include "core/ogawa/metadata_table.h"

#include "core/ogawa/byte_cursor.h"

#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

MetadataTable::MetadataTable()
    : entries_(1)
{
}

MetadataTable::MetadataTable(const Ogawa::DataReader& data)
    : MetadataTable()
{
    if (data.size() > Ogawa::metadata_table_limit)
        ABCA_THROW("Read invalid: Indexed MetaData buffer unexpectedly big.");
    std::string bytes(static_cast<std::size_t>(data.size()), '\0');
    data.read(0, &bytes[0], bytes.size());

    ByteCursor cursor(bytes);
    std::uint8_t size = 0;
    while (cursor.take(size)) {
        std::string_view text;
        if (!cursor.take(size, text)) ABCA_THROW("Read invalid: Indexed MetaData string.");
        entries_.emplace_back();
        entries_.back().deserialize(std::string(text));
    }
}

const AbcA::MetaData* MetadataTable::find(std::uint8_t index, std::string_view in_place, AbcA::MetaData& storage) const
{
    if (index == Ogawa::metadata_in_place) {
        storage.deserialize(std::string(in_place));
        return &storage;
    }
    return index < entries_.size() ? &entries_[index] : nullptr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
