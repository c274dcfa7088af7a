/// @file
/// Encoding of strings, and the digest.
#include "core/common/stored_bytes.h"

#include <Alembic/Util/Murmur3.h>

#include <cstring>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// `Unit` is a stored character.
template <class Unit, class String>
void encode(const String* strings, std::uint64_t count, std::vector<char>& bytes)
{
    std::uint64_t units = count; // one terminator each
    for (std::uint64_t i = 0; i < count; ++i)
        units += strings[i].size();
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

} // namespace

void encode_strings(const std::string* strings, std::uint64_t count, std::vector<char>& bytes)
{
    encode<char>(strings, count, bytes);
}

void encode_strings(const std::wstring* strings, std::uint64_t count, std::vector<char>& bytes)
{
    encode<std::uint32_t>(strings, count, bytes);
}

Util::Digest digest_of(const void* stored, std::size_t size, AbcA::PlainOldDataType pod)
{
    Util::Digest digest;
    if (pod == AbcA::kWstringPOD) {
        // Intended: the number of characters is taken for a number of bytes. Other programs compare it.
        const std::size_t characters = size / sizeof(std::uint32_t);
        if (characters > 0) Util::MurmurHash3_x64_128(stored, characters, sizeof(std::uint32_t), digest.d);
    } else if (size > 0) {
        Util::MurmurHash3_x64_128(stored, size, pod == AbcA::kStringPOD ? 1 : Util::PODNumBytes(pod), digest.d);
    }
    return digest;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
