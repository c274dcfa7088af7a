/// @file
/// A container taken apart into blocks that can be edited, and put together again: sound or made to lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vo_fuzz {

/// Number of a block in its tree.
using BlockId = std::size_t;

/// One block, or an entry that stands for no block.
struct Block
{
    enum Kind { GROUP, DATA, ENTRY };

    Kind kind = DATA;
    std::string bytes;             ///< of data
    std::vector<BlockId> children; ///< of a group; a block may be the child of many, and of itself
    std::uint64_t entry = 0;       ///< of ENTRY: the 8 bytes as they stand in a parent's table
    std::optional<std::uint64_t>
        stated_size; ///< size of data, or count of a group, that is stated in place of the true one
};

/// The blocks of a container. Takes any bytes: what is no block becomes an ENTRY, what follows a limit is left out.
class ContainerTree
{
public:
    static constexpr std::size_t most_blocks = 20000;

    /// Takes `file` apart. Without blocks (valid() false) when it does not start as a container does.
    explicit ContainerTree(const std::string& file);

    bool valid() const { return !blocks.empty(); }

    /// The file of these blocks: each that is not empty is written once, the highest number first.
    std::string file() const;

    BlockId add_data(std::string bytes);
    BlockId add_group(std::vector<BlockId> children);
    BlockId add_entry(std::uint64_t entry);

    /// Child `index` of a group; throws std::out_of_range when there is none.
    Block& child(BlockId group, std::size_t index) { return blocks.at(blocks.at(group).children.at(index)); }
    /// The same, made a copy of its own first: equal samples share one block, and all empty data is one.
    Block& own_child(BlockId group, std::size_t index)
    {
        blocks.push_back(child(group, index));
        blocks.at(group).children.at(index) = blocks.size() - 1;
        return blocks.back();
    }

    std::vector<Block> blocks;
    BlockId root = 0;
    std::string header; ///< the first 8 bytes: magic, frozen flag, version

private:
    BlockId take(std::uint64_t entry, const std::string& file);
    void take_children(BlockId group, const std::string& file, std::uint64_t position);

    std::map<std::uint64_t, BlockId> taken_; ///< by entry, while a file is taken apart
};

} // namespace vo_fuzz
