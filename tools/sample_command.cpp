/// vo_abc sample: writes a small scene to try the other subcommands on.
#include "argument_checks.h"
#include "command.h"
#include "sample/sample_archive.h"
#include "text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>
#include <string>

void add_sample_command(CLI::App& program, Action& action)
{
    const auto path = std::make_shared<std::string>();
    const auto is_layer = std::make_shared<bool>(false);
    CLI::App* const command = program.add_subcommand("sample", "Write a small scene to try things on");
    command->add_option("-o,--output", *path, "Archive to write, .abc")
        ->required()
        ->type_name("FILE.abc")
        ->check(archive_name());
    command->add_flag("--layer", *is_layer, "Write a layer that changes the scene, instead of the scene");
    command->footer("Examples:\n"
                    "  vo_abc sample -o scene.abc && vo_abc tree scene.abc\n"
                    "  vo_abc sample --layer -o changes.abc && vo_abc render scene.abc changes.abc -o changed.png");
    command->callback([path, is_layer, &action] {
        action = [path, is_layer] {
            *is_layer ? write_sample_layer(*path) : write_sample_archive(*path);
            fmt::print("{}: written\n", printable(*path));
        };
    });
}
