/// What `vo_abc info` does with a file.
#include "input.h"

#include "command.h"
#include "support/scratch_file.h"
#include "tool_library.h"

#include <CLI/CLI.hpp>

#include <fstream>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFile file("input.abc");
    static FILE* const quiet = std::freopen("/dev/null", "w", stdout);
    if (!quiet) return 0;
    std::ofstream(file.path(), std::ios::binary | std::ios::trunc) << input_bytes(data, size);
    for (const bool is_json : {false, true}) {
        CLI::App program("", "vo_abc");
        Action action;
        add_info_command(program, action);
        std::vector<std::string> arguments = {file.path(), "info"}; // from the last to the first
        if (is_json) arguments.insert(arguments.begin(), "--json");
        try {
            program.parse(arguments);
            const ToolLibrary library;
            action();
        } catch (const std::exception&) {
        }
    }
    return 0;
}
