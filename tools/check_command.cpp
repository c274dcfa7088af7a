/// vo_abc check: what is wrong with an archive.
#include "archive_arguments.h"
#include "archive_check.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"

#include <fmt/format.h>

#include <memory>

namespace {

struct CheckOptions
{
    std::vector<std::string> files;
    std::size_t limit = 3;
    bool is_json = false;
};

/// All findings; what cannot be opened at all is one, too.
Findings read_findings(const CheckOptions& options)
{
    try {
        return check_archive(ArchiveSession(options.files), options.files);
    } catch (const ToolError& error) {
        if (!options.is_json) throw; // the message says all
        Findings findings;
        findings.add(Severity::ERROR, "", "", error.what());
        return findings;
    }
}

void run_check(const CheckOptions& options)
{
    const Findings findings = read_findings(options);
    const std::size_t error_count = findings.count(Severity::ERROR), warning_count = findings.count(Severity::WARNING);
    const std::string summary =
        counted(error_count, "error", "errors") + ", " + counted(warning_count, "warning", "warnings");
    if (options.is_json) {
        print_json({{"files", options.files},
                    {"errors", error_count},
                    {"warnings", warning_count},
                    {"findings", findings.to_json()}});
    } else {
        findings.print(options.limit);
        fmt::print("{}\n", findings.is_empty() ? "nothing suspicious" : summary);
    }
    if (error_count > 0) throw ToolError(fmt::format("{}: {}", fmt::join(options.files, ", "), summary));
}

} // namespace

void add_check_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = program.add_subcommand("check", "What is wrong with an archive, or hardly meant");
    add_files_argument(*command, options->files);
    command->add_option("--limit", options->limit, "Printed samples of each property; without it 3")
        ->type_name("N")
        ->check(whole_number(0));
    add_json_option(*command, options->is_json);
    command->footer(
        "Reads everything. Errors are what readers refuse or read otherwise than it was meant: damage, NaNs,\n"
        "indices out of range, arrays that do not fit each other. Warnings work, but are hardly meant: no\n"
        "bounds, missing samples, faces of two points, HDF5. Exit status: 0 no errors, 1 errors.\n"
        "Examples:\n"
        "  vo_abc check walk.abc\n"
        "  for file in *.abc; do vo_abc check $file >$file.txt || echo $file; done\n"
        "  vo_abc check walk.abc --json | jq -r '.findings[] | select(.severity == \"error\") | .object'");
    command->callback([options, &action] { action = [options] { run_check(*options); }; });
}
