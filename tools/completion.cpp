#include "command_help.h"

#include "command_outline.h"

#include <fmt/format.h>

#include <stdexcept>

namespace {

std::string join(const std::vector<std::string>& words, const std::string& between = " ")
{
    return fmt::format("{}", fmt::join(words, between));
}

/// Text in single quotes, for bash and zsh.
std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return result + "'";
}

std::string with_escapes(const std::string& text, const std::string& special)
{
    std::string result;
    for (const char character : text)
        result += (special.find(character) == special.npos ? "" : "\\") + std::string(1, character);
    return result;
}

std::vector<std::string> names_of(const std::vector<CommandOutline>& commands)
{
    std::vector<std::string> names;
    for (const CommandOutline& command : commands)
        names.push_back(command.name);
    return names;
}

std::string bash_values(const CommandOutline& command)
{
    std::string cases;
    for (const OptionOutline& option : command.options) {
        if (option.value_name.empty()) continue;
        std::vector<std::string> patterns;
        for (const std::string& name : option.names)
            patterns.push_back(quoted(command.name + " " + name));
        const std::string reply = !option.choices.empty() ? fmt::format("words {}", quoted(join(option.choices)))
                                  : option.takes_file     ? "files"
                                                          : "return";
        cases += fmt::format("    {}) {}; return ;;\n", join(patterns, " | "), reply);
    }
    return cases;
}

std::string make_bash(const std::vector<CommandOutline>& commands)
{
    std::string values, options, arguments;
    for (const CommandOutline& command : commands) {
        values += bash_values(command);
        std::vector<std::string> names;
        for (const OptionOutline& option : command.options)
            names.insert(names.end(), option.names.begin(), option.names.end());
        options += fmt::format("        {}) words {} ;;\n", command.name, quoted(join(names)));
        if (!command.takes_archives)
            arguments += fmt::format("    {}) words {} ;;\n", command.name, quoted(join(command.words)));
    }
    return fmt::format(R"(# Completion of vo_abc for bash.
_vo_abc() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} command=${{COMP_WORDS[1]}}
    words() {{ mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current"); }}
    files() {{ compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$current"); }}
    archives() {{
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current"; compgen -f -X '!*.abc' -- "$current")
    }}
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words {}
        return
    fi
    case "$command $before" in
{}    esac
    if [[ $current == -* ]]; then
        case $command in
{}        esac
        return
    fi
    case $command in
{}    *) archives ;;
    esac
}}
complete -F _vo_abc vo_abc
)",
                       quoted(join(names_of(commands)) + " --help --version"), values, options, arguments);
}

/// One argument of zsh's _arguments.
std::string zsh_option(const OptionOutline& option)
{
    std::string value;
    if (!option.value_name.empty()) {
        const std::string action = !option.choices.empty() ? "(" + join(option.choices) + ")"
                                   : option.takes_file     ? "_files"
                                                           : " ";
        value = ":" + with_escapes(option.value_name, ":\\") + ":" + action;
    }
    const std::string text = "[" + with_escapes(option.description, "[]:\\") + "]" + value;
    std::string result;
    for (const std::string& name : option.names)
        result += " \\\n            " + quoted("(" + join(option.names) + ")" + name + text);
    return result;
}

std::string make_zsh(const std::vector<CommandOutline>& commands)
{
    std::string list, cases;
    for (const CommandOutline& command : commands) {
        list += fmt::format("        {}\n", quoted(command.name + ":" + with_escapes(command.description, ":\\")));
        cases += fmt::format("    {})\n        _arguments", command.name);
        for (const OptionOutline& option : command.options)
            cases += zsh_option(option);
        if (!command.words.empty()) cases += " \\\n            " + quoted("1:word:(" + join(command.words) + ")");
        if (command.takes_archives) cases += " \\\n            " + quoted("*:archive:_files -g \"*.abc(-.)\"");
        cases += " ;;\n";
    }
    return fmt::format(R"(#compdef vo_abc
# Completion of vo_abc for zsh.
_vo_abc() {{
    local -a commands
    commands=(
{}    )
    if ((CURRENT == 2)); then
        _describe command commands
        return
    fi
    local command=$words[2]
    shift words
    ((CURRENT--))
    case $command in
{}    esac
}}
_vo_abc "$@"
)",
                       list, cases);
}

std::string make_fish(const std::vector<CommandOutline>& commands)
{
    const auto quote = [](const std::string& text) { return "'" + with_escapes(text, "'\\") + "'"; };
    std::string text = "# Completion of vo_abc for fish.\n";
    for (const CommandOutline& command : commands)
        text += fmt::format("complete -c vo_abc -n __fish_use_subcommand -f -a {} -d {}\n", command.name,
                            quote(command.description));
    for (const CommandOutline& command : commands) {
        const std::string start = "complete -c vo_abc -n " + quote("__fish_seen_subcommand_from " + command.name);
        for (const OptionOutline& option : command.options) {
            text += start;
            for (const std::string& name : option.names)
                text += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (!option.choices.empty())
                text += " -x -a " + quote(join(option.choices));
            else if (!option.value_name.empty())
                text += option.takes_file ? " -r" : " -x";
            text += " -d " + quote(option.description) + "\n";
        }
        if (!command.takes_archives)
            text += start + " -f" + (command.words.empty() ? "" : " -a " + quote(join(command.words))) + "\n";
    }
    return text;
}

} // namespace

const std::vector<std::string>& get_completion_shells()
{
    static const std::vector<std::string> shells = {"bash", "zsh", "fish"};
    return shells;
}

std::string make_completion(const CLI::App& program, const std::string& shell)
{
    const std::vector<CommandOutline> commands = outline_commands(program);
    if (shell == "bash") return make_bash(commands);
    if (shell == "zsh") return make_zsh(commands);
    if (shell == "fish") return make_fish(commands);
    throw std::invalid_argument("there is no completion for the shell " + shell);
}
