#include "text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>

namespace {

std::string escape(std::string_view text, std::string_view kept)
{
    std::string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool is_control = byte < 0x20 || byte == 0x7f;
        if (is_control && kept.find(character) == kept.npos)
            result += fmt::format("\\x{:02x}", byte);
        else
            result += character;
    }
    return result;
}

} // namespace

std::string printable(std::string_view text)
{
    return escape(text, "");
}

std::string quoted_name(const std::string& name)
{
    const auto is_unclear = [](char character) { return character == ' ' || character == '"'; };
    const bool is_clear = !name.empty() && !is_unclear(name.front()) && !is_unclear(name.back());
    return is_clear ? name : '"' + name + '"';
}

std::string printable_lines(std::string_view text)
{
    return escape(text, "\n");
}

std::vector<std::string> split_lines(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0) lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string counted(std::size_t count, std::string_view one, std::string_view many)
{
    return fmt::format("{} {}", count, count == 1 ? one : many);
}

std::string seconds(double time)
{
    return fmt::format("{:.6g} s", time);
}

std::string time_range(double start, double end)
{
    return start == end ? seconds(start) : seconds(start) + " to " + seconds(end);
}

void print_table(const std::vector<std::pair<std::string, std::string>>& rows)
{
    std::size_t width = 0;
    for (const auto& [key, value] : rows)
        width = std::max(width, value.empty() ? 0 : key.size() + 1);
    for (const auto& [key, value] : rows) {
        std::string head = key + ":";
        for (const std::string& line : split_lines(value)) {
            fmt::print("{:<{}} {}\n", head, width, printable(line));
            head.clear();
        }
    }
}

void print_json(const Json& json)
{
    fmt::print("{}\n", json.dump(2, ' ', false, Json::error_handler_t::replace));
}

void print_message(const std::string& text) noexcept
{
    std::fputs("vo_abc: ", stderr);
    std::fputs(text.c_str(), stderr);
    std::fputs("\n", stderr);
}
