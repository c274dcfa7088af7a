/// @file
/// Archives with something of everything that an archive can hold.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>

namespace vo_test {

namespace AbcA = Alembic::AbcCoreAbstract;

/// What a random archive is made of.
struct RandomContents
{
    unsigned seed = 1;
    bool deflated = false; ///< data sets in chunks
    bool all_types = true; ///< properties of all types; a few otherwise
    int most_values = 40;  ///< of the elements of one sample along an axis
};

/// Writes an Ogawa archive and the same as an HDF5 archive beside it. All numbers lie between 0 and 100, so that every
/// type can hold them.
struct RandomArchive
{
    RandomArchive(const std::string& folder, const RandomContents& contents);

    std::string ogawa, hdf5; ///< paths
};

} // namespace vo_test
