/// The arguments that every subcommand on an archive takes.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// Adds FILES, required.
inline void add_files_argument(CLI::App& command, std::vector<std::string>& files)
{
    command.add_option("FILES", files, "The archive's files; several are layers, the last one the strongest")
        ->required()
        ->type_name("");
}

/// Adds --json.
inline void add_json_option(CLI::App& command, bool& is_json)
{
    command.add_flag("--json", is_json, "Print JSON, for scripts");
}
