/// Writes schemas property by property, so that tests can leave a property out or give it another type.
#pragma once

#include "support/scratch_file.h"

#include <Alembic/AbcCoreOgawa/All.h>
#include <Alembic/AbcGeom/All.h>

#include <functional>
#include <string>
#include <vector>

namespace schema_parts {

using namespace Alembic::AbcGeom;

/// One property of a schema, by the function that writes it under its name.
struct Part
{
    std::string name;
    bool required;
    std::function<void(OCompoundProperty, const std::string&)> write;
};
typedef std::vector<Part> Parts;

template <class PROPERTY, class VALUE>
Part scalar(const std::string& name, const VALUE& value, bool required)
{
    return {name, required, [value](OCompoundProperty into, const std::string& n) { PROPERTY(into, n).set(value); }};
}

template <class PROPERTY, class VALUE>
Part array(const std::string& name, const std::vector<VALUE>& values, bool required)
{
    return {name, required, [values](OCompoundProperty into, const std::string& n) {
                PROPERTY(into, n).set(typename PROPERTY::sample_type(values));
            }};
}

/// A scalar with several values in its one element.
template <class VALUE>
Part tuple(const std::string& name, PlainOldDataType pod, const std::vector<VALUE>& values, bool required)
{
    return {name, required, [=](OCompoundProperty into, const std::string& n) {
                OScalarProperty(into, n, DataType(pod, static_cast<uint8_t>(values.size()))).set(values.data());
            }};
}

/// An object that reads as INFO's schema, with an empty compound.
template <class INFO>
OCompoundProperty make_schema(OObject parent, const std::string& name)
{
    MetaData of_compound, of_object;
    of_compound.set("schema", INFO::title());
    of_object.set("schema", INFO::title());
    of_object.set("schemaObjTitle", std::string(INFO::title()) + ":" + INFO::defaultName());
    if (*INFO::schemaBaseType() != '\0') {
        of_compound.set("schemaBaseType", INFO::schemaBaseType());
        of_object.set("schemaBaseType", INFO::schemaBaseType());
    }
    OObject object(parent, name, of_object);
    return OCompoundProperty(object.getProperties(), INFO::defaultName(), of_compound);
}

template <class INFO>
void write_object(OObject parent, const std::string& name, const Parts& parts)
{
    OCompoundProperty schema = make_schema<INFO>(parent, name);
    for (const Part& part : parts) {
        part.write(schema, part.name);
    }
}

inline IArchive open_archive(const ScratchFile& file)
{
    return IArchive(Alembic::AbcCoreOgawa::ReadArchive(), file.path());
}

} // namespace schema_parts
