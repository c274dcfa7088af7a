#include "command_outline.h"

#include <algorithm>

namespace {

/// The words of "A, B or C; more" or "A or B"; none of any other text.
std::vector<std::string> find_choices(const std::string& description)
{
    const std::string list = description.substr(0, description.find(';'));
    const std::size_t last = list.rfind(" or ");
    if (last == list.npos) return {};
    std::vector<std::string> choices;
    for (std::size_t start = 0; start <= last;) {
        const std::size_t end = std::min(list.find(", ", start), last);
        choices.push_back(list.substr(start, end - start));
        start = end + 2;
    }
    choices.push_back(list.substr(last + 4));
    const auto is_word = [](const std::string& text) {
        return !text.empty() && text.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == text.npos;
    };
    return std::all_of(choices.begin(), choices.end(), is_word) ? choices : std::vector<std::string>();
}

OptionOutline outline_option(const CLI::Option& option)
{
    OptionOutline outline;
    for (const std::string& name : option.get_snames())
        outline.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        outline.names.push_back("--" + name);
    if (option.get_items_expected_max() > 0) {
        const std::string type = option.get_type_name();
        outline.value_name = type.substr(0, type.find(':'));
    }
    outline.description = option.get_description();
    outline.choices = find_choices(outline.description);
    const std::string& value = outline.value_name;
    outline.takes_file = value.compare(0, 3, "OUT") == 0 || value.compare(0, 4, "FILE") == 0;
    return outline;
}

std::string find_usage(const CLI::App& command)
{
    const std::string help = command.help("vo_abc"), mark = "Usage: ";
    const std::size_t start = help.find(mark);
    if (start == help.npos) return "vo_abc " + command.get_name();
    return help.substr(start + mark.size(), help.find('\n', start) - start - mark.size());
}

} // namespace

CommandOutline::CommandOutline(const CLI::App& command)
    : name(command.get_name())
    , description(command.get_description())
    , usage(find_usage(command))
    , footer(command.get_footer())
{
    for (const CLI::Option* const option : command.get_options()) {
        if (!option->get_positional()) {
            options.push_back(outline_option(*option));
            continue;
        }
        words = find_choices(option->get_description());
        takes_archives = words.empty();
    }
}

std::vector<CommandOutline> outline_commands(const CLI::App& program)
{
    std::vector<CommandOutline> commands;
    for (const CLI::App* const command : program.get_subcommands(std::function<bool(const CLI::App*)>()))
        commands.emplace_back(*command);
    return commands;
}
