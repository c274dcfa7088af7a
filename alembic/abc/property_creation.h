/// What the makers of written properties share.
#pragma once

#include <Alembic/Abc/Argument.h>
#include <Alembic/Abc/TypeDescription.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// Index of the time sampling that the arguments name; one given as a pointer is added to the archive.
inline uint32_t time_sampling_index(AbcCoreAbstract::CompoundPropertyWriter& parent, const Arguments& args)
{
    const AbcCoreAbstract::TimeSamplingPtr time_sampling = args.getTimeSampling();
    if (!time_sampling) return args.getTimeSamplingIndex();
    return parent.getObject()->getArchive()->addTimeSampling(*time_sampling);
}

/// The arguments' metadata with the type's interpretation, where it has one.
inline AbcCoreAbstract::MetaData typed_metadata(const TypeDescription& type, const Arguments& args)
{
    AbcCoreAbstract::MetaData meta_data = args.getMetaData();
    if (*type.interpretation != '\0') meta_data.set("interpretation", type.interpretation);
    return meta_data;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
