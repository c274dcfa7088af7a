/// Collections and materials, written and read back.
#include "support/scratch_file.h"

#include <Alembic/AbcCollection/All.h>
#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcMaterial/All.h>

#include <gtest/gtest.h>

using namespace Alembic::Abc;
using namespace Alembic::AbcCollection;
using namespace Alembic::AbcMaterial;

namespace {

typedef std::vector<std::string> Names;

OArchive new_archive(const ScratchFile& file)
{
    return OArchive(Alembic::AbcCoreOgawa::WriteArchive(), file.path());
}

IArchive open_archive(const ScratchFile& file)
{
    return IArchive(Alembic::AbcCoreOgawa::ReadArchive(), file.path());
}

template <class ASK>
Names list(ASK ask)
{
    Names names = {"replaced"};
    ask(names);
    return names;
}

Names names_of(const MaterialFlatten::ParameterEntryVector& entries)
{
    Names names;
    for (const auto& entry : entries)
        names.push_back(entry.name);
    return names;
}

float value_of(const MaterialFlatten::ParameterEntry& entry)
{
    return IFloatProperty(entry.parent, entry.header->getName()).getValue();
}

/// A surface shader, and a network of two nodes: "image" into "shade", whose gain is exposed as "brightness".
void write_network(OMaterialSchema material, float gain)
{
    material.setShader("render", "surface", "old");
    material.setShader("render", "surface", "plastic");
    material.setShader("render", "displacement", "bumps");
    material.setShader("view", "surface", "flat");
    OFloatProperty(material.getShaderParameters("render", "surface"), "gloss").set(0.5f);
    material.addNetworkNode("shade", "render", "lambert");
    material.addNetworkNode("image", "render", "file");
    OFloatProperty(material.getNetworkNodeParameters("shade"), "gain").set(gain);
    OFloatProperty(material.getNetworkNodeParameters("shade"), "bias").set(0.0f);
    material.setNetworkNodeConnection("shade", "colour", "image", "rgb");
    material.setNetworkNodeConnection("shade", "alpha", "image", "");
    material.setNetworkTerminal("render", "surface", "shade", "out");
    material.setNetworkTerminal("view", "surface", "shade");
    material.setNetworkInterfaceParameterMapping("brightness", "shade", "gain");
}

} // namespace

TEST(Collections, ListsAreFoundByNameAndInTheOrderOfCreation)
{
    ScratchFile file("collections.abc");
    const Names lights = {"/a", "/b/c"}, none;
    {
        OArchive archive = new_archive(file);
        OCollections collections(archive.getTop(), "c");
        OCollectionsSchema schema = collections.getSchema();
        schema.createCollection("lights").set(lights);
        schema.createCollection("empty").set(none);
        collections.getSchema().createCollection("lights").set(lights); // the one that is there
        EXPECT_EQ(collections.getSchema().getNumCollections(), 2u);
        EXPECT_EQ(schema.getCollection(1).getName(), "empty");
        EXPECT_EQ(schema.getCollection("lights").getNumSamples(), 2u);
        EXPECT_FALSE(schema.getCollection("absent").valid());
        EXPECT_THROW(schema.getCollection(2), Alembic::Util::Exception);
        OStringProperty(schema, "not a collection").set("text");
        const OCollectionsSchema moved = std::move(schema);
        EXPECT_EQ(moved.getNumCollections(), 2u);
        EXPECT_EQ(schema.getNumCollections(), 2u) << "what was moved from can still be asked";
    }
    ICollections collections(open_archive(file).getTop(), "c");
    ICollectionsSchema& schema = collections.getSchema();
    ASSERT_EQ(schema.getNumCollections(), 2u);
    EXPECT_EQ(schema.getCollectionName(0), "lights");
    EXPECT_EQ((*schema.getCollection(0).getValue())[1], "/b/c");
    EXPECT_EQ(schema.getCollection("empty").getValue()->size(), 0u);
    EXPECT_FALSE(schema.getCollection("absent").valid());
    EXPECT_THROW(schema.getCollection(7), Alembic::Util::Exception);
    EXPECT_EQ(ICollectionsSchema().getNumCollections(), 0u);
}

