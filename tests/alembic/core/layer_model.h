/// Random scenes for layering tests: written to archives, and merged by a plain model to compare with.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace layer_model {

namespace AbcA = Alembic::AbcCoreAbstract;

using Fields = std::map<std::string, std::string>;

struct Property
{
    std::string name;
    Fields metadata;
    AbcA::PropertyType type = AbcA::kScalarProperty;
    std::int32_t value = 0;         // of a simple property, which has one sample
    std::vector<Property> children; // of a compound
};

struct Object
{
    std::string name;
    Fields metadata;
    std::vector<Property> properties;
    std::vector<Object> children;
};

/// A random scene: few names, so that layers meet; now and then metadata that prunes or replaces.
Object random_scene(std::mt19937& random);

/// Writes the scene as an Ogawa archive; its top's metadata becomes the archive's.
void write_scene(const std::string& path, const Object& top);

/// What the layers (weakest first) must look like as one, in the form of describe(); without the top's metadata.
std::string describe_merged(const std::vector<Object>& layers);

/// The same of an archive that is read. Adds an error to the text wherever looking up by name does not give what
/// looking up by index does, or a pointer to the parent does not lead back.
std::string describe(const AbcA::ObjectReaderPtr& top);

} // namespace layer_model
