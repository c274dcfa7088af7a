/// An object with a schema that is being read.
#pragma once

#include <Alembic/Abc/IObject.h>
#include <Alembic/Abc/ISchema.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// `SCHEMA` is an ISchema, or derived from one.
template <class SCHEMA>
class ALEMBIC_EXPORT ISchemaObject : public IObject
{
public:
    typedef SCHEMA schema_type;
    typedef typename SCHEMA::info_type info_type;
    typedef ISchemaObject<SCHEMA> this_type;

    /// `TITLE:NAME`: the schema's title and the name of its compound.
    static std::string getSchemaObjTitle() { return SchemaDescription::of<info_type>().object_title(); }
    static const char* getSchemaTitle() { return info_type::title(); }

    /// The metadata are those of an object with this schema.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching)
    {
        return SchemaDescription::of<info_type>().matches_object(metaData, matching);
    }
    static bool matches(const AbcA::ObjectHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return matches(header.getMetaData(), matching);
    }

    /// Invalid.
    ISchemaObject() = default;

    /// The child of that name. Unlike elsewhere, the policy is an argument's or throw, never the parent's. Errors:
    /// `Bad child: NAME`, `Incorrect match of schema: A to expected: B`, and what the schema reports.
    ISchemaObject(const IObject& parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IObject(GetErrorHandlerPolicyFromArgs(arg0, arg1))
    {
        ALEMBIC_ABC_SAFE_CALL_BEGIN("ISchemaObject::ISchemaObject( IObject )");
        this->open_child(parent, name);
        if (!m_object) ABCA_THROW("Bad child: " << name);
        init_schema(arg0, arg1);
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
        take_schema_log("ISchemaObject::ISchemaObject( IObject )");
    }

    /// The object itself, with its policy or an argument's.
    ISchemaObject(const IObject& object, const Argument& arg0 = Argument(), const Argument& arg1 = Argument())
        : IObject(object)
    {
        ALEMBIC_ABC_SAFE_CALL_BEGIN("ISchemaObject::ISchemaObject( wrap )");
        getErrorHandler().setPolicy(GetErrorHandlerPolicy(object, arg0, arg1));
        init_schema(arg0, arg1);
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
        take_schema_log("ISchemaObject::ISchemaObject( wrap )");
    }
    ISchemaObject(const IObject& object, WrapExistingFlag, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : IObject(object)
    {
        ALEMBIC_ABC_SAFE_CALL_BEGIN("ISchemaObject::ISchemaObject( wrapflag )");
        getErrorHandler().setPolicy(GetErrorHandlerPolicy(object, arg0, arg1));
        init_schema(arg0, arg1);
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
        take_schema_log("ISchemaObject::ISchemaObject( wrapflag )");
    }

    SCHEMA& getSchema() { return schema_; }
    const SCHEMA& getSchema() const { return schema_; }

    void reset() override
    {
        schema_.reset();
        IObject::reset();
    }
    /// The object and its schema are valid.
    bool valid() const override { return IObject::valid() && schema_.valid(); }

    ALEMBIC_OVERRIDE_OPERATOR_BOOL(this_type::valid());

private:
    void init_schema(const Argument& arg0, const Argument& arg1)
    {
        const SchemaInterpMatching matching = GetSchemaInterpMatching(arg0, arg1);
        if (!matches(this->getMetaData(), matching)) {
            SchemaDescription::of<info_type>().throw_mismatch(this->getMetaData());
        }
        schema_ = SCHEMA(this->getProperties(), info_type::defaultName(), getErrorHandlerPolicy(), matching);
    }

    /// Under a quiet policy the schema kept its errors to itself: the object's log shall tell them, too.
    void take_schema_log(const char* context)
    {
        if (schema_.getErrorHandler().valid()) return;
        Exception failure(schema_.getErrorHandler().getErrorLog());
        getErrorHandler()(static_cast<std::exception&>(failure), context);
    }

    SCHEMA schema_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
