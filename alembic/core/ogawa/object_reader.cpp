/// @file
/// Objects, found by index or name.
#include "core/ogawa/object_reader.h"

#include "core/ogawa/archive_reader.h"
#include "core/ogawa/compound_property_reader.h"
#include "core/ogawa/limits.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

const ChildTable no_children; // shared by all objects without children: most of a scene's

} // namespace

ObjectReader::ObjectReader(ArchiveReader& archive, ObjectReader* parent, AbcA::ObjectHeader header,
                           const Ogawa::GroupReader& group, std::uint64_t index)
    : archive_(archive)
    , parent_(parent)
    , header_(std::move(header))
    , depth_(parent ? parent->depth_ + 1 : 0)
{
    try {
        group_ = group.child(index);
        if (!group_)
            refusal_ = "Invalid object data group";
        else if (depth_ > max_depth)
            refusal_ = "Invalid object data group: objects are nested too deep";
        else if (is_own_ancestor())
            refusal_ = "Invalid object data group: it is the group of one of its ancestors";
    } catch (const std::runtime_error&) {
        refusal_ = "Ogawa IStreams::read failed.";
    }
    if (refusal_) group_ = {};
}

ObjectReader::~ObjectReader()
{
    const ChildTable* const children = children_.load(std::memory_order_relaxed);
    if (children != &no_children) delete children;
}

bool ObjectReader::is_own_ancestor() const
{
    if (group_.count() == 0) return false;
    for (const ObjectReader* ancestor = parent_; ancestor; ancestor = ancestor->parent_)
        if (ancestor->group_.position() == group_.position()) return true;
    return false;
}

void ObjectReader::require_usable() const
{
    if (refusal_) ABCA_THROW(refusal_);
}

AbcA::ArchiveReaderPtr ObjectReader::getArchive()
{
    return archive_.asArchivePtr();
}

AbcA::ObjectReaderPtr ObjectReader::getParent()
{
    return parent_ ? archive_.handle_of(*parent_) : AbcA::ObjectReaderPtr();
}

AbcA::ObjectReaderPtr ObjectReader::asObjectPtr()
{
    return archive_.handle_of(*this);
}

AbcA::CompoundPropertyReaderPtr ObjectReader::getProperties()
{
    if (!group_.is_group(0)) ABCA_THROW("Invalid data in CprImpl(Object)");
    return open_top_compound(*this, group_.child(0));
}

const ChildTable& ObjectReader::children() const
{
    const ChildTable* there = children_.load(std::memory_order_acquire);
    if (there) return *there;
    const ChildTable* made = parse_children();
    if (!made) made = &no_children;
    if (children_.compare_exchange_strong(there, made, std::memory_order_acq_rel)) {
        if (made != &no_children) archive_.add_tree_size(made->byte_cost());
        return *made;
    }
    if (made != &no_children) delete made; // another thread was faster
    return *there;
}

/// The children as the file has them; null for none. Throws what is wrong with their headers.
ChildTable* ObjectReader::parse_children() const
{
    require_usable();
    if (group_.count() == 0) return nullptr;
    const Ogawa::Entry last = group_.entry(group_.count() - 1);
    if (!last.is_data()) return nullptr;
    const Ogawa::DataReader headers(archive_.file(), last);
    if (!headers) ABCA_THROW("ReadObjectHeaders Invalid data at index " << group_.count() - 1);
    if (headers.size() <= Ogawa::object_hashes_size) return nullptr;
    const std::uint64_t children_in_group = group_.count() - std::min<std::uint64_t>(group_.count(), 2);
    archive_.check_tree_size(headers.size());
    std::unique_ptr<ChildTable> table(new ChildTable(headers, archive_.metadata_table(), children_in_group));
    archive_.check_tree_size(table->byte_cost());
    return table.release();
}

ObjectReader& ObjectReader::node(std::uint32_t index) const
{
    const ChildTable& table = children();
    if (ObjectReader* const there = table.node(index)) return *there;

    const std::string name(table.name(index));
    const std::string& parent_name = header_.getFullName();
    std::string full_name;
    const std::size_t size = parent_name.size() + 1 + name.size();
    archive_.check_full_names(size);
    full_name.reserve(size);
    if (parent_) full_name = parent_name;
    full_name.append(1, '/').append(name);

    AbcA::ObjectHeader header(name, full_name, table.metadata(index, archive_.metadata_table()));
    bool added = false;
    // Child i of the group is the object's properties for i = 0, child object i - 1 from there on.
    ObjectReader* const node =
        table.add_node(index,
                       std::make_unique<ObjectReader>(archive_, const_cast<ObjectReader*>(this), std::move(header),
                                                      group_, std::uint64_t(index) + 1),
                       added);
    if (added) archive_.add_full_names(size);
    return *node;
}

AbcA::ObjectReaderPtr ObjectReader::open_child(std::uint32_t index)
{
    ObjectReader& child = node(index);
    child.require_usable();
    return archive_.handle_of(child);
}

const AbcA::ObjectHeader& ObjectReader::getChildHeader(size_t i)
{
    if (i >= children().size()) ABCA_THROW("Out of range index in OrData::getChildHeader: " << i);
    return node(static_cast<std::uint32_t>(i)).header_;
}

const AbcA::ObjectHeader* ObjectReader::getChildHeader(const std::string& name)
{
    const std::uint32_t index = children().find(name);
    return index == AbcCoreCommon::NameIndex::none ? nullptr : &node(index).header_;
}

AbcA::ObjectReaderPtr ObjectReader::getChild(size_t i)
{
    if (i >= children().size()) ABCA_THROW("Out of range index in OrData::getChild: " << i);
    return open_child(static_cast<std::uint32_t>(i));
}

AbcA::ObjectReaderPtr ObjectReader::getChild(const std::string& name)
{
    const std::uint32_t index = children().find(name);
    return index == AbcCoreCommon::NameIndex::none ? AbcA::ObjectReaderPtr() : open_child(index);
}

bool ObjectReader::read_hash(std::uint64_t which, AbcA::Digest& digest) const
{
    if (group_.count() == 0 || !group_.is_data(group_.count() - 1)) return false;
    const Ogawa::DataReader headers(archive_.file(), group_, group_.count() - 1);
    if (headers.size() < Ogawa::object_hashes_size) return false;
    headers.read(headers.size() - Ogawa::object_hashes_size + which * sizeof digest.d, digest.d, sizeof digest.d);
    return true;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
