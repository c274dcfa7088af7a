/// Geometry parameters, read: values with a scope, stored plainly or as distinct values with indices into them.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/GeometryScope.h>

#include <algorithm>
#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// What a parameter of one type needs to know of its property, without the type. `type` is the type's data type,
/// `interpretation` may be empty: then any extent is accepted.
ALEMBIC_EXPORT bool geom_param_compound_matches(const AbcA::PropertyHeader& header, const AbcA::DataType& type,
                                                const char* interpretation, SchemaInterpMatching matching);

/// How many elements make one value, from the metadata; 1 when they do not say.
ALEMBIC_EXPORT size_t geom_param_array_extent(const AbcA::MetaData& metaData);

/// The indices 0, 1 ... count - 1. Throws when 32 bits do not hold them.
ALEMBIC_EXPORT UInt32ArraySamplePtr made_up_indices(size_t count);

/// Throws: index `index` of parameter `name` does not fit its `value_count` values.
[[noreturn]] ALEMBIC_EXPORT void throw_bad_geom_param_index(const std::string& name, uint32_t index,
                                                            size_t value_count);

/// Members that read samples are not guarded: their exceptions pass through whatever the policy. The properties inside
/// keep to the policy.
template <class TRAITS>
class ALEMBIC_EXPORT ITypedGeomParam : public Abc::Base
{
public:
    typedef typename TRAITS::value_type value_type;
    typedef Abc::ITypedArrayProperty<TRAITS> prop_type;
    typedef ITypedGeomParam<TRAITS> this_type;

    class Sample
    {
    public:
        typedef Sample this_type;
        typedef typename prop_type::sample_ptr_type samp_ptr_type;

        Sample() = default;

        samp_ptr_type getVals() const { return vals_; }
        /// Null when the values were read expanded.
        UInt32ArraySamplePtr getIndices() const { return indices_; }
        GeometryScope getScope() const { return scope_; }
        /// How the parameter is stored, however this sample was read.
        bool isIndexed() const { return is_indexed_; }

        void reset() { *this = Sample(); }
        bool valid() const { return vals_ != nullptr; }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class ITypedGeomParam<TRAITS>;

        samp_ptr_type vals_;
        UInt32ArraySamplePtr indices_;
        GeometryScope scope_ = kUnknownScope;
        bool is_indexed_ = false;
    };
    typedef Sample sample_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// Whether a property can be read as a parameter of this type: an array of the type, or a compound whose metadata
    /// name the type.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        if (header.isCompound()) {
            return geom_param_compound_matches(header, TRAITS::dataType(), getInterpretation(), matching);
        }
        return header.isArray() && prop_type::matches(header, matching);
    }

    /// Invalid.
    ITypedGeomParam() = default;

    /// The property `name` of `parent`, a compound property handle or a reader pointer. Arguments: policy (else the
    /// parent's), matching.
    template <class PARENT>
    ITypedGeomParam(PARENT parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
    {
        getErrorHandler().setPolicy(GetErrorHandlerPolicy(parent, arg0, arg1));
        init(GetCompoundPropertyReaderPtr(parent), name, GetSchemaInterpMatching(arg0, arg1));
    }

    /// Values and indices as stored; a parameter that is not indexed gets made-up indices 0, 1, 2 ...
    void getIndexed(sample_type& sample, const ISampleSelector& selector = ISampleSelector()) const;
    sample_type getIndexedValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        sample_type sample;
        getIndexed(sample, selector);
        return sample;
    }

    /// One value for each index; the values as they are when there are no indices. Leaves the sample's own indices
    /// alone. An index without a value is an error.
    void getExpanded(sample_type& sample, const ISampleSelector& selector = ISampleSelector()) const;
    sample_type getExpandedValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        sample_type sample;
        getExpanded(sample, selector);
        return sample;
    }

    /// The greater of the values' and the indices' count.
    size_t getNumSamples() const { return std::max(values_.getNumSamples(), indices_.getNumSamples()); }

    /// Of the values.
    AbcA::DataType getDataType() const { return values_.getDataType(); }

    /// How many elements make one value. It only describes: samples are not regrouped.
    size_t getArrayExtent() const { return geom_param_array_extent(getMetaData()); }

    bool isIndexed() const { return is_indexed_; }
    GeometryScope getScope() const { return scope_; }

    /// Of the values, else of the indices, else null.
    AbcA::TimeSamplingPtr getTimeSampling() const
    {
        return values_.getPtr() ? values_.getTimeSampling() : indices_.getTimeSampling();
    }

    /// Those of the compound when the parameter is indexed, else of the array.
    const std::string& getName() const { return getHeader().getName(); }
    const AbcA::PropertyHeader& getHeader() const { return is_indexed_ ? compound_.getHeader() : values_.getHeader(); }
    const AbcA::MetaData& getMetaData() const { return getHeader().getMetaData(); }

    /// The compound that holds the parameter.
    ICompoundProperty getParent() const { return is_indexed_ ? compound_.getParent() : values_.getParent(); }

    /// Values and indices are both constant.
    bool isConstant() const { return values_.isConstant() && indices_.isConstant(); }

    prop_type getValueProperty() const { return values_; }
    /// Invalid when the parameter is not indexed.
    IUInt32ArrayProperty getIndexProperty() const { return indices_; }

    void reset()
    {
        values_.reset();
        indices_.reset();
        compound_.reset();
        is_indexed_ = false;
        scope_ = kUnknownScope;
        getErrorHandler().clear();
    }

    bool valid() const
    {
        return getErrorHandler().valid() && values_.valid() &&
               (!is_indexed_ || (compound_.valid() && indices_.valid()));
    }
    ALEMBIC_OPERATOR_BOOL(valid());

