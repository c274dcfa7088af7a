/// write_sample_archive: a small scene that shows what archives can hold.
#pragma once

#include <string>

/// Writes a scene of one second at 24 frames a second: a turning torus with two shading groups, UVs and normals, and an
/// instance of it; a chequered floor; a creased subdivision mesh; a waving flag; grass of curves with widths; a fountain
/// of points with ids and velocities; a moving camera; a lamp that blinks and a helper that is hidden; user properties.
/// Always the same but for the date of writing. Throws ToolError when the file cannot be written.
void write_sample_archive(const std::string& path);
