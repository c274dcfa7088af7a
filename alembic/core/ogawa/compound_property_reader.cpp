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
    static const AbcA::PropertyHeader unnamed("", AbcA::MetaData());
    if (!group) ABCA_THROW("Invalid data in CprImpl(Object)");
    return std::make_shared<CompoundPropertyReader>(object.asObjectPtr(), object.archive(), nullptr, unnamed, group);
}

CompoundPropertyReader::CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                                               std::shared_ptr<CompoundPropertyReader> parent,
                                               const AbcA::PropertyHeader& header, const Ogawa::GroupReader& group)
    : object_(std::move(object))
    , archive_(archive)
    , parent_(std::move(parent))
    , header_(header)
    , group_(group)
    , table_(archive.properties_of(group))
    , depth_(parent_ ? parent_->depth_ + 1 : 0)
{
    if (depth_ > max_depth)
        ABCA_THROW("Read invalid: compound properties are nested too deep in " << object_->getFullName());
}

const Ogawa::BlockBuffer& CompoundPropertyReader::file() const
{
    return archive_.file();
}

const AbcA::PropertyHeader& CompoundPropertyReader::getPropertyHeader(size_t i)
{
    if (i >= table_.size()) ABCA_THROW("Out of range index in CprData::getPropertyHeader: " << i);
    return table_.record(static_cast<std::uint32_t>(i)).header;
}

const AbcA::PropertyHeader* CompoundPropertyReader::getPropertyHeader(const std::string& name)
{
    const std::uint32_t index = table_.find(name);
    return index == NameIndex::none ? nullptr : &table_.record(index).header;
}

const PropertyRecord* CompoundPropertyReader::find(const std::string& name, AbcA::PropertyType wanted,
                                                   std::uint32_t& index) const
{
    index = table_.find(name);
    if (index == NameIndex::none) return nullptr;
    const PropertyRecord& record = table_.record(index);
    const AbcA::PropertyType type = record.header.getPropertyType();
    if (type != wanted) {
        const char* const text = wanted == AbcA::kScalarProperty  ? "a scalar property from a non-scalar: "
                                 : wanted == AbcA::kArrayProperty ? "an array property from a non-array: "
                                                                  : "a compound property from a non-compound: ";
        ABCA_THROW("Tried to read " << text << name << ", type: " << static_cast<int>(type));
    }
    return &record;
}

Ogawa::GroupReader CompoundPropertyReader::open_group(std::uint32_t index, const char* kind) const
{
    const Ogawa::GroupReader group = group_.child(index);
    bool usable = static_cast<bool>(group);
    if (group.count() > 0)
        for (const CompoundPropertyReader* ancestor = this; ancestor; ancestor = ancestor->parent_.get())
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
    return std::make_shared<CompoundPropertyReader>(object_, archive_, shared_from_this(), record->header,
                                                    open_group(index, "Compound"));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
