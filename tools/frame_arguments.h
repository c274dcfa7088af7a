/// FrameArguments: --frames and --fps, as several subcommands take them.
#pragma once

#include "archive_session.h"
#include "frame_range.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

struct FrameArguments
{
    std::optional<FrameRange> range; ///< empty: not asked for
    std::optional<double> fps;       ///< frames a second; only with a range

    /// As asked for, or as the archive tells. Throws ToolError when it does not.
    double get_frame_rate(const ArchiveSession& session) const;
};

/// Adds --frames A-B with a description of its own, and --fps. `arguments` must live as long as the command. Returns
/// --frames.
CLI::Option* add_frame_options(CLI::App& command, FrameArguments& arguments, const std::string& description);
