/// An array property that is written as a C++ type.
#pragma once

#include <Alembic/Abc/OArrayProperty.h>
#include <Alembic/Abc/TypedArraySample.h>
#include <Alembic/Abc/TypedPropertyTraits.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

template <class TRAITS>
class ALEMBIC_EXPORT OTypedArrayProperty : public OArrayProperty
{
public:
    typedef TRAITS traits_type;
    typedef OTypedArrayProperty<TRAITS> this_type;
    typedef typename TRAITS::value_type value_type;
    typedef TypedArraySample<TRAITS> sample_type;

    static const char* getInterpretation() { return TRAITS::interpretation(); }

    /// The metadata's interpretation is this type's. Unlike in reading classes it always counts.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().same_interpretation(metaData);
    }
    /// The header is that of an array property of this type.
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return TypeDescription::of<TRAITS>().matches_array(header, matching);
    }

    /// Invalid.
    OTypedArrayProperty() = default;

    /// Creates the property, with the parent's policy or an argument's; its metadata get the type's interpretation.
    OTypedArrayProperty(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                        const Argument& arg0 = Argument(), const Argument& arg1 = Argument(),
                        const Argument& arg2 = Argument(), const Argument& arg3 = Argument())
        : OArrayProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2, arg3))
    {
        create_typed(parent, name, TypeDescription::of<TRAITS>(), collect_arguments(arg0, arg1, arg2, arg3));
    }
    OTypedArrayProperty(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument(), const Argument& arg2 = Argument())
        : OArrayProperty(TYPED, GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
    {
        create_typed(parent.getPtr(), name, TypeDescription::of<TRAITS>(), collect_arguments(arg0, arg1, arg2));
    }

    /// Takes over a writer, whose type must be this one.
    OTypedArrayProperty(AbcA::ArrayPropertyWriterPtr property, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument())
        : OArrayProperty(TYPED, GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        wrap_typed(std::move(property), TypeDescription::of<TRAITS>(), GetSchemaInterpMatching(arg0, arg1));
    }
    OTypedArrayProperty(AbcA::ArrayPropertyWriterPtr property, WrapExistingFlag, const Argument& arg0 = Argument(),
                        const Argument& arg1 = Argument())
        : OTypedArrayProperty(std::move(property), arg0, arg1)
    {
    }

    /// Appends a sample, written or copied at once; a vector of values converts.
    void set(const sample_type& value) { OArrayProperty::set(value); }
};

#define ALEMBIC_ABC_DECLARE_PROPERTY(NAME, TRAITS)                                                                     \
    typedef OTypedArrayProperty<TRAITS> O##NAME##ArrayProperty;                                                        \
    extern template class OTypedArrayProperty<TRAITS>;
ALEMBIC_ABC_FOR_EACH_TYPE(ALEMBIC_ABC_DECLARE_PROPERTY)
#undef ALEMBIC_ABC_DECLARE_PROPERTY

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
