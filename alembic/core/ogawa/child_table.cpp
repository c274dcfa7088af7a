/// @file
/// Parses child headers.
#include "core/ogawa/child_table.h"

#include "core/ogawa/byte_cursor.h"
#include "core/ogawa/object_reader.h"

#include <algorithm>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::size_t least_header_bytes = 4 + 1 + 1; // the length of the name, a name, the index of its metadata
constexpr std::uint64_t name_to_metadata = 1 + 4;     // between a name and its metadata: the index and the length

} // namespace

ChildTable::ChildTable(const Ogawa::DataReader& data, const MetadataTable& metadata, std::uint64_t children_in_group)
{
    if (data.size() <= Ogawa::object_hashes_size) return;
    byte_count_ = static_cast<std::size_t>(data.size() - Ogawa::object_hashes_size);
    bytes_.reset(new char[byte_count_]);
    data.read(0, bytes_.get(), byte_count_);

    ByteCursor cursor(std::string_view(bytes_.get(), byte_count_));
    const std::uint64_t most = std::min<std::uint64_t>(children_in_group, AbcCoreCommon::NameIndex::most_records);
    records_.reserve(static_cast<std::size_t>(std::min<std::uint64_t>(most, byte_count_ / least_header_bytes)));
    std::uint8_t highest_metadata = 0;
    while (cursor.left() > 0) {
        Record record;
        record.metadata_size = 0;
        if (records_.size() == most)
            ABCA_THROW("Read invalid: Object Headers of more children than the " << most << " in the group.");
        std::string_view bytes;
        if (!cursor.take(record.name_size)) ABCA_THROW("Read invalid: Object Headers name size.");
        record.name_offset = byte_count_ - cursor.left();
        if (record.name_size == 0 || !cursor.take(record.name_size, bytes) || !cursor.take(record.metadata_index))
            ABCA_THROW("Read invalid: Object Headers name and MetaData index.");
        if (record.metadata_index == Ogawa::metadata_in_place) {
            if (!cursor.take(record.metadata_size)) ABCA_THROW("Read invalid: Object Headers MetaData size.");
            if (!cursor.take(record.metadata_size, bytes)) ABCA_THROW("Read invalid: Object Headers MetaData string.");
        } else {
            highest_metadata = std::max(highest_metadata, record.metadata_index);
        }
        records_.push_back(record);
    }
    if (!metadata.has(highest_metadata)) ABCA_THROW("Read invalid: Object Headers MetaData index.");
    index_.build(record_count(), [this](std::uint32_t i) { return name(i); });
    nodes_.reset(new std::atomic<ObjectReader*>[records_.size()]());
}

ChildTable::~ChildTable()
{
    for (ObjectReader* node = last_made_.load(std::memory_order_acquire); node != nullptr;) {
        ObjectReader* const before = node->made_before_;
        delete node;
        node = before;
    }
}

std::uint32_t ChildTable::find(std::string_view name) const
{
    return index_.find(name, [this](std::uint32_t i) { return this->name(i); });
}

std::string_view ChildTable::name(std::uint32_t index) const
{
    const Record& record = records_[index];
    return std::string_view(bytes_.get() + record.name_offset, record.name_size);
}

AbcA::MetaData ChildTable::metadata(std::uint32_t index, const MetadataTable& table) const
{
    const Record& record = records_[index];
    std::string_view in_place;
    if (record.metadata_index == Ogawa::metadata_in_place)
        in_place = std::string_view(bytes_.get() + record.name_offset + record.name_size + name_to_metadata,
                                    record.metadata_size);
    AbcA::MetaData parsed;
    return *table.find(record.metadata_index, in_place, parsed); // the index was checked when the headers were parsed
}

ObjectReader* ChildTable::add_node(std::uint32_t index, std::unique_ptr<ObjectReader> node, bool& added) const
{
    ObjectReader* there = nullptr;
    added = nodes_[index].compare_exchange_strong(there, node.get(), std::memory_order_acq_rel);
    if (!added) return there;
    ObjectReader* const made = node.release();
    made->made_before_ = last_made_.load(std::memory_order_relaxed);
    while (!last_made_.compare_exchange_weak(made->made_before_, made, std::memory_order_release,
                                             std::memory_order_relaxed)) {
    }
    return made;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
