/// A scalar property that is read as a C++ type.
#pragma once

#include <Alembic/Abc/IScalarProperty.h>
#include <Alembic/Abc/TypedPropertyTraits.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

template <class TRAITS>
class ALEMBIC_EXPORT ITypedScalarProperty : public IScalarProperty
{
public:
    typedef TRAITS traits_type;
    typedef ITypedScalarProperty<TRAITS> this_type;
    typedef typename TRAITS::value_type value_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// The metadata's interpretation is this type's (looked at only when strict).
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching)
    {
        return matching != kStrictMatching || TypeDescription::of<TRAITS>().same_interpretation(metaData);
    }
    /// The header is that of a scalar property of this type.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().matches_scalar(header, matching);
    }

    /// Invalid.
    ITypedScalarProperty() = default;

    /// The property of that name. Errors: it is not there, or its type is another. The data type counts always, the
    /// interpretation only with kStrictMatching.
    ITypedScalarProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument())
        : IScalarProperty(GetErrorHandlerPolicy(parent, arg0, arg1))
    {
        open_typed(parent, name, TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }

    /// Takes over a reader, checked in the same way.
    ITypedScalarProperty(AbcA::ScalarPropertyReaderPtr property, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument())
        : IScalarProperty(GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        wrap_typed(std::move(property), TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }
    ITypedScalarProperty(AbcA::ScalarPropertyReaderPtr property, WrapExistingFlag, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument())
        : ITypedScalarProperty(std::move(property), arg0, arg1)
    {
    }

    /// The value of a sample; untouched on an error.
    void get(value_type& value, const ISampleSelector& selector = ISampleSelector()) const
    {
        IScalarProperty::get(&value, selector);
    }
    /// The same; the type's default value on an error.
    value_type getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        value_type value = DefaultValue<value_type>::get();
        IScalarProperty::get(&value, selector);
        return value;
    }
};

#define ALEMBIC_ABC_DECLARE_SCALAR_PROPERTY(NAME, TRAITS)                                                              \
    typedef ITypedScalarProperty<TRAITS> I##NAME##Property;                                                            \
    extern template class ITypedScalarProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_DECLARE_SCALAR_PROPERTY)
#undef ALEMBIC_ABC_DECLARE_SCALAR_PROPERTY

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
