/// Handles that refer to nothing: they answer with empty values and never crash.
#include "scratch.h"

#include <gmock/gmock.h>

#include <cfloat>

namespace abc_tests {
namespace {

using ::testing::HasSubstr;

ALEMBIC_ABC_DECLARE_SCHEMA_INFO("Test_Demo_v1", "", ".demo", false, DemoInfo);
typedef ISchemaObject<ISchema<DemoInfo>> IDemo;
typedef OSchemaObject<OSchema<DemoInfo>> ODemo;

TEST(InvalidHandle, ObjectsAnswerQuietly)
{
    IObject object;
    EXPECT_FALSE(object);
    EXPECT_TRUE(!object);
    EXPECT_EQ(object.getName(), "");
    EXPECT_EQ(object.getFullName(), "");
    EXPECT_EQ(object.getHeader().getName(), "");
    EXPECT_EQ(object.getMetaData().size(), 0u);
    EXPECT_EQ(object.getNumChildren(), 0u);
    EXPECT_EQ(object.getChildHeader("x"), nullptr);
    EXPECT_EQ(object.getChildHeader(3).getName(), "");
    EXPECT_FALSE(object.getChild(0));
    EXPECT_FALSE(object.getChild("x"));
    EXPECT_FALSE(object.getProperties());
    EXPECT_FALSE(object.getArchive());
    EXPECT_FALSE(object.getParent());
    EXPECT_FALSE(object.isInstanceRoot() || object.isInstanceDescendant() || object.isChildInstance(0) ||
                 object.isChildInstance("x"));
    EXPECT_EQ(object.instanceSourcePath(), "");
    Digest digest;
    EXPECT_FALSE(object.getPropertiesHash(digest) || object.getChildrenHash(digest));
    EXPECT_FALSE(IObject(object, "x"));
    EXPECT_TRUE(object.getErrorHandler().valid());
}

TEST(InvalidHandle, ArchivesAnswerQuietly)
{
    IArchive archive;
    EXPECT_FALSE(archive);
    EXPECT_EQ(archive.getName(), "");
    EXPECT_FALSE(archive.getTop());
    EXPECT_FALSE(IObject(archive, kTop));
    EXPECT_FALSE(archive.getTimeSampling(0));
    EXPECT_EQ(archive.getNumTimeSamplings(), 0u);
    EXPECT_EQ(archive.getMaxNumSamplesForTimeSamplingIndex(0), 0);
    EXPECT_EQ(archive.getArchiveVersion(), 0);
    EXPECT_FALSE(archive.getReadArraySampleCachePtr());
    std::string application = "kept", library = "kept", date = "kept", description = "kept";
    uint32_t version = 7;
    GetArchiveInfo(archive, application, library, version, date, description);
    EXPECT_EQ(application + library + date + description, "keptkeptkeptkept");
    EXPECT_EQ(version, 7u);
    double start = 0.0, end = 0.0;
    GetArchiveStartAndEndTime(archive, start, end);
    EXPECT_EQ(start, DBL_MAX);
    EXPECT_EQ(end, -DBL_MAX);
}

TEST(InvalidHandle, PropertiesAnswerQuietly)
{
    ICompoundProperty compound;
    EXPECT_EQ(compound.getNumProperties(), 0u);
    EXPECT_EQ(compound.getPropertyHeader("x"), nullptr);
    EXPECT_EQ(compound.getPropertyHeader(0).getName(), "");
    EXPECT_FALSE(compound.getParent());
    EXPECT_FALSE(compound.getObject());
    EXPECT_EQ(compound.getName(), "");

    IV3fProperty scalar;
    EXPECT_EQ(scalar.getNumSamples(), 0u);
    EXPECT_TRUE(scalar.isConstant());
    EXPECT_FALSE(scalar.getTimeSampling());
    V3f value(1.0f, 2.0f, 3.0f);
    scalar.get(value);
    EXPECT_EQ(value, V3f(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(scalar.getValue(), V3f(0.0f));
    EXPECT_TRUE(IBox3dProperty().getValue().isEmpty());

    IFloatArrayProperty array;
    EXPECT_EQ(array.getNumSamples(), 0u);
    EXPECT_TRUE(array.isConstant());
    EXPECT_FALSE(array.isScalarLike());
    EXPECT_FALSE(array.getValue());
    float memory[2] = {5.0f, 6.0f};
    array.getAs(memory);
    array.getAs(memory, kFloat32POD);
    EXPECT_EQ(memory[0], 5.0f);
    AbcA::ArraySampleKey key;
    EXPECT_FALSE(array.getKey(key));
    Dimensions dimensions(4);
    array.getDimensions(dimensions);
    EXPECT_EQ(dimensions.numPoints(), 4u);
    EXPECT_TRUE(array.getErrorHandler().valid());
}

TEST(InvalidHandle, OpeningInsideOneIsAnError)
{
    const ICompoundProperty none;
    EXPECT_THAT(thrown_text([&] { ICompoundProperty(none, "x"); }), HasSubstr("invalid parent"));
    EXPECT_THAT(thrown_text([&] { IFloatProperty(none, "x"); }),
                HasSubstr("NULL CompoundPropertyReader passed into ITypedScalarProperty ctor"));
    EXPECT_THAT(thrown_text([&] { IFloatArrayProperty(none, "x"); }),
                HasSubstr("NULL CompoundPropertyReader passed into ITypedArrayProperty ctor"));
    EXPECT_THAT(thrown_text([] { IDemo demo((IObject())); }),
                HasSubstr("ISchema::ISchema::init()\nERROR: EXCEPTION:\nNULL parent passed into ISchema ctor"));
    EXPECT_NE(thrown_text([] { IDemo(IObject(), "x"); }), "");
    EXPECT_NE(thrown_text([] { IFloatProperty((AbcA::ScalarPropertyReaderPtr())); }), "");

    EXPECT_EQ(OObject().getName(), "");
    EXPECT_FALSE(OObject().getProperties());
    EXPECT_FALSE(OObject().getArchive());
    EXPECT_NE(thrown_text([] { OObject(OObject(), "x"); }), "");
    EXPECT_NE(thrown_text([] { ODemo(OObject(), "x"); }), "");
    EXPECT_NE(thrown_text([] { OFloatProperty(OCompoundProperty(), "x"); }), "");
    EXPECT_NE(thrown_text([] { OFloatProperty().set(1.0f); }), "");
    EXPECT_NE(thrown_text([] { OFloatArrayProperty().set(std::vector<float>(2)); }), "");
    EXPECT_NE(thrown_text([] { OArchive().getTop(); }), "");
    EXPECT_NE(thrown_text([] { OArchive().addTimeSampling(AbcA::TimeSampling(1.0, 0.0)); }), "");
}

} // namespace
} // namespace abc_tests
