/// Looking into metadata without copying values.
#pragma once

#include <Alembic/AbcCoreAbstract/MetaData.h>

#include <string>
#include <string_view>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// The value of a key, null when absent. Metadata are few and sorted: a scan beats building a string to look up, and
/// first letters settle most comparisons. `key` is not empty.
inline const std::string* find_value(const AbcCoreAbstract::MetaData& meta_data, std::string_view key)
{
    const auto first = static_cast<unsigned char>(key.front());
    for (auto field = meta_data.begin(), end = meta_data.end(); field != end; ++field) {
        const std::string& name = field->first;
        const auto letter = static_cast<unsigned char>(name.c_str()[0]); // 0 for an empty name, which comes first
        if (letter < first) continue;
        if (letter > first) break;
        const int order = std::string_view(name).compare(key);
        if (order == 0) return &field->second;
        if (order > 0) break;
    }
    return nullptr;
}

/// The key's value is this text; an absent value is "".
inline bool value_is(const AbcCoreAbstract::MetaData& meta_data, std::string_view key, std::string_view text)
{
    const std::string* value = find_value(meta_data, key);
    return value ? *value == text : text.empty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
