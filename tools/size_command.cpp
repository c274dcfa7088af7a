/// vo_abc size: where the bytes of an archive go.
#include "archive_arguments.h"
#include "archive_session.h"
#include "archive_size.h"
#include "argument_checks.h"
#include "command.h"

#include <fmt/format.h>

#include <map>
#include <memory>

namespace {

struct SizeOptions
{
    std::vector<std::string> files;
    SizeUnit unit = SizeUnit::PROPERTY;
    std::size_t limit = 20;
    bool is_json = false;
};

const std::map<std::string, SizeUnit> unit_names = {
    {"object", SizeUnit::OBJECT}, {"property", SizeUnit::PROPERTY}, {"sample", SizeUnit::SAMPLE}};

std::uint64_t rest_of(const ArchiveSize& size)
{
    return size.file_bytes - std::min(size.file_bytes, size.sample_bytes);
}

std::string place_of(const SizeEntry& entry)
{
    std::string place = entry.object;
    if (!entry.property.empty()) place += " " + entry.property;
    if (entry.sample >= 0) return place + fmt::format(" sample {}", entry.sample);
    return place + fmt::format("  [{} of {} stored here]", entry.stored, counted(entry.samples, "sample", "samples"));
}

void print_size(const ArchiveSize& size, std::size_t limit)
{
    const auto print = [&](std::uint64_t bytes, const std::string& text) {
        const double percent = size.file_bytes > 0 ? 100.0 * static_cast<double>(bytes) / double(size.file_bytes) : 0.0;
        fmt::print("{:>14} {:>5.1f} %  {}\n", bytes, percent, printable(text));
    };
    std::uint64_t others = 0;
    for (std::size_t i = 0; i < size.entries.size(); ++i) {
        if (i < limit && size.entries[i].bytes > 0)
            print(size.entries[i].bytes, place_of(size.entries[i]));
        else
            others += size.entries[i].bytes;
    }
    if (others > 0) print(others, "in smaller places");
    print(rest_of(size), size.unreadable.is_empty() ? "names, headers and structure"
                                                    : "names, headers, structure, and what cannot be read");
    print(size.file_bytes, "in all");
    if (size.shared_bytes > 0)
        fmt::print("Equal samples would take {} bytes more, stored one by one.\n", size.shared_bytes);
    if (!size.hints.is_empty()) fmt::print("\nWhat would shrink:\n");
    size.hints.print(limit);
    if (!size.unreadable.is_empty()) fmt::print("\nWhat cannot be read:\n");
    size.unreadable.print(limit);
}

Json to_json(const ArchiveSize& size, const SizeOptions& options)
{
    Json entries = Json::array();
    for (const SizeEntry& entry : size.entries) {
        Json json{{"object", entry.object}};
        if (!entry.property.empty()) json["property"] = entry.property;
        if (entry.sample >= 0) json["sample"] = entry.sample;
        json["bytes"] = entry.bytes;
        json["shared_bytes"] = entry.shared;
        json["samples"] = entry.samples;
        json["stored_samples"] = entry.stored;
        entries.push_back(std::move(json));
    }
    return {{"files", options.files},
            {"file_bytes", size.file_bytes},
            {"sample_bytes", size.sample_bytes},
            {"shared_bytes", size.shared_bytes},
            {"other_bytes", rest_of(size)},
            {"entries", entries},
            {"hints", size.hints.to_json()},
            {"unreadable", size.unreadable.to_json()}};
}

void run_size(const SizeOptions& options)
{
    const ArchiveSession session(options.files);
    const ArchiveSize size = measure_archive(session, options.files, options.unit);
    if (options.is_json)
        print_json(to_json(size, options));
    else
        print_size(size, options.limit);
    if (!size.unreadable.is_empty())
        throw session.error(counted(size.unreadable.get_count(), "place", "places") +
                            " cannot be read. 'vo_abc check' lists all damage.");
}

} // namespace

void add_size_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<SizeOptions>();
    CLI::App* const command = program.add_subcommand("size", "Where the bytes of an archive go, and what would shrink");
    add_files_argument(*command, options->files);
    add_choice(*command, "--by", options->unit, unit_names,
               "object, property or sample; what a line counts, without it property")
        ->type_name("UNIT");
    command->add_option("--limit", options->limit, "Printed lines; without it 20")
        ->type_name("N")
        ->check(whole_number(0));
    add_json_option(*command, options->is_json);
    command->footer(
        "A sample that is the same in several places is stored once, and counted for the first of them. How\n"
        "much names and structure take is the rest of the file.\n"
        "Examples:\n"
        "  vo_abc size walk.abc\n"
        "  vo_abc size walk.abc --by object --limit 5\n"
        "  vo_abc size walk.abc --json | jq '.hints[] | .what'");
    command->callback([options, &action] { action = [options] { run_size(*options); }; });
}
