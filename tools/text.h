/// Text for people and for scripts: names made safe, numbers, tables and JSON.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Keys keep the order in which they are added.
using Json = nlohmann::ordered_json;

/// The text with control characters as \xNN: a name from a file must not command the terminal.
std::string printable(std::string_view text);
/// The name of an object, in quotes where it begins or ends with a blank or a quote: nobody would see where.
std::string quoted_name(const std::string& name);
/// The same as `printable`, but for line ends.
std::string printable_lines(std::string_view text);

/// The lines of a text, without their ends and without empty lines.
std::vector<std::string> split_lines(std::string_view text);

/// "1 mesh", "2 meshes".
std::string counted(std::size_t count, std::string_view one, std::string_view many);

/// A time to 6 digits, and its unit: "1.25 s".
std::string seconds(double time);
/// "0 s to 1.25 s", or "0 s" where both are the same.
std::string time_range(double start, double end);

/// Prints rows as "key:  value", values aligned; rows without a value are left out. A value of several lines keeps its
/// column.
void print_table(const std::vector<std::pair<std::string, std::string>>& rows);

/// Prints JSON, indented, with one line end. Text that is not UTF-8 is replaced, numbers that are not finite are null.
void print_json(const Json& json);

/// Prints "vo_abc: TEXT" and a line end to standard error. Never throws: there is nowhere left to complain.
void print_message(const std::string& text) noexcept;
