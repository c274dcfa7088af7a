/// vo_abc sample: writes a small scene to try the other subcommands on.
#include "command.h"
#include "sample_archive.h"
#include "text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

void add_sample_command(CLI::App& program, Action& action)
{
    const auto path = std::make_shared<std::string>();
    CLI::App* const command = program.add_subcommand("sample", "Write a small scene to try things on");
    command->add_option("-o,--output", *path, "Archive to write")->required()->type_name("FILE.abc");
    command->footer("Example:\n"
                    "  vo_abc sample -o scene.abc && vo_abc tree scene.abc");
    command->callback([path, &action] {
        action = [path] {
            write_sample_archive(*path);
            fmt::print("{}: written\n", printable(*path));
        };
    });
}
