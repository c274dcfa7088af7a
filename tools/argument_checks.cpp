#include "argument_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr double greatest = std::numeric_limits<double>::max();

CLI::Validator make_check(double low, double high, const std::string& name)
{
    const auto check = [low, high, name](const std::string& text) {
        char* end = nullptr;
        const double number = std::strtod(text.c_str(), &end);
        const bool is_number = !text.empty() && end == text.c_str() + text.size() && std::isfinite(number);
        return is_number && number >= low && number <= high ? std::string() : "'" + text + "' is no " + name;
    };
    return CLI::Validator(check, "");
}

} // namespace

CLI::Validator finite_number()
{
    return make_check(-greatest, greatest, "number");
}

CLI::Validator positive_number()
{
    return make_check(std::numeric_limits<double>::min(), greatest, "number above 0");
}

CLI::Validator non_negative_number()
{
    return make_check(0.0, greatest, "number of 0 or more");
}

CLI::Validator number_between(double low, double high)
{
    return make_check(low, high, fmt::format("number from {:g} to {:g}", low, high));
}

CLI::Validator whole_number(std::int64_t low, std::int64_t high)
{
    const auto check = [low, high](const std::string& text) {
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        const bool is_number = error == std::errc() && end == text.data() + text.size();
        if (is_number && number >= low && number <= high) return std::string();
        return fmt::format("'{}' is no whole number from {} to {}", text, low, high);
    };
    return CLI::Validator(check, "");
}

CLI::Validator archive_name()
{
    const auto check = [](const std::string& name) {
        const std::string extension = CLI::detail::to_lower(std::filesystem::path(name).extension().string());
        return extension == ".abc" ? std::string() : "the name must end in .abc, '" + name + "' does not";
    };
    return CLI::Validator(check, "");
}

CLI::Validator one_of(const std::vector<std::string>& words)
{
    const auto check = [words](const std::string& text) {
        if (std::find(words.begin(), words.end(), text) != words.end()) return std::string();
        return fmt::format("'{}' is none of {}", text, fmt::join(words, ", "));
    };
    return CLI::Validator(check, "");
}
