/// @file
/// Objects: their children, and how they are written.
#include "object_writer.h"

#include "compound_property_writer.h"
#include "content_hash.h"
#include "limits.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

FinishedObject write_object(OgawaArchiveWriter& archive, const AbcA::ObjectHeader& header,
                            const ObjectContents& contents)
{
    std::string headers;
    std::vector<std::uint64_t> group(1);
    ContentHash properties_hash;
    ContentHash children_hash;
    for (std::size_t i = 0; i < contents.properties.size(); ++i)
        properties_hash.add(contents.properties[i].hash);
    for (std::size_t i = 0; i < contents.children.size(); ++i) {
        const WrittenObject& child = contents.children[i];
        encode_object_header(child.header, archive.shared_metadata(), headers);
        group.push_back(child.group_entry);
        children_hash.add(child.hash);
    }
    const Util::Digest properties = properties_hash.result();
    // Without children the hash is zero, unlike that of no properties.
    const Util::Digest children = contents.children.size() > 0 ? children_hash.result() : Util::Digest();

    const std::uint64_t headers_entry = archive.file().append_data(
        {{headers.data(), headers.size()}, {properties.d, sizeof properties.d}, {children.d, sizeof children.d}});
    group.front() = write_compound(archive, contents.properties);
    group.push_back(headers_entry);

    FinishedObject finished;
    finished.group_entry = archive.file().append_group(group);
    // Goes on with the children's hashes.
    children_hash.add(properties).add(header.getMetaData().serialize()).add(header.getName());
    finished.hash = children_hash.result();
    return finished;
}

OgawaObjectWriter::OgawaObjectWriter(std::shared_ptr<OgawaArchiveWriter> archive)
    : archive_(std::move(archive))
    , contents_(archive_->top_contents())
{
}

OgawaObjectWriter::OgawaObjectWriter(std::shared_ptr<OgawaObjectWriter> parent, WrittenObject& record)
    : archive_(parent->archive_)
    , parent_(std::move(parent))
    , depth_(parent_->depth_ + 1)
    , record_(&record)
    , contents_(own_contents_)
{
}

OgawaObjectWriter::~OgawaObjectWriter()
{
    if (record_ == nullptr) return;
    archive_->finish_part([this] {
        const FinishedObject finished = write_object(*archive_, record_->header, contents_);
        record_->group_entry = finished.group_entry;
        record_->hash = finished.hash;
    });
    record_->writer.reset();
    OgawaArchiveWriter::release_parent(std::move(archive_), std::move(parent_));
}

const AbcA::ObjectHeader& OgawaObjectWriter::getHeader() const
{
    return record_ != nullptr ? record_->header : archive_->top_header();
}

AbcA::CompoundPropertyWriterPtr OgawaObjectWriter::getProperties()
{
    AbcA::CompoundPropertyWriterPtr properties = properties_.lock();
    if (!properties) {
        properties = std::make_shared<OgawaCompoundWriter>(shared_from_this());
        properties_ = properties;
    }
    return properties;
}

const AbcA::ObjectHeader& OgawaObjectWriter::getChildHeader(std::size_t i)
{
    if (i >= contents_.children.size()) ABCA_THROW("Out of range index in OwData::getChildHeader: " << i);
    return contents_.children[i].header;
}

const AbcA::ObjectHeader* OgawaObjectWriter::getChildHeader(const std::string& name)
{
    const WrittenObject* child = contents_.children.find(name);
    return child != nullptr ? &child->header : nullptr;
}

AbcA::ObjectWriterPtr OgawaObjectWriter::getChild(const std::string& name)
{
    const WrittenObject* child = contents_.children.find(name);
    return child != nullptr ? child->writer.lock() : nullptr;
}

AbcA::ObjectWriterPtr OgawaObjectWriter::createChild(const AbcA::ObjectHeader& header)
{
    archive_->file().check();
    const std::string& name = header.getName();
    const std::string& parent_name = getHeader().getFullName();
    if (name.empty()) ABCA_THROW("Object not given a name, parent is: " << parent_name);
    if (name.find('/') != std::string::npos) ABCA_THROW("Object has illegal name: " << name);
    if (contents_.children.find(name) != nullptr) ABCA_THROW("Already have an Object named: " << name);
    if (depth_ == max_depth)
        ABCA_THROW("Object '" << name << "' would be nested deeper than " << max_depth
                              << " objects, which readers refuse, parent is: " << parent_name);
    header.getMetaData().serialize(); // throws what cannot be stored

    const std::string full_name = (record_ != nullptr ? parent_name : std::string()) + "/" + name;
    auto new_record = std::make_unique<WrittenObject>();
    new_record->header = AbcA::ObjectHeader(name, full_name, header.getMetaData());
    WrittenObject& record = contents_.children.add(std::move(new_record));
    try {
        auto child = std::make_shared<OgawaObjectWriter>(shared_from_this(), record);
        record.writer = child;
        return child;
    } catch (...) {
        contents_.children.remove_last();
        throw;
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
