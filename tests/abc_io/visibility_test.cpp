/// Visibility: classification, folding of headers, and the answer for a time.
#include <support/abc_archives.h>
#include <support/open_handle.h>

#include <abc_visibility_header.h>

#include <optional>

using namespace abc_archives;

namespace {

using Header = AbcVisibilityHeader;

Header make_header(Header::VisibilityType type, double start = 0.0, double end = 0.0)
{
    Header header;
    header.type = type;
    header.time_range = {start, end};
    return header;
}

void expect_header(const Header& header, Header::VisibilityType type, double start, double end, const std::string& what)
{
    EXPECT_STREQ(Header::get_visibility_type_name(header.type), Header::get_visibility_type_name(type)) << what;
    ASSERT_EQ(header.time_range.get_count(), 2u) << what;
    EXPECT_EQ(header.time_range[0], start) << what;
    EXPECT_EQ(header.time_range[1], end) << what;
}

/// Stored visibilities at 1, 2 ... seconds; none: no property.
using Values = std::optional<std::vector<std::int8_t>>;

AbcG::OXform add_object(AbcG::OObject parent, const std::string& name, const Values& values)
{
    AbcG::OXform object(parent, name);
    if (values) {
        auto property = AbcG::CreateVisibilityProperty(object, std::make_shared<AbcG::TimeSampling>(1.0, 1.0));
        for (const std::int8_t value : *values)
            property.set(value);
    }
    return object;
}

class Visibility : public StartedLibrary
{
protected:
    /// The handle on the object of that name; header readers bind transforms only, hosts may set any object.
    static AbcG::IObject bind(const OpenHandle& handle, const std::string& name)
    {
        AbcG::IObject object = static_cast<AbcG::IArchive*>(handle->get_archive())->getTop();
        std::istringstream path(name);
        for (std::string part; std::getline(path, part, '/');)
            if (!part.empty()) object = object.getChild(part);
        handle->set_object(new AbcG::IObject(object), AbcInputArchiveHandle::OBJECT_TYPE_NONE);
        return object;
    }

    const ScratchFile file_{"visibility.abc"};
    const AbcFileList files_{CoreString(file_.path())};
};

} // namespace

TEST_F(Visibility, IsClassifiedBySampleCountAndValue)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        add_object(top, "none", {});
        add_object(top, "unset", Values(std::in_place));
        add_object(top, "deferred", {{-1}});
        add_object(top, "hidden", {{0}});
        add_object(top, "visible", {{1}});
        add_object(top, "other", {{5}});
        add_object(top, "still", {{1, 1, 1}});
        AbcG::OXform text(top, "text");
        AbcG::OStringProperty(text.getProperties(), "visible").set("yes");
    });
    const OpenHandle handle(files_);
    const auto expect = [&](const char* name, Header::VisibilityType type, double start, double end, bool visible) {
        AbcG::IObject object = bind(handle, name);
        const Header header(&object);
        expect_header(header, type, start, end, name);
        EXPECT_EQ(header.get_constant_visibility(), visible) << name;
        EXPECT_EQ(header.is_undefined_or_constant(), !header.is_animated()) << name;
        EXPECT_EQ(header.is_undefined() + header.is_animated() + header.is_constant_hidden() +
                      header.is_constant_visible(),
                  1)
            << name;
    };
    expect("none", Header::VISIBILITY_TYPE_UNDEFINED, 0, 0, true);
    expect("unset", Header::VISIBILITY_TYPE_UNDEFINED, 0, 0, true);
    expect("deferred", Header::VISIBILITY_TYPE_UNDEFINED, 1, 1, true);
    expect("hidden", Header::VISIBILITY_TYPE_CONSTANT_HIDDEN, 1, 1, false);
    expect("visible", Header::VISIBILITY_TYPE_CONSTANT_VISIBLE, 1, 1, true);
    expect("other", Header::VISIBILITY_TYPE_UNDEFINED, 1, 1, true);
    expect("still", Header::VISIBILITY_TYPE_ANIMATED, 1, 3, false);
    expect("text", Header::VISIBILITY_TYPE_UNDEFINED, 0, 0, true);
    expect("/", Header::VISIBILITY_TYPE_UNDEFINED, 0, 0, true);
    AbcG::IObject invalid;
    EXPECT_TRUE(Header(&invalid).is_undefined());
    EXPECT_TRUE(Header(static_cast<void*>(nullptr)).is_undefined());
}

