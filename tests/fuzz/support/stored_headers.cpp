/// Header blobs taken apart and put together.
#include "stored_headers.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace vo_fuzz {

namespace {

/// Takes fields off a blob; ok() tells whether all were there.
class Fields
{
public:
    explicit Fields(const std::string& blob)
        : blob_(blob)
    {
    }
    bool ok() const { return ok_; }
    bool at_end() const { return at_ == blob_.size(); }

    std::uint32_t number(std::size_t width)
    {
        std::uint32_t value = 0;
        if (!has(width)) return 0;
        std::memcpy(&value, blob_.data() + at_, width);
        at_ += width;
        return value;
    }

    std::string text(std::size_t size)
    {
        if (!has(size)) return {};
        at_ += size;
        return blob_.substr(at_ - size, size);
    }

private:
    bool has(std::size_t size) { return ok_ = ok_ && size <= blob_.size() - at_; }

    const std::string& blob_;
    std::size_t at_ = 0;
    bool ok_ = true;
};

void append_u32(std::string& blob, std::uint32_t value)
{
    blob.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void append_text(std::string& blob, const std::string& text)
{
    append_u32(blob, static_cast<std::uint32_t>(text.size()));
    blob += text;
}

constexpr std::uint8_t in_place = 255;

} // namespace

std::pair<std::vector<StoredProperty>, bool> parse_property_headers(const std::string& blob)
{
    std::vector<StoredProperty> properties;
    Fields fields(blob);
    while (!fields.at_end()) {
        StoredProperty property;
        property.info = fields.number(4);
        const std::size_t width = std::size_t(1) << (property.info >> 2 & 3);
        if (width == 8) return {properties, false};
        if (!property.is_compound()) {
            property.sample_count = fields.number(width);
            if (property.info & has_range_bit) {
                property.first_changed = fields.number(width);
                property.last_changed = fields.number(width);
            }
            if (property.info & has_time_bit) property.time_sampling = fields.number(width);
        }
        property.name = fields.text(fields.number(width));
        if (property.metadata_index() == in_place) property.metadata = fields.text(fields.number(width));
        if (!fields.ok()) return {properties, false};
        properties.push_back(property);
    }
    return {properties, true};
}

std::string encode_property_headers(const std::vector<StoredProperty>& properties)
{
    std::string blob;
    for (const StoredProperty& property : properties) {
        append_u32(blob, (property.info & ~hint_bits) | 2u << 2);
        if (!property.is_compound()) {
            append_u32(blob, property.sample_count);
            if (property.info & has_range_bit) {
                append_u32(blob, property.first_changed);
                append_u32(blob, property.last_changed);
            }
            if (property.info & has_time_bit) append_u32(blob, property.time_sampling);
        }
        append_text(blob, property.name);
        if (property.metadata_index() == in_place) append_text(blob, property.metadata);
    }
    return blob;
}

std::pair<std::vector<StoredObject>, bool> parse_object_headers(const std::string& blob)
{
    std::vector<StoredObject> objects;
    Fields fields(blob);
    while (!fields.at_end()) {
        StoredObject object;
        object.name = fields.text(fields.number(4));
        object.metadata_index = static_cast<std::uint8_t>(fields.number(1));
        if (object.metadata_index == in_place) object.metadata = fields.text(fields.number(4));
        if (!fields.ok()) return {objects, false};
        objects.push_back(object);
    }
    return {objects, true};
}

std::string encode_object_headers(const std::vector<StoredObject>& objects)
{
    std::string blob;
    for (const StoredObject& object : objects) {
        append_text(blob, object.name);
        blob += static_cast<char>(object.metadata_index);
        if (object.metadata_index == in_place) append_text(blob, object.metadata);
    }
    return blob;
}

BlockId ArchiveTree::object(const std::string& full_name)
{
    BlockId group = blocks.at(root).children.at(2);
    for (std::size_t at = 1; at < full_name.size();) {
        const std::size_t end = std::min(full_name.find('/', at), full_name.size());
        const std::string name = full_name.substr(at, end - at);
        const std::string& blob = headers_block(group).bytes;
        const auto objects = parse_object_headers(blob.substr(0, blob.size() - object_hashes_size)).first;
        std::size_t index = 0;
        while (objects.at(index).name != name)
            ++index;
        group = blocks.at(group).children.at(index + 1);
        at = end + 1;
    }
    return group;
}

std::size_t ArchiveTree::index_of(const std::vector<StoredProperty>& properties, const std::string& name)
{
    std::size_t index = 0;
    while (properties.at(index).name != name)
        ++index;
    return index;
}

BlockId ArchiveTree::property(const std::string& object_name, const std::string& path)
{
    BlockId group = blocks.at(object(object_name)).children.at(0);
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        group = blocks.at(group).children.at(index_of(headers(group), path.substr(at, end - at)));
        at = end + 1;
    }
    return group;
}

Block& ArchiveTree::array_data(const std::string& object_name, const std::string& path, std::size_t index)
{
    return own_child(property(object_name, path), 2 * index);
}

Block& ArchiveTree::array_dimensions(const std::string& object_name, const std::string& path, std::size_t index)
{
    return own_child(property(object_name, path), 2 * index + 1);
}

Block& ArchiveTree::scalar_data(const std::string& object_name, const std::string& path, std::size_t index)
{
    return own_child(property(object_name, path), index);
}

} // namespace vo_fuzz
