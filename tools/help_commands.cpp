/// vo_abc completion and vo_abc man: the program's help in other forms.
#include "argument_checks.h"
#include "command.h"
#include "command_help.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>

void add_completion_command(CLI::App& program, Action& action)
{
    const auto shell = std::make_shared<std::string>();
    CLI::App* const command = program.add_subcommand("completion", "A script that completes this tool's arguments");
    command->add_option("SHELL", *shell, "bash, zsh or fish")
        ->required()
        ->type_name("")
        ->check(one_of(get_completion_shells()));
    command->footer("Examples:\n"
                    "  source <(vo_abc completion bash)\n"
                    "  vo_abc completion fish > ~/.config/fish/completions/vo_abc.fish");
    command->callback([shell, &program, &action] {
        action = [shell, &program] { fmt::print("{}", make_completion(program, *shell)); };
    });
}

void add_man_command(CLI::App& program, Action& action)
{
    CLI::App* const command = program.add_subcommand("man", "The manual page");
    command->footer("Examples:\n"
                    "  vo_abc man | man -l -");
    command->callback(
        [&program, &action] { action = [&program] { fmt::print("{}", make_manual_page(program, VO_ABC_VERSION)); }; });
}