private:
    void init(const AbcA::CompoundPropertyReaderPtr& parent, const std::string& name, SchemaInterpMatching matching);
    void describe(sample_type& sample, typename sample_type::samp_ptr_type vals) const
    {
        sample.vals_ = std::move(vals);
        sample.scope_ = scope_;
        sample.is_indexed_ = is_indexed_;
    }
    typename sample_type::samp_ptr_type expand(const Abc::TypedArraySample<TRAITS>& vals,
                                               const UInt32ArraySample& indices) const;

    prop_type values_;
    IUInt32ArrayProperty indices_;
    ICompoundProperty compound_; ///< of values and indices
    bool is_indexed_ = false;
    GeometryScope scope_ = kUnknownScope;
};

template <class TRAITS>
void ITypedGeomParam<TRAITS>::init(const AbcA::CompoundPropertyReaderPtr& parent, const std::string& name,
                                   SchemaInterpMatching matching)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ITypedGeomParam::ITypedGeomParam()");

    ABCA_ASSERT(parent, "NULL CompoundPropertyReader passed into ITypedGeomParam ctor");
    const AbcA::PropertyHeader* header = parent->getPropertyHeader(name);
    ABCA_ASSERT(header, "Nonexistent GeomParam: " << name);
    ABCA_ASSERT(IsGeomParam(*header), "Invalid ITypedGeomParam: " << name);

    // Opened under the throw policy, so that a failure is reported here with its reason.
    if (header->isArray()) {
        values_ = prop_type(parent->getArrayProperty(name), ErrorHandler::kThrowPolicy, matching);
    } else {
        compound_ = ICompoundProperty(parent->getCompoundProperty(name), ErrorHandler::kThrowPolicy);
        values_ = prop_type(compound_, ".vals", ErrorHandler::kThrowPolicy, matching);
        indices_ = IUInt32ArrayProperty(compound_, ".indices", ErrorHandler::kThrowPolicy);
        is_indexed_ = true;
    }
    scope_ = GetGeometryScope(getMetaData());
    values_.getErrorHandler().setPolicy(getErrorHandlerPolicy());
    indices_.getErrorHandler().setPolicy(getErrorHandlerPolicy());
    compound_.getErrorHandler().setPolicy(getErrorHandlerPolicy());

    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

template <class TRAITS>
void ITypedGeomParam<TRAITS>::getIndexed(sample_type& sample, const ISampleSelector& selector) const
{
    typename sample_type::samp_ptr_type vals;
    values_.get(vals, selector);
    if (is_indexed_) {
        indices_.get(sample.indices_, selector);
    } else if (vals) {
        sample.indices_ = made_up_indices(vals->size());
    }
    describe(sample, std::move(vals));
}

template <class TRAITS>
void ITypedGeomParam<TRAITS>::getExpanded(sample_type& sample, const ISampleSelector& selector) const
{
    typename sample_type::samp_ptr_type vals;
    values_.get(vals, selector);
    if (is_indexed_ && vals) {
        UInt32ArraySamplePtr indices;
        indices_.get(indices, selector);
        if (indices && indices->size() > 0) {
            vals = expand(*vals, *indices);
        }
    }
    describe(sample, std::move(vals));
}

template <class TRAITS>
typename ITypedGeomParam<TRAITS>::sample_type::samp_ptr_type
ITypedGeomParam<TRAITS>::expand(const Abc::TypedArraySample<TRAITS>& vals, const UInt32ArraySample& indices) const
{
    // Types without interpretation are read with any extent: then one element is several values of the C++ type.
    const AbcA::DataType& type = vals.getDataType();
    const size_t stride = std::max<size_t>(1, type.getExtent() / TRAITS::dataType().getExtent());
    const size_t value_count = static_cast<const AbcA::ArraySample&>(vals).size();
    const size_t count = indices.size();

    const AbcA::ArraySamplePtr expanded = AbcA::AllocateArraySample(type, Dimensions(count));
    const value_type* from = static_cast<const value_type*>(vals.getData());
    value_type* to = static_cast<value_type*>(const_cast<void*>(expanded->getData()));
    for (size_t i = 0; i < count; ++i) {
        const uint32_t index = indices[i];
        if (index >= value_count) {
            throw_bad_geom_param_index(getName(), index, value_count);
        }
        std::copy_n(from + index * stride, stride, to + i * stride);
    }
    return Abc::TypedArraySample<TRAITS>::share(expanded);
}

#define ALEMBIC_ABCGEOM_DECLARE_IGEOMPARAM(NAME, TRAITS)                                                               \
    typedef ITypedGeomParam<TRAITS> I##NAME##GeomParam;                                                                \
    extern template class ITypedGeomParam<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABCGEOM_DECLARE_IGEOMPARAM)
#undef ALEMBIC_ABCGEOM_DECLARE_IGEOMPARAM

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
