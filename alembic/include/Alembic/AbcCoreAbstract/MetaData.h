/// Metadata of objects and properties: a small sorted dictionary of strings.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <atomic>
#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// A handle on a dictionary that copies share until one of them is changed: thousands of headers hold one parsed text.
/// Copies may be used, changed and destroyed on different threads; one and the same object follows the rules of any
/// standard container (many readers, or one writer).
class ALEMBIC_EXPORT MetaData
{
public:
    typedef TokenMap::value_type value_type;
    typedef TokenMap::const_iterator const_iterator;
    typedef TokenMap::const_reverse_iterator const_reverse_iterator;

    MetaData() noexcept = default;
    MetaData(const MetaData& copy) noexcept
        : shared_(copy.shared_)
    {
        if (shared_) shared_->users.fetch_add(1, std::memory_order_relaxed);
    }
    MetaData(MetaData&& from) noexcept
        : shared_(from.shared_)
    {
        from.shared_ = nullptr;
    }
    MetaData& operator=(const MetaData& copy) noexcept
    {
        MetaData(copy).swap(*this);
        return *this;
    }
    MetaData& operator=(MetaData&& from) noexcept
    {
        MetaData(static_cast<MetaData&&>(from)).swap(*this);
        return *this;
    }
    ~MetaData()
    {
        if (shared_) release();
    }
    void swap(MetaData& other) noexcept
    {
        Shared* const mine = shared_;
        shared_ = other.shared_;
        other.shared_ = mine;
    }

    /// Adds the pairs of a stored text, `k=v;l=m`; keys that are there already keep their values.
    void deserialize(const std::string& from);
    /// The stored text: sorted by key, empty values left out. Throws for a key or value that contains `;` or `=`.
    std::string serialize() const;

    size_t size() const { return pairs().size(); }

    /// Valid until this object is changed or goes.
    const_iterator begin() const { return pairs().begin(); }
    const_iterator end() const { return pairs().end(); }
    const_reverse_iterator rbegin() const { return pairs().rbegin(); }
    const_reverse_iterator rend() const { return pairs().rend(); }

    /// Adds or overwrites one field.
    void set(const std::string& key, const std::string& data);
    /// The same, but throws when the key is there with another value.
    void setUnique(const std::string& key, const std::string& data);

    /// The value, "" when there is no such key.
    std::string get(const std::string& key) const;
    /// The value; throws when there is no such key.
    std::string getRequired(const std::string& key) const;

    /// Adds all fields of `metaData`, overwriting.
    void append(const MetaData& metaData);
    /// Adds those fields whose keys are new.
    void appendOnlyUnique(const MetaData& metaData);
    /// Adds all fields; throws, and changes nothing, when a key is there with another value.
    void appendUnique(const MetaData& metaData);

    /// Every field of `metaData` is here with the same value. An absent value and an empty one are the same, as they
    /// are in a stored text.
    bool matches(const MetaData& metaData) const;
    /// The fields that both have are equal.
    bool matchesOverlap(const MetaData& metaData) const;
    /// Both have the same fields with the same values.
    bool matchesExactly(const MetaData& metaData) const;

private:
    struct Shared
    {
        std::atomic<uint32_t> users{1};
        TokenMap pairs;
    };

    const TokenMap& pairs() const { return shared_ ? shared_->pairs : no_pairs(); }
    static const TokenMap& no_pairs();
    TokenMap& own_pairs();
    void release() noexcept;

    Shared* shared_ = nullptr;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
