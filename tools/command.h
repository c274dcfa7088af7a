/// The subcommands. Each adds its options to the program, and itself to `action` when the user chose it.
#pragma once

#include <functional>

namespace CLI {
class App;
}

/// What the chosen subcommand does, once all arguments have been checked. Throws ToolError.
using Action = std::function<void()>;

void add_info_command(CLI::App& program, Action& action);
void add_tree_command(CLI::App& program, Action& action);
void add_export_command(CLI::App& program, Action& action);
void add_render_command(CLI::App& program, Action& action);
void add_dump_command(CLI::App& program, Action& action);
void add_sample_command(CLI::App& program, Action& action);
void add_keys_command(CLI::App& program, Action& action);
void add_watch_command(CLI::App& program, Action& action);
void add_convert_command(CLI::App& program, Action& action);
void add_diff_command(CLI::App& program, Action& action);
void add_check_command(CLI::App& program, Action& action);
void add_size_command(CLI::App& program, Action& action);
void add_completion_command(CLI::App& program, Action& action);
void add_man_command(CLI::App& program, Action& action);
