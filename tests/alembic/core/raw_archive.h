/// @file
/// Looks into the stored bytes of an archive, apart from the library: groups, data, and decoded property headers.
#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

struct RawProperty
{
    std::uint32_t kind = 0, pod = 0, extent = 0, metadata_index = 0, width = 0;
    bool is_constant = false, has_changed_range = false;
    std::uint32_t sample_count = 0, first_changed = 0, last_changed = 0, time_sampling_index = 0;
    std::string name, metadata;
};

/// Every look outside of the archive throws.
class RawArchive
{
public:
    typedef std::uint64_t Entry;

    explicit RawArchive(std::string bytes)
        : bytes_(std::move(bytes))
    {
    }

    const std::string& bytes() const { return bytes_; }
    bool is_complete() const { return bytes_.size() > 16 && at(5, 1) == "\xff" && number<Entry>(8) != 0; }

    std::vector<Entry> root() const { return group(number<Entry>(8)); }

    std::vector<Entry> group(Entry entry) const
    {
        if (entry >> 63 != 0) throw std::runtime_error("not a group");
        if (entry == 0) return {};
        std::vector<Entry> children(number<Entry>(entry));
        for (std::size_t i = 0; i < children.size(); ++i)
            children[i] = number<Entry>(entry + 8 + 8 * i);
        return children;
    }

    std::string data(Entry entry) const
    {
        if (entry >> 63 == 0) throw std::runtime_error("not data");
        const Entry position = entry & ~(Entry(1) << 63);
        return position == 0 ? std::string() : at(position + 8, number<Entry>(position));
    }

    /// The group of an object: indices of the children to follow from the top object.
    std::vector<Entry> object(const std::vector<std::size_t>& path) const
    {
        std::vector<Entry> object = group(root().at(2));
        for (const std::size_t child : path)
            object = group(object.at(1 + child));
        return object;
    }

    /// The children of the top compound of an object.
    std::vector<Entry> compound(const std::vector<std::size_t>& path) const { return group(object(path).at(0)); }

    /// The headers at the end of a compound's group.
    std::vector<RawProperty> properties(const std::vector<Entry>& compound) const
    {
        std::vector<RawProperty> result;
        if (compound.empty()) return result;
        const RawArchive blob(data(compound.back()));
        for (std::size_t p = 0; p < blob.bytes_.size();) {
            RawProperty property;
            const std::uint32_t info = blob.number<std::uint32_t>(p);
            p += 4;
            property.kind = info & 3;
            property.width = 1u << (info >> 2 & 3);
            property.pod = info >> 4 & 15;
            property.has_changed_range = (info & 0x200) != 0;
            property.is_constant = (info & 0x800) != 0;
            property.extent = info >> 12 & 255;
            property.metadata_index = info >> 20 & 255;
            const auto next = [&] {
                std::uint32_t value = 0;
                std::memcpy(&value, blob.at(p, property.width).data(), property.width);
                p += property.width;
                return value;
            };
            const auto text = [&] {
                const std::uint32_t size = next();
                p += size;
                return blob.at(p - size, size);
            };
            if (property.kind != 0) property.sample_count = next();
            if (property.kind != 0 && !property.is_constant) {
                property.first_changed = property.has_changed_range ? next() : 1;
                property.last_changed = property.has_changed_range ? next() : property.sample_count - 1;
            }
            if ((info & 0x100) != 0) property.time_sampling_index = next();
            property.name = text();
            if (property.metadata_index == 255) property.metadata = text();
            result.push_back(property);
        }
        return result;
    }

private:
    std::string at(std::uint64_t position, std::uint64_t size) const
    {
        if (position > bytes_.size() || size > bytes_.size() - position) throw std::runtime_error("outside");
        return bytes_.substr(position, size);
    }

    template <class Number>
    Number number(std::uint64_t position) const
    {
        Number value = 0;
        std::memcpy(&value, at(position, sizeof value).data(), sizeof value);
        return value;
    }

    std::string bytes_;
};
