/// write_ply: points as a PLY file.
#pragma once

#include "output_file.h"
#include "scene_geometry.h"

#include <cstdint>
#include <string>
#include <vector>

/// Writes all points as vertices: position, velocity (units a second; where any object has them, zero for those of the
/// others), and, of several objects, the number of the one it belongs to. Comments name the objects in their order.
/// Returns how many numbers were not finite: they are written as 0.
std::uint64_t write_ply(OutputFile& file, const std::vector<PointsGeometry>& objects, const std::string& comment,
                        bool is_ascii);
