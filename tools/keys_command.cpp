/// vo_abc keys: the data keys of an archive's geometry.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "object_description.h"
#include "object_walk.h"
#include "text.h"

#include <abc_input.h>
#include <fmt/format.h>

#include <functional>
#include <memory>

namespace {

struct KeysOptions
{
    std::vector<std::string> arguments; ///< FILES, then OBJECTs
    double time = 0.0;                  ///< seconds
    bool is_json = false;
};

bool has_key(ObjectKind kind)
{
    return is_mesh(kind) || kind == ObjectKind::CURVES || kind == ObjectKind::POINTS;
}

std::string read_key(const ArchiveSession& session, const WalkedObject& walked, double time)
{
    return session.on_object(walked.path, [&] {
        // The description sets the handle on the object.
        const ObjectDescription description = describe_object(session, walked, AbcVisibilityHeader());
        if (!description.problem.empty()) throw session.damage(walked.path, description.problem);
        return std::string(AbcInput::get_object_data_hash_key(session.get_handle(), time).get_data());
    });
}

/// Calls `use` with the full name and the key of each of `objects`, or of all that have one, as soon as it is read:
/// instances can stand for millions.
void read_keys(const ArchiveSession& session, const std::vector<std::string>& objects, double time,
               const std::function<void(const std::string& path, const std::string& key)>& use)
{
    for (const std::string& path : objects) {
        const Alembic::Abc::IObject object = session.find(path);
        const WalkedObject walked{object, object.getFullName(), 0, get_object_kind(object), ""};
        if (!has_key(walked.kind))
            throw session.error(walked.path, "has no key: only meshes, curves and points have one");
        use(walked.path, read_key(session, walked, time));
    }
    if (!objects.empty()) return;
    walk_objects(session, session.get_archive().getTop(), [&](const WalkedObject& walked) {
        if (has_key(walked.kind)) use(walked.path, read_key(session, walked, time));
        return true;
    });
}

/// The files of the archive end in ".abc"; what follows them are objects.
std::size_t count_files(const std::vector<std::string>& arguments)
{
    const std::string extension = ".abc";
    std::size_t count = 1;
    while (count < arguments.size() && arguments[count].size() > extension.size() &&
           arguments[count].compare(arguments[count].size() - extension.size(), extension.size(), extension) == 0)
        ++count;
    return count;
}

void run_keys(const KeysOptions& options)
{
    const auto first_object = options.arguments.begin() + static_cast<std::ptrdiff_t>(count_files(options.arguments));
    const ArchiveSession session({options.arguments.begin(), first_object});
    Json json = Json::object();
    read_keys(session, {first_object, options.arguments.end()}, options.time,
              [&](const std::string& path, const std::string& key) {
                  if (options.is_json)
                      json[path] = key;
                  else
                      fmt::print("{:<42} {}\n", key, printable(path));
              });
    if (options.is_json) print_json(json);
}

} // namespace

void add_keys_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<KeysOptions>();
    CLI::App* const command = program.add_subcommand("keys", "Texts that are equal for equal geometry");
    command->add_option("FILES", options->arguments, "The archive's files, then full names of objects; without: all")
        ->required()
        ->type_name("[OBJECT...]");
    command->add_option("--time", options->time, "Seconds; without it 0")->type_name("T")->check(finite_number());
    add_json_option(*command, options->is_json);
    command->footer("Meshes, curves and points have keys; bounds and user properties do not count. Files end in .abc,\n"
                    "what follows them are objects.\n"
                    "Examples:\n"
                    "  vo_abc keys walk.abc\n"
                    "  vo_abc keys walk.abc /root/body/bodyShape --time 1.25\n"
                    "  vo_abc keys walk.abc | sort | uniq -w 42 -D    # geometry that is stored more than once");
    command->callback([options, &action] { action = [options] { run_keys(*options); }; });
}
