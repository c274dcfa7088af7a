#include "findings.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>

namespace {

const char* get_severity_name(Severity severity)
{
    return severity == Severity::ERROR ? "error" : severity == Severity::WARNING ? "warning" : "";
}

void print_line(const Finding& finding)
{
    std::string line;
    if (finding.severity != Severity::PLAIN) line += std::string(get_severity_name(finding.severity)) + ": ";
    if (!finding.property.empty()) line += finding.property + ": ";
    if (finding.sample >= 0) line += fmt::format("sample {} ({}): ", finding.sample, seconds(finding.time));
    fmt::print("  {}\n", printable(line + finding.what));
}

} // namespace

void Findings::add(Finding finding)
{
    findings_.push_back(std::move(finding));
}

void Findings::add(Severity severity, const std::string& object, const std::string& property, const std::string& what)
{
    add({severity, object, property, -1, 0.0, what});
}

void Findings::add_sample(Severity severity, const std::string& object, const std::string& property, std::size_t sample,
                          double time, const std::string& what)
{
    add({severity, object, property, static_cast<std::int64_t>(sample), time, what});
}

std::size_t Findings::count(Severity severity) const
{
    return static_cast<std::size_t>(std::count_if(
        findings_.begin(), findings_.end(), [&](const Finding& finding) { return finding.severity == severity; }));
}

void Findings::print(std::size_t max_samples) const
{
    std::unordered_map<std::string, std::size_t> object_ranks;
    std::vector<std::vector<const Finding*>> objects;
    for (const Finding& finding : findings_) {
        const auto [rank, is_new] = object_ranks.emplace(finding.object, objects.size());
        if (is_new) objects.emplace_back();
        objects[rank->second].push_back(&finding);
    }
    for (const auto& object : objects) {
        fmt::print("{}\n", object[0]->object.empty() ? "archive" : printable(object[0]->object));
        std::map<std::tuple<std::string, Severity>, std::size_t> sample_counts;
        for (const Finding* const finding : object)
            if (finding->sample < 0 || ++sample_counts[{finding->property, finding->severity}] <= max_samples)
                print_line(*finding);
        for (const auto& [key, count] : sample_counts)
            if (count > max_samples)
                fmt::print("  {}: {}\n", printable(std::get<0>(key)),
                           "... and " + counted(count - max_samples, "more such line", "more such lines"));
    }
}

Json Findings::to_json() const
{
    Json json = Json::array();
    for (const Finding& finding : findings_) {
        Json entry;
        if (finding.severity != Severity::PLAIN) entry["severity"] = get_severity_name(finding.severity);
        if (!finding.object.empty()) entry["object"] = finding.object;
        if (!finding.property.empty()) entry["property"] = finding.property;
        if (finding.sample >= 0) {
            entry["sample"] = finding.sample;
            entry["time"] = finding.time;
        }
        entry["what"] = finding.what;
        entry.update(finding.details);
        json.push_back(std::move(entry));
    }
    return json;
}
