/// @file
/// Compound properties of an Ogawa archive.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

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

/// A small object made for each request; what was parsed stays with the archive. It keeps its parents alive.
class CompoundPropertyReader final : public AbcA::CompoundPropertyReader,
                                     public std::enable_shared_from_this<CompoundPropertyReader>
{
public:
    /// `parent` is null for an object's own compound. `header` belongs to the parent's table. Throws what is wrong with
    /// the property headers in `group`.
    CompoundPropertyReader(AbcA::ObjectReaderPtr object, ArchiveReader& archive,
                           std::shared_ptr<CompoundPropertyReader> parent, const AbcA::PropertyHeader& header,
                           const Ogawa::GroupReader& group);

    const AbcA::PropertyHeader& getHeader() const override { return header_; }
    AbcA::ObjectReaderPtr getObject() override { return object_; }
    AbcA::CompoundPropertyReaderPtr getParent() override { return parent_; }
    AbcA::CompoundPropertyReaderPtr asCompoundPtr() override { return shared_from_this(); }
    size_t getNumProperties() override { return table_.size(); }
    const AbcA::PropertyHeader& getPropertyHeader(size_t i) override;
    const AbcA::PropertyHeader* getPropertyHeader(const std::string& name) override;
    AbcA::ScalarPropertyReaderPtr getScalarProperty(const std::string& name) override;
    AbcA::ArrayPropertyReaderPtr getArrayProperty(const std::string& name) override;
    AbcA::CompoundPropertyReaderPtr getCompoundProperty(const std::string& name) override;

    const Ogawa::BlockBuffer& file() const;

private:
    /// The property of that name and its number; null when there is none. Throws when it is not a `wanted` one.
    const PropertyRecord* find(const std::string& name, AbcA::PropertyType wanted, std::uint32_t& index) const;

    /// The group of property `index`. Throws when it has none, or it is this compound's or one of its ancestors'.
    Ogawa::GroupReader open_group(std::uint32_t index, const char* kind) const;

    const AbcA::ObjectReaderPtr object_;
    ArchiveReader& archive_;
    const std::shared_ptr<CompoundPropertyReader> parent_;
    const AbcA::PropertyHeader& header_;
    const Ogawa::GroupReader group_;
    const PropertyTable& table_;
    const std::uint32_t depth_; ///< of an object's own compound: 0
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
