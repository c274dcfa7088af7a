/// @file
/// Compound properties: their children found and opened.
#include "core/ogawa/compound_property_reader.h"

#include "core/ogawa/archive_reader.h"
#include "core/ogawa/array_property_reader.h"
#include "core/ogawa/limits.h"
#include "core/ogawa/scalar_property_reader.h"

#include <utility>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

AbcA::CompoundPropertyReaderPtr open_top_compound(ObjectReader& object, const Ogawa::GroupReader& group)
{
    if (!group) ABCA_THROW("Invalid data in CprImpl(Object)");
    return std::make_shared<CompoundPropertyReader>(object.asObjectPtr(), object.archive(), nullptr,
                                                    AbcCoreCommon::unnamed_compound(), group);
}

CompoundPropertyReader::CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                                               std::shared_ptr<CompoundPropertyReader> parent,
                                               const AbcA::PropertyHeader& header, const Ogawa::GroupReader& group)
    : AbcCoreCommon::CompoundPropertyReader<CompoundPropertyReader>(std::move(object), std::move(parent), header,
                                                                    archive.properties_of(group), max_depth)
    , archive_(archive)
    , group_(group)
{
}

const Ogawa::BlockBuffer& CompoundPropertyReader::file() const
{
    return archive_.file();
}

Ogawa::GroupReader CompoundPropertyReader::open_group(std::uint32_t index, const char* kind) const
{
    const Ogawa::GroupReader group = group_.child(index);
    bool usable = static_cast<bool>(group);
    if (group.count() > 0)
        for (const CompoundPropertyReader* ancestor = this; ancestor; ancestor = ancestor->parent().get())
            usable = usable && ancestor->group_.position() != group.position();
    if (!usable) ABCA_THROW(kind << " Property not backed by a valid group.");
    return group;
}

AbcA::ScalarPropertyReaderPtr CompoundPropertyReader::getScalarProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kScalarProperty, index);
    if (!record) return {};
    return std::make_shared<ScalarPropertyReader>(shared_from_this(), *record, open_group(index, "Scalar"));
}

AbcA::ArrayPropertyReaderPtr CompoundPropertyReader::getArrayProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kArrayProperty, index);
    if (!record) return {};
    return std::make_shared<ArrayPropertyReader>(shared_from_this(), *record, open_group(index, "Array"));
}

AbcA::CompoundPropertyReaderPtr CompoundPropertyReader::getCompoundProperty(const std::string& name)
{
    std::uint32_t index = 0;
    const PropertyRecord* const record = find(name, AbcA::kCompoundProperty, index);
    if (!record) return {};
    return std::make_shared<CompoundPropertyReader>(getObject(), archive_, shared_from_this(), record->header,
                                                    open_group(index, "Compound"));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
