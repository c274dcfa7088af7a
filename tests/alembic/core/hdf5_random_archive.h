/// @file
/// Random archives, and the same as HDF5 archives.
#pragma once

#include "support/hdf5_archive_copy.h"
#include "support/random_archive.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <string>

namespace vo_test {

/// Writes an Ogawa archive and the same as an HDF5 archive beside it.
struct RandomArchive
{
    RandomArchive(const std::string& folder, const RandomContents& contents,
                  hdf5_archives::Form form = hdf5_archives::Form::USUAL)
        : ogawa(folder + "/ogawa" + std::to_string(contents.seed) + ".abc")
        , hdf5(folder + "/hdf5" + std::to_string(contents.seed) + ".abc")
    {
        write_random_archive(ogawa, contents);
        hdf5_archives::write_copy(*Alembic::AbcCoreOgawa::ReadArchive()(ogawa), hdf5, form);
    }

    std::string ogawa, hdf5; ///< paths
};

} // namespace vo_test
