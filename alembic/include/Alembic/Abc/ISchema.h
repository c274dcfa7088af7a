/// A compound property of a known layout that is being read.
#pragma once

#include <Alembic/Abc/ICompoundProperty.h>
#include <Alembic/Abc/SchemaInfo.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// `INFO` is a struct made by ALEMBIC_ABC_DECLARE_SCHEMA_INFO.
template <class INFO>
class ALEMBIC_EXPORT ISchema : public ICompoundProperty
{
public:
    typedef INFO info_type;
    typedef ISchema<INFO> this_type;

    static const char* getSchemaTitle() { return INFO::title(); }
    static const char* getDefaultSchemaName() { return INFO::defaultName(); }

    /// The metadata name this schema. That the header is a compound's is not looked at.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching)
    {
        return SchemaDescription::of<INFO>().matches_compound(metaData, matching);
    }
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return matches(header.getMetaData(), matching);
    }

    /// Invalid.
    ISchema() = default;

    /// The compound of that name. Errors: `NULL parent passed into ISchema ctor`,
    /// `Nonexistent compound property: NAME`, `Incorrect match of schema: A to expected: B`.
    ISchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument())
        : ICompoundProperty(GetErrorHandlerPolicy(parent, arg0, arg1))
    {
        open_schema(parent, name, SchemaDescription::of<INFO>(), GetSchemaInterpMatching(arg0, arg1));
    }

    /// The compound itself.
    ISchema(const ICompoundProperty& property, const Argument& arg0 = Argument(), const Argument& arg1 = Argument())
        : ICompoundProperty(GetErrorHandlerPolicy(property, arg0, arg1))
    {
        wrap_schema(property, SchemaDescription::of<INFO>(), GetSchemaInterpMatching(arg0, arg1));
    }
    ISchema(const ICompoundProperty& property, WrapExistingFlag, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument())
        : ISchema(property, arg0, arg1)
    {
    }
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
