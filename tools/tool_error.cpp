#include "tool_error.h"

#include "text.h"

#include <string_view>

namespace {

bool ends_with(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Lines that say where in the library something was noticed, not what.
bool is_mark(std::string_view line)
{
    return line == "ERROR:" || line == "ERROR: EXCEPTION:" || ends_with(line, "()");
}

} // namespace

std::string reason_in(const std::string& error_text)
{
    std::string reason;
    for (const std::string& line : split_lines(error_text))
        if (!is_mark(line)) reason += (reason.empty() ? "" : "; ") + line;
    return reason.empty() ? "cannot be read" : reason;
}
