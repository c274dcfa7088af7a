/// Large samples in pieces: each is worked on where it was read to, while it is still in the processor's cache.
#pragma once

#include "read_array.h"

#include <Alembic/Abc/All.h>
#include <vo_core/core_array.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

/// Elements of a piece: two pieces and what is done with them fit into the second-level cache with room to spare, and
/// each is still worth its system call. A multiple of any vector's width.
template <class T>
constexpr std::size_t piece_length = (std::size_t(64) << 10) / sizeof(T) / 16 * 16;

/// One sample of an array property, readable in parts. `T` is the element type; see has_layout_of.
template <class T>
class SamplePieces
{
public:
    /// A sample of `count` elements of `property`, which has samples and elements T.
    SamplePieces(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                 std::size_t count)
        : property_(property)
        , selector_(selector)
        , count_(count)
    {
    }

    /// Whether pieces are worth while: not for what fits into the cache anyhow, nor where only whole samples are read.
    bool is_worthwhile() const
    {
        constexpr std::size_t worthwhile_bytes = std::size_t(2) << 20;
        T probe;
        return count_ >= worthwhile_bytes / sizeof(T) && try_read(0, 1, &probe);
    }

    std::size_t size() const { return count_; }

    /// Reads `count` elements from `first` on, when is_worthwhile has said yes. Alembic's exceptions pass.
    void read(std::size_t first, std::size_t count, T* into) const
    {
        if (!try_read(first, count, into)) throw std::runtime_error("a part of an array sample could not be read");
    }

private:
    bool try_read(std::size_t first, std::size_t count, T* into) const
    {
#ifdef ALEMBIC_HAS_PARTIAL_READS
        return property_.getPart(into, first, count, selector_);
#else
        static_cast<void>(first), static_cast<void>(count), static_cast<void>(into);
        return false;
#endif
    }

    const Alembic::Abc::IArrayProperty& property_;
    const Alembic::Abc::ISampleSelector selector_;
    const std::size_t count_;
};

/// read_array with work on the way: `work(elements, count, known)` changes the first of `count` elements in place and
/// says how many of them are finished; the others come again, unchanged, before what follows them: `known` of the
/// elements have come before. At last all there are come.
template <class T, class Work>
bool read_array_and(const Alembic::Abc::IArrayProperty& property, const Alembic::Abc::ISampleSelector& selector,
                    CoreArray<T>& values, Work work)
{
    const SamplePieces<T> pieces(property, selector, element_count(property, selector));
    if (!can_hold<T>(property, pieces.size()) || !pieces.is_worthwhile()) {
        if (!read_array(property, selector, values)) return false;
        work(values.get_data(), values.get_count(), std::size_t(0));
        return true;
    }
    values.resize_for_overwrite(pieces.size());
    std::size_t finished = 0;
    for (std::size_t first = 0; first < pieces.size();) {
        const std::size_t end = std::min(first + piece_length<T>, pieces.size());
        pieces.read(first, end - first, values.get_data() + first);
        finished += work(values.get_data() + finished, end - finished, first - finished);
        first = end;
    }
    return true;
}
