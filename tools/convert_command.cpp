/// vo_abc convert: any archive as one Ogawa archive.
#include "archive_arguments.h"
#include "archive_copy.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "frame_arguments.h"
#include "interruption.h"
#include "new_file.h"
#include "text.h"
#include "tool_error.h"
#include "tool_library.h"

#include <fmt/format.h>
#include <vo_app_base/app_progress_bar.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

namespace {

struct ConvertOptions
{
    std::vector<std::string> files, objects;
    std::string output;
    FrameArguments frames;
};

std::optional<TimeSpan> find_span(const ArchiveSession& session, const ConvertOptions& options)
{
    if (!options.frames.range) return {};
    const auto [first, last] = *options.frames.range;
    const double fps = options.frames.get_frame_rate(session);
    return TimeSpan{static_cast<double>(first) / fps, static_cast<double>(last) / fps};
}

/// Whether the file of that name, if there is one, is one of `files`.
bool is_one_of(const std::vector<std::string>& files, const std::string& path)
{
    std::error_code ignored;
    return std::any_of(files.begin(), files.end(),
                       [&](const std::string& file) { return std::filesystem::equivalent(file, path, ignored); });
}

/// The progress bar is gone when this returns.
CopyCounts write_copy(const ArchiveSession& session, const ConvertOptions& options)
{
    Interruption::check(); // opening may have taken long
    const ObjectSelection selection(session, options.objects);
    const TimeCut cut(*session.get_archive().getPtr(), find_span(session, options));
    NewFile file(options.output);
    AppProgressBar bar("Converting");
    const auto progress = [&](double done) {
        Interruption::check();
        bar.set_value(static_cast<float>(done));
    };
    const CopyCounts counts = copy_archive(session, file.get_temporary_path(), {selection, cut, progress});
    Interruption::check();
    if (!counts.losses.empty() && is_one_of(options.files, options.output))
        throw ToolError(options.output + ": not written over, since this would be lost: " + counts.losses.front() +
                        " Write to another name.");
    file.commit();
    return counts;
}

void run_convert(const ConvertOptions& options)
{
    const Interruption interruption;
    try {
        const CopyCounts counts = write_copy(ArchiveSession(options.files), options);
        fmt::print("{}: {}, {}, {}\n", printable(options.output), counted(counts.objects, "object", "objects"),
                   counted(counts.properties, "property", "properties"), counted(counts.samples, "sample", "samples"));
        for (const std::string& loss : counts.losses)
            ToolLog::write(options.output + ": " + loss);
    } catch (const Interrupted&) {
        Interruption::end_process(); // nothing was left behind
    }
}

} // namespace

void add_convert_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const command = program.add_subcommand("convert", "Any archive, HDF5 or layered, as one Ogawa archive");
    add_files_argument(*command, options->files);
    command->add_option("-o,--output", options->output, "Archive to write, .abc; it may be the one that is read")
        ->required()
        ->type_name("OUT.abc")
        ->check(archive_name());
    add_frame_options(*command, options->frames, "Only the samples that these frames need");
    command
        ->add_option("--objects", options->objects,
                     "Only these objects, what is below them, what they are instances of, and all ancestors")
        ->type_name("PATH...");
    command->footer("OUT.abc takes its name when it is complete; on a failure or an interruption nothing is left.\n"
                    "Examples:\n"
                    "  vo_abc convert old_hdf5.abc -o new.abc\n"
                    "  vo_abc convert base.abc changes.abc -o flat.abc\n"
                    "  vo_abc convert walk.abc -o part.abc --frames 10-20 --objects /root/body /root/camera");
    command->callback([options, &action] { action = [options] { run_convert(*options); }; });
}
