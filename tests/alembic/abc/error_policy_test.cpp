/// What happens on errors: the three policies, the texts, where a handle has its policy from.
#include "scratch.h"

#include <gmock/gmock.h>

namespace abc_tests {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("Test_Demo_v1", "Test_Base_v1", ".demo", true, DemoInfo);
ALEMBIC_ABC_DECLARE_SCHEMA_INFO("Test_Other_v1", "", ".other", false, OtherInfo);
typedef ISchemaObject<ISchema<DemoInfo>> IDemo;
typedef ISchemaObject<ISchema<OtherInfo>> IOther;
typedef OSchemaObject<OSchema<DemoInfo>> ODemo;

/// /demo with the demo schema, which holds the property "f"; /plain with the array "a".
void write_scene(const std::string& path)
{
    OArchive archive(WriteArchive(), path);
    ODemo demo(archive.getTop(), "demo");
    OFloatProperty(demo.getSchema(), "f").set(1.5f);
    OObject plain(archive.getTop(), "plain");
    OInt32ArrayProperty(plain.getProperties(), "a").set(std::vector<int32_t>{1, 2, 3});
}

TEST(ErrorHandler, TextsAndLogFollowThePolicy)
{
    std::runtime_error failure("broken");
    ErrorHandler quiet(QUIET);
    quiet(failure, "Class::member()");
    quiet(std::string("a message"), "Class::member()");
    quiet(ErrorHandler::kUnknownException, "Class::member()");
    EXPECT_EQ(quiet.getErrorLog(), "Class::member()\nERROR: EXCEPTION:\nbroken\n"
                                   "Class::member()\nERROR:\na message\n"
                                   "Class::member()\nERROR: UNKNOWN EXCEPTION\n\n");
    EXPECT_FALSE(quiet.valid());
    quiet.clear();
    EXPECT_TRUE(quiet.valid());

    ErrorHandler noisy(NOISY);
    testing::internal::CaptureStderr();
    noisy(failure, "here");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "here\nERROR: EXCEPTION:\nbroken\n");
    EXPECT_EQ(noisy.getErrorLog(), "here\nERROR: EXCEPTION:\nbroken\n");

    ErrorHandler throwing;
    EXPECT_EQ(thrown_text([&] { throwing(failure, "here"); }), "here\nERROR: EXCEPTION:\nbroken");
    EXPECT_TRUE(throwing.valid());
}

/// A client's handle whose guarded member throws what it is given.
class Guarded : public IArrayProperty
{
public:
    explicit Guarded(ErrorHandler::Policy policy)
        : IArrayProperty(policy)
    {
    }
    template <class T>
    int call(const T& what, bool reset_on_error = false)
    {
        if (reset_on_error) {
            ALEMBIC_ABC_SAFE_CALL_BEGIN("Guarded::call()");
            throw what;
            ALEMBIC_ABC_SAFE_CALL_END_RESET();
            return 2;
        }
        ALEMBIC_ABC_SAFE_CALL_BEGIN("Guarded::call()");
        throw what;
        ALEMBIC_ABC_SAFE_CALL_END();
        return 1;
    }
};

TEST(SafeCall, CatchesEveryKindOfException)
{
    Guarded handle(QUIET);
    EXPECT_EQ(handle.call(Exception("ours")), 1);
    EXPECT_EQ(handle.call(std::string("text")), 1);
    EXPECT_EQ(handle.call(7), 1);
    EXPECT_EQ(handle.getErrorHandler().getErrorLog(), "Guarded::call()\nERROR: EXCEPTION:\nours\n"
                                                      "Guarded::call()\nERROR:\ntext\n"
                                                      "Guarded::call()\nERROR: UNKNOWN EXCEPTION\n\n");
    // The reset comes before the report: the log holds this error alone.
    EXPECT_EQ(handle.call(Exception("last"), true), 2);
    EXPECT_EQ(handle.getErrorHandler().getErrorLog(), "Guarded::call()\nERROR: EXCEPTION:\nlast\n");
    EXPECT_EQ(thrown_text([] { Guarded(THROW).call(std::string("text")); }), "Guarded::call()\nERROR:\ntext");
}

TEST(ErrorTexts, OfOpening)
{
    const std::string text =
        "IArchive::IArchive( iFileName )\nERROR: EXCEPTION:\nCould not open as Ogawa file: none.abc";
    // The back end may add why.
    EXPECT_THAT(thrown_text([] { IArchive archive(ReadArchive(), "none.abc"); }), StartsWith(text));
    IArchive quiet(ReadArchive(), "none.abc", QUIET);
    EXPECT_FALSE(quiet);
    EXPECT_THAT(quiet.getErrorHandler().getErrorLog(), StartsWith(text));
    EXPECT_THAT(quiet.getErrorHandler().getErrorLog(), ::testing::EndsWith("\n"));
    quiet.reset();
    EXPECT_EQ(quiet.getErrorHandler().getErrorLog(), "");
    EXPECT_EQ(quiet.getErrorHandlerPolicy(), QUIET);
    EXPECT_THAT(thrown_text([] { OArchive archive(WriteArchive(), "no_such_folder/x.abc"); }),
                StartsWith("OArchive::OArchive( iFileName )\nERROR: EXCEPTION:\n"));
}

