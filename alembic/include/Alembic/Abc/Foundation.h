/// Names of the lower layers and of Imath as the typed layer uses them, and its enumerations.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>
#include <Alembic/Util/All.h>

#include <ImathBox.h>
#include <ImathColor.h>
#include <ImathMatrix.h>
#include <ImathQuat.h>
#include <ImathVec.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract::ALEMBIC_VERSION_NS;
using namespace AbcA;
using namespace ::Alembic::Util;

using Imath::V2d;
using Imath::V2f;
using Imath::V2i;
using Imath::V2s;

using Imath::V3d;
using Imath::V3f;
using Imath::V3i;
using Imath::V3s;

using Imath::Box2d;
using Imath::Box2f;
using Imath::Box2i;
using Imath::Box2s;

using Imath::Box3d;
using Imath::Box3f;
using Imath::Box3i;
using Imath::Box3s;

using Imath::M33d;
using Imath::M33f;
using Imath::M44d;
using Imath::M44f;

using Imath::Quatd;
using Imath::Quatf;

using Imath::C3h;
using Imath::C4h;
typedef Imath::Color3f C3f;
typedef Imath::Color3c C3c;
typedef Imath::Color4f C4f;
typedef Imath::Color4c C4c;

typedef Imath::V3f N3f;
typedef Imath::V3d N3d;

/// How strictly a reader compares what it opens with what it is.
enum SchemaInterpMatching {
    kStrictMatching = 0,     ///< titles of schemas, interpretations of properties
    kNoMatching = 1,         ///< data types of properties only
    kSchemaTitleMatching = 2 ///< titles of schemas, without the name of the compound
};

/// Chooses the constructor that takes over an existing reader, writer or object.
enum WrapExistingFlag { kWrapExisting = 0 };

/// Chooses the constructor that takes the top of an archive or an object.
enum TopFlag { kTop = 0 };

/// Whether a written schema is complete or a partial layer.
enum SparseFlag {
    kFull = 0,  ///< with the metadata by which readers recognise it
    kSparse = 1 ///< only what is set is written
};

/// The pointer behind something that may be a handle or the pointer itself.
inline AbcA::ArchiveReaderPtr GetArchiveReaderPtr(AbcA::ArchiveReaderPtr ptr)
{
    return ptr;
}
inline AbcA::ArchiveWriterPtr GetArchiveWriterPtr(AbcA::ArchiveWriterPtr ptr)
{
    return ptr;
}
inline AbcA::ObjectReaderPtr GetObjectReaderPtr(AbcA::ObjectReaderPtr ptr)
{
    return ptr;
}
inline AbcA::ObjectWriterPtr GetObjectWriterPtr(AbcA::ObjectWriterPtr ptr)
{
    return ptr;
}
inline AbcA::CompoundPropertyReaderPtr GetCompoundPropertyReaderPtr(AbcA::CompoundPropertyReaderPtr ptr)
{
    return ptr;
}
inline AbcA::CompoundPropertyWriterPtr GetCompoundPropertyWriterPtr(AbcA::CompoundPropertyWriterPtr ptr)
{
    return ptr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic

/// Throws an Alembic::Util::Exception; `TEXT` is a chain: `ABC_THROW("index " << index)`.
#define ABC_THROW(TEXT) ALEMBIC_THROW(TEXT)
