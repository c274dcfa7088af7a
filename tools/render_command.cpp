/// vo_abc render: pictures of an archive.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "frame_arguments.h"
#include "output_file.h"
#include "render/contact_sheet.h"
#include "render/frame_renderer.h"
#include "text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <vo_app_base/app_progress_bar.h>

#include <charconv>
#include <filesystem>
#include <memory>

namespace {

constexpr int max_side = 16384;                                  // pixels
constexpr std::int64_t max_sheet_pixels = std::int64_t{1} << 28; // a GiB in memory
constexpr int max_sheet_count = 1000;
constexpr ImageSize default_size = {1280, 720}, default_sheet_size = {480, 270};

struct RenderArguments
{
    std::vector<std::string> files;
    std::string output, size_text;
    std::optional<double> time;
    FrameArguments frames;
    std::optional<int> sheet_count;
    RenderOptions options;
};

/// What is done of several pictures, on the terminal.
class RenderProgress
{
public:
    explicit RenderProgress(std::size_t part_count)
        : part_count_(static_cast<double>(part_count))
    {
    }

    /// Of the present part.
    FrameRenderer::Progress get()
    {
        return [this](double done) { bar_.set_value(static_cast<float>((finished_ + done) / part_count_)); };
    }
    void finish_part() { ++finished_; }

private:
    AppProgressBar bar_{"Rendering"};
    const double part_count_;
    double finished_ = 0.0;
};

void write_png(const std::string& path, const Image& image)
{
    OutputFile file(path);
    file.write(encode_png(image));
    file.commit();
}

std::string describe(const Image& image)
{
    return fmt::format("{} x {} pixels", image.get_width(), image.get_height());
}

/// What was made of an archive, and how many of its objects could not be read for it.
struct RenderResult
{
    std::string summary;
    std::size_t left_out_count = 0;
};

/// One file for each time.
RenderResult render_files(const ArchiveSession& session, const RenderArguments& arguments,
                          const std::vector<std::string>& paths, const std::vector<double>& times)
{
    RenderProgress progress(times.size() + 1);
    FrameRenderer renderer(session, arguments.options, times, default_size, progress.get());
    RenderResult result;
    for (std::size_t i = 0; i < times.size(); ++i) {
        progress.finish_part();
        const Image image = renderer.render(times[i], progress.get());
        write_png(paths[i], image);
        if (i + 1 == times.size())
            result.summary = paths.front() + (i > 0 ? " to " + paths.back() : "") + ": " + describe(image) + ", " +
                             time_range(times.front(), times.back());
    }
    result.left_out_count = renderer.get_left_out_count();
    return result;
}

/// One file with pictures over the whole time of the archive.
RenderResult render_sheet(const ArchiveSession& session, const RenderArguments& arguments)
{
    const int count = *arguments.sheet_count;
    double start = 0.0, end = 0.0;
    if (!session.get_time_range(start, end)) start = end = 0.0;
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(count > 1 ? start + (end - start) * i / (count - 1) : start);

    RenderProgress progress(times.size() + 1);
    FrameRenderer renderer(session, arguments.options, times, default_sheet_size, progress.get());
    const ImageSize size = ContactSheet::get_size(count, renderer.get_size());
    if (std::int64_t{size.width} * size.height > max_sheet_pixels)
        throw session.error(fmt::format("the sheet would have {} x {} pixels. Ask for smaller pictures with --size.",
                                        size.width, size.height));
    ContactSheet sheet(count, renderer.get_size());
    for (const double time : times) {
        progress.finish_part();
        sheet.add(renderer.render(time, progress.get()), time);
    }
    write_png(arguments.output, sheet.get_image());
    return {arguments.output + ": " + counted(times.size(), "picture", "pictures") + ", " +
                describe(sheet.get_image()) + ", " + time_range(start, end),
            renderer.get_left_out_count()};
}

void run_render(const RenderArguments& arguments)
{
    const ArchiveSession session(arguments.files);
    RenderResult result;
    if (arguments.sheet_count) {
        result = render_sheet(session, arguments);
    } else if (arguments.frames.range) {
        const auto [first, last] = *arguments.frames.range;
        const double fps = arguments.frames.get_frame_rate(session);
        std::vector<std::string> paths;
        std::vector<double> times;
        for (std::int64_t frame = first; frame <= last; ++frame) {
            paths.push_back(make_frame_path(arguments.output, frame));
            times.push_back(static_cast<double>(frame) / fps);
        }
        result = render_files(session, arguments, paths, times);
    } else {
        const double time = arguments.time.value_or(session.get_start_time());
        result = render_files(session, arguments, {arguments.output}, {time});
    }
    fmt::print("{}\n", printable(result.summary));
    if (result.left_out_count > 0)
        throw session.error(counted(result.left_out_count, "object", "objects") +
                            " left out: what cannot be read cannot be shown. 'vo_abc check' lists all damage.");
}

/// Reads "1280x720".
bool parse_size(const std::string& text, ImageSize& size)
{
    const char* const end = text.data() + text.size();
    const auto [cross, error] = std::from_chars(text.data(), end, size.width);
    if (error != std::errc() || cross == end || *cross != 'x') return false;
    const auto [stop, next_error] = std::from_chars(cross + 1, end, size.height);
    return next_error == std::errc() && stop == end && size.width >= 1 && size.height >= 1 && size.width <= max_side &&
           size.height <= max_side;
}

/// Checks what CLI11 cannot; a ParseError is wrong usage.
void check(RenderArguments& arguments)
{
    if (std::filesystem::path(arguments.output).extension() != ".png")
        throw CLI::ValidationError("--output", "the name must end in .png");
    ImageSize size;
    if (!arguments.size_text.empty()) {
        if (!parse_size(arguments.size_text, size))
            throw CLI::ValidationError("--size", fmt::format("'{}' is no size up to {}x{}, as 1280x720",
                                                             arguments.size_text, max_side, max_side));
        arguments.options.size = size;
    }
}

void add_picture_options(CLI::App& command, RenderArguments& arguments)
{
    RenderOptions& options = arguments.options;
    const std::map<std::string, Shade> shades = {{"clay", Shade::CLAY},
                                                 {"normal", Shade::NORMAL},
                                                 {"uv", Shade::UV},
                                                 {"group", Shade::GROUP},
                                                 {"velocity", Shade::VELOCITY}};
    add_choice(command, "--shade", options.shade, shades, "clay, normal, uv, group or velocity; without it clay")
        ->type_name("MODE");
    command.add_option("--size", arguments.size_text, "Pixels of each picture; without it 1280x720")->type_name("WxH");
    command.add_option("--samples", options.sample_count, "Rays for each pixel; without it 16")
        ->type_name("N")
        ->check(whole_number(1, 65536));
    command.add_option("--shutter", options.shutter, "Seconds of motion blur, half of them before the time")
        ->type_name("S")
        ->check(non_negative_number());
    CLI::Option* const camera =
        command.add_option("--camera", options.camera, "Full name of a camera of the archive, or of its transform")
            ->type_name("PATH");
    command.add_option("--azimuth", options.azimuth, "Degrees that the view without camera stands right of the front")
        ->type_name("DEG")
        ->check(finite_number())
        ->excludes(camera);
    command.add_option("--elevation", options.elevation, "Degrees that it stands above the horizon")
        ->type_name("DEG")
        ->check(number_between(-90.0, 90.0))
        ->excludes(camera);
    command.add_option("--point-width", options.point_width, "Width of points, archive units")
        ->type_name("W")
        ->check(positive_number());
    command.add_option("--curve-width", options.curve_width, "Width of curves that have none, archive units")
        ->type_name("W")
        ->check(positive_number());
    command.add_flag("--transparent", options.is_transparent, "Leave what is behind the objects transparent");
}

} // namespace

