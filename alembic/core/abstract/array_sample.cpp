/// Keys of array samples: the digest of the bytes as a file stores them.
#include <Alembic/AbcCoreAbstract/ArraySample.h>

#include <vector>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// The strings one after the other, each followed by a zero.
std::vector<char> stored_strings(const std::string* strings, size_t count)
{
    size_t byte_count = 0;
    for (size_t i = 0; i < count; ++i)
        byte_count += strings[i].size() + 1;
    std::vector<char> bytes;
    bytes.reserve(byte_count);
    for (size_t i = 0; i < count; ++i)
        bytes.insert(bytes.end(), strings[i].c_str(), strings[i].c_str() + strings[i].size() + 1);
    return bytes;
}

// The same with a 32-bit unit per character.
std::vector<uint32_t> stored_wide_strings(const std::wstring* strings, size_t count)
{
    std::vector<uint32_t> units;
    for (size_t i = 0; i < count; ++i) {
        units.insert(units.end(), strings[i].begin(), strings[i].end());
        units.push_back(0);
    }
    return units;
}

} // namespace

ArraySample::Key ArraySample::getKey() const
{
    const PlainOldDataType pod = data_type_.getPod();
    const size_t value_count = size() * data_type_.getExtent();
    Key key;
    key.numBytes = value_count * PODNumBytes(pod);
    key.origPOD = pod;
    key.readPOD = pod;
    if (value_count == 0 || !data_) return key;

    if (pod == kStringPOD) {
        const std::vector<char> bytes = stored_strings(static_cast<const std::string*>(data_), value_count);
        MurmurHash3_x64_128(bytes.data(), bytes.size(), sizeof(char), key.digest.d);
    } else if (pod == kWstringPOD) {
        // Intended: only as many bytes are hashed as there are units, a quarter of them. Files are written so.
        const std::vector<uint32_t> units = stored_wide_strings(static_cast<const std::wstring*>(data_), value_count);
        MurmurHash3_x64_128(units.data(), units.size(), sizeof(uint32_t), key.digest.d);
    } else {
        MurmurHash3_x64_128(data_, key.numBytes, PODNumBytes(pod), key.digest.d);
    }
    return key;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
