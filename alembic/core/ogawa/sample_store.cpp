/// @file
/// Encoding, keys and sharing of samples.
#include "sample_store.h"

#include <Alembic/Util/Murmur3.h>

#include <cstring>
#include <limits>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int class_shift = 62; // positions in a file are signed 64-bit numbers, the container's take 63 bits
constexpr std::uint64_t position_bits = (std::uint64_t(1) << class_shift) - 1;
constexpr std::size_t kept_string_bytes = 1 << 20; // a larger buffer for strings is given back after use

std::uint64_t class_bits_of(const SampleKey& key)
{
    return std::uint64_t(key.sample_class) << class_shift;
}

/// `Unit` is the stored size of a character. Zero characters end strings, so none can be stored inside of one.
template <class String, class Unit>
void encode_strings(const String* strings, std::uint64_t count, const char* kind, const std::string& property,
                    std::vector<char>& bytes)
{
    std::uint64_t units = count; // one terminator each
    for (std::uint64_t i = 0; i < count; ++i) {
        if (strings[i].find(typename String::value_type(0)) != String::npos)
            ABCA_THROW("Illegal NULL character found in " << kind << " data of property '" << property << "', string "
                                                          << i);
        units += strings[i].size();
    }
    bytes.resize(std::size_t(units) * sizeof(Unit));
    char* out = bytes.data();
    for (std::uint64_t i = 0; i < count; ++i) {
        const String& string = strings[i];
        if constexpr (sizeof(Unit) == sizeof(typename String::value_type)) { // the same bytes in memory
            const std::size_t size = (string.size() + 1) * sizeof(Unit);
            std::memcpy(out, string.c_str(), size);
            out += size;
        } else {
            for (std::size_t c = 0; c <= string.size(); ++c, out += sizeof(Unit)) {
                const Unit unit = c < string.size() ? Unit(string[c]) : Unit(0);
                std::memcpy(out, &unit, sizeof unit);
            }
        }
    }
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

Util::Digest murmur(const void* data, std::size_t size, std::size_t pod_size)
{
    Util::Digest digest;
    if (size > 0) Util::MurmurHash3_x64_128(data, size, pod_size, digest.d);
    return digest;
}

} // namespace

std::size_t SampleTable::slot_for(const std::vector<Slot>& slots, const Util::Digest& contents,
                                  std::uint64_t class_bits)
{
    const std::size_t mask = slots.size() - 1;
    std::size_t i = std::size_t(contents.words[0]) & mask;
    while (slots[i].position_and_class != 0 &&
           !(slots[i].contents == contents && (slots[i].position_and_class & ~position_bits) == class_bits))
        i = (i + 1) & mask;
    return i;
}

std::uint64_t SampleTable::find(const SampleKey& key) const
{
    if (slots_.empty()) return 0;
    return slots_[slot_for(slots_, key.contents, class_bits_of(key))].position_and_class & position_bits;
}

void SampleTable::insert(const SampleKey& key, std::uint64_t position)
{
    if ((used_ + 1) * 4 > slots_.size() * 3) grow();
    const std::uint64_t class_bits = class_bits_of(key);
    slots_[slot_for(slots_, key.contents, class_bits)] = {key.contents, class_bits | position};
    ++used_;
}

void SampleTable::grow()
{
    std::vector<Slot> larger(slots_.empty() ? 16 : slots_.size() * 2);
    for (const Slot& slot : slots_) {
        if (slot.position_and_class == 0) continue;
        larger[slot_for(larger, slot.contents, slot.position_and_class & ~position_bits)] = slot;
    }
    slots_.swap(larger);
}

Ogawa::Bytes SampleStore::encode(const void* data, Util::PlainOldDataType pod, std::uint64_t pod_count,
                                 const std::string& property)
{
    if (pod_count == 0) return {};
    if (data == nullptr) ABCA_THROW("Sample of property '" << property << "' has a size but no data");
    if (pod_count > std::uint64_t(std::numeric_limits<std::ptrdiff_t>::max()) / Util::PODNumBytes(pod))
        ABCA_THROW("Sample of property '" << property << "' has an impossible size: " << pod_count << " values");
    switch (pod) {
    case Util::kStringPOD:
        encode_strings<std::string, char>(static_cast<const std::string*>(data), pod_count, "string", property,
                                          encoded_strings_);
        return {encoded_strings_.data(), encoded_strings_.size()};
    case Util::kWstringPOD:
        encode_strings<std::wstring, std::uint32_t>(static_cast<const std::wstring*>(data), pod_count, "wstring",
                                                    property, encoded_strings_);
        return {encoded_strings_.data(), encoded_strings_.size()};
    default:
        return {data, std::size_t(pod_count) * Util::PODNumBytes(pod)};
    }
}

SampleKey SampleStore::key_of(const Ogawa::Bytes& encoded, Util::PlainOldDataType pod)
{
    SampleKey key;
    if (pod == Util::kWstringPOD) {
        // Intended: the stored digest takes the number of characters for a number of bytes. Other programs compare it.
        key.sample_class = SAMPLE_CLASS_WIDE_STRINGS;
        key.digest = murmur(encoded.data, encoded.size / sizeof(std::uint32_t), sizeof(std::uint32_t));
        // Intended: samples of as many strings with the same digest are taken for equal, as every writer of this format
        // takes them: what an archive shares, and so what it hashes to, must not depend on who wrote it.
        key.contents = key.digest;
        key.contents.words[1] ^= count_wide_strings(encoded);
        return key;
    }
    const bool is_string = pod == Util::kStringPOD;
    key.sample_class = is_string ? SAMPLE_CLASS_STRINGS : SAMPLE_CLASS_NUMBERS;
    key.digest = murmur(encoded.data, encoded.size, is_string ? 1 : Util::PODNumBytes(pod));
    key.contents = key.digest;
    return key;
}

std::uint64_t SampleStore::store(const SampleKey& key, const Ogawa::Bytes& encoded)
{
    if (encoded.size == 0) return Ogawa::empty_data;
    const std::uint64_t position = stored_.find(key);
    if (position != 0) return Ogawa::data_bit | position;
    const std::uint64_t entry = file_.append_data({{key.digest.d, sizeof key.digest.d}, encoded});
    stored_.insert(key, entry & Ogawa::position_mask);
    if (encoded_strings_.capacity() > kept_string_bytes) std::vector<char>().swap(encoded_strings_);
    return entry;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
