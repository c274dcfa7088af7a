/// @file
/// Objects: their children listed and opened.
#include "core/hdf5/object_reader.h"

#include "core/hdf5/archive_reader.h"
#include "core/hdf5/attribute.h"
#include "core/hdf5/compound_property_reader.h"
#include "core/hdf5/limits.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <tuple>
#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr std::string_view properties_name = ".prop";

/// A link of an object's group that leads to a child.
struct ChildLink
{
    std::string name;
    haddr_t address;    ///< HADDR_UNDEF when the link leads to another place or file
    std::int64_t order; ///< in which it was made; 0 in a group that does not keep that order
};

/// What listing the links of a group fills.
struct Listing
{
    std::vector<ChildLink> links;
    std::uint64_t most_links;
    std::uint64_t most_name_bytes; ///< of all together; less with each one: tables may let many links share a long name
};

herr_t take_link(hid_t, const char* name, const H5L_info_t* link, void* listing)
{
    try {
        Listing& list = *static_cast<Listing*>(listing);
        if (name == properties_name) return 0;
        const std::size_t name_bytes = std::strlen(name);
        if (list.links.size() >= list.most_links || name_bytes > list.most_name_bytes) return -1;
        list.most_name_bytes -= name_bytes;
        list.links.push_back(
            {name, link->type == H5L_TYPE_HARD ? link->u.address : HADDR_UNDEF, link->corder_valid ? link->corder : 0});
        return 0;
    } catch (...) {
        return -1;
    }
}

/// Lists the links in the order in which they were made; by name in a group that does not keep that order.
void list_links(hid_t group, Listing& listing)
{
    // Sorted here: what libhdf5 sorts it takes into a table first, which it cannot free when a link turns out damaged.
    hsize_t position = 0;
    if (H5Literate(group, H5_INDEX_NAME, H5_ITER_NATIVE, &position, take_link, &listing) < 0)
        throw_failed("Could not list the children of an object");
    std::sort(listing.links.begin(), listing.links.end(), [](const ChildLink& a, const ChildLink& b) {
        return std::tie(a.order, a.name) < std::tie(b.order, b.name);
    });
}

} // namespace

/// The children that an object has. Does not change once made, but for the nodes, which appear one by one and stay.
struct ObjectReader::Children
{
    explicit Children(std::vector<ChildLink> all)
        : links(std::move(all))
        , nodes(new std::atomic<ObjectReader*>[links.size()]())
    {
        index.build(static_cast<std::uint32_t>(links.size()), [this](std::uint32_t i) { return name(i); });
    }
    ~Children()
    {
        for (std::size_t i = 0; i < links.size(); ++i)
            delete nodes[i].load(std::memory_order_relaxed);
    }

    std::string_view name(std::uint32_t i) const { return links[i].name; }
    std::uint32_t find(std::string_view wanted) const
    {
        return index.find(wanted, [this](std::uint32_t i) { return name(i); });
    }

    std::vector<ChildLink> links;
    std::unique_ptr<std::atomic<ObjectReader*>[]> nodes; ///< null while nobody has asked for it
    AbcCoreCommon::NameIndex index;
};

ObjectReader::ObjectReader(ArchiveReader& archive, ObjectReader* parent, AbcA::ObjectHeader header, haddr_t address)
    : archive_(archive)
    , parent_(parent)
    , header_(std::move(header))
    , address_(address)
    , depth_(parent ? parent->depth_ + 1 : 0)
{
}

ObjectReader::~ObjectReader()
{
    delete children_.load(std::memory_order_relaxed);
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

Handle ObjectReader::open_group() const
{
    return archive_.file().open_group(address_, header_.getFullName());
}

AbcA::CompoundPropertyReaderPtr ObjectReader::getProperties()
{
    const LibraryLock lock;
    const Handle group = open_group();
    return std::make_shared<CompoundPropertyReader>(
        asObjectPtr(), archive_, nullptr, AbcCoreCommon::unnamed_compound(),
        archive_.file().open_linked(group.id(), std::string(properties_name), H5I_GROUP));
}

const ObjectReader::Children& ObjectReader::children() const
{
    if (const Children* const there = children_.load(std::memory_order_acquire)) return *there;
    const LibraryLock lock;
    if (const Children* const there = children_.load(std::memory_order_relaxed)) return *there; // another thread's
    const Children* const made = list_children().release();
    children_.store(made, std::memory_order_release);
    return *made;
}

std::unique_ptr<ObjectReader::Children> ObjectReader::list_children() const
{
    const Handle group = open_group();
    const std::uint64_t file_size = archive_.file().size();
    Listing listing = {{}, file_size / link_bytes, file_size};
    list_links(group.id(), listing);
    archive_.count_links(listing.links.size());
    for (const ChildLink& link : listing.links)
        if (link.name.empty() || link.name.find('/') != std::string::npos)
            ABCA_THROW("Read invalid: an object has the name '" << link.name << "'");
    return std::make_unique<Children>(std::move(listing.links));
}

std::unique_ptr<ObjectReader> ObjectReader::make_node(const std::string& name, haddr_t address) const
{
    std::string full_name = parent_ ? header_.getFullName() : std::string();
    full_name.append(1, '/').append(name);
    if (address == HADDR_UNDEF) ABCA_THROW("Could not open '" << full_name << "': it is a link to another place");
    if (depth_ >= max_depth) ABCA_THROW("Read invalid: objects are nested too deep: " << full_name);
    for (const ObjectReader* ancestor = this; ancestor; ancestor = ancestor->parent_)
        if (ancestor->address_ == address)
            ABCA_THROW("Read invalid: '" << full_name << "' is one of its own ancestors");
    archive_.count_full_name(full_name.size());
    const Handle group = archive_.file().open_group(address, full_name);
    const AbcA::ObjectHeader header(name, full_name, read_metadata(group.id(), ".prop.meta"));
    return std::make_unique<ObjectReader>(archive_, const_cast<ObjectReader*>(this), header, address);
}

ObjectReader& ObjectReader::node(std::size_t index) const
{
    const Children& all = children();
    std::atomic<ObjectReader*>& place = all.nodes[index];
    if (ObjectReader* const there = place.load(std::memory_order_acquire)) return *there;
    const LibraryLock lock;
    if (ObjectReader* const there = place.load(std::memory_order_relaxed)) return *there; // another thread's
    const ChildLink& link = all.links[index];
    ObjectReader* const made = make_node(link.name, link.address).release();
    place.store(made, std::memory_order_release);
    return *made;
}

size_t ObjectReader::getNumChildren()
{
    return children().links.size();
}

const AbcA::ObjectHeader& ObjectReader::getChildHeader(size_t i)
{
    if (i >= children().links.size()) ABCA_THROW("Out of range index in OrData::getChildHeader: " << i);
    return node(i).header_;
}

const AbcA::ObjectHeader* ObjectReader::getChildHeader(const std::string& name)
{
    const std::uint32_t index = children().find(name);
    return index == AbcCoreCommon::NameIndex::none ? nullptr : &node(index).header_;
}

AbcA::ObjectReaderPtr ObjectReader::getChild(size_t i)
{
    if (i >= children().links.size()) ABCA_THROW("Out of range index in OrData::getChild: " << i);
    return archive_.handle_of(node(i));
}

AbcA::ObjectReaderPtr ObjectReader::getChild(const std::string& name)
{
    const std::uint32_t index = children().find(name);
    return index == AbcCoreCommon::NameIndex::none ? AbcA::ObjectReaderPtr() : archive_.handle_of(node(index));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
