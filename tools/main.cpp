/// vo_abc: looks into Alembic archives and takes geometry out of them.
#include "command.h"
#include "text.h"
#include "tool_error.h"
#include "tool_library.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <cstdio>
#include <exception>

namespace {

constexpr int exit_bad_input = 1;
constexpr int exit_usage = 2;

int fail(const char* what)
{
    std::fflush(stdout); // what was found so far comes before the reason for its end
    print_message(printable_lines(what));
    return exit_bad_input;
}

/// A full disk or a closed pipe shows only when the last byte is written.
int finish()
{
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return 0;
    return fail("standard output: cannot be written. Is the disk full?");
}

bool has_command(const CLI::App& program, const std::string& name)
{
    const auto is_named = [&](const CLI::App* command) { return command->check_name(name); };
    return !program.get_subcommands(std::function<bool(const CLI::App*)>(is_named)).empty();
}

int refuse_command(const std::string& name)
{
    print_message(printable("there is no command '" + name + "'. 'vo_abc --help' lists them."));
    return exit_usage;
}

/// What is wrong with the command line, and where the right way stands.
std::string describe_usage_error(const CLI::App* program, const CLI::Error& error)
{
    std::string command = "vo_abc";
    for (const CLI::App* const used : program->get_subcommands())
        command += " " + used->get_name();
    return printable(fmt::format("vo_abc: {}", error.what())) +
           printable_lines(fmt::format("\nvo_abc: '{} --help' shows the options.\n", command));
}

int run(const Action& action)
{
    try {
        const ToolLibrary library;
        action();
    } catch (const ToolError& error) {
        return fail(error.what());
    } catch (const std::exception& error) {
        return fail(reason_in(error.what()).c_str());
    }
    return finish();
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App program("Looks into Alembic archives and takes geometry out of them.", "vo_abc");
    program.set_version_flag("--version", VO_ABC_VERSION);
    program.require_subcommand(1);
    program.footer("Several files are the layers of one archive, in the order given; the last one is the strongest.\n"
                   "Exit status: 0 done, 1 bad input, 2 wrong usage. 'vo_abc COMMAND --help' shows examples.");
    program.failure_message(describe_usage_error);
    Action action;
    add_info_command(program, action);
    add_tree_command(program, action);
    add_export_command(program, action);
    add_render_command(program, action);
    add_dump_command(program, action);
    add_sample_command(program, action);
    add_keys_command(program, action);
    add_watch_command(program, action);
    add_convert_command(program, action);
    add_diff_command(program, action);
    add_check_command(program, action);
    add_size_command(program, action);
    add_completion_command(program, action);
    add_man_command(program, action);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (argc > 1 && argv[1][0] != '-' && !has_command(program, argv[1])) return refuse_command(argv[1]);
        return program.exit(error) == 0 ? 0 : exit_usage;
    }
    return run(action);
}
