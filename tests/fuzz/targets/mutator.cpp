/// Mutates archives by their structure: groups, sizes, dimensions and headers are edited, the rest stays sound.
#include "support/stored_headers.h"

#include <algorithm>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed);

namespace {

using namespace vo_fuzz;
using Random = std::minstd_rand;

std::size_t below(Random& random, std::size_t end)
{
    return end == 0 ? 0 : random() % end;
}

/// Numbers at which something wraps, ends or changes sign, and small ones.
std::uint64_t telling_number(Random& random)
{
    const std::uint64_t numbers[] = {0,
                                     1,
                                     2,
                                     3,
                                     255,
                                     256,
                                     65535,
                                     65536,
                                     0x7fffffff,
                                     0x80000000,
                                     0xffffffff,
                                     std::uint64_t(1) << 32,
                                     std::uint64_t(1) << 61,
                                     (std::uint64_t(1) << 63) + 1,
                                     ~std::uint64_t(0),
                                     below(random, 100)};
    return numbers[below(random, std::size(numbers))];
}

std::string mutated(std::string bytes, std::size_t room)
{
    const std::size_t size = bytes.size();
    bytes.resize(std::max<std::size_t>(size + std::min<std::size_t>(size, room), size + 8));
    bytes.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(&bytes[0]), size, bytes.size()));
    return bytes;
}

void set_number(std::string& bytes, Random& random)
{
    const std::uint64_t number = telling_number(random);
    const std::size_t width = std::size_t(1) << below(random, 4);
    if (bytes.size() < width) return;
    std::memcpy(&bytes[below(random, bytes.size() - width + 1)], &number, width);
}

void edit_property(StoredProperty& property, Random& random)
{
    switch (below(random, 7)) {
    case 0:
        property.set_pod(static_cast<std::uint32_t>(below(random, 16)));
        break;
    case 1:
        property.set_extent(static_cast<std::uint32_t>(below(random, 256)));
        break;
    case 2:
        property.set_metadata_index(static_cast<std::uint32_t>(below(random, 256)));
        break;
    case 3:
        property.set_samples(static_cast<std::uint32_t>(telling_number(random)),
                             static_cast<std::uint32_t>(below(random, 4)),
                             static_cast<std::uint32_t>(telling_number(random)));
        break;
    case 4:
        property.info |= has_time_bit;
        property.time_sampling = static_cast<std::uint32_t>(below(random, 4));
        break;
    case 5:
        property.info ^= static_cast<std::uint32_t>(1 + below(random, 3));
        break;
    default:
        property.name = mutated(property.name, 8);
    }
}

bool edit_headers(ArchiveTree& tree, Random& random)
{
    // Some group whose last child is a blob of headers.
    for (int tries = 0; tries < 20; ++tries) {
        const BlockId group = below(random, tree.blocks.size());
        if (tree.blocks[group].children.empty()) continue;
        Block& block = tree.headers_block(group);
        if (block.kind != Block::DATA || block.bytes.empty()) continue;
        auto [properties, whole] = parse_property_headers(block.bytes);
        if (whole && !properties.empty()) {
            StoredProperty& chosen = properties[below(random, properties.size())];
            if (below(random, 4) == 0)
                std::swap(chosen.name, properties[below(random, properties.size())].name);
            else
                edit_property(chosen, random);
            block.bytes = encode_property_headers(properties);
            return true;
        }
        if (block.bytes.size() <= object_hashes_size) continue;
        const std::size_t end = block.bytes.size() - object_hashes_size;
        auto [objects, whole_too] = parse_object_headers(block.bytes.substr(0, end));
        if (!whole_too || objects.empty()) continue;
        StoredObject& chosen = objects[below(random, objects.size())];
        if (below(random, 2) == 0)
            chosen.metadata_index = static_cast<std::uint8_t>(below(random, 256));
        else
            chosen.name = mutated(chosen.name, 8);
        block.bytes = encode_object_headers(objects) + block.bytes.substr(end);
        return true;
    }
    return false;
}

void edit_group(ArchiveTree& tree, Random& random)
{
    const BlockId group = below(random, tree.blocks.size());
    std::vector<BlockId>& children = tree.blocks[group].children;
    if (tree.blocks[group].kind != Block::GROUP || children.empty()) return;
    BlockId& child = children[below(random, children.size())];
    switch (below(random, 6)) {
    case 0:
        child = below(random, tree.blocks.size());
        break;
    case 1:
        std::swap(child, children[below(random, children.size())]);
        break;
    case 2:
        children.insert(children.begin() + static_cast<std::ptrdiff_t>(below(random, children.size())), child);
        break;
    case 3:
        children.erase(children.begin() + (&child - children.data()));
        break;
    case 4:
        tree.blocks[group].stated_size = telling_number(random);
        break;
    default: {
        const BlockId entry = tree.add_entry(telling_number(random) | (below(random, 2) << 63));
        tree.blocks[group].children[0] = entry;
    }
    }
}

void edit_data(ArchiveTree& tree, Random& random, std::size_t room)
{
    Block& block = tree.blocks[below(random, tree.blocks.size())];
    if (block.kind != Block::DATA) return;
    switch (below(random, 5)) {
    case 0:
        block.bytes = mutated(block.bytes, room);
        break;
    case 1:
        block.stated_size = telling_number(random);
        break;
    case 2:
        block.bytes.resize(below(random, block.bytes.size() + 1));
        break;
    case 3: // the form of dimensions
        block.bytes.clear();
        for (std::size_t i = 0; i <= below(random, 3); ++i) {
            const std::uint64_t number = telling_number(random);
            block.bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
        }
        break;
    default:
        set_number(block.bytes, random);
    }
}

} // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed)
{
    Random random(seed);
    const auto plain = [&] { return LLVMFuzzerMutate(data, size, max_size); };
    if (below(random, 5) == 0) return plain();
    ArchiveTree tree(std::string(reinterpret_cast<const char*>(data), size));
    if (!tree.valid()) return plain();
    for (std::size_t i = 0; i <= below(random, 3); ++i)
        switch (below(random, 3)) {
        case 0:
            edit_headers(tree, random);
            break;
        case 1:
            edit_group(tree, random);
            break;
        default:
            edit_data(tree, random, max_size > size ? max_size - size : 0);
        }
    const std::string file = tree.file();
    if (file.size() > max_size) return plain();
    std::memcpy(data, file.data(), file.size());
    return file.size();
}
