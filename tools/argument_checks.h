/// Checks of values on the command line, with messages that say what would do. What is not finite is no number.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

/// Any number.
CLI::Validator finite_number();
/// Greater than 0.
CLI::Validator positive_number();
/// 0 or greater.
CLI::Validator non_negative_number();
/// From `low` to `high`, both included.
CLI::Validator number_between(double low, double high);

/// A whole number from `low` to `high`, both included.
CLI::Validator whole_number(std::int64_t low, std::int64_t high = std::numeric_limits<std::int32_t>::max());

/// The name of an archive to write: no command would open one of another ending.
CLI::Validator archive_name();

CLI::Validator one_of(const std::vector<std::string>& words);

/// Adds an option that takes one of the words of `choices`; what it stands for goes to `value`, which must live as long
/// as the command.
template <class T>
CLI::Option* add_choice(CLI::App& command, const std::string& name, T& value, const std::map<std::string, T>& choices,
                        const std::string& description)
{
    std::vector<std::string> words;
    for (const auto& [word, meaning] : choices)
        words.push_back(word);
    const auto choose = [&value, choices](const std::string& word) { value = choices.at(word); };
    return command.add_option_function<std::string>(name, choose, description)->check(one_of(words));
}
