/// vo_abc tree: the objects of an archive, how they move and whether they show.
#include "archive_arguments.h"
#include "archive_session.h"
#include "argument_checks.h"
#include "command.h"
#include "object_description.h"
#include "object_walk.h"
#include "text.h"

#include <fmt/format.h>

#include <limits>
#include <memory>
#include <optional>

namespace {

struct TreeOptions
{
    std::vector<std::string> files;
    std::string object;
    int depth = std::numeric_limits<int>::max();
    bool is_json = false;
};

/// One printed object.
struct TreeNode
{
    std::string name, path;
    ObjectDescription description;
    std::vector<TreeNode> children;
};

class TreeBuilder
{
public:
    TreeBuilder(const ArchiveSession& session, int max_depth)
        : session_(session)
        , max_depth_(max_depth)
    {
    }

    TreeNode build(const Alembic::Abc::IObject& start)
    {
        if (const Alembic::Abc::IObject parent = start.getParent(); parent.valid())
            start_visibility_ =
                session_.on_object(parent.getFullName(), [&] { return read_inherited_visibility(parent); });
        const auto visit = [&](const WalkedObject& walked) {
            add(walked);
            // What an instance shows is printed once: where it is stored, or when the walk starts at the instance.
            return walked.depth < max_depth_ && (walked.depth == 0 || walked.instance_source.empty());
        };
        walk_objects(session_, start, visit, [&](const SkippedObject& skipped) { add_skipped(skipped); });
        return std::move(*root_);
    }

    std::size_t get_problem_count() const { return problem_count_; }

private:
    void add(const WalkedObject& walked)
    {
        const auto depth = static_cast<std::size_t>(walked.depth);
        const AbcVisibilityHeader& inherited =
            depth == 0 ? start_visibility_ : branch_[depth - 1]->description.visibility;
        add({walked.object.getName(), walked.path, describe_object(session_, walked, inherited), {}}, depth);
    }

    void add_skipped(const SkippedObject& skipped)
    {
        const auto depth = static_cast<std::size_t>(skipped.depth);
        if (skipped.was_visited) {
            std::string& problem = branch_[depth]->description.problem;
            if (problem.empty()) ++problem_count_;
            problem += (problem.empty() ? "" : "; ") + ("objects below are lost: " + skipped.reason);
            return;
        }
        TreeNode node{skipped.path.substr(skipped.path.rfind('/') + 1), skipped.path, {}, {}};
        node.description.kind = skipped.kind;
        node.description.problem = skipped.reason;
        add(std::move(node), depth);
    }

    void add(TreeNode node, std::size_t depth)
    {
        if (!node.description.problem.empty()) ++problem_count_;
        branch_.resize(depth);
        if (depth == 0) {
            root_ = std::move(node);
            branch_.push_back(&*root_);
        } else {
            // The children of a node on the branch may move when one is added; their own branch is gone by then.
            branch_[depth - 1]->children.push_back(std::move(node));
            branch_.push_back(&branch_[depth - 1]->children.back());
        }
    }

    const ArchiveSession& session_;
    const int max_depth_;
    AbcVisibilityHeader start_visibility_;
    std::optional<TreeNode> root_;
    std::vector<TreeNode*> branch_; ///< the nodes from the root to the one added last
    std::size_t problem_count_ = 0;
};

void print_node(const TreeNode& node, const std::string& head)
{
    const std::string kind = get_kind_name(node.description.kind);
    const std::string more = node.description.describe();
    fmt::print("{}{}  [{}{}{}]\n", head, printable(quoted_name(node.name)), kind, more.empty() ? "" : ": ",
               printable(more));
}

void print_children(const TreeNode& node, const std::string& indent)
{
    for (const TreeNode& child : node.children) {
        const bool is_last = &child == &node.children.back();
        print_node(child, indent + (is_last ? "└── " : "├── "));
        print_children(child, indent + (is_last ? "    " : "│   "));
    }
}

Json to_json(const TreeNode& node)
{
    Json json;
    json["name"] = node.name;
    json["path"] = node.path;
    node.description.add_to(json);
    json["children"] = Json::array();
    for (const TreeNode& child : node.children)
        json["children"].push_back(to_json(child));
    return json;
}

void run_tree(const TreeOptions& options)
{
    const ArchiveSession session(options.files);
    TreeBuilder builder(session, options.depth);
    TreeNode root = builder.build(session.find(options.object));
    if (options.is_json) {
        print_json(to_json(root));
    } else {
        root.name = root.path; // where the tree starts
        print_node(root, "");
        print_children(root, "");
    }
    if (const std::size_t count = builder.get_problem_count())
        throw session.error(counted(count, "object", "objects") +
                            " cannot be read; the tree shows which and why. 'vo_abc check' lists all damage.");
}

} // namespace

void add_tree_command(CLI::App& program, Action& action)
{
    const auto options = std::make_shared<TreeOptions>();
    CLI::App* const command =
        program.add_subcommand("tree", "The objects of an archive, how they move, whether they show");
    add_files_argument(*command, options->files);
    command->add_option("--object", options->object, "Full name of the object to start from")->type_name("PATH");
    command->add_option("--depth", options->depth, "Levels below the start")->type_name("N")->check(whole_number(0));
    add_json_option(*command, options->is_json);
    command->footer("Examples:\n"
                    "  vo_abc tree walk.abc\n"
                    "  vo_abc tree walk.abc --object /root/body --depth 2\n"
                    "  vo_abc tree walk.abc --json | jq -r '.. | objects | select(.visibility == \"hidden\") | .path'");
    command->callback([options, &action] { action = [options] { run_tree(*options); }; });
}
