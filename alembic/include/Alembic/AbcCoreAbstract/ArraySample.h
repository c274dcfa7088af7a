/// An array of elements of one data type, seen through a pointer.
#pragma once

#include <Alembic/AbcCoreAbstract/ArraySampleKey.h>
#include <Alembic/AbcCoreAbstract/DataType.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <memory>
#include <type_traits>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// A view: the data belong to whoever made them, unless the sample comes from AllocateArraySample() or a reader, whose
/// shared pointer owns them too.
class ALEMBIC_EXPORT ArraySample
{
public:
    typedef ArraySampleKey Key;

    /// No data, no type, rank 0: not valid.
    ArraySample() = default;
    /// Views `dims.numPoints()` elements at `data` (for strings: std::string objects). Nothing is copied.
    ArraySample(const void* data, const DataType& dataType, const Dimensions& dims)
        : data_(data)
        , data_type_(dataType)
        , dimensions_(dims)
    {
    }

    const void* getData() const { return data_; }
    const DataType& getDataType() const { return data_type_; }
    const Dimensions& getDimensions() const { return dimensions_; }

    /// Number of elements of the data type.
    size_t size() const { return dimensions_.numPoints(); }

    /// Key of the contents: the digest of the bytes as they are stored. Hashes everything at each call. For strings
    /// `numBytes` counts the string objects in memory.
    Key getKey() const;

    /// The type is known, and there are data or at least a rank: an empty array of rank 1 is valid.
    bool valid() const { return data_type_.getPod() != kUnknownPOD && (data_ != nullptr || dimensions_.rank() > 0); }

    /// Back to the default.
    void reset() { *this = ArraySample(); }

private:
    const void* data_ = nullptr;
    DataType data_type_;
    Dimensions dimensions_;
};

typedef Alembic::Util::shared_ptr<ArraySample> ArraySamplePtr;

/// A sample that owns memory for its elements. Numbers are not initialised; strings are empty. Null for an unknown
/// type, throws when the size is out of range. Large arrays ask the system for huge pages.
ALEMBIC_EXPORT ArraySamplePtr AllocateArraySample(const DataType& dtype, const Dimensions& dims);

/// Deletes a sample together with the `new T[]` it points at.
template <class T>
struct TArrayDeleter
{
    void operator()(void* memory) const
    {
        ArraySample* const sample = static_cast<ArraySample*>(memory);
        if (!sample) return;
        delete[] static_cast<const T*>(sample->getData());
        delete sample;
    }
};

/// The same as AllocateArraySample(), for `extent` (1 to 255) values of type T per element. No memory when there are no
/// elements.
template <class T>
ArraySamplePtr TAllocateArraySample(size_t extent, const Dimensions& dimensions)
{
    ABCA_ASSERT(extent > 0 && extent < 256, "Cannot allocate an array sample of extent " << extent);
    return AllocateArraySample(DataType(PODTraitsFromType<T>::pod_enum, static_cast<uint8_t>(extent)), dimensions);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