TEST(VisibilityHeader, InheritsByTheFirstRuleThatApplies)
{
    const auto undefined = Header::VISIBILITY_TYPE_UNDEFINED, animated = Header::VISIBILITY_TYPE_ANIMATED,
               hidden = Header::VISIBILITY_TYPE_CONSTANT_HIDDEN, visible = Header::VISIBILITY_TYPE_CONSTANT_VISIBLE;
    struct Case
    {
        Header child, parent, expected;
    } const cases[] = {
        {make_header(undefined, 7, 7), make_header(hidden, 1, 1), make_header(hidden, 1, 1)},
        {make_header(undefined, 7, 7), make_header(animated, 1, 3), make_header(animated, 1, 3)},
        {make_header(undefined, 7, 7), make_header(undefined), make_header(undefined)},
        {make_header(animated, 2, 5), make_header(undefined), make_header(animated, 0, 5)},
        {make_header(animated, 2, 5), make_header(animated, 3, 9), make_header(animated, 2, 9)},
        {make_header(animated, 2, 5), make_header(visible, 8, 8), make_header(animated, 2, 8)},
        {make_header(animated, 2, 5), make_header(hidden, 8, 8), make_header(hidden, 8, 8)},
        {make_header(visible, 7, 7), make_header(animated, 1, 3), make_header(animated, 1, 3)},
        {make_header(visible, 7, 7), make_header(visible, 1, 1), make_header(visible, 7, 7)},
        {make_header(visible, 7, 7), make_header(undefined), make_header(visible, 7, 7)},
        {make_header(visible, 7, 7), make_header(hidden, 1, 1), make_header(hidden, 1, 1)},
        {make_header(hidden, 7, 7), make_header(animated, 1, 3), make_header(hidden, 7, 7)},
        {make_header(hidden, 7, 7), make_header(hidden, 1, 1), make_header(hidden, 1, 1)},
    };
    for (const Case& c : cases) {
        Header header = c.child;
        header.inherit_parent_visibility_header(c.parent);
        expect_header(header, c.expected.type, c.expected.time_range[0], c.expected.time_range[1],
                      "case " + std::to_string(&c - cases));
    }
    EXPECT_STREQ(Header::get_visibility_type_name(Header::VISIBILITY_TYPE_COUNT), "VISIBILITY_TYPE_COUNT");
    EXPECT_STREQ(Header::get_visibility_type_name(static_cast<Header::VisibilityType>(9)), "VISIBILITY_TYPE_UNKNOWN");
}

// All chains of three objects, each with one of six visibilities, at three times.
TEST_F(Visibility, TheNearestThatDoesNotDeferDecides)
{
    const Values choices[] = {{}, {{-1}}, {{0}}, {{1}}, {{0, 1, -1}}, {{5}}};
    const auto value_at = [&](int choice, std::size_t sample) {
        const Values& values = choices[choice];
        return values ? int((*values)[std::min(sample, values->size() - 1)]) : -1;
    };
    write_archive(file_.path(), [&](AbcG::OObject top) {
        for (int a = 0; a < 6; ++a) {
            const AbcG::OXform first = add_object(top, std::to_string(a), choices[a]);
            for (int b = 0; b < 6; ++b) {
                const AbcG::OXform second = add_object(first, std::to_string(b), choices[b]);
                for (int c = 0; c < 6; ++c)
                    add_object(second, std::to_string(c), choices[c]);
            }
        }
    });
    const OpenHandle handle(files_);
    for (int chain = 0; chain < 216; ++chain) {
        const int choice[] = {chain % 6, chain / 6 % 6, chain / 36}; // from the object upwards
        const std::string name =
            std::to_string(choice[2]) + "/" + std::to_string(choice[1]) + "/" + std::to_string(choice[0]);
        bind(handle, name);
        for (std::size_t sample = 0; sample < 3; ++sample) {
            int decisive = -1;
            for (int i = 0; i < 3 && decisive == -1; ++i)
                decisive = value_at(choice[i], sample);
            EXPECT_EQ(AbcInput::is_object_visible_at(*handle, 1.0 + double(sample) + 0.4), decisive != 0)
                << name << ", sample " << sample;
        }
    }
}

TEST_F(Visibility, AVisibleChildOfAHiddenParentIsVisibleWhateverItsHeaderSays)
{
    write_archive(file_.path(), [](AbcG::OObject top) {
        const AbcG::OXform hidden = add_object(top, "hidden", {{0}});
        add_object(hidden, "child", {{1}});
        const AbcG::OXform body = add_object(top, "body", {});
        add_object(body, "shape", {});
        hidden.getChild("child").addChildInstance(body, "copy");
        add_object(top, "holder", {{0}}).addChildInstance(body, "copy");
    });
    const OpenHandle handle(files_);
    AbcG::IObject child = bind(handle, "hidden/child"), parent = child.getParent();
    Header header(&child);
    header.inherit_parent_visibility_header(Header(&parent));
    EXPECT_TRUE(header.is_constant_hidden());
    EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 0.0));

    // An instance is below the object that holds it, not below that of the original.
    bind(handle, "body/shape");
    EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 0.0));
    bind(handle, "holder/copy/shape");
    EXPECT_FALSE(AbcInput::is_object_visible_at(*handle, 0.0));
    bind(handle, "hidden/child/copy/shape");
    EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 0.0));

    handle->delete_object();
    EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 0.0)) << "nothing is not hidden";
    handle->set_object(new AbcG::IObject(), AbcInputArchiveHandle::OBJECT_TYPE_NONE);
    EXPECT_TRUE(AbcInput::is_object_visible_at(*handle, 0.0));
}