void add_render_command(CLI::App& program, Action& action)
{
    const auto arguments = std::make_shared<RenderArguments>();
    CLI::App* const command = program.add_subcommand("render", "Pictures, at a time or over a range of times");
    add_files_argument(*command, arguments->files);
    command->add_option("-o,--output", arguments->output, "PNG file to write")->required()->type_name("OUT.png");
    command->add_option("--object", arguments->options.object, "Full name of an object: it alone, and what is below it")
        ->type_name("PATH");
    CLI::Option* const time =
        command->add_option("--time", arguments->time, "Seconds; without it the start of the archive")
            ->type_name("T")
            ->check(finite_number());
    CLI::Option* const frames =
        add_frame_options(*command, arguments->frames, "One file for each frame, named OUT with its number");
    frames->excludes(time);
    command->add_option("--sheet", arguments->sheet_count, "One file with N pictures over the time of the archive")
        ->type_name("N")
        ->check(whole_number(1, max_sheet_count))
        ->excludes(time)
        ->excludes(frames);
    add_picture_options(*command, *arguments);
    command->footer("Examples:\n"
                    "  vo_abc render walk.abc -o walk.png\n"
                    "  vo_abc render walk.abc --camera /root/camera --time 1.25 --shutter 0.02 -o shot.png\n"
                    "  vo_abc render walk.abc --shade group --frames 1-24 --fps 24 -o frames/walk.png\n"
                    "  vo_abc render walk.abc --sheet 12 -o sheet.png");
    command->callback([arguments, &action] {
        check(*arguments);
        action = [arguments] { run_render(*arguments); };
    });
}
