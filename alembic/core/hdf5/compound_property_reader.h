/// @file
/// Compound properties of an HDF5 archive.
#pragma once

#include "core/common/compound_property_reader.h"
#include "core/hdf5/library.h"

#include <memory>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader;
class File;

/// Keeps its group open; what was parsed of it stays with the archive.
class CompoundPropertyReader final : public AbcCoreCommon::CompoundPropertyReader<CompoundPropertyReader>
{
public:
    /// `parent` is null for an object's own compound. `group` is none for a compound without properties. The caller
    /// holds a LibraryLock. Throws what is wrong with the property headers.
    CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                           std::shared_ptr<CompoundPropertyReader> parent, const AbcA::PropertyHeader& header,
                           Handle group);

    AbcA::ScalarPropertyReaderPtr getScalarProperty(const std::string& name) override;
    AbcA::ArrayPropertyReaderPtr getArrayProperty(const std::string& name) override;
    AbcA::CompoundPropertyReaderPtr getCompoundProperty(const std::string& name) override;

    ArchiveReader& archive() const { return archive_; }
    File& file() const;

    /// The group of its properties; it has one if it has properties.
    hid_t group() const { return group_.id(); }

private:
    ArchiveReader& archive_;
    const Handle group_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
