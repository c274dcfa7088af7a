/// A compound property of a known layout that is being written.
#pragma once

#include <Alembic/Abc/OCompoundProperty.h>
#include <Alembic/Abc/SchemaInfo.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// `INFO` is a struct made by ALEMBIC_ABC_DECLARE_SCHEMA_INFO.
template <class INFO>
class ALEMBIC_EXPORT OSchema : public OCompoundProperty
{
public:
    typedef INFO info_type;
    typedef OSchema<INFO> this_type;

    static const char* getSchemaTitle() { return INFO::title(); }
    static const char* getSchemaBaseType() { return INFO::schemaBaseType(); }
    static const char* getDefaultSchemaName() { return INFO::defaultName(); }
    static bool replaceOnSparse() { return INFO::replaceOnSparse(); }

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
    OSchema() = default;

    /// Creates the compound. Unless sparse, its metadata name the schema.
    OSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument(), const Argument& arg2 = Argument(), const Argument& arg3 = Argument())
        : OCompoundProperty(GetErrorHandlerPolicyFromArgs(arg0, arg1, arg2, arg3))
    {
        create_schema(parent, name, SchemaDescription::of<INFO>(), collect_arguments(arg0, arg1, arg2, arg3));
    }
    OSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
            const Argument& arg1 = Argument(), const Argument& arg2 = Argument())
        : OCompoundProperty(GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
    {
        create_schema(parent.getPtr(), name, SchemaDescription::of<INFO>(), collect_arguments(arg0, arg1, arg2));
    }
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
