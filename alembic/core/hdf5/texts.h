/// @file
/// Texts that are stored as one run of characters, each closed by a zero.
#pragma once

#include "core/common/text.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Calls `use(unit, texts)`: a stored character, and `into` as the string or wide string that `pod` makes of them.
template <class Use>
auto with_text_types(AbcA::PlainOldDataType pod, void* into, const Use& use)
{
    if (pod == AbcA::kStringPOD) return use(char(), static_cast<std::string*>(into));
    return use(std::int32_t(), static_cast<std::wstring*>(into));
}

/// Splits all characters into `count` texts. Throws when there are not as many.
template <class Unit, class Text>
void split_texts(const std::vector<Unit>& units, Text* texts, std::uint64_t count, const std::string& name)
{
    AbcCoreCommon::TextSplitter<Unit, Text> splitter(texts, count);
    splitter.add(units.data(), units.size());
    if (splitter.done() < count)
        ABCA_THROW("Corrupt compacted string array, premature end: '" << name << "' has " << splitter.done()
                                                                      << " strings, not " << count);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
