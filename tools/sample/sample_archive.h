/// The sample archive: a small scene with something of everything that the module reads, and a layer over it.
#pragma once

#include <string>

/// Writes an island with a lighthouse in the sea: 24 frames of a second that repeats. Throws ToolError.
void write_sample_archive(const std::string& path);

/// Writes a layer for it: the flag hangs lower, the ring at the tower is gone, and there is a second buoy. Throws
/// ToolError.
void write_sample_layer(const std::string& path);
