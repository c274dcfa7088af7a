/// Collections: named lists of paths, read and written.
#include <Alembic/AbcCollection/All.h>

namespace Alembic {
namespace AbcCollection {
inline namespace ALEMBIC_VERSION_NS {

void ICollectionsSchema::init()
{
    const size_t count = getNumProperties();
    for (size_t i = 0; i < count; ++i) {
        const AbcA::PropertyHeader& header = getPropertyHeader(i);
        if (Abc::IStringArrayProperty::matches(header)) names_.push_back(header.getName());
    }
}

Abc::IStringArrayProperty ICollectionsSchema::getCollection(size_t i) const
{
    return getCollection(getCollectionName(i));
}

Abc::IStringArrayProperty ICollectionsSchema::getCollection(const std::string& name) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICollectionsSchema::getCollection()");
    for (const std::string& known : names_)
        if (known == name) return Abc::IStringArrayProperty(*this, name);
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::IStringArrayProperty();
}

std::string ICollectionsSchema::getCollectionName(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICollectionsSchema::getCollectionName()");
    if (i >= names_.size()) ABCA_THROW("Collection " << i << " does not exist, there are " << names_.size());
    return names_[i];
    ALEMBIC_ABC_SAFE_CALL_END();
    return std::string();
}

Abc::OStringArrayProperty OCollectionsSchema::createCollection(const std::string& name, const Abc::Argument& arg0,
                                                               const Abc::Argument& arg1, const Abc::Argument& arg2)
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCollectionsSchema::createCollection()");
    const Abc::OStringArrayProperty known = getCollection(name);
    if (known.getPtr()) return known;
    const Abc::OStringArrayProperty made(getPtr(), name, arg0, arg1, arg2);
    if (made.valid()) collections_->push_back(made); // under a quiet policy it may not have come about
    return made;
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::OStringArrayProperty();
}

Abc::OStringArrayProperty OCollectionsSchema::getCollection(size_t i) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("OCollectionsSchema::getCollection()");
    if (i >= collections_->size())
        ABCA_THROW("Collection " << i << " does not exist, there are " << collections_->size());
    return (*collections_)[i];
    ALEMBIC_ABC_SAFE_CALL_END();
    return Abc::OStringArrayProperty();
}

Abc::OStringArrayProperty OCollectionsSchema::getCollection(const std::string& name) const
{
    for (const Abc::OStringArrayProperty& collection : *collections_)
        if (collection.getName() == name) return collection;
    return Abc::OStringArrayProperty();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCollection
} // namespace Alembic
