/// @file
/// Parses child headers.
#include "core/ogawa/child_table.h"

#include "core/ogawa/byte_cursor.h"
#include "core/ogawa/object_reader.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::uint64_t name_to_metadata = 1 + 4; // between a name and its metadata: the index and the length

} // namespace

ChildTable::ChildTable(const Ogawa::DataReader& data, const MetadataTable& metadata)
{
    if (data.size() <= Ogawa::object_hashes_size) return;
    bytes_.resize(static_cast<std::size_t>(data.size() - Ogawa::object_hashes_size));
    data.read(0, &bytes_[0], bytes_.size());

    ByteCursor cursor(bytes_);
    while (cursor.left() > 0) {
        Record record = {};
        std::string_view bytes;
        if (!cursor.take(record.name_size)) ABCA_THROW("Read invalid: Object Headers name size.");
        record.name_offset = bytes_.size() - cursor.left();
        if (record.name_size == 0 || !cursor.take(record.name_size, bytes) || !cursor.take(record.metadata_index))
            ABCA_THROW("Read invalid: Object Headers name and MetaData index.");
        if (record.metadata_index == Ogawa::metadata_in_place) {
            if (!cursor.take(record.metadata_size)) ABCA_THROW("Read invalid: Object Headers MetaData size.");
            if (!cursor.take(record.metadata_size, bytes)) ABCA_THROW("Read invalid: Object Headers MetaData string.");
        }
        if (!metadata.has(record.metadata_index)) ABCA_THROW("Read invalid: Object Headers MetaData index.");
        records_.push_back(record);
        if (records_.size() > NameIndex::most_records)
            ABCA_THROW("Read invalid: an object has more than " << NameIndex::most_records << " children.");
    }
    index_.build(record_count(), [this](std::uint32_t i) { return name(i); });
    nodes_.reset(new std::atomic<ObjectReader*>[records_.size()]());
}

ChildTable::~ChildTable()
{
    for (std::size_t i = 0; i < records_.size(); ++i)
        delete nodes_[i].load(std::memory_order_relaxed);
}

std::uint32_t ChildTable::find(std::string_view name) const
{
    return index_.find(name, [this](std::uint32_t i) { return this->name(i); });
}

std::string_view ChildTable::name(std::uint32_t index) const
{
    const Record& record = records_[index];
    return std::string_view(bytes_.data() + record.name_offset, record.name_size);
}

AbcA::MetaData ChildTable::metadata(std::uint32_t index, const MetadataTable& table) const
{
    const Record& record = records_[index];
    std::string_view in_place;
    if (record.metadata_index == Ogawa::metadata_in_place)
        in_place = std::string_view(bytes_.data() + record.name_offset + record.name_size + name_to_metadata,
                                    record.metadata_size);
    AbcA::MetaData parsed;
    return *table.find(record.metadata_index, in_place, parsed); // the index was checked when the headers were parsed
}

ObjectReader* ChildTable::add_node(std::uint32_t index, std::unique_ptr<ObjectReader> node, bool& added) const
{
    ObjectReader* there = nullptr;
    added = nodes_[index].compare_exchange_strong(there, node.get(), std::memory_order_acq_rel);
    return added ? node.release() : there;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
