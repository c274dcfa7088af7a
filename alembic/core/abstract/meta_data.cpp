/// Metadata: sharing, and what is built on the dictionary.
#include <Alembic/AbcCoreAbstract/MetaData.h>

#include <memory>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

const TokenMap& MetaData::no_pairs()
{
    // Never destroyed: an archive in a static variable is finished after this library's own such objects are gone.
    static const TokenMap& empty = *new TokenMap;
    return empty;
}

void MetaData::release() noexcept
{
    // Acquire: what other users read must be done before the last one deletes it.
    if (shared_->users.fetch_sub(1, std::memory_order_acq_rel) == 1) delete shared_;
}

// The dictionary, to be changed: a copy of it first when others share it.
TokenMap& MetaData::own_pairs()
{
    if (!shared_) {
        shared_ = new Shared;
    } else if (shared_->users.load(std::memory_order_acquire) != 1) {
        std::unique_ptr<Shared> own(new Shared);
        own->pairs = shared_->pairs;
        release();
        shared_ = own.release();
    }
    return shared_->pairs;
}

void MetaData::deserialize(const std::string& from)
{
    if (!from.empty()) own_pairs().setUnique(from);
}

std::string MetaData::serialize() const
{
    return pairs().get(';', '=', true);
}

void MetaData::set(const std::string& key, const std::string& data)
{
    own_pairs().setValue(key, data);
}

void MetaData::setUnique(const std::string& key, const std::string& data)
{
    const const_iterator found = pairs().find(key);
    if (found == end()) return set(key, data);
    if (found->second != data) ABCA_THROW("Key: " << key << " already exists in MetaData");
}

std::string MetaData::get(const std::string& key) const
{
    return pairs().value(key);
}

std::string MetaData::getRequired(const std::string& key) const
{
    const const_iterator found = pairs().find(key);
    if (found == end()) ABCA_THROW("Key: " << key << " did not exist in MetaData");
    return found->second;
}

void MetaData::append(const MetaData& metaData)
{
    if (shared_ == metaData.shared_) return;
    if (size() == 0) {
        *this = metaData;
        return;
    }
    for (const auto& [key, data] : metaData)
        set(key, data);
}

void MetaData::appendOnlyUnique(const MetaData& metaData)
{
    if (shared_ == metaData.shared_) return;
    if (size() == 0) {
        *this = metaData;
        return;
    }
    for (const auto& [key, data] : metaData)
        if (!pairs().tokenExists(key)) set(key, data);
}

void MetaData::appendUnique(const MetaData& metaData)
{
    for (const auto& [key, data] : metaData) {
        const const_iterator found = pairs().find(key);
        if (found != end() && found->second != data) ABCA_THROW("Key: " << key << " already exists in MetaData");
    }
    append(metaData);
}

bool MetaData::matches(const MetaData& metaData) const
{
    if (shared_ == metaData.shared_) return true;
    for (const auto& [key, data] : metaData)
        if (get(key) != data) return false;
    return true;
}

bool MetaData::matchesOverlap(const MetaData& metaData) const
{
    if (shared_ == metaData.shared_) return true;
    for (const auto& [key, data] : metaData) {
        const const_iterator found = pairs().find(key);
        if (found != end() && found->second != data) return false;
    }
    return true;
}

bool MetaData::matchesExactly(const MetaData& metaData) const
{
    return shared_ == metaData.shared_ || pairs() == metaData.pairs();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
