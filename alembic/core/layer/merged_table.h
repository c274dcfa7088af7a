/// Records of several layers, joined by name: the order of first appearance, and a hash to find them.
#pragma once

#include "core/common/byte_hash.h"

#include <Alembic/Util/Foundation.h>

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

/// Filled by one thread with append() and remove(), closed with finish(), then read by any number of threads.
/// `Record` is movable and has `std::string_view name() const`, whose text stays where it is.
template <class Record>
class MergedTable
{
public:
    size_t size() const { return records_.size(); }
    const Record& operator[](size_t i) const { return records_[i]; }

    /// The number of the record of that name, or size() when there is none.
    size_t find(std::string_view name) const
    {
        const auto found = numbers_.find(name);
        return found == numbers_.end() ? records_.size() : found->second;
    }

    Record& at(size_t number) { return records_[number]; }

    void append(Record record)
    {
        numbers_.emplace(record.name(), records_.size());
        records_.push_back(std::move(record));
        removed_.push_back(false);
    }

    /// Its number is not given again before finish().
    void remove(size_t number)
    {
        numbers_.erase(records_[number].name());
        removed_[number] = true;
    }

    /// Closes the gaps that remove() left.
    void finish()
    {
        size_t kept = 0;
        for (size_t i = 0; i < records_.size(); ++i) {
            if (removed_[i]) continue;
            if (kept != i) {
                records_[kept] = std::move(records_[i]);
                numbers_[records_[kept].name()] = kept;
            }
            ++kept;
        }
        records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(kept), records_.end());
        records_.shrink_to_fit();
        removed_ = std::vector<bool>();
    }

private:
    struct NameHash
    {
        size_t operator()(std::string_view name) const
        {
            return static_cast<size_t>(AbcCoreCommon::hash_bytes(name, AbcCoreCommon::process_seed()));
        }
    };

    std::vector<Record> records_;
    std::vector<bool> removed_;
    std::unordered_map<std::string_view, size_t, NameHash> numbers_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
