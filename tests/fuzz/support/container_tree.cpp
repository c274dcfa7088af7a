/// Containers taken apart and put together.
#include "container_tree.h"

#include <cstring>

namespace vo_fuzz {

namespace {

constexpr std::uint64_t data_bit = 0x8000000000000000;
constexpr std::size_t header_size = 16;

std::uint64_t number_at(const std::string& file, std::uint64_t position)
{
    std::uint64_t number = 0;
    std::memcpy(&number, file.data() + position, sizeof number);
    return number;
}

void append_number(std::string& file, std::uint64_t number)
{
    file.append(reinterpret_cast<const char*>(&number), sizeof number);
}

bool is_written(const Block& block)
{
    if (block.kind == Block::ENTRY) return false;
    return block.stated_size.has_value() || !block.bytes.empty() || !block.children.empty();
}

std::uint64_t size_in_file(const Block& block)
{
    if (!is_written(block)) return 0;
    return 8 + (block.kind == Block::DATA ? block.bytes.size() : block.children.size() * 8);
}

} // namespace

ContainerTree::ContainerTree(const std::string& file)
{
    if (file.size() < header_size || file.compare(0, 5, "Ogawa") != 0) return;
    header = file.substr(0, 8);
    root = take(number_at(file, 8), file);
    // take() adds the children of groups behind all that is there: no recursion, whatever the depth.
    for (BlockId id = 0; id < blocks.size(); ++id)
        if (blocks[id].kind == Block::GROUP && blocks[id].entry != 0) {
            const std::uint64_t position = blocks[id].entry;
            blocks[id].entry = 0;
            take_children(id, file, position);
        }
    taken_.clear();
}

/// The block that `entry` refers to. A group keeps its position in `entry` until its children are taken.
BlockId ContainerTree::take(std::uint64_t entry, const std::string& file)
{
    const auto there = taken_.find(entry);
    if (there != taken_.end()) return there->second;
    const std::uint64_t position = entry & ~data_bit;
    Block block;
    block.kind = (entry & data_bit) != 0 ? Block::DATA : Block::GROUP;
    if (position != 0) {
        const std::uint64_t room = file.size() < 8 || position > file.size() - 8 ? 0 : file.size() - 8 - position;
        const bool inside = position >= header_size && position <= file.size() - 8;
        const std::uint64_t size = inside ? number_at(file, position) : 0;
        const bool whole = inside && size > 0 && size <= (block.kind == Block::DATA ? room : room / 8);
        if (!whole || blocks.size() >= most_blocks) {
            block.kind = Block::ENTRY;
            block.entry = entry;
        } else if (block.kind == Block::DATA) {
            block.bytes = file.substr(position + 8, size);
        } else {
            block.entry = entry;
        }
    }
    blocks.push_back(block);
    return taken_[entry] = blocks.size() - 1;
}

void ContainerTree::take_children(BlockId group, const std::string& file, std::uint64_t position)
{
    const std::uint64_t count = number_at(file, position);
    std::vector<BlockId> children;
    for (std::uint64_t i = 0; i < count && blocks.size() < most_blocks; ++i)
        children.push_back(take(number_at(file, position + 8 + 8 * i), file));
    blocks[group].children = std::move(children);
}

std::string ContainerTree::file() const
{
    // Parents come before their children in a tree that was taken apart. Writers finish children first, and the root
    // last.
    std::vector<std::uint64_t> entries(blocks.size());
    std::uint64_t position = header_size;
    for (BlockId id = blocks.size(); id-- > 0;) {
        const Block& block = blocks[id];
        const std::uint64_t kind = block.kind == Block::DATA ? data_bit : 0;
        entries[id] = block.kind == Block::ENTRY ? block.entry : kind | (is_written(block) ? position : 0);
        position += size_in_file(block);
    }
    std::string file = header;
    append_number(file, entries.at(root));
    for (BlockId id = blocks.size(); id-- > 0;) {
        const Block& block = blocks[id];
        if (!is_written(block)) continue;
        const bool is_data = block.kind == Block::DATA;
        append_number(file, block.stated_size.value_or(is_data ? block.bytes.size() : block.children.size()));
        if (is_data) file += block.bytes;
        for (const BlockId child : block.children)
            append_number(file, entries.at(child));
    }
    return file;
}

BlockId ContainerTree::add_data(std::string bytes)
{
    Block block;
    block.bytes = std::move(bytes);
    blocks.push_back(std::move(block));
    return blocks.size() - 1;
}

BlockId ContainerTree::add_group(std::vector<BlockId> children)
{
    Block block;
    block.kind = Block::GROUP;
    block.children = std::move(children);
    blocks.push_back(std::move(block));
    return blocks.size() - 1;
}

BlockId ContainerTree::add_entry(std::uint64_t entry)
{
    Block block;
    block.kind = Block::ENTRY;
    block.entry = entry;
    blocks.push_back(std::move(block));
    return blocks.size() - 1;
}

} // namespace vo_fuzz
