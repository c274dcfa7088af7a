/// @file
/// An object of an Ogawa archive that is being written.
#pragma once

#include "archive_writer.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <memory>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

struct FinishedObject
{
    std::uint64_t group_entry = Ogawa::empty_group;
    Util::Digest hash; ///< what the parent's hash is built from
};

/// Writes header blob, top compound and group of an object all of whose properties and children are finished.
FinishedObject write_object(OgawaArchiveWriter& archive, const AbcA::ObjectHeader& header,
                            const ObjectContents& contents);

/// Keeps its parent, and thereby the archive, alive; is written when the last pointer to it or to anything below goes.
/// The top object is a view of what the archive owns, and written by that.
class OgawaObjectWriter final : public AbcA::ObjectWriter, public std::enable_shared_from_this<OgawaObjectWriter>
{
public:
    /// The top object.
    explicit OgawaObjectWriter(std::shared_ptr<OgawaArchiveWriter> archive);
    /// A child; `record` is owned by the parent.
    OgawaObjectWriter(std::shared_ptr<OgawaObjectWriter> parent, WrittenObject& record);
    ~OgawaObjectWriter() override;

    const AbcA::ObjectHeader& getHeader() const override;
    AbcA::ArchiveWriterPtr getArchive() override { return archive_; }
    AbcA::ObjectWriterPtr getParent() override { return parent_; }
    AbcA::CompoundPropertyWriterPtr getProperties() override;
    std::size_t getNumChildren() override { return contents_.children.size(); }
    const AbcA::ObjectHeader& getChildHeader(std::size_t i) override;
    const AbcA::ObjectHeader* getChildHeader(const std::string& name) override;
    AbcA::ObjectWriterPtr getChild(const std::string& name) override;
    AbcA::ObjectWriterPtr createChild(const AbcA::ObjectHeader& header) override;
    AbcA::ObjectWriterPtr asObjectPtr() override { return shared_from_this(); }

    OgawaArchiveWriter& archive() { return *archive_; }
    const std::shared_ptr<OgawaArchiveWriter>& shared_archive() const { return archive_; }
    ObjectContents& contents() { return contents_; }

private:
    std::shared_ptr<OgawaArchiveWriter> archive_;
    std::shared_ptr<OgawaObjectWriter> parent_; ///< null for the top
    std::uint32_t depth_ = 0;                   ///< of the top: 0
    WrittenObject* record_ = nullptr;           ///< null for the top
    ObjectContents own_contents_;               ///< unused by the top
    ObjectContents& contents_;
    std::weak_ptr<AbcA::CompoundPropertyWriter> properties_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
