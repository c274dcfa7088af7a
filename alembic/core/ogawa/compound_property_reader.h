/// @file
/// Compound properties of an Ogawa archive.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "core/common/compound_property_reader.h"
#include "core/ogawa/property_table.h"
#include "ogawa/group_reader.h"

#include <memory>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader;
class ObjectReader;

/// The compound of an object itself, in `group`. Throws what is wrong with its property headers.
AbcA::CompoundPropertyReaderPtr open_top_compound(ObjectReader& object, const Ogawa::GroupReader& group);

/// What was parsed of it stays with the archive.
class CompoundPropertyReader final : public AbcCoreCommon::CompoundPropertyReader<CompoundPropertyReader>
{
public:
    /// `parent` is null for an object's own compound. `header` belongs to the parent's table. Throws what is wrong with
    /// the property headers in `group`.
    CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                           std::shared_ptr<CompoundPropertyReader> parent, const AbcA::PropertyHeader& header,
                           const Ogawa::GroupReader& group);

    AbcA::ScalarPropertyReaderPtr getScalarProperty(const std::string& name) override;
    AbcA::ArrayPropertyReaderPtr getArrayProperty(const std::string& name) override;
    AbcA::CompoundPropertyReaderPtr getCompoundProperty(const std::string& name) override;

    const Ogawa::BlockBuffer& file() const;

private:
    /// The group of property `index`. Throws when it has none, or it is this compound's or one of its ancestors'.
    Ogawa::GroupReader open_group(std::uint32_t index, const char* kind) const;

    ArchiveReader& archive_;
    const Ogawa::GroupReader group_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
