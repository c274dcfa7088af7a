/// @file
/// Header blobs of the Alembic layer, taken apart field by field and put together again.
#pragma once

#include "container_tree.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vo_fuzz {

// The info word that starts each property header.
constexpr std::uint32_t kind_bits = 0x3, hint_bits = 0xc, has_time_bit = 0x100, has_range_bit = 0x200,
                        constant_bit = 0x800;

/// A property header as it is stored. Which numbers are stored is told by the bits of `info`.
struct StoredProperty
{
    std::uint32_t info = 0;
    std::uint32_t sample_count = 0, first_changed = 0, last_changed = 0, time_sampling = 0;
    std::string name;
    std::string metadata; ///< when the index in `info` is 255

    bool is_compound() const { return (info & kind_bits) == 0; }
    std::uint32_t metadata_index() const { return info >> 20 & 0xff; }
    void set_pod(std::uint32_t pod) { info = (info & ~0xf0u) | pod << 4; }
    void set_extent(std::uint32_t extent) { info = (info & ~0xff000u) | extent << 12; }
    void set_metadata_index(std::uint32_t index) { info = (info & ~0xff00000u) | index << 20; }
    /// States the samples outright: nothing is left for a reader to conclude.
    void set_samples(std::uint32_t count, std::uint32_t first, std::uint32_t last)
    {
        info = (info & ~constant_bit) | has_range_bit;
        sample_count = count;
        first_changed = first;
        last_changed = last;
    }
};

/// An object header as it is stored.
struct StoredObject
{
    std::string name;
    std::uint8_t metadata_index = 0;
    std::string metadata; ///< when the index is 255
};

/// Headers up to the first that cannot be taken apart; false for `second` when there is such a one.
std::pair<std::vector<StoredProperty>, bool> parse_property_headers(const std::string& blob);
/// Headers with numbers of 32 bits.
std::string encode_property_headers(const std::vector<StoredProperty>& properties);

/// The same for a blob of object headers without its last 32 bytes, the hashes.
std::pair<std::vector<StoredObject>, bool> parse_object_headers(const std::string& blob);
std::string encode_object_headers(const std::vector<StoredObject>& objects);

constexpr std::size_t object_hashes_size = 32;

/// An archive in blocks, with the ways to its parts. Members throw std::out_of_range for names that are not there.
class ArchiveTree : public ContainerTree
{
public:
    using ContainerTree::ContainerTree;

    /// The group of an object by its full name, "/" for the top.
    BlockId object(const std::string& full_name);
    /// The group of a property: names of compounds and of the property, "/" between them ("" for the top compound).
    BlockId property(const std::string& object_name, const std::string& path);
    /// Data of stored sample `index` of an array property, and its dimensions.
    Block& array_data(const std::string& object_name, const std::string& path, std::size_t index = 0);
    Block& array_dimensions(const std::string& object_name, const std::string& path, std::size_t index = 0);
    Block& scalar_data(const std::string& object_name, const std::string& path, std::size_t index = 0);

    /// Lets `edit(StoredProperty&)` change the header of a property.
    template <class Edit>
    void edit_header(const std::string& object_name, const std::string& path, Edit&& edit)
    {
        const std::size_t slash = path.rfind('/');
        const BlockId compound = property(object_name, slash == std::string::npos ? "" : path.substr(0, slash));
        std::vector<StoredProperty> properties = headers(compound);
        edit(properties.at(index_of(properties, path.substr(slash + 1))));
        headers_block(compound).bytes = encode_property_headers(properties);
    }

    /// Lets `edit(std::vector<StoredObject>&)` change the headers of an object's children.
    template <class Edit>
    void edit_children(const std::string& object_name, Edit&& edit)
    {
        Block& block = headers_block(object(object_name));
        const std::string hashes = block.bytes.substr(block.bytes.size() - object_hashes_size);
        std::vector<StoredObject> objects =
            parse_object_headers(block.bytes.substr(0, block.bytes.size() - object_hashes_size)).first;
        edit(objects);
        block.bytes = encode_object_headers(objects) + hashes;
    }

    /// The last child of a group: the headers of its children.
    Block& headers_block(BlockId group) { return child(group, blocks.at(group).children.size() - 1); }
    std::vector<StoredProperty> headers(BlockId compound)
    {
        return parse_property_headers(headers_block(compound).bytes).first;
    }

private:
    static std::size_t index_of(const std::vector<StoredProperty>& properties, const std::string& name);
};

} // namespace vo_fuzz
