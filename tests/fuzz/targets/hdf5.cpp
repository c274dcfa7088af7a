/// HDF5 archives: a walk over all they have. Half of the mutations know the format: parts that carry a checksum get the
/// right one, otherwise no change of them would get past it, and addresses lead to where others do.
#include "input.h"

#include "support/archive_walk.h"
#include "support/hdf5_sealed_blocks.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreHDF5/All.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <optional>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed);

namespace {

using Random = std::minstd_rand;
constexpr std::size_t signature_size = 4;

/// The part with a checksum that one of the signatures, any of them, begins.
std::optional<hdf5_archives::SealedBlock> any_sealed_block(const std::string& bytes, Random& random)
{
    const std::vector<std::size_t> places = hdf5_archives::find_signatures(bytes);
    if (places.empty()) return {};
    return hdf5_archives::find_sealed_block(bytes, places[random() % places.size()]);
}

/// Changes bytes of one such part. False when there is none.
bool change_sealed_block(std::string& bytes, Random& random)
{
    const auto block = any_sealed_block(bytes, random);
    if (!block) return false;
    std::string inner = bytes.substr(block->start + signature_size, block->size - signature_size);
    const std::size_t inner_size = inner.size();
    inner.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(&inner[0]), inner_size, inner_size));
    inner.resize(inner_size);
    bytes.replace(block->start + signature_size, inner_size, inner);
    hdf5_archives::seal(bytes, *block);
    return true;
}

/// Lets an address lead to where another one leads. False when there are none.
bool redirect(std::string& bytes, Random& random)
{
    constexpr std::uint64_t first_address = 48; // behind the start of the file
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i + sizeof(std::uint64_t) <= bytes.size(); ++i) {
        std::uint64_t address = 0;
        std::memcpy(&address, &bytes[i], sizeof address);
        if (address >= first_address && address < bytes.size()) places.push_back(i);
    }
    if (places.empty()) return false;
    const std::size_t from = places[random() % places.size()], to = places[random() % places.size()];
    const std::vector<std::size_t> signatures = hdf5_archives::find_signatures(bytes);
    const auto behind = std::upper_bound(signatures.begin(), signatures.end(), to);
    const auto block =
        behind == signatures.begin() ? std::nullopt : hdf5_archives::find_sealed_block(bytes, *(behind - 1));
    bytes.replace(to, sizeof(std::uint64_t), bytes.substr(from, sizeof(std::uint64_t)));
    if (block && to < block->start + block->size) hdf5_archives::seal(bytes, *block);
    return true;
}

} // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed)
{
    Random random(seed);
    std::string bytes = input_bytes(data, size);
    const unsigned choice = random() % 4;
    const bool is_done = choice == 0 ? redirect(bytes, random) : choice == 1 && change_sealed_block(bytes, random);
    if (!is_done) return LLVMFuzzerMutate(data, size, max_size);
    std::copy(bytes.begin(), bytes.end(), data);
    return size;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFile file("input.abc");
    std::ofstream(file.path(), std::ios::binary | std::ios::trunc) << input_bytes(data, size);
    try {
        const auto archive = Alembic::AbcCoreHDF5::ReadArchive()(file.path());
        vo_fuzz::walk_core(archive);
        vo_fuzz::walk_typed(archive, Alembic::Abc::ErrorHandler::kQuietNoopPolicy);
    } catch (const std::exception&) {
    }
    return 0;
}
