/// Colours for names.
#pragma once

#include "vector_math.h"
#include "world_scene.h"

#include <string_view>
#include <vector>

/// A colour that a name has in every picture; linear. That of the first colour's name in it, as in "red_paint" and
/// "/scene/redBoatShape", else made from all its letters.
Vec3 make_name_color(std::string_view name);

/// The colours of a mesh's groups: of their names, or of the mesh's own where it has no groups of its own.
std::vector<Vec3> make_group_colors(const WorldMesh& mesh);

/// The inverse of the encoding of pictures, for values from 0 to 1.
float decode_srgb(float value);
