#include "command_help.h"

#include "command_outline.h"
#include "text.h"

#include <fmt/format.h>

namespace {

/// Text that troff prints as it is.
std::string plain(const std::string& text)
{
    std::string result;
    bool is_line_start = true;
    for (const char character : text) {
        if (is_line_start && (character == '.' || character == '\'')) result += "\\&";
        if (character == '\\')
            result += "\\e";
        else if (character == '-')
            result += "\\-";
        else
            result += character;
        is_line_start = character == '\n';
    }
    return result;
}

std::string paragraph(const std::string& text)
{
    return text.empty() ? "" : ".PP\n.nf\n" + plain(text) + "\n.fi\n";
}

std::string option_entry(const OptionOutline& option)
{
    std::string names;
    for (const std::string& name : option.names)
        names += (names.empty() ? "" : ", ") + std::string("\\fB") + plain(name) + "\\fR";
    if (!option.value_name.empty()) names += " \\fI" + plain(option.value_name) + "\\fR";
    return ".TP\n" + names + "\n" + plain(option.description) + "\n";
}

} // namespace

std::string make_manual_page(const CLI::App& program, const std::string& version)
{
    const std::string name = program.get_name();
    std::string description = program.get_description();
    if (!description.empty() && description.back() == '.') description.pop_back();
    std::string page = fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n", "VO_ABC", name, version);
    page += fmt::format(".SH NAME\n{} \\- {}\n", plain(name), plain(description));
    page += fmt::format(".SH SYNOPSIS\n.B {}\n.I COMMAND\n[\\fIOPTIONS\\fR] [\\fIARGUMENTS\\fR]\n", plain(name));
    page += ".SH DESCRIPTION\n" + plain(program.get_footer()) + "\n.SH COMMANDS\n";
    for (const CommandOutline& command : outline_commands(program)) {
        page += ".SS \"" + plain(command.usage) + "\"\n" + plain(command.description) + ".\n";
        for (const OptionOutline& option : command.options)
            page += option_entry(option);
        page += paragraph(command.footer);
    }
    return page;
}
