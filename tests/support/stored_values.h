/// @file
/// Values of samples as the bytes that archives store.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace stored_values {

namespace AbcA = Alembic::AbcCoreAbstract;

/// A sample as it is stored: bytes of numbers, or the characters of texts, each text closed by a zero.
struct StoredValues
{
    std::string bytes;
    std::size_t count = 0;

    bool operator==(const StoredValues& other) const { return bytes == other.bytes; }

    template <class Character, class Text>
    void add(const Text& text)
    {
        for (std::size_t i = 0; i <= text.size(); ++i) {
            const auto unit = static_cast<Character>(text.c_str()[i]);
            bytes.append(reinterpret_cast<const char*>(&unit), sizeof unit);
            ++count;
        }
    }
};

inline StoredValues store(const AbcA::DataType& type, const void* data, std::size_t points)
{
    StoredValues values;
    const std::size_t pods = points * type.getExtent();
    for (std::size_t i = 0; i < pods; ++i) {
        if (type.getPod() == AbcA::kStringPOD)
            values.add<char>(static_cast<const std::string*>(data)[i]);
        else if (type.getPod() == AbcA::kWstringPOD)
            values.add<std::int32_t>(static_cast<const std::wstring*>(data)[i]);
    }
    if (type.getPod() < AbcA::kStringPOD) {
        values.bytes.assign(static_cast<const char*>(data), pods * AbcA::PODNumBytes(type.getPod()));
        values.count = pods;
    }
    return values;
}

} // namespace stored_values
