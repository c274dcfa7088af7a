/// vo_abc watch: an archive that other programs write, and what each of its versions changes.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "object_description.h"
#include "object_walk.h"
#include "text.h"
#include "tool_application.h"
#include "tool_library.h"

#include <abc_input_archive_manager.h>
#include <fmt/format.h>
#include <vo_of/of_attr.h>
#include <vo_of/of_context.h>
#include <vo_of/of_file_reference_context_engine.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

struct WatchOptions
{
    std::vector<std::string> files;
    double interval = 1.0;            ///< seconds between two looks at the files
    std::optional<double> time_limit; ///< seconds; without it the tool watches until it is stopped
    bool answers_yes = false, is_once = false;
};

/// What is shown of an object: "polygon mesh, 24 samples".
using Objects = std::map<std::string, std::string>;

Objects read_objects(const ArchiveSession& session)
{
    Objects objects;
    walk_objects(session, session.get_archive().getTop(), [&](const WalkedObject& walked) {
        if (walked.kind == ObjectKind::TOP) return true;
        const ObjectDescription description = describe_object(session, walked, AbcVisibilityHeader());
        std::string& text = objects[walked.path] = get_kind_name(walked.kind);
        if (!description.problem.empty())
            text += ", " + description.problem;
        else if (description.has_samples)
            text += ", " + counted(static_cast<std::size_t>(description.sample_count), "sample", "samples");
        return walked.instance_source.empty();
    });
    return objects;
}

void print_changes(const Objects& before, const Objects& after)
{
    bool is_equal = true;
    const auto print = [&](char sign, const std::string& path, const std::string& text) {
        fmt::print("  {} {}: {}\n", sign, printable(path), printable(text));
        is_equal = false;
    };
    for (const auto& [path, text] : before)
        if (after.count(path) == 0) print('-', path, text);
    for (const auto& [path, text] : after) {
        const auto old = before.find(path);
        if (old == before.end())
            print('+', path, text);
        else if (old->second != text)
            print('~', path, old->second + " -> " + text);
    }
    if (is_equal) fmt::print("  the same objects and samples\n");
}

/// The scene of the tool: one item that refers to the archive by its files, as a host's items do. When the module finds
/// these changed, it asks the application, and on consent reloads the item's context.
class WatchedArchive
{
public:
    explicit WatchedArchive(const std::vector<std::string>& files)
        : files_(files)
        , context_("archive", std::make_unique<OfFileReferenceContextEngine>([this] { reload(); }))
    {
        open();
        list_ = session_->get_files();
        CoreArray<CoreString> names = list_.get_files();
        for (const CoreString& name : names)
            attrs_.push_back(std::make_unique<OfAttr>("file", OfAttr::TYPE_PATH, OfAttr::VISUAL_HINT_FILE_OPEN,
                                                      &context_, CoreArray<CoreString>{name}));
        fmt::print("{}: {}\n", printable(list_.join().get_data()), counted(objects_.size(), "object", "objects"));
    }

    /// Looks at the files. True when they were found changed, and read.
    bool check(AppBase& application)
    {
        const CoreArray<CoreLong> stamps = list_.get_modification_times();
        if (stamps == seen_stamps_) return false; // also after the answer no: nobody is asked twice about one version
        seen_stamps_ = stamps;
        is_reloaded_ = false;
        if (!list_.is_valid())
            fmt::print("{}; waiting for it\n", printable_lines(list_.get_errors('\n').get_data()));
        else if (session_)
            static_cast<void>(application.verify_state(AppBase::VERIFIABLE_STATE_RESOURCES, true));
        else
            reload(); // no archive is open that could be out of date
        std::fflush(stdout);
        return is_reloaded_;
    }

private:
    void open()
    {
        seen_stamps_ = AbcFileList(to_names(files_)).get_modification_times();
        auto session = std::make_unique<ArchiveSession>(files_); // replaces the cached archive
        objects_ = read_objects(*session);
        session_ = std::move(session);
    }

    void reload()
    {
        if (is_reloaded_) return; // each file of a layered archive has an attribute
        const Objects before = objects_;
        try {
            open();
        } catch (const std::exception& error) {
            session_.reset();
            fmt::print("cannot be read yet; waiting: {}\n", printable_lines(error.what()));
            return;
        }
        is_reloaded_ = true;
        fmt::print("reloaded: {} -> {}\n", counted(before.size(), "object", "objects"),
                   counted(objects_.size(), "object", "objects"));
        print_changes(before, objects_);
    }

    static CoreArray<CoreString> to_names(const std::vector<std::string>& files)
    {
        CoreArray<CoreString> names(files.size());
        std::copy(files.begin(), files.end(), names.begin());
        return names;
    }

    const std::vector<std::string> files_;
    AbcFileList list_;
    Objects objects_;
    CoreArray<CoreLong> seen_stamps_;
    bool is_reloaded_ = false;
    std::unique_ptr<ArchiveSession> session_; ///< null while the files are no archive
    OfContext context_;
    std::vector<std::unique_ptr<OfAttr>> attrs_;
};

void run_watch(const WatchOptions& options)
{
    ToolApplication& application = ToolLibrary::get_application();
    application.set_answers_yes(options.answers_yes);
    WatchedArchive archive(options.files);
    std::fflush(stdout);
    const Clock::time_point start = Clock::now();
    const auto is_over = [&] {
        return options.time_limit && std::chrono::duration<double>(Clock::now() - start).count() >= *options.time_limit;
    };
    do {
        std::this_thread::sleep_for(std::chrono::duration<double>(options.interval));
        if (archive.check(application) && options.is_once) return;
    } while (!is_over());
}

} // namespace

void add_watch_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<WatchOptions>();
    CLI::App* const command = program.add_subcommand("watch", "What changes in an archive that is being rewritten");
    add_files_argument(*command, options->files);
    command->add_option("--interval", options->interval, "Seconds between two looks at the files")
        ->check(number_between(0.01, 3600.0))
        ->type_name("S");
    command->add_option("--for", options->time_limit, "Stop after so many seconds")
        ->check(non_negative_number())
        ->type_name("S");
    command->add_flag("--yes", options->answers_yes, "Reload changed files without asking");
    command->add_flag("--once", options->is_once, "Stop after the first change that was read");
    command->footer("Prints the objects that came (+), went (-) or have another number of samples (~). A file that is\n"
                    "gone or half written is waited for. Stop with Ctrl-C.\n"
                    "Examples:\n"
                    "  vo_abc watch walk.abc\n"
                    "  vo_abc watch walk.abc --yes --once && make pictures");
    command->callback([options, &action] { action = [options] { run_watch(*options); }; });
}
