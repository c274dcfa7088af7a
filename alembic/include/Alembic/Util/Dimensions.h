/// The shape of an array sample: how many elements along each axis.
#pragma once

#include <Alembic/Util/Foundation.h>

#include <algorithm>
#include <ostream>
#include <vector>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// A rank and one extent per axis. Nearly all arrays have rank 1, which needs no memory of its own.
template <class T>
class BaseDimensions
{
public:
    /// Rank 0: no shape, no elements.
    BaseDimensions() = default;
    /// Rank 1 with extent `t`.
    explicit BaseDimensions(const T& t)
        : rank_(1)
        , single_(t)
    {
    }
    BaseDimensions(const BaseDimensions& copy) = default;
    template <class Y>
    BaseDimensions(const BaseDimensions<Y>& copy)
    {
        *this = copy;
    }
    BaseDimensions& operator=(const BaseDimensions& copy) = default;
    template <class Y>
    BaseDimensions& operator=(const BaseDimensions<Y>& copy)
    {
        setRank(copy.rank());
        for (size_t i = 0; i < rank_; ++i)
            rootPtr()[i] = static_cast<T>(copy[i]);
        return *this;
    }

    size_t rank() const { return rank_; }

    /// Extents up to the smaller of both ranks are kept, new ones are zero.
    void setRank(size_t r)
    {
        if (r > 1) {
            if (rank_ <= 1) many_.assign(1, rank_ == 1 ? single_ : T());
            many_.resize(r, T());
        } else if (rank_ > 1) {
            single_ = r == 1 ? many_[0] : T();
            many_.clear();
        } else if (r == 0) {
            single_ = T();
        }
        rank_ = r;
    }

    T& operator[](size_t i) { return rootPtr()[i]; }             ///< extent of axis `i`, below rank()
    const T& operator[](size_t i) const { return rootPtr()[i]; } ///< extent of axis `i`, below rank()

    /// The extents, one after the other; valid until the rank changes or the object moves.
    T* rootPtr() { return rank_ > 1 ? many_.data() : &single_; }
    const T* rootPtr() const { return rank_ > 1 ? many_.data() : &single_; }

    /// Number of elements: the product of the extents, 0 for rank 0. Wraps around when it does not fit; whoever takes
    /// extents from a file checks them first.
    size_t numPoints() const
    {
        if (rank_ == 0) return 0;
        uint64_t points = 1;
        for (size_t i = 0; i < rank_; ++i)
            points *= static_cast<uint64_t>(rootPtr()[i]);
        return static_cast<size_t>(points);
    }

private:
    size_t rank_ = 0;
    T single_ = T();      // the extent while the rank is 1
    std::vector<T> many_; // all extents while the rank is greater
};

typedef BaseDimensions<uint64_t> Dimensions;

template <class T, class S>
bool operator==(const BaseDimensions<T>& a, const BaseDimensions<S>& b)
{
    if (a.rank() != b.rank()) return false;
    return std::equal(a.rootPtr(), a.rootPtr() + a.rank(), b.rootPtr(),
                      [](const T& x, const S& y) { return x == static_cast<T>(y); });
}

template <class T, class S>
bool operator!=(const BaseDimensions<T>& a, const BaseDimensions<S>& b)
{
    return !(a == b);
}

/// Prints the extents, separated by spaces.
template <class T>
std::ostream& operator<<(std::ostream& ostr, const BaseDimensions<T>& dims)
{
    for (size_t i = 0; i < dims.rank(); ++i)
        ostr << (i > 0 ? " " : "") << dims[i];
    return ostr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
