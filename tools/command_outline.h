/// CommandOutline: a command of the program and its options, as its help prints them.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct OptionOutline
{
    std::vector<std::string> names;   ///< with their dashes: "-o", "--output"
    std::string value_name;           ///< "OUT.png"; empty: a flag
    std::string description;          ///< one line
    std::vector<std::string> choices; ///< the words that it takes; empty: any
    bool takes_file = false;          ///< its value names a file
};

struct CommandOutline
{
    std::string name, description, usage, footer;
    std::vector<OptionOutline> options;
    std::vector<std::string> words; ///< what a first argument is chosen from; empty: archives or nothing
    bool takes_archives = false;

    explicit CommandOutline(const CLI::App& command);
};

/// All commands of the program, in the order of its help.
std::vector<CommandOutline> outline_commands(const CLI::App& program);
