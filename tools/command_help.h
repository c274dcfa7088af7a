/// What the program's help says about its commands, in other forms: completion for shells, a manual page.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Names of the shells that there are completions for.
const std::vector<std::string>& get_completion_shells();

/// The completion script of a shell: commands, options, words that options take, archives. A text "A, B or C" at the
/// start of an option's description names the words.
std::string make_completion(const CLI::App& program, const std::string& shell);

/// The manual page as troff source.
std::string make_manual_page(const CLI::App& program, const std::string& version);
