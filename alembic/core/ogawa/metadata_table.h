/// @file
/// Metadata that headers refer to by a number, parsed once for the whole archive.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "ogawa/data_reader.h"

#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// The indexed metadata of an archive. Index 0 is the empty metadata.
class MetadataTable
{
public:
    MetadataTable();

    /// Parses the table; no data gives a table of index 0 alone. Throws "Read invalid: Indexed MetaData ..." when it is
    /// too large or a string runs past its end.
    explicit MetadataTable(const Ogawa::DataReader& data);

    /// The metadata of a header: entry `index`, or `in_place` parsed when the index says so. Null when there is no such
    /// entry. `storage` keeps what is parsed here.
    const AbcA::MetaData* find(std::uint8_t index, std::string_view in_place, AbcA::MetaData& storage) const;

    /// Whether find() would succeed.
    bool has(std::uint8_t index) const { return index == Ogawa::metadata_in_place || index < entries_.size(); }

private:
    std::vector<AbcA::MetaData> entries_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
