#include "hdf5_sealed_blocks.h"

#include <core/hdf5/checksum.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace hdf5_archives {

namespace {

using Alembic::AbcCoreHDF5::checksum;
constexpr std::size_t sum_size = 4, signature_size = 4;

std::string_view view(const std::string& file, std::size_t start, std::size_t size)
{
    return std::string_view(file).substr(start, size);
}

std::uint32_t number_at(const std::string& file, std::size_t place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, file.data() + place, sizeof number);
    return number;
}

/// Sizes without the checksum that a part with that signature may have: those of most depend on parts elsewhere.
std::vector<std::size_t> possible_sizes(std::string_view signature)
{
    std::vector<std::size_t> sizes;
    constexpr std::size_t most = 2000;
    if (signature == "FRHP") return {142};
    if (signature == "BTHD") return {34};
    if (signature == "FHIB") { // rows of four addresses behind a head that depends on the heap
        for (const std::size_t head : {17, 18})
            for (std::size_t rows = 1; rows < 40; ++rows)
                sizes.push_back(head + rows * 32);
        return sizes;
    }
    for (std::size_t size = 6; size < most; ++size)
        sizes.push_back(size);
    return sizes;
}

/// Blocks of objects have theirs among their bytes.
std::optional<SealedBlock> find_block_of_objects(const std::string& file, std::size_t start)
{
    for (const std::size_t head : {17, 18})
        for (std::size_t size = 512; size <= 65536 && size <= file.size() - start; size *= 2) {
            std::string bytes(view(file, start, size));
            std::memset(&bytes[head], 0, sum_size);
            if (checksum(bytes) == number_at(file, start + head)) return SealedBlock{start, size, start + head};
        }
    return {};
}

} // namespace

std::vector<std::size_t> find_signatures(const std::string& file)
{
    static const std::string_view signatures[] = {"FRHP", "FHIB", "FHDB", "BTHD", "BTIN", "BTLF", "OHDR", "OCHK"};
    std::vector<std::size_t> places;
    for (const std::string_view signature : signatures)
        for (std::size_t at = file.find(signature); at != file.npos; at = file.find(signature, at + 1))
            places.push_back(at);
    std::sort(places.begin(), places.end());
    return places;
}

std::optional<SealedBlock> find_sealed_block(const std::string& file, std::size_t start)
{
    const std::string_view signature = view(file, start, signature_size);
    if (signature == "FHDB") return find_block_of_objects(file, start);
    for (const std::size_t size : possible_sizes(signature))
        if (size + sum_size <= file.size() - start &&
            checksum(view(file, start, size)) == number_at(file, start + size))
            return SealedBlock{start, size, start + size};
    return {};
}

std::vector<SealedBlock> find_sealed_blocks(const std::string& file)
{
    std::vector<SealedBlock> blocks;
    for (const std::size_t start : find_signatures(file))
        if (const auto block = find_sealed_block(file, start)) blocks.push_back(*block);
    return blocks;
}

void seal(std::string& file, const SealedBlock& block)
{
    if (block.sum_place < block.start + block.size) std::memset(&file[block.sum_place], 0, sum_size);
    const std::uint32_t sum = checksum(view(file, block.start, block.size));
    std::memcpy(&file[block.sum_place], &sum, sizeof sum);
}

} // namespace hdf5_archives
