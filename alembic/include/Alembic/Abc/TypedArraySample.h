/// An array sample whose elements have a C++ type.
#pragma once

#include <Alembic/Abc/Foundation.h>
#include <Alembic/Abc/TypedPropertyTraits.h>

#include <vector>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Throws `Invalid DataType in TypedArraySample. Expected: A, but got: B` when the sample's type is another one.
ALEMBIC_EXPORT void check_sample_type(const AbcA::ArraySample& sample, const AbcA::DataType& expected);

/// A view, as every array sample: made from the caller's data, it must not outlive them. What a property returns owns
/// its data.
template <class TRAITS>
class ALEMBIC_EXPORT TypedArraySample : public AbcA::ArraySample
{
public:
    typedef TRAITS traits_type;
    typedef TypedArraySample<TRAITS> this_type;
    typedef typename TRAITS::value_type value_type;
    typedef std::vector<value_type> value_vector;

    /// Invalid.
    TypedArraySample() = default;

    /// `numVals` elements in one dimension, or as many as the dimensions tell.
    TypedArraySample(const value_type* values, size_t numVals)
        : AbcA::ArraySample(values, TRAITS::dataType(), Dimensions(numVals))
    {
    }
    TypedArraySample(const value_type* values, const Dimensions& dims)
        : AbcA::ArraySample(values, TRAITS::dataType(), dims)
    {
    }

    /// All elements of a vector, which must stay as it is; with `dims`, a vector of so many elements.
    TypedArraySample(const value_vector& vec)
        : AbcA::ArraySample(vec.data(), TRAITS::dataType(), Dimensions(vec.size()))
    {
    }
    TypedArraySample(const value_vector& vec, const Dimensions& dims);

    /// The same data seen as this type; throws unless the stored types are equal.
    TypedArraySample(const AbcA::ArraySample& copy)
        : AbcA::ArraySample(copy)
    {
        check_sample_type(copy, TRAITS::dataType());
    }
    TypedArraySample(const TypedArraySample&) = default;
    TypedArraySample& operator=(const TypedArraySample&) = default;
    TypedArraySample& operator=(const AbcA::ArraySample& copy) { return *this = TypedArraySample(copy); }

    /// A valid sample of one dimension without elements.
    static TypedArraySample emptySample() { return TypedArraySample(nullptr, size_t(0)); }

    /// The elements; null when there are none. `size()` counts them.
    const value_type* get() const { return static_cast<const value_type*>(this->getData()); }
    const value_type* operator->() const { return get(); }
    /// Unchecked.
    const value_type& operator[](size_t i) const { return get()[i]; }

    /// A typed view that keeps `sample` alive; null for null. The caller has checked the type.
    static std::shared_ptr<TypedArraySample> share(AbcA::ArraySamplePtr sample);

    ALEMBIC_OVERRIDE_OPERATOR_BOOL(this->valid());

private:
    struct Unchecked
    {
    };
    TypedArraySample(const AbcA::ArraySample& sample, Unchecked)
        : AbcA::ArraySample(sample)
    {
    }
    struct Shared;
};

/// A typed view together with the sample it looks at, in one allocation.
template <class TRAITS>
struct TypedArraySample<TRAITS>::Shared
{
    explicit Shared(AbcA::ArraySamplePtr sample)
        : view(*sample, Unchecked())
        , owner(std::move(sample))
    {
    }
    TypedArraySample view;
    AbcA::ArraySamplePtr owner;
};

template <class TRAITS>
TypedArraySample<TRAITS>::TypedArraySample(const value_vector& vec, const Dimensions& dims)
    : AbcA::ArraySample(vec.data(), TRAITS::dataType(), dims)
{
    if (dims.numPoints() > vec.size()) {
        ABCA_THROW("TypedArraySample: dimensions of " << dims.numPoints() << " elements for a vector of "
                                                      << vec.size());
    }
}

template <class TRAITS>
std::shared_ptr<TypedArraySample<TRAITS>> TypedArraySample<TRAITS>::share(AbcA::ArraySamplePtr sample)
{
    if (!sample) return nullptr;
    std::shared_ptr<Shared> shared = std::make_shared<Shared>(std::move(sample));
    TypedArraySample* view = &shared->view;
    return std::shared_ptr<TypedArraySample>(std::move(shared), view);
}

#define ALEMBIC_ABC_DECLARE_ARRAY_SAMPLE(NAME, TRAITS)                                                                 \
    typedef TypedArraySample<TRAITS> NAME##ArraySample;                                                                \
    typedef std::shared_ptr<NAME##ArraySample> NAME##ArraySamplePtr;                                                   \
    extern template class TypedArraySample<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_DECLARE_ARRAY_SAMPLE)
#undef ALEMBIC_ABC_DECLARE_ARRAY_SAMPLE

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
