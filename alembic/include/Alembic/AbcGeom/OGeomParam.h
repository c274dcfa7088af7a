/// Geometry parameters, written: values with a scope, and optionally indices into the values.
#pragma once

#include <Alembic/Abc/All.h>
#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/GeometryScope.h>
#include <Alembic/AbcGeom/IGeomParam.h>

#include <string>
#include <type_traits>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// `metadata` with what every geometry parameter says about itself: scope, data type, array extent, interpretation.
ALEMBIC_EXPORT AbcA::MetaData geom_param_metadata(AbcA::MetaData metadata, const AbcA::DataType& type,
                                                  const std::string& interpretation, GeometryScope scope,
                                                  size_t array_extent);

template <class TRAITS>
class ALEMBIC_EXPORT OTypedGeomParam
{
public:
    typedef typename TRAITS::value_type value_type;
    typedef Abc::OTypedArrayProperty<TRAITS> prop_type;
    typedef OTypedGeomParam<TRAITS> this_type;

    /// Views of the caller's values and indices: the data must live until set() returns.
    class Sample
    {
    public:
        typedef Sample this_type;

        Sample() = default;
        Sample(const Abc::TypedArraySample<TRAITS>& vals, GeometryScope scope)
            : vals_(vals)
            , scope_(scope)
        {
        }
        Sample(const Abc::TypedArraySample<TRAITS>& vals, const Abc::UInt32ArraySample& indices, GeometryScope scope)
            : vals_(vals)
            , indices_(indices)
            , scope_(scope)
        {
        }

        void setVals(const Abc::TypedArraySample<TRAITS>& vals) { vals_ = vals; }
        const Abc::TypedArraySample<TRAITS>& getVals() const { return vals_; }

        void setIndices(const Abc::UInt32ArraySample& indices) { indices_ = indices; }
        const Abc::UInt32ArraySample& getIndices() const { return indices_; }

        void setScope(GeometryScope scope) { scope_ = scope; }
        GeometryScope getScope() const { return scope_; }

        void reset() { *this = Sample(); }
        bool valid() const { return vals_.valid(); } ///< values are there, be they none
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        Abc::TypedArraySample<TRAITS> vals_;
        Abc::UInt32ArraySample indices_;
        GeometryScope scope_ = kUnknownScope;
    };
    typedef Sample sample_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// Whether a reading parameter of this type accepts the property.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return ITypedGeomParam<TRAITS>::matches(header, matching);
    }

    OTypedGeomParam() = default;

    /// Creates the parameter: an array property, or a compound of values and indices when `is_indexed`.
    /// `array_extent` is how many elements make one value; it only describes. Arguments: error policy (throw when there
    /// is none), time sampling, metadata.
    OTypedGeomParam(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, bool is_indexed,
                    GeometryScope scope, size_t array_extent, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument(), const Argument& arg2 = Argument())
    {
        create(parent, name, is_indexed, scope, array_extent, arg0, arg1, arg2);
    }
    OTypedGeomParam(OCompoundProperty parent, const std::string& name, bool is_indexed, GeometryScope scope,
                    size_t array_extent, const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                    const Argument& arg2 = Argument())
    {
        create(parent.getPtr(), name, is_indexed, scope, array_extent, arg0, arg1, arg2);
    }

    /// The first sample writes values, and indices when the parameter is indexed; in later ones what is not given
    /// repeats the previous sample. Indices given to a parameter that is not indexed are left out.
    void set(const sample_type& sample);
    void setFromPrevious();

    void setTimeSampling(uint32_t index);
    void setTimeSampling(AbcA::TimeSamplingPtr time);

    /// Samples of the values, 0 for an invalid parameter.
    size_t getNumSamples() const { return values_.getPtr() ? values_.getNumSamples() : 0; }
    AbcA::DataType getDataType() const { return TRAITS::dataType(); }
    bool isIndexed() const { return is_indexed_; }
    GeometryScope getScope() const { return scope_; }
    AbcA::TimeSamplingPtr getTimeSampling() const
    {
        return values_.getPtr() ? values_.getTimeSampling() : AbcA::TimeSamplingPtr();
    }
    const std::string& getName() const { return name_; }

    prop_type getValueProperty() const { return values_; }
    OUInt32ArrayProperty getIndexProperty() const { return indices_; } ///< invalid when not indexed

    bool valid() const { return error_handler_.valid() && values_.valid() && (!is_indexed_ || indices_.valid()); }
    ALEMBIC_OPERATOR_BOOL(valid());
    void reset() ///< keeps the error policy alone
    {
        const ErrorHandler::Policy policy = error_handler_.getPolicy();
        *this = OTypedGeomParam();
        error_handler_.setPolicy(policy);
    }

    ErrorHandler& getErrorHandler() const { return error_handler_; }

