/// @file
/// Archives with something of everything that an archive can hold.
#pragma once

#include <string>

namespace vo_test {

/// What a random archive is made of.
struct RandomContents
{
    unsigned seed = 1;
    bool all_types = true; ///< properties of all types; a few otherwise
    int most_values = 40;  ///< of the elements of one sample along an axis
};

/// Writes an Ogawa archive. All numbers lie between 0 and 100, so that every type can hold them.
void write_random_archive(const std::string& path, const RandomContents& contents);

} // namespace vo_test
