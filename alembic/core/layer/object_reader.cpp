/// Objects of all layers, merged child by child.
#include "core/layer/object_reader.h"

#include "core/layer/archive_reader.h"
#include "core/layer/layer_metadata.h"
#include "core/layer/publish.h"

#include <utility>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

ObjectReader::Children::~Children()
{
    for (size_t i = 0; nodes && i < table.size(); ++i)
        delete nodes[i].load(std::memory_order_relaxed);
}

ObjectReader::ObjectReader(ArchiveReader& archive, ObjectReader* parent, const AbcA::ObjectHeader& header,
                           std::vector<AbcA::ObjectReaderPtr> versions)
    : archive_(archive)
    , parent_(parent)
    , header_(header)
    , versions_(std::move(versions))
{
}

ObjectReader::~ObjectReader()
{
    delete properties_.load(std::memory_order_relaxed);
    delete children_.load(std::memory_order_relaxed);
}

AbcA::ArchiveReaderPtr ObjectReader::getArchive()
{
    return archive_.asArchivePtr();
}

AbcA::ObjectReaderPtr ObjectReader::getParent()
{
    return parent_ ? archive_.shared(*parent_) : AbcA::ObjectReaderPtr();
}

AbcA::ObjectReaderPtr ObjectReader::asObjectPtr()
{
    return archive_.shared(*this);
}

AbcA::CompoundPropertyReaderPtr ObjectReader::getProperties()
{
    CompoundPropertyReader* there = properties_.load(std::memory_order_acquire);
    if (!there) {
        std::vector<AbcA::CompoundPropertyReaderPtr> versions;
        for (const AbcA::ObjectReaderPtr& version : versions_)
            versions.push_back(version->getProperties());
        there = &publish(properties_, CompoundPropertyReader::of_object(*this, std::move(versions)));
    }
    return archive_.shared(*there);
}

void ObjectReader::merge_child(MergedTable<Child>& table, const AbcA::ObjectHeader& header, Source source)
{
    const size_t number = table.find(header.getName());
    const bool is_there = number < table.size();
    if (is_prune(header.getMetaData())) {
        if (is_there) table.remove(number);
        return;
    }
    if (!is_there) {
        table.append(Child{&header, nullptr, {source}});
        return;
    }
    Child& child = table.at(number);
    if (is_replace(header.getMetaData())) {
        child.sources.clear();
        child.merged.reset();
        child.header = &header;
    } else {
        if (!child.merged) child.merged = std::make_unique<AbcA::ObjectHeader>(*child.header);
        child.merged->getMetaData().appendOnlyUnique(header.getMetaData());
        child.header = child.merged.get();
    }
    child.sources.push_back(source);
}

std::unique_ptr<ObjectReader::Children> ObjectReader::merge_children() const
{
    auto merged = std::make_unique<Children>();
    for (uint32_t v = 0; v < versions_.size(); ++v) {
        AbcA::ObjectReader& version = *versions_[v];
        const size_t count = version.getNumChildren();
        for (size_t i = 0; i < count; ++i)
            merge_child(merged->table, version.getChildHeader(i), Source{v, i});
    }
    merged->table.finish();
    merged->nodes.reset(new std::atomic<ObjectReader*>[merged->table.size()]());
    return merged;
}

const ObjectReader::Children& ObjectReader::children()
{
    const Children* const there = children_.load(std::memory_order_acquire);
    return there ? *there : publish(children_, merge_children());
}

ObjectReader& ObjectReader::node(size_t i)
{
    const Children& all = children();
    if (ObjectReader* const there = all.nodes[i].load(std::memory_order_acquire)) return *there;

    const Child& child = all.table[i];
    std::vector<AbcA::ObjectReaderPtr> versions;
    for (const Source& source : child.sources)
        versions.push_back(versions_[source.version]->getChild(source.index));
    return publish(all.nodes[i], std::make_unique<ObjectReader>(archive_, this, *child.header, std::move(versions)));
}

const AbcA::ObjectHeader& ObjectReader::getChildHeader(size_t i)
{
    const MergedTable<Child>& table = children().table;
    if (i >= table.size()) ABCA_THROW("Out of range index in OrData::getChildHeader: " << i);
    return *table[i].header;
}

const AbcA::ObjectHeader* ObjectReader::getChildHeader(const std::string& name)
{
    const MergedTable<Child>& table = children().table;
    const size_t number = table.find(name);
    return number < table.size() ? table[number].header : nullptr;
}

AbcA::ObjectReaderPtr ObjectReader::getChild(const std::string& name)
{
    const MergedTable<Child>& table = children().table;
    const size_t number = table.find(name);
    return number < table.size() ? archive_.shared(node(number)) : AbcA::ObjectReaderPtr();
}

AbcA::ObjectReaderPtr ObjectReader::getChild(size_t i)
{
    // Intended: out of range gives null here, unlike in a single file.
    return i < children().table.size() ? archive_.shared(node(i)) : AbcA::ObjectReaderPtr();
}

bool ObjectReader::getPropertiesHash(Util::Digest& digest)
{
    return has_hashes() && versions_.front()->getPropertiesHash(digest);
}

bool ObjectReader::getChildrenHash(Util::Digest& digest)
{
    return has_hashes() && versions_.front()->getChildrenHash(digest);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