private:
    void create(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name, bool is_indexed,
                GeometryScope scope, size_t array_extent, const Argument& arg0, const Argument& arg1,
                const Argument& arg2);

    prop_type values_;
    OUInt32ArrayProperty indices_;
    OCompoundProperty compound_;
    std::string name_;
    bool is_indexed_ = false;
    GeometryScope scope_ = kUnknownScope;
    mutable ErrorHandler error_handler_;
};

template <class TRAITS>
void OTypedGeomParam<TRAITS>::create(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                     bool is_indexed, GeometryScope scope, size_t array_extent, const Argument& arg0,
                                     const Argument& arg1, const Argument& arg2)
{
    Arguments args;
    arg0.setInto(args);
    arg1.setInto(args);
    arg2.setInto(args);
    error_handler_.setPolicy(args.getErrorHandlerPolicy());
    name_ = name;
    is_indexed_ = is_indexed;
    scope_ = scope;

    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedGeomParam::OTypedGeomParam()");
    if (!parent) ABCA_THROW("NULL CompoundPropertyWriter passed into OTypedGeomParam ctor, name: " << name);
    uint32_t index = args.getTimeSamplingIndex();
    if (const AbcA::TimeSamplingPtr time = args.getTimeSampling())
        index = parent->getObject()->getArchive()->addTimeSampling(*time);
    const AbcA::MetaData metadata =
        geom_param_metadata(args.getMetaData(), TRAITS::dataType(), TRAITS::interpretation(), scope, array_extent);
    if (is_indexed) {
        compound_ = OCompoundProperty(parent, name, metadata);
        values_ = prop_type(compound_, ".vals", metadata, index);
        indices_ = OUInt32ArrayProperty(compound_, ".indices", index);
    } else {
        values_ = prop_type(parent, name, metadata, index);
    }
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

template <class TRAITS>
void OTypedGeomParam<TRAITS>::set(const sample_type& sample)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedGeomParam::set()");
    if (!values_.getPtr()) ABCA_THROW("The geometry parameter is not valid: nothing can be written to it");
    const auto write = [](auto& property, const auto& given) {
        if (given.valid())
            property.set(given);
        else if (property.getNumSamples() == 0)
            property.set(std::decay_t<decltype(given)>::emptySample());
        else
            property.setFromPrevious();
    };
    write(values_, sample.getVals());
    if (is_indexed_) write(indices_, sample.getIndices());
    ALEMBIC_ABC_SAFE_CALL_END();
}

template <class TRAITS>
void OTypedGeomParam<TRAITS>::setFromPrevious()
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedGeomParam::setFromPrevious()");
    values_.setFromPrevious();
    if (is_indexed_) indices_.setFromPrevious();
    ALEMBIC_ABC_SAFE_CALL_END();
}

template <class TRAITS>
void OTypedGeomParam<TRAITS>::setTimeSampling(uint32_t index)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedGeomParam::setTimeSampling( uint32_t )");
    values_.setTimeSampling(index);
    if (is_indexed_) indices_.setTimeSampling(index);
    ALEMBIC_ABC_SAFE_CALL_END();
}

template <class TRAITS>
void OTypedGeomParam<TRAITS>::setTimeSampling(AbcA::TimeSamplingPtr time)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OTypedGeomParam::setTimeSampling( TimeSamplingPtr )");
    values_.setTimeSampling(time);
    if (is_indexed_) indices_.setTimeSampling(time);
    ALEMBIC_ABC_SAFE_CALL_END();
}

#define ALEMBIC_ABCGEOM_DECLARE_OGEOMPARAM(NAME, TRAITS)                                                               \
    typedef OTypedGeomParam<TRAITS> O##NAME##GeomParam;                                                                \
    extern template class ALEMBIC_EXPORT OTypedGeomParam<TRAITS>;

ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABCGEOM_DECLARE_OGEOMPARAM)
#undef ALEMBIC_ABCGEOM_DECLARE_OGEOMPARAM

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
