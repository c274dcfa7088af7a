/// Collections, written: named lists of objects' full names.
#pragma once

#include <Alembic/AbcCollection/SchemaInfoDeclarations.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCollection {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OCollectionsSchema : public Abc::OSchema<CollectionsSchemaInfo>
{
public:
    typedef OCollectionsSchema this_type;

    OCollectionsSchema() = default;
    // Moving copies: what was moved from still has its list, and can be asked.
    OCollectionsSchema(const OCollectionsSchema&) = default;
    OCollectionsSchema& operator=(const OCollectionsSchema&) = default;
    OCollectionsSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name,
                       const Abc::Argument& arg0 = Abc::Argument(), const Abc::Argument& arg1 = Abc::Argument(),
                       const Abc::Argument& arg2 = Abc::Argument(), const Abc::Argument& arg3 = Abc::Argument())
        : Abc::OSchema<CollectionsSchemaInfo>(parent, name, arg0, arg1, arg2, arg3)
    {
    }
    OCollectionsSchema(Abc::OCompoundProperty parent, const std::string& name,
                       const Abc::Argument& arg0 = Abc::Argument(), const Abc::Argument& arg1 = Abc::Argument(),
                       const Abc::Argument& arg2 = Abc::Argument())
        : Abc::OSchema<CollectionsSchemaInfo>(parent, name, arg0, arg1, arg2)
    {
    }

    /// Creates a collection, or gives the one of that name. Arguments: metadata, time sampling.
    Abc::OStringArrayProperty createCollection(const std::string& name, const Abc::Argument& arg0 = Abc::Argument(),
                                               const Abc::Argument& arg1 = Abc::Argument(),
                                               const Abc::Argument& arg2 = Abc::Argument());

    size_t getNumCollections() const { return collections_->size(); }

    /// In the order of creation. By index out of range: an error. By a name that is not there: an invalid property.
    Abc::OStringArrayProperty getCollection(size_t i) const;
    Abc::OStringArrayProperty getCollection(const std::string& name) const;

    void reset()
    {
        collections_ = std::make_shared<Collections>();
        Abc::OSchema<CollectionsSchemaInfo>::reset();
    }
    bool valid() const { return Abc::OSchema<CollectionsSchemaInfo>::valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(OCollectionsSchema::valid());

private:
    using Collections = std::vector<Abc::OStringArrayProperty>;

    std::shared_ptr<Collections> collections_ = std::make_shared<Collections>(); ///< shared by all copies
};

typedef Abc::OSchemaObject<OCollectionsSchema> OCollections;
typedef Alembic::Util::shared_ptr<OCollections> OCollectionsPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCollection
} // namespace Alembic