TEST(ErrorTexts, OfMissingAndMistakenNames)
{
    ScratchFile file;
    write_scene(file.path());
    IArchive archive(ReadArchive(), file.path());
    const IObject top = archive.getTop();
    const IDemo demo(top, "demo");
    const ICompoundProperty schema = demo.getSchema(), array_parent = top.getChild("plain").getProperties();

    const std::string init = "::init()\nERROR: EXCEPTION:\n";
    EXPECT_EQ(thrown_text([&] { ICompoundProperty(schema, "none"); }),
              "ICompoundProperty" + init + "Nonexistent compound property: none");
    EXPECT_EQ(thrown_text([&] { IScalarProperty(schema, "none"); }),
              "IScalarProperty" + init + "Nonexistent scalar property: none");
    EXPECT_EQ(thrown_text([&] { IArrayProperty(schema, "none"); }),
              "IArrayProperty" + init + "Nonexistent array property: none");
    EXPECT_EQ(thrown_text([&] { IFloatProperty(schema, "none"); }),
              "ITypedScalarProperty::ITypedScalarProperty()\nERROR: EXCEPTION:\nNonexistent scalar property: none");
    EXPECT_EQ(thrown_text([&] { IFloatArrayProperty(schema, "none"); }),
              "ITypedArrayProperty::ITypedArrayProperty()\nERROR: EXCEPTION:\nNonexistent array property: none");
    EXPECT_EQ(thrown_text([&] { IDoubleProperty(schema, "f"); }),
              "ITypedScalarProperty::ITypedScalarProperty()\nERROR: EXCEPTION:\n"
              "Incorrect match of header datatype: float32_t to expected: float64_t,\n"
              "...or incorrect match of interpretation:  to expected: ");
    EXPECT_THAT(thrown_text([&] { IInt32Property(array_parent, "a"); }), HasSubstr("'a' is an array property"));
    EXPECT_THAT(thrown_text([&] { IScalarProperty(array_parent, "a"); }), StartsWith("IScalarProperty" + init));

    const std::string object = "ISchemaObject::ISchemaObject( IObject )\nERROR: EXCEPTION:\n";
    EXPECT_EQ(thrown_text([&] { IDemo(top, "none"); }), object + "Bad child: none");
    EXPECT_EQ(thrown_text([&] { IOther(top, "demo", kStrictMatching); }),
              object + "Incorrect match of schema: Test_Demo_v1 to expected: Test_Other_v1");
    EXPECT_EQ(thrown_text([&] { IOther(top, "demo"); }),
              object + "ISchema::ISchema::init()\nERROR: EXCEPTION:\nNonexistent compound property: .other");
    EXPECT_THAT(thrown_text([&] { IOther other(top.getChild("demo"), kStrictMatching); }),
                StartsWith("ISchemaObject::ISchemaObject( wrap )\nERROR: EXCEPTION:\nIncorrect match of schema"));
    EXPECT_THAT(thrown_text([&] { IOther other(top.getChild("demo"), kWrapExisting); }),
                StartsWith("ISchemaObject::ISchemaObject( wrapflag )\nERROR: EXCEPTION:\nISchema::ISchema::init()"));

    // Absent by name is no error; out of range by index is.
    EXPECT_FALSE(IObject(top, "none"));
    EXPECT_EQ(schema.getPropertyHeader("none"), nullptr);
    EXPECT_THAT(thrown_text([&] { top.getChild(9); }), StartsWith("IObject::getChild()\nERROR: EXCEPTION:\n"));
    EXPECT_THAT(thrown_text([&] { schema.getPropertyHeader(9); }),
                StartsWith("ICompoundProperty::getPropertyHeader()\nERROR: EXCEPTION:\n"));
}

TEST(ErrorTexts, AQuietSchemaObjectTellsWhatItsSchemaMet)
{
    ScratchFile file;
    write_scene(file.path());
    IArchive archive(ReadArchive(), file.path());
    IOther wrong(archive.getTop(), "demo", QUIET);
    EXPECT_FALSE(wrong);
    EXPECT_THAT(wrong.getErrorHandler().getErrorLog(), HasSubstr("Nonexistent compound property: .other"));

    IArchive quiet(ReadArchive(), file.path(), QUIET);
    EXPECT_FALSE(quiet.getTimeSampling(9));
    EXPECT_THAT(quiet.getErrorHandler().getErrorLog(), StartsWith("IArchive:::getTimeSampling\nERROR: EXCEPTION:\n"));
    EXPECT_FALSE(quiet.valid()); // a logged error makes a live handle invalid
    EXPECT_EQ(quiet.getNumTimeSamplings(), 1u);
    quiet.getErrorHandler().clear();
    EXPECT_TRUE(quiet.valid());
}

