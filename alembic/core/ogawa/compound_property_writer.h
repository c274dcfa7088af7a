/// @file
/// A compound property of an Ogawa archive that is being written.
#pragma once

#include "object_writer.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <memory>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// Writes headers and group of a compound all of whose properties are finished; returns the group's entry.
std::uint64_t write_compound(OgawaArchiveWriter& archive, const NamedRecords<WrittenProperty>& properties);

/// Keeps its object and parent alive; is written when the last pointer to it or to anything below goes. An object's top
/// compound is a view of what the object owns, and written with that.
class OgawaCompoundWriter final : public AbcA::CompoundPropertyWriter,
                                  public std::enable_shared_from_this<OgawaCompoundWriter>
{
public:
    /// The top compound, without a name.
    explicit OgawaCompoundWriter(std::shared_ptr<OgawaObjectWriter> object);
    /// `record` is owned by the parent.
    OgawaCompoundWriter(std::shared_ptr<OgawaCompoundWriter> parent, WrittenProperty& record);
    ~OgawaCompoundWriter() override;

    const AbcA::PropertyHeader& getHeader() const override;
    AbcA::ObjectWriterPtr getObject() override { return object_; }
    AbcA::CompoundPropertyWriterPtr getParent() override { return parent_; }
    AbcA::CompoundPropertyWriterPtr asCompoundPtr() override { return shared_from_this(); }

    std::size_t getNumProperties() override { return properties_.size(); }
    const AbcA::PropertyHeader& getPropertyHeader(std::size_t i) override;
    const AbcA::PropertyHeader* getPropertyHeader(const std::string& name) override;
    AbcA::BasePropertyWriterPtr getProperty(const std::string& name) override;
    AbcA::ScalarPropertyWriterPtr createScalarProperty(const std::string& name, const AbcA::MetaData& metadata,
                                                       const AbcA::DataType& type,
                                                       std::uint32_t time_sampling_index) override;
    AbcA::ArrayPropertyWriterPtr createArrayProperty(const std::string& name, const AbcA::MetaData& metadata,
                                                     const AbcA::DataType& type,
                                                     std::uint32_t time_sampling_index) override;
    AbcA::CompoundPropertyWriterPtr createCompoundProperty(const std::string& name,
                                                           const AbcA::MetaData& metadata) override;

    const std::shared_ptr<OgawaObjectWriter>& object() const { return object_; }

private:
    template <class Writer>
    std::shared_ptr<Writer> create(std::unique_ptr<WrittenProperty> record);
    template <class Writer>
    std::shared_ptr<Writer> create_simple(AbcA::PropertyType kind, const std::string& name,
                                          const AbcA::MetaData& metadata, const AbcA::DataType& type,
                                          std::uint32_t time_sampling_index);

    std::shared_ptr<OgawaObjectWriter> object_;
    std::shared_ptr<OgawaCompoundWriter> parent_;      ///< null for the top compound
    std::uint32_t depth_ = 0;                          ///< of the top compound: 0
    WrittenProperty* record_ = nullptr;                ///< null for the top compound
    std::unique_ptr<AbcA::PropertyHeader> top_header_; ///< null for others
    NamedRecords<WrittenProperty> own_properties_;     ///< unused by the top compound
    NamedRecords<WrittenProperty>& properties_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
