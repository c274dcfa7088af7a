/// @file
/// Compound properties: their children opened.
#include "core/hdf5/compound_property_reader.h"

#include "core/hdf5/archive_reader.h"
#include "core/hdf5/array_property_reader.h"
#include "core/hdf5/limits.h"
#include "core/hdf5/scalar_property_reader.h"

#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

CompoundPropertyReader::CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                                               std::shared_ptr<CompoundPropertyReader> parent,
                                               const AbcA::PropertyHeader& header, Handle group)
    : AbcCoreCommon::CompoundPropertyReader<CompoundPropertyReader>(std::move(object), std::move(parent), header,
                                                                    archive.properties_of(group), max_depth)
    , archive_(archive)
    , group_(std::move(group))
{
}

File& CompoundPropertyReader::file() const
{
    return archive_.file();
}

AbcA::ScalarPropertyReaderPtr CompoundPropertyReader::getScalarProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kScalarProperty, index);
    if (!record) return {};
    return std::make_shared<ScalarPropertyReader>(shared_from_this(), *record);
}

AbcA::ArrayPropertyReaderPtr CompoundPropertyReader::getArrayProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kArrayProperty, index);
    if (!record) return {};
    return std::make_shared<ArrayPropertyReader>(shared_from_this(), *record);
}

AbcA::CompoundPropertyReaderPtr CompoundPropertyReader::getCompoundProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kCompoundProperty, index);
    if (!record) return {};
    const LibraryLock lock;
    Handle group = archive_.file().open_linked(this->group(), name, H5I_GROUP);
    if (group)
        for (const CompoundPropertyReader* ancestor = this; ancestor; ancestor = ancestor->parent().get())
            if (address_of(ancestor->group()) == address_of(group.id()))
                ABCA_THROW("Read invalid: compound property '" << name << "' is one of its own ancestors");
    return std::make_shared<CompoundPropertyReader>(getObject(), archive_, shared_from_this(), record->header,
                                                    std::move(group));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
