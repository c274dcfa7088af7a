/// @file
/// Texts as archives store them: the characters of each, then a zero.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

inline bool is_text(AbcA::PlainOldDataType pod)
{
    return pod == AbcA::kStringPOD || pod == AbcA::kWstringPOD;
}

/// Splits characters at their zeros into texts. They may come in pieces. `Unit` is a stored character, `Text` the
/// string that becomes of it.
template <class Unit, class Text>
class TextSplitter
{
public:
    /// Will fill `count` texts at `texts`; those whose zero never comes are left empty.
    TextSplitter(Text* texts, std::uint64_t count)
        : texts_(texts)
        , count_(count)
    {
        for (std::uint64_t i = 0; i < count; ++i)
            texts_[i].clear();
    }

    /// Takes the next characters; those after the last text's zero are ignored.
    void add(const Unit* units, std::size_t size)
    {
        const Unit* const end = units + size;
        while (units != end && done_ < count_) {
            const Unit* const zero = std::find(units, end, Unit(0));
            open_.append(units, zero);
            if (zero == end) return;
            texts_[done_++].swap(open_);
            open_.clear();
            units = zero + 1;
        }
    }

    /// Texts that are complete.
    std::uint64_t done() const { return done_; }

private:
    Text* const texts_;
    const std::uint64_t count_;
    Text open_; ///< the text whose zero has not come yet
    std::uint64_t done_ = 0;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
