/// vo_abc diff: where two archives differ.
#include "archive_arguments.h"
#include "archive_difference.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "findings.h"

#include <fmt/format.h>

#include <memory>

namespace {

struct DiffOptions
{
    std::string first, second;
    double tolerance = 0.0;
    std::size_t limit = 5;
    bool is_json = false, is_quiet = false;
};

void run_diff(const DiffOptions& options)
{
    const ArchiveSession first({options.first}), second({options.second});
    ArchiveDifference difference(options.first, options.second, options.tolerance);
    const Findings findings =
        difference.compare(first.get_archive().getTop().getPtr(), second.get_archive().getTop().getPtr());
    if (options.is_json)
        print_json({{"files", {options.first, options.second}},
                    {"tolerance", options.tolerance},
                    {"same", findings.is_empty()},
                    {"differences", findings.to_json()}});
    else if (!options.is_quiet)
        findings.print(options.limit);
    if (!findings.is_empty())
        throw ToolError(fmt::format("{} and {} differ in {}", options.first, options.second,
                                    counted(findings.get_count(), "place", "places")));
}

} // namespace

void add_diff_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* const command = program.add_subcommand("diff", "Where two archives differ");
    command->add_option("A", options->first, "One archive")->required()->type_name("");
    command->add_option("B", options->second, "The other one")->required()->type_name("");
    command->add_option("--tolerance", options->tolerance, "Numbers that are no further apart are the same")
        ->type_name("T")
        ->check(non_negative_number());
    command->add_option("--limit", options->limit, "Printed samples of each property; without it 5")
        ->type_name("N")
        ->check(whole_number(0));
    command->add_flag("--quiet", options->is_quiet, "Print no differences");
    add_json_option(*command, options->is_json);
    command->footer("Compared are objects, metadata, instances, properties, their types and times, and every sample's\n"
                    "values. Dates of writing and the order of objects do not count. Exit status: 0 same, 1 different\n"
                    "or unreadable, 2 wrong usage.\n"
                    "Examples:\n"
                    "  vo_abc diff old.abc new.abc\n"
                    "  vo_abc diff old.abc new.abc --tolerance 1e-5 --quiet && echo same\n"
                    "  vo_abc diff old.abc new.abc --json | jq -r '.differences[].object' | sort -u");
    command->callback([options, &action] { action = [options] { run_diff(*options); }; });
}
