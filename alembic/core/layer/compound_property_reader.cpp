/// Properties of all layers, merged one by one.
#include "core/layer/compound_property_reader.h"

#include "core/common/property_type.h"
#include "core/layer/archive_reader.h"
#include "core/layer/layer_metadata.h"
#include "core/layer/object_reader.h"
#include "core/layer/publish.h"

#include <utility>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

std::unique_ptr<CompoundPropertyReader> CompoundPropertyReader::of_object(ObjectReader& object, Versions versions)
{
    const AbcA::PropertyHeader header(versions.front()->getName(), object.getMetaData());
    return std::make_unique<CompoundPropertyReader>(object, nullptr, header, std::move(versions));
}

CompoundPropertyReader::CompoundPropertyReader(ObjectReader& object, CompoundPropertyReader* parent,
                                               const AbcA::PropertyHeader& header, Versions versions)
    : object_(object)
    , parent_(parent)
    , header_(header)
    , versions_(std::move(versions))
{
    for (uint32_t v = 0; v < versions_.size(); ++v) {
        AbcA::CompoundPropertyReader& version = *versions_[v];
        const size_t count = version.getNumProperties();
        for (size_t i = 0; i < count; ++i)
            merge_property(table_, version.getPropertyHeader(i), v);
    }
    table_.finish();
    nodes_.reset(new std::atomic<CompoundPropertyReader*>[table_.size()]());
}

CompoundPropertyReader::~CompoundPropertyReader()
{
    for (size_t i = 0; nodes_ && i < table_.size(); ++i)
        delete nodes_[i].load(std::memory_order_relaxed);
}

void CompoundPropertyReader::merge_property(MergedTable<Property>& table, const AbcA::PropertyHeader& header,
                                            uint32_t version)
{
    const size_t number = table.find(header.getName());
    const bool is_there = number < table.size();
    if (is_prune(header.getMetaData())) {
        if (is_there) table.remove(number);
        return;
    }
    if (!is_there) {
        table.append(Property{&header, {version}});
        return;
    }
    Property& property = table.at(number);
    const bool joins = header.isCompound() && property.header->isCompound() && !is_replace(header.getMetaData());
    if (!joins) property.sources.clear();
    property.sources.push_back(version);
    // A compound that says nothing of itself only adds to the one below.
    if (!joins || header.getMetaData().size() > 0) property.header = &header;
}

AbcA::ObjectReaderPtr CompoundPropertyReader::getObject()
{
    return object_.asObjectPtr();
}

AbcA::CompoundPropertyReaderPtr CompoundPropertyReader::getParent()
{
    return parent_ ? parent_->asCompoundPtr() : AbcA::CompoundPropertyReaderPtr();
}

AbcA::CompoundPropertyReaderPtr CompoundPropertyReader::asCompoundPtr()
{
    return object_.archive().shared(*this);
}

const AbcA::PropertyHeader& CompoundPropertyReader::getPropertyHeader(size_t i)
{
    if (i >= table_.size()) ABCA_THROW("Out of range index in CprData::getPropertyHeader: " << i);
    return *table_[i].header;
}

const AbcA::PropertyHeader* CompoundPropertyReader::getPropertyHeader(const std::string& name)
{
    const size_t number = table_.find(name);
    return number < table_.size() ? table_[number].header : nullptr;
}

size_t CompoundPropertyReader::find(const std::string& name, AbcA::PropertyType wanted) const
{
    const size_t number = table_.find(name);
    if (number < table_.size()) AbcCoreCommon::check_type(name, *table_[number].header, wanted);
    return number;
}

AbcA::ScalarPropertyReaderPtr CompoundPropertyReader::getScalarProperty(const std::string& name)
{
    const size_t number = find(name, AbcA::kScalarProperty);
    if (number == table_.size()) return AbcA::ScalarPropertyReaderPtr();
    return versions_[table_[number].sources.back()]->getScalarProperty(name);
}

AbcA::ArrayPropertyReaderPtr CompoundPropertyReader::getArrayProperty(const std::string& name)
{
    const size_t number = find(name, AbcA::kArrayProperty);
    if (number == table_.size()) return AbcA::ArrayPropertyReaderPtr();
    return versions_[table_[number].sources.back()]->getArrayProperty(name);
}

CompoundPropertyReader& CompoundPropertyReader::node(size_t number)
{
    if (CompoundPropertyReader* const there = nodes_[number].load(std::memory_order_acquire)) return *there;
    const Property& property = table_[number];
    Versions versions;
    for (const uint32_t source : property.sources)
        versions.push_back(versions_[source]->getCompoundProperty(property.header->getName()));
    return publish(nodes_[number],
                   std::make_unique<CompoundPropertyReader>(object_, this, *property.header, std::move(versions)));
}

AbcA::CompoundPropertyReaderPtr CompoundPropertyReader::getCompoundProperty(const std::string& name)
{
    const size_t number = find(name, AbcA::kCompoundProperty);
    return number == table_.size() ? AbcA::CompoundPropertyReaderPtr() : node(number).asCompoundPtr();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
