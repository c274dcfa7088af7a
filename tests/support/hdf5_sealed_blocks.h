/// @file
/// The parts of an HDF5 file that carry a checksum: found, and sealed again after a test has changed them, as someone
/// would who means harm.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace hdf5_archives {

/// Bytes from `start` on, and where their checksum stands: behind them, or among them, where it counts as zeros.
struct SealedBlock
{
    std::size_t start, size, sum_place;
};

/// Where the signatures of such parts stand.
std::vector<std::size_t> find_signatures(const std::string& file);

/// The part whose signature stands there; nothing when its checksum is found in none of the places where it can be.
std::optional<SealedBlock> find_sealed_block(const std::string& file, std::size_t start);

/// All of them.
std::vector<SealedBlock> find_sealed_blocks(const std::string& file);

/// Puts the checksum of the bytes as they are now.
void seal(std::string& file, const SealedBlock& block);

} // namespace hdf5_archives
