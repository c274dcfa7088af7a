/// An array property that is read as a C++ type.
#pragma once

#include <Alembic/Abc/IArrayProperty.h>
#include <Alembic/Abc/TypedArraySample.h>
#include <Alembic/Abc/TypedPropertyTraits.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

template <class TRAITS>
class ALEMBIC_EXPORT ITypedArrayProperty : public IArrayProperty
{
public:
    typedef TRAITS traits_type;
    typedef ITypedArrayProperty<TRAITS> this_type;
    typedef typename TRAITS::value_type value_type;
    typedef TypedArraySample<TRAITS> sample_type;
    typedef std::shared_ptr<sample_type> sample_ptr_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// The metadata's interpretation is this type's (looked at only when strict).
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching)
    {
        return matching != kStrictMatching || TypeDescription::of<TRAITS>().same_interpretation(metaData);
    }
    /// The header is that of an array property of this type; a type without interpretation takes any extent.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().matches_array(header, matching);
    }

    /// Invalid.
    ITypedArrayProperty() = default;

    /// The property of that name. Errors: it is not there, or its type is another. The data type counts always, the
    /// interpretation only with kStrictMatching.
    ITypedArrayProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument())
        : IArrayProperty(GetErrorHandlerPolicy(parent, arg0, arg1))
    {
        open_typed(parent, name, TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }

    /// Takes over a reader, checked in the same way.
    ITypedArrayProperty(AbcA::ArrayPropertyReaderPtr property, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument())
        : IArrayProperty(GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        wrap_typed(std::move(property), TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }
    ITypedArrayProperty(AbcA::ArrayPropertyReaderPtr property, WrapExistingFlag, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument())
        : ITypedArrayProperty(std::move(property), arg0, arg1)
    {
    }

    /// A sample that owns its data; the pointer is untouched on an error.
    void get(sample_ptr_type& value, const ISampleSelector& selector = ISampleSelector()) const
    {
        AbcA::ArraySamplePtr sample;
        IArrayProperty::get(sample, selector);
        if (sample) value = sample_type::share(std::move(sample));
    }
    /// The same; null on an error.
    sample_ptr_type getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        sample_ptr_type value;
        get(value, selector);
        return value;
    }
};

#define ALEMBIC_ABC_DECLARE_ARRAY_PROPERTY(NAME, TRAITS)                                                               \
    typedef ITypedArrayProperty<TRAITS> I##NAME##ArrayProperty;                                                        \
    extern template class ITypedArrayProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_DECLARE_ARRAY_PROPERTY)
#undef ALEMBIC_ABC_DECLARE_ARRAY_PROPERTY

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
