/// @file
/// Finds and adds property tables without a lock.
#include "core/ogawa/property_table_cache.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::uint64_t least_buckets = 16;
constexpr std::uint64_t most_buckets = 8192;
constexpr std::uint64_t bytes_per_bucket = 1024; // of the file: an object with its properties takes about that much

std::uint64_t bucket_count(std::uint64_t file_size)
{
    std::uint64_t count = least_buckets;
    while (count < most_buckets && count < file_size / bytes_per_bucket)
        count *= 2;
    return count;
}

} // namespace

PropertyTableCache::PropertyTableCache(std::uint64_t file_size)
    : bucket_mask_(bucket_count(file_size) - 1)
    , byte_limit_(file_size)
{
    buckets_.reset(new std::atomic<const Entry*>[bucket_mask_ + 1]());
}

PropertyTableCache::~PropertyTableCache()
{
    for (std::uint64_t i = 0; i <= bucket_mask_; ++i) {
        const Entry* entry = buckets_[i].load(std::memory_order_relaxed);
        while (entry) {
            const Entry* const next = entry->next;
            delete entry;
            entry = next;
        }
    }
}

const PropertyTableCache::Entry* PropertyTableCache::find(const Entry* from, const Entry* end, std::uint64_t hash,
                                                          std::string_view headers)
{
    for (const Entry* entry = from; entry != end; entry = entry->next)
        if (entry->hash == hash && entry->headers == headers) return entry;
    return nullptr;
}

const PropertyTable& PropertyTableCache::find_or_parse(std::string_view headers, const HeaderContext& context)
{
    const std::uint64_t hash = AbcCoreCommon::hash_bytes(headers, AbcCoreCommon::process_seed());
    std::atomic<const Entry*>& bucket = buckets_[hash & bucket_mask_];
    const Entry* head = bucket.load(std::memory_order_acquire);
    if (const Entry* const found = find(head, nullptr, hash, headers)) return found->table;

    if (headers.size() > byte_limit_ || bytes_.load(std::memory_order_relaxed) > byte_limit_ - headers.size())
        ABCA_THROW("Read invalid: the property headers read so far take more bytes than the file has ("
                   << byte_limit_ << "): its blocks overlap.");
    std::unique_ptr<Entry> entry(new Entry{hash, std::string(headers), PropertyTable(headers, context), head});
    while (!bucket.compare_exchange_weak(head, entry.get(), std::memory_order_release, std::memory_order_acquire)) {
        // Other threads have added to this bucket: perhaps the same table.
        if (const Entry* const found = find(head, entry->next, hash, headers)) return found->table;
        entry->next = head;
    }
    bytes_.fetch_add(headers.size(), std::memory_order_relaxed);
    return entry.release()->table;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
