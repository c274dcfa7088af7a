/// @file
/// The property tables of an archive, one for each different run of header bytes.
#pragma once

#include "core/ogawa/property_table.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// A hash map that only grows: tables are found and added from any number of threads without a lock, and stay as long
/// as the map does. Thousands of equal objects share one table.
class PropertyTableCache
{
public:
    /// For an archive of `file_size` bytes. The headers of its compounds lie in it one beside the other: when different
    /// ones take more bytes than the file has, they overlap, and no more are read.
    explicit PropertyTableCache(std::uint64_t file_size);
    ~PropertyTableCache();
    PropertyTableCache(const PropertyTableCache&) = delete;
    PropertyTableCache& operator=(const PropertyTableCache&) = delete;

    /// The table of these headers. Throws as PropertyTable does.
    const PropertyTable& find_or_parse(std::string_view headers, const HeaderContext& context);

private:
    struct Entry
    {
        std::uint64_t hash;
        std::string headers;
        PropertyTable table;
        const Entry* next; ///< older entries of the same bucket
    };

    static const Entry* find(const Entry* from, const Entry* end, std::uint64_t hash, std::string_view headers);

    std::unique_ptr<std::atomic<const Entry*>[]> buckets_;
    std::uint64_t bucket_mask_;
    std::uint64_t byte_limit_;
    std::atomic<std::uint64_t> bytes_{0};
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
