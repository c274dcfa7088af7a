/// Looking into metadata without copying values.
#pragma once

#include <Alembic/AbcCoreAbstract/MetaData.h>

#include <string>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// The value of a key, null when absent. Metadata are few and sorted: a scan beats building a string to look up.
inline const std::string* find_value(const AbcCoreAbstract::MetaData& meta_data, const char* key)
{
    for (auto field = meta_data.begin(), end = meta_data.end(); field != end; ++field) {
        const int order = field->first.compare(key);
        if (order == 0) return &field->second;
        if (order > 0) break;
    }
    return nullptr;
}

/// The key's value is this text; an absent value is "".
inline bool value_is(const AbcCoreAbstract::MetaData& meta_data, const char* key, const char* text)
{
    const std::string* value = find_value(meta_data, key);
    return value ? value->compare(text) == 0 : *text == '\0';
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
