/// Copies archives, sample by sample.
#pragma once

#include "object_selection.h"
#include "time_cut.h"

#include <functional>
#include <string>

class ArchiveSession;

/// What a copy leaves out, and whom it tells how far it is.
struct CopyOptions
{
    const ObjectSelection& selection;
    const TimeCut& cut;
    /// Called before each sample with what is done, 0 to 1. May throw to end the copy.
    std::function<void(double done)> progress;
};

/// What was copied.
struct CopyCounts
{
    std::uint64_t objects = 0, properties = 0, samples = 0;
    std::vector<std::string> losses; ///< a line for each property that an Ogawa archive cannot keep
};

/// Writes the session's archive as one Ogawa archive to `path`, which is complete when this returns. One sample is in
/// memory at a time. Throws ToolError, or what `progress` throws.
CopyCounts copy_archive(const ArchiveSession& session, const std::string& path, const CopyOptions& options);
