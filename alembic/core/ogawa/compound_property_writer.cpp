/// @file
/// Compounds: the properties in them, and how they are written.
#include "compound_property_writer.h"

#include "content_hash.h"
#include "limits.h"
#include "simple_property_writers.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

std::uint64_t write_compound(OgawaArchiveWriter& archive, const NamedRecords<WrittenProperty>& properties)
{
    if (properties.size() == 0) return Ogawa::empty_group;
    std::string headers;
    std::vector<std::uint64_t> group;
    group.reserve(properties.size() + 1);
    for (std::size_t i = 0; i < properties.size(); ++i) {
        encode_property_header(properties[i], archive.shared_metadata(), headers);
        group.push_back(properties[i].group_entry);
    }
    group.push_back(archive.file().append_data({{headers.data(), headers.size()}}));
    return archive.file().append_group(group);
}

OgawaCompoundWriter::OgawaCompoundWriter(std::shared_ptr<OgawaObjectWriter> object)
    : object_(std::move(object))
    , top_header_(std::make_unique<AbcA::PropertyHeader>(std::string(), object_->getMetaData()))
    , properties_(object_->contents().properties)
{
}

OgawaCompoundWriter::OgawaCompoundWriter(std::shared_ptr<OgawaCompoundWriter> parent, WrittenProperty& record)
    : object_(parent->object_)
    , parent_(std::move(parent))
    , depth_(parent_->depth_ + 1)
    , record_(&record)
    , properties_(own_properties_)
{
}

OgawaCompoundWriter::~OgawaCompoundWriter()
{
    if (record_ == nullptr) return;
    const std::shared_ptr<OgawaObjectWriter> object = std::move(object_);
    object->archive().finish_part([&] {
        record_->group_entry = write_compound(object->archive(), properties_);
        ContentHash hash;
        for (std::size_t i = 0; i < properties_.size(); ++i)
            hash.add(properties_[i].hash);
        hash.add(record_->header.getName()).add(record_->header.getMetaData().serialize());
        record_->hash = hash.result();
    });
    record_->writer.reset();
    OgawaArchiveWriter::release_parent(object->shared_archive(), std::move(parent_));
}

const AbcA::PropertyHeader& OgawaCompoundWriter::getHeader() const
{
    return record_ != nullptr ? record_->header : *top_header_;
}

const AbcA::PropertyHeader& OgawaCompoundWriter::getPropertyHeader(std::size_t i)
{
    if (i >= properties_.size()) ABCA_THROW("Out of range index in CpwData::getPropertyHeader: " << i);
    return properties_[i].header;
}

const AbcA::PropertyHeader* OgawaCompoundWriter::getPropertyHeader(const std::string& name)
{
    const WrittenProperty* property = properties_.find(name);
    return property != nullptr ? &property->header : nullptr;
}

AbcA::BasePropertyWriterPtr OgawaCompoundWriter::getProperty(const std::string& name)
{
    const WrittenProperty* property = properties_.find(name);
    return property != nullptr ? property->writer.lock() : nullptr;
}

template <class Writer>
std::shared_ptr<Writer> OgawaCompoundWriter::create(std::unique_ptr<WrittenProperty> new_record)
{
    object_->archive().file().check();
    const std::string& name = new_record->header.getName();
    if (properties_.find(name) != nullptr) ABCA_THROW("Already have a property named: " << name);
    if (name.empty() || name.find('/') != std::string::npos) ABCA_THROW("Invalid name");
    new_record->header.getMetaData().serialize(); // throws what cannot be stored

    WrittenProperty& record = properties_.add(std::move(new_record));
    try {
        auto writer = std::make_shared<Writer>(shared_from_this(), record);
        record.writer = writer;
        object_->archive().samples().make_room_for_property();
        return writer;
    } catch (...) {
        properties_.remove_last();
        throw;
    }
}

template <class Writer>
std::shared_ptr<Writer> OgawaCompoundWriter::create_simple(AbcA::PropertyType kind, const std::string& name,
                                                           const AbcA::MetaData& metadata, const AbcA::DataType& type,
                                                           std::uint32_t time_sampling_index)
{
    if (type.getExtent() == 0 || std::uint32_t(type.getPod()) >= Util::kNumPlainOldDataTypes)
        ABCA_THROW("create" << (kind == AbcA::kScalarProperty ? "Scalar" : "Array")
                            << "Property, illegal DataType provided.");
    auto record = std::make_unique<WrittenProperty>();
    record->header =
        AbcA::PropertyHeader(name, kind, metadata, type, object_->archive().getTimeSampling(time_sampling_index));
    record->time_sampling_index = time_sampling_index;
    return create<Writer>(std::move(record));
}

AbcA::ScalarPropertyWriterPtr OgawaCompoundWriter::createScalarProperty(const std::string& name,
                                                                        const AbcA::MetaData& metadata,
                                                                        const AbcA::DataType& type,
                                                                        std::uint32_t time_sampling_index)
{
    return create_simple<OgawaScalarWriter>(AbcA::kScalarProperty, name, metadata, type, time_sampling_index);
}

AbcA::ArrayPropertyWriterPtr OgawaCompoundWriter::createArrayProperty(const std::string& name,
                                                                      const AbcA::MetaData& metadata,
                                                                      const AbcA::DataType& type,
                                                                      std::uint32_t time_sampling_index)
{
    return create_simple<OgawaArrayWriter>(AbcA::kArrayProperty, name, metadata, type, time_sampling_index);
}

AbcA::CompoundPropertyWriterPtr OgawaCompoundWriter::createCompoundProperty(const std::string& name,
                                                                            const AbcA::MetaData& metadata)
{
    if (depth_ == max_depth)
        ABCA_THROW("Compound property '" << name << "' would be nested deeper than " << max_depth
                                         << " compounds, which readers refuse, object is: "
                                         << object_->getHeader().getFullName());
    auto record = std::make_unique<WrittenProperty>();
    record->header = AbcA::PropertyHeader(name, metadata);
    return create<OgawaCompoundWriter>(std::move(record));
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
