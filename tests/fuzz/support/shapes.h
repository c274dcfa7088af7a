/// @file
/// Hostile archives by name: what has brought down readers of this format before, each made from a sound scene by the
/// few lines that show what is wrong with it.
#pragma once

#include <string>
#include <vector>

namespace vo_fuzz {

struct Shape
{
    std::string name; ///< also of its file in the corpus
    std::string bytes;
    /// The archive must still open, or must be refused.
    enum Opening { OPENS, IS_REFUSED } opening = OPENS;
};

/// Damage to the container and its tree: sizes, counts, references, nesting, completeness.
std::vector<Shape> container_shapes();
/// Damage to headers and tables of the Alembic layer: names, metadata, types, sample counts, time samplings, versions.
std::vector<Shape> header_shapes();
/// Sound storage with values that contradict each other: dimensions, texts, counts, indices, transform operations.
std::vector<Shape> value_shapes();

/// All of them.
std::vector<Shape> all_shapes();

/// An object, or a compound of properties, nested a million times: 40 MB, therefore not in the corpus.
std::string a_million_objects_deep();
std::string a_million_compounds_deep();

} // namespace vo_fuzz
