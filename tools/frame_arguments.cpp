#include "frame_arguments.h"

#include "argument_checks.h"
#include "frame_rate.h"

double FrameArguments::get_frame_rate(const ArchiveSession& session) const
{
    return fps ? *fps : find_frame_rate(session);
}

CLI::Option* add_frame_options(CLI::App& command, FrameArguments& arguments, const std::string& description)
{
    const auto parse = [&arguments](const std::string& text) {
        FrameRange range;
        if (!FrameRange::parse(text, range))
            throw CLI::ValidationError("--frames", "'" + text + "' is no range of frames, as 1-24");
        arguments.range = range;
    };
    CLI::Option* const frames =
        command.add_option_function<std::string>("--frames", parse, description)->type_name("A-B");
    command.add_option("--fps", arguments.fps, "Frames a second; without it as the archive tells")
        ->type_name("F")
        ->check(positive_number())
        ->needs(frames);
    return frames;
}
