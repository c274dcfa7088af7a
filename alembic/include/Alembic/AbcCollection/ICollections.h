/// Collections, read: named lists of objects' full names.
#pragma once

#include <Alembic/AbcCollection/SchemaInfoDeclarations.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCollection {
inline namespace ALEMBIC_VERSION_NS {

/// Every string array property of the schema's compound is a collection, in the order of creation.
class ALEMBIC_EXPORT ICollectionsSchema : public Abc::ISchema<CollectionsSchemaInfo>
{
public:
    typedef ICollectionsSchema this_type;

    ICollectionsSchema() = default;
    ICollectionsSchema(const Abc::ICompoundProperty& parent, const std::string& name,
                       const Abc::Argument& arg0 = Abc::Argument(), const Abc::Argument& arg1 = Abc::Argument())
        : Abc::ISchema<CollectionsSchemaInfo>(parent, name, arg0, arg1)
    {
        init();
    }
    ICollectionsSchema(const Abc::ICompoundProperty& property, const Abc::Argument& arg0 = Abc::Argument(),
                       const Abc::Argument& arg1 = Abc::Argument())
        : Abc::ISchema<CollectionsSchemaInfo>(property, arg0, arg1)
    {
        init();
    }

    size_t getNumCollections() const { return names_.size(); }

    /// By index out of range: an error. By a name that is not there: an invalid property.
    Abc::IStringArrayProperty getCollection(size_t i) const;
    Abc::IStringArrayProperty getCollection(const std::string& name) const;
    std::string getCollectionName(size_t i) const;

    void reset()
    {
        names_.clear();
        Abc::ISchema<CollectionsSchemaInfo>::reset();
    }
    bool valid() const { return Abc::ISchema<CollectionsSchemaInfo>::valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(ICollectionsSchema::valid());

private:
    void init();

    std::vector<std::string> names_;
};

typedef Abc::ISchemaObject<ICollectionsSchema> ICollections;
typedef Alembic::Util::shared_ptr<ICollections> ICollectionsPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCollection
} // namespace Alembic
