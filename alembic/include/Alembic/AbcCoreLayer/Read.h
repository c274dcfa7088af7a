/// Several archives read as one.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/AbcCoreLayer/Util.h>

#include <vector>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

typedef std::vector<AbcCoreAbstract::ArchiveReaderPtr> ArchiveReaderPtrs;

/// Merges archives of any back end. Of each object the children and properties of all layers are seen, by name:
/// the strongest layer's simple properties, compounds and objects joined, unless a layer hides what is below it with
/// SetPrune() or SetReplace(). Nothing is read until it is asked for, and nothing is merged twice; any number of
/// threads may read as far as the layers allow it themselves.
///
/// The archive's name is the layers' names joined by `,`, each value of its metadata theirs joined by ` , `, weakest
/// first; its version is the greatest. A time sampling, or a child by index, that does not exist is null, without an
/// error. The top object has an empty name. Simple properties are the layer's own readers.
class ALEMBIC_EXPORT ReadArchive
{
public:
    ReadArchive();

    /// The layers, weakest first. Throws when there is none, or one is null.
    AbcCoreAbstract::ArchiveReaderPtr operator()(ArchiveReaderPtrs& archives) const;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