TEST(Material, ShadersNetworksAndMappingsReadBack)
{
    ScratchFile file("material.abc");
    {
        OArchive archive = new_archive(file);
        write_network(OMaterial(archive.getTop(), "m").getSchema(), 2.0f);
    }
    IMaterialSchema material = IMaterial(open_archive(file).getTop(), "m").getSchema();
    EXPECT_EQ(list([&](Names& names) { material.getTargetNames(names); }), (Names{"render", "view"}));
    EXPECT_EQ(list([&](Names& names) { material.getShaderTypesForTarget("render", names); }),
              (Names{"displacement", "surface"}));
    std::string shader = "kept";
    EXPECT_FALSE(material.getShader("view", "displacement", shader));
    EXPECT_EQ(shader, "kept");
    EXPECT_TRUE(material.getShader("render", "surface", shader));
    EXPECT_EQ(shader, "plastic");
    EXPECT_EQ(IFloatProperty(material.getShaderParameters("render", "surface"), "gloss").getValue(), 0.5f);
    EXPECT_FALSE(material.getShaderParameters("view", "surface").valid());

    EXPECT_EQ(list([&](Names& names) { material.getNetworkNodeNames(names); }), (Names{"shade", "image"}));
    IMaterialSchema::NetworkNode shade = material.getNetworkNode(0);
    std::string target, type, input, node, output;
    EXPECT_TRUE(shade.getTarget(target) && shade.getNodeType(type));
    EXPECT_EQ(shade.getName() + " " + target + " " + type, "shade render lambert");
    ASSERT_EQ(shade.getNumConnections(), 2u);
    EXPECT_TRUE(shade.getConnection(0, input, node, output));
    EXPECT_EQ(input + " " + node + " " + output, "alpha image ");
    EXPECT_TRUE(shade.getConnection("colour", node, output));
    EXPECT_EQ(node + " " + output, "image rgb");
    EXPECT_FALSE(shade.getConnection(2, input, node, output));
    EXPECT_FALSE(material.getNetworkNode("absent").valid());
    EXPECT_FALSE(material.getNetworkNode(2).valid());

    EXPECT_TRUE(material.getNetworkTerminal("render", "surface", node, output));
    EXPECT_EQ(node + " " + output, "shade out");
    EXPECT_TRUE(material.getNetworkTerminal("view", "surface", node, output));
    EXPECT_EQ(output, "");
    ASSERT_EQ(material.getNumNetworkInterfaceParameterMappings(), 1u);
    EXPECT_TRUE(material.getNetworkInterfaceParameterMapping(0, input, node, output));
    EXPECT_EQ(input + " " + node + " " + output, "brightness shade gain");
    EXPECT_FALSE(material.getNetworkInterfaceParameters().valid());
}

TEST(Material, NamesThatCouldNotBeReadBackAreRefused)
{
    ScratchFile file("refused.abc");
    OArchive archive = new_archive(file);
    OMaterialSchema material = OMaterial(archive.getTop(), "m").getSchema();
    EXPECT_THROW(material.setShader("a.b", "surface", "s"), Alembic::Util::Exception);
    EXPECT_THROW(material.setShader("", "surface", "s"), Alembic::Util::Exception);
    EXPECT_THROW(material.addNetworkNode("a.b", "t", "t"), Alembic::Util::Exception);
    material.addNetworkNode("a", "t", "t");
    EXPECT_THROW(material.addNetworkNode("a", "t", "t"), Alembic::Util::Exception);
    EXPECT_THROW(material.getNetworkNodeParameters("b"), Alembic::Util::Exception);
    EXPECT_THROW(material.setNetworkNodeConnection("b", "i", "a", ""), Alembic::Util::Exception);
    EXPECT_THROW(OMaterialSchema().setShader("t", "s", "n"), Alembic::Util::Exception);
}

TEST(Material, TheStrongestOfFlattenedMaterialsWins)
{
    ScratchFile file("flatten.abc");
    {
        OArchive archive = new_archive(file);
        write_network(OMaterial(archive.getTop(), "library").getSchema(), 2.0f);
        OObject object(archive.getTop(), "object"), plain(archive.getTop(), "plain");
        OMaterialSchema own = addMaterial(object);
        own.setShader("render", "surface", "glass");
        OFloatProperty(own.getShaderParameters("render", "surface"), "tint").set(1.0f);
        OFloatProperty(own.getNetworkInterfaceParameters(), "brightness").set(9.0f);
        addMaterialAssignment(object, "/library");
        addMaterialAssignment(plain, "/nowhere/at/all");
    }
    IArchive archive = open_archive(file);
    std::string path, shader;
    EXPECT_TRUE(getMaterialAssignmentPath(archive.getTop().getChild("object"), path));
    EXPECT_EQ(path, "/library");
    EXPECT_FALSE(getMaterialAssignmentPath(archive.getTop().getChild("library"), path));
    IMaterialSchema own;
    EXPECT_FALSE(hasMaterial(archive.getTop().getChild("plain"), own));
    EXPECT_TRUE(MaterialFlatten(archive.getTop().getChild("plain")).empty());
    EXPECT_TRUE(MaterialFlatten(IObject()).empty());

    MaterialFlatten flat(archive.getTop().getChild("object"));
    EXPECT_TRUE(flat.getShader("render", "surface", shader));
    EXPECT_EQ(shader, "glass");
    EXPECT_TRUE(flat.getShader("view", "surface", shader));
    EXPECT_EQ(shader, "flat");
    EXPECT_EQ(list([&](Names& names) { flat.getTargetNames(names); }), (Names{"render", "view"}));
    MaterialFlatten::ParameterEntryVector entries;
    flat.getShaderParameters("render", "surface", entries);
    EXPECT_EQ(names_of(entries), (Names{"gloss", "tint"}));

    ASSERT_EQ(flat.getNumNetworkNodes(), 2u);
    MaterialFlatten::NetworkNode shade = flat.getNetworkNode("shade");
    shade.getParameters(entries);
    ASSERT_EQ(names_of(entries), (Names{"bias", "gain"}));
    EXPECT_EQ(value_of(entries[1]), 9.0f); // what the object sets under the exposed name
    MaterialFlatten::NetworkNode::ConnectionVector connections;
    shade.getConnections(connections);
    ASSERT_EQ(connections.size(), 2u);
    EXPECT_TRUE(connections[1] == MaterialFlatten::NetworkNode::Connection("colour", "image", "rgb"));
    EXPECT_FALSE(flat.getNetworkNode("absent").valid());

    MaterialFlatten library(IMaterial(archive.getTop(), "library"));
    library.getNetworkNode("shade").getParameters(entries);
    EXPECT_EQ(value_of(entries[1]), 2.0f);
}
