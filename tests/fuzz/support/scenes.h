/// @file
/// Small sound archives that damage starts from. The same bytes on every machine and at every time.
#pragma once

#include <cstddef>
#include <string>

namespace vo_fuzz {

/// About 4 KiB: a transform, a mesh of three samples with a face set and user properties, curves, points.
std::string small_scene();

/// Every schema, every kind of property, indexed parameters, an instance, three time samplings.
std::string full_scene();

/// 25 transforms, each but the last with two instances of the next one: they stand for 50 million objects.
/// The names of the instances have so many bytes.
std::string scene_of_nested_instances(std::size_t name_size);

/// Three archives that make one: the second adds to the first, the third prunes and replaces.
std::string layer_of_scene(int layer);

} // namespace vo_fuzz
