/// An object of a layered archive.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include "core/layer/compound_property_reader.h"
#include "core/layer/merged_table.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader;

/// Made once, when it is first asked for, and kept by its parent. Children and properties are merged when they are
/// first asked for; two threads that ask at once may both merge, and one result is kept.
class ObjectReader final : public AbcCoreAbstract::ObjectReader
{
public:
    /// `parent` is null for the top, `header` belongs to the parent's table, `versions` are the layers' own objects,
    /// weakest first.
    ObjectReader(ArchiveReader& archive, ObjectReader* parent, const AbcCoreAbstract::ObjectHeader& header,
                 std::vector<AbcCoreAbstract::ObjectReaderPtr> versions);
    ~ObjectReader() override;

    const AbcCoreAbstract::ObjectHeader& getHeader() const override { return header_; }
    AbcCoreAbstract::ArchiveReaderPtr getArchive() override;
    AbcCoreAbstract::ObjectReaderPtr getParent() override;
    AbcCoreAbstract::CompoundPropertyReaderPtr getProperties() override;
    size_t getNumChildren() override { return children().table.size(); }
    const AbcCoreAbstract::ObjectHeader& getChildHeader(size_t i) override;
    const AbcCoreAbstract::ObjectHeader* getChildHeader(const std::string& name) override;
    AbcCoreAbstract::ObjectReaderPtr getChild(const std::string& name) override;
    AbcCoreAbstract::ObjectReaderPtr getChild(size_t i) override;
    /// Only an object that one layer alone has, other than the top, has hashes.
    bool getPropertiesHash(Util::Digest& digest) override;
    bool getChildrenHash(Util::Digest& digest) override;
    AbcCoreAbstract::ObjectReaderPtr asObjectPtr() override;

    ArchiveReader& archive() const { return archive_; }

private:
    /// A child's place in one layer.
    struct Source
    {
        uint32_t version; // of versions_
        size_t index;     // among that version's children
    };

    struct Child
    {
        std::string_view name() const { return header->getName(); }

        const AbcCoreAbstract::ObjectHeader* header;           // a layer's, or `merged`
        std::unique_ptr<AbcCoreAbstract::ObjectHeader> merged; // where several layers add to the metadata
        std::vector<Source> sources;                           // weakest first
    };

    struct Children
    {
        ~Children();

        MergedTable<Child> table;
        std::unique_ptr<std::atomic<ObjectReader*>[]> nodes; // one per child, null until it is asked for
    };

    const Children& children();
    std::unique_ptr<Children> merge_children() const;
    static void merge_child(MergedTable<Child>& table, const AbcCoreAbstract::ObjectHeader& header, Source source);
    ObjectReader& node(size_t i);
    bool has_hashes() const { return parent_ && versions_.size() == 1; }

    ArchiveReader& archive_;
    ObjectReader* const parent_; // null for the top
    const AbcCoreAbstract::ObjectHeader& header_;
    const std::vector<AbcCoreAbstract::ObjectReaderPtr> versions_; // weakest first
    std::atomic<const Children*> children_{nullptr};
    std::atomic<CompoundPropertyReader*> properties_{nullptr};
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
