/// What the tool's help lists.
#pragma once

#include "tool_runner.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

/// The first word of each line of a help text that is indented by two blanks, from the line `heading` on.
inline std::vector<std::string> list_help_entries(const std::string& help, const std::string& heading)
{
    std::vector<std::string> entries;
    std::istringstream text(help.substr(std::min(help.find(heading), help.size())));
    for (std::string line; std::getline(text, line);) {
        if (line.compare(0, 9, "Examples:") == 0) break;
        if (line.compare(0, 2, "  ") == 0 && line.size() > 2 && line[2] != ' ')
            entries.push_back(line.substr(2, std::min(line.find(' ', 2), line.size()) - 2));
    }
    return entries;
}

/// Names of all subcommands.
inline std::vector<std::string> list_commands()
{
    return list_help_entries(run_tool({"--help"}).output, "Subcommands:");
}

/// Long names of a command's options.
inline std::vector<std::string> list_long_options(const std::string& command)
{
    std::vector<std::string> names;
    for (const std::string& entry : list_help_entries(run_tool({command, "--help"}).output, "Options:"))
        names.push_back(entry.substr(entry.find("--")));
    return names;
}
