/// An object with a schema that is being written.
#pragma once

#include <Alembic/Abc/OObject.h>
#include <Alembic/Abc/OSchema.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// `SCHEMA` is an OSchema, or derived from one.
template <class SCHEMA>
class ALEMBIC_EXPORT OSchemaObject : public OObject
{
public:
    typedef SCHEMA schema_type;
    typedef typename SCHEMA::info_type info_type;
    typedef OSchemaObject<SCHEMA> this_type;

    /// `TITLE:NAME`: the schema's title and the name of its compound.
    static std::string getSchemaObjTitle() { return SchemaDescription::of<info_type>().object_title(); }
    static const char* getSchemaTitle() { return info_type::title(); }

    /// The metadata are those of an object with this schema.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching)
    {
        return SchemaDescription::of<info_type>().matches_written_object(metaData, matching);
    }
    static bool matches(const AbcA::ObjectHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return matches(header.getMetaData(), matching);
    }

    /// Invalid.
    OSchemaObject() = default;

    /// Creates a child and the schema in it, both with the parent's policy or an argument's. A metadata argument goes
    /// to the object, a time sampling to the schema. Unless sparse, the metadata of both name the schema.
    OSchemaObject(OObject parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument(), const Argument& arg2 = Argument())
        : OObject(GetErrorHandlerPolicy(parent, arg0, arg1, arg2))
    {
        static const char* const context = "OSchemaObject::OSchemaObject( OObject )";
        ALEMBIC_ABC_SAFE_CALL_BEGIN(context);
        const Arguments args = collect_arguments(arg0, arg1, arg2);
        this->create_child(parent, name,
                           SchemaDescription::of<info_type>().object_metadata(args.getMetaData(), args.isSparse()),
                           "OSchemaObject");
        const AbcA::TimeSamplingPtr time_sampling = args.getTimeSampling();
        schema_ = SCHEMA(object_->getProperties(), info_type::defaultName(), getErrorHandlerPolicy(), time_sampling,
                         args.getTimeSamplingIndex(), args.isSparse() ? kSparse : kFull);
        ALEMBIC_ABC_SAFE_CALL_END_RESET();
        take_schema_log(context);
    }

    SCHEMA& getSchema() { return schema_; }
    const SCHEMA& getSchema() const { return schema_; }

    void reset() override
    {
        schema_.reset();
        OObject::reset();
    }
    /// The object and its schema are valid.
    bool valid() const override { return OObject::valid() && schema_.valid(); }

    ALEMBIC_OVERRIDE_OPERATOR_BOOL(this_type::valid());

private:
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
