/// @file
/// Encoding, keys and sharing of samples.
#include "sample_store.h"

#include "core/common/stored_bytes.h"

#include <cstring>
#include <limits>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::size_t kept_string_bytes = 1 << 20; // a larger buffer for strings is given back after use

/// Zero characters end strings, so none can be stored inside of one.
template <class String>
Ogawa::Bytes encode_text(const void* data, std::uint64_t count, const char* kind, const std::string& property,
                         std::vector<char>& bytes)
{
    const String* const strings = static_cast<const String*>(data);
    for (std::uint64_t i = 0; i < count; ++i)
        if (strings[i].find(typename String::value_type(0)) != String::npos)
            ABCA_THROW("Illegal NULL character found in " << kind << " data of property '" << property << "', string "
                                                          << i);
    AbcCoreCommon::encode_strings(strings, count, bytes);
    return {bytes.data(), bytes.size()};
}

/// Zero characters in the encoded strings.
std::uint64_t count_wide_strings(const Ogawa::Bytes& encoded)
{
    const char* const bytes = static_cast<const char*>(encoded.data);
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < encoded.size; i += sizeof(std::uint32_t)) {
        std::uint32_t unit;
        std::memcpy(&unit, bytes + i, sizeof unit);
        count += unit == 0;
    }
    return count;
}

SampleKey key_of(const Util::Digest& digest, const Ogawa::Bytes& encoded, Util::PlainOldDataType pod)
{
    SampleKey key;
    key.digest = digest;
    key.contents = digest;
    if (pod == Util::kStringPOD) key.sample_class = SAMPLE_CLASS_STRINGS;
    if (pod == Util::kWstringPOD) {
        key.sample_class = SAMPLE_CLASS_WIDE_STRINGS;
        // Intended: samples of as many strings with the same digest are taken for equal, as every writer of this format
        // takes them: what an archive shares, and so what it hashes to, must not depend on who wrote it.
        key.contents.words[1] ^= count_wide_strings(encoded);
    }
    return key;
}

} // namespace

Ogawa::Bytes SampleStore::encode(const void* data, Util::PlainOldDataType pod, std::uint64_t pod_count,
                                 const std::string& property)
{
    if (pod_count == 0) return {};
    if (data == nullptr) ABCA_THROW("Sample of property '" << property << "' has a size but no data");
    if (pod_count > std::uint64_t(std::numeric_limits<std::ptrdiff_t>::max()) / Util::PODNumBytes(pod))
        ABCA_THROW("Sample of property '" << property << "' has an impossible size: " << pod_count << " values");
    switch (pod) {
    case Util::kStringPOD:
        return encode_text<std::string>(data, pod_count, "string", property, encoded_strings_);
    case Util::kWstringPOD:
        return encode_text<std::wstring>(data, pod_count, "wstring", property, encoded_strings_);
    default:
        return {data, std::size_t(pod_count) * Util::PODNumBytes(pod)};
    }
}

SampleStore::Stored SampleStore::store(const Ogawa::Bytes& encoded, Util::PlainOldDataType pod, const Stored* last)
{
    Stored stored;
    const auto digest_of_sample = [&] { return AbcCoreCommon::digest_of(encoded.data, encoded.size, pod); };
    const bool is_large = encoded.size >= Ogawa::FileWriter::least_body_for_thread && pod != Util::kWstringPOD;
    if (is_large && large_samples_.note(encoded)) { // new for certain: hashed and written at once
        Util::Digest digest;
        const auto make_head = [&](void* head) {
            digest = digest_of_sample();
            std::memcpy(head, digest.d, sizeof digest.d);
        };
        stored.entry = file_.append_data(sizeof digest.d, make_head, encoded);
        stored.key = key_of(digest, encoded, pod);
    } else {
        stored.key = key_of(digest_of_sample(), encoded, pod);
        if (encoded.size == 0) return stored;
        if (last != nullptr && stored.key == last->key) return *last;
        const std::uint64_t position = stored_.find(stored.key);
        if (position != 0) {
            stored.entry = Ogawa::data_bit | position;
            return stored;
        }
        stored.entry = file_.append_data({{stored.key.digest.d, sizeof stored.key.digest.d}, encoded});
    }
    stored_.insert(stored.key, stored.entry & Ogawa::position_mask);
    if (encoded_strings_.capacity() > kept_string_bytes) std::vector<char>().swap(encoded_strings_);
    return stored;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
