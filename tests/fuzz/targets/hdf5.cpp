/// HDF5 archives: a walk over all they have.
#include "input.h"

#include "support/archive_walk.h"
#include "support/scratch_file.h"

#include <Alembic/AbcCoreHDF5/All.h>

#include <fstream>

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