TEST(PolicyInheritance, OfReading)
{
    ScratchFile file;
    write_scene(file.path());
    IArchive archive(ReadArchive(), file.path(), QUIET);
    const auto policy = [](const Base& handle) { return handle.getErrorHandlerPolicy(); };

    EXPECT_EQ(policy(archive.getTop()), THROW);
    EXPECT_EQ(policy(IObject(archive, kTop)), QUIET);
    EXPECT_EQ(policy(IObject(archive, kTop, NOISY)), NOISY);
    IObject top(archive);
    const IObject object(top, "demo");
    EXPECT_EQ(policy(object), QUIET);
    EXPECT_EQ(policy(IObject(top, "demo", NOISY)), NOISY);
    EXPECT_EQ(policy(top.getChild(0)), QUIET);
    EXPECT_EQ(policy(object.getParent()), QUIET);
    EXPECT_EQ(policy(object.getArchive()), QUIET);
    EXPECT_EQ(policy(object.getProperties()), THROW);
    EXPECT_EQ(policy(ICompoundProperty(object)), QUIET);

    EXPECT_EQ(policy(IDemo(top, "demo")), THROW); // by name only an argument counts
    EXPECT_EQ(policy(IDemo(top, "demo", NOISY)), NOISY);
    const IDemo wrapped(object, kWrapExisting);
    EXPECT_EQ(policy(wrapped), QUIET);
    EXPECT_EQ(policy(wrapped.getSchema()), QUIET);
    EXPECT_EQ(policy(IDemo(object, NOISY).getSchema()), NOISY);

    const IFloatProperty property(wrapped.getSchema(), "f");
    EXPECT_EQ(policy(property), QUIET);
    EXPECT_EQ(policy(IFloatProperty(wrapped.getSchema(), "f", NOISY)), NOISY);
    EXPECT_EQ(policy(property.getParent()), QUIET);
    EXPECT_EQ(policy(property.getObject()), QUIET);
    EXPECT_EQ(policy(IFloatProperty(property.getPtr())), THROW);
    EXPECT_EQ(policy(IScalarProperty(property)), QUIET);
}

TEST(PolicyInheritance, OfWriting)
{
    ScratchFile file;
    OArchive archive(WriteArchive(), file.path(), QUIET);
    const auto policy = [](const Base& handle) { return handle.getErrorHandlerPolicy(); };
    EXPECT_EQ(policy(archive), QUIET);
    EXPECT_EQ(policy(archive.getTop()), THROW);
    EXPECT_EQ(policy(OObject(archive, kTop)), THROW);
    OObject top(archive, kTop, QUIET);
    OObject child(top, "child");
    EXPECT_EQ(policy(child), QUIET);
    EXPECT_EQ(policy(child.getProperties()), THROW);
    OCompoundProperty properties(child, kTop);
    EXPECT_EQ(policy(properties), QUIET);
    EXPECT_EQ(policy(OCompoundProperty(properties, "compound")), THROW);
    OFloatProperty property(properties, "f");
    EXPECT_EQ(policy(property), QUIET);
    EXPECT_EQ(policy(property.getParent()), QUIET);
    EXPECT_EQ(policy(OFloatArrayProperty(properties, "a", NOISY)), NOISY);
    EXPECT_EQ(policy(OFloatProperty(properties.getPtr(), "g")), THROW);
    ODemo demo(top, "demo");
    EXPECT_EQ(policy(demo), QUIET);
    EXPECT_EQ(policy(demo.getSchema()), QUIET);
}

TEST(ErrorTexts, OfWriting)
{
    ScratchFile file;
    OArchive archive(WriteArchive(), file.path());
    OObject top = archive.getTop();
    ODemo demo(top, "demo");
    EXPECT_EQ(thrown_text([&] { ODemo(top, "demo"); }),
              "OSchemaObject::OSchemaObject( OObject )\nERROR: EXCEPTION:\nAlready have an Object named: demo");
    EXPECT_THAT(thrown_text([&] { OObject(top, "demo"); }), StartsWith("OObject::init()\nERROR: EXCEPTION:\n"));
    OCompoundProperty properties = demo.getProperties();
    OFloatProperty property(properties, "f");
    EXPECT_EQ(thrown_text([&] { OFloatProperty(properties, "f"); }),
              "OTypedScalarProperty::init()\nERROR: EXCEPTION:\nAlready have a property named: f");
    EXPECT_THAT(thrown_text([&] { OArrayProperty(properties, "f", AbcA::DataType(kInt32POD)); }),
                StartsWith("OArrayProperty::init()\nERROR: EXCEPTION:\n"));
    EXPECT_THAT(thrown_text([&] { property.setFromPrevious(); }), StartsWith("OScalarProperty::setFromPrevious()\n"));

    // A compound is reopened; nothing else is.
    OCompoundProperty compound(properties, "c");
    OFloatProperty(compound, "inside").set(1.0f);
    EXPECT_EQ(OCompoundProperty(properties, "c").getNumProperties(), 1u);
    EXPECT_THAT(thrown_text([&] { OCompoundProperty(properties, "f"); }),
                HasSubstr("Already have a property named: f"));

    OFloatProperty refused(properties, "f", QUIET);
    EXPECT_FALSE(refused);
    EXPECT_THAT(refused.getErrorHandler().getErrorLog(), HasSubstr("Already have a property named: f"));
}

} // namespace
} // namespace abc_tests
