/// A scalar property that is written as a C++ type.
#pragma once

#include <Alembic/Abc/OScalarProperty.h>
#include <Alembic/Abc/TypedPropertyTraits.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

template <class TRAITS>
class ALEMBIC_EXPORT OTypedScalarProperty : public OScalarProperty
{
public:
    typedef TRAITS traits_type;
    typedef OTypedScalarProperty<TRAITS> this_type;
    typedef typename TRAITS::value_type value_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// The metadata's interpretation is this type's. Unlike in reading classes it always counts.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().same_interpretation(metaData);
    }
    /// The header is that of a scalar property of this type.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().matches_scalar(header, matching);
    }

    /// Invalid.
    OTypedScalarProperty() = default;

    /// Creates the property, with the parent's policy or an argument's; its metadata get the type's interpretation.
    OTypedScalarProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                         const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                         const Argument& arg2 = Argument(), const Argument& arg3 = Argument())
        : OScalarProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2, arg3))
    {
        create_typed(parent, name, TypeDescription::of<TRAITS>(), collect_arguments(arg0, arg1, arg2, arg3));
    }
    OTypedScalarProperty(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument(), const Argument& arg2 = Argument())
        : OScalarProperty(TYPED, GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
    {
        create_typed(parent.getPtr(), name, TypeDescription::of<TRAITS>(), collect_arguments(arg0, arg1, arg2));
    }

    /// Takes over a writer, whose type must be this one.
    OTypedScalarProperty(AbcA::ScalarPropertyWriterPtr property, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument())
        : OScalarProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        wrap_typed(std::move(property), TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }
    OTypedScalarProperty(AbcA::ScalarPropertyWriterPtr property, WrapExistingFlag, const Argument& arg0 = Argument(),
                         const Argument& arg1 = Argument())
        : OTypedScalarProperty(std::move(property), arg0, arg1)
    {
    }

    /// Appends a sample, copied at once.
    void set(const value_type& value) { OScalarProperty::set(&value); }
};

#define ALEMBIC_ABC_DECLARE_PROPERTY(NAME, TRAITS)                                                                     \
    typedef OTypedScalarProperty<TRAITS> O##NAME##Property;                                                            \
    extern template class OTypedScalarProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_DECLARE_PROPERTY)
#undef ALEMBIC_ABC_DECLARE_PROPERTY

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
