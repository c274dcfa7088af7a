/// @file
/// An object of an Ogawa archive: a node of the tree that the archive keeps.
#pragma once

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include "core/ogawa/child_table.h"
#include "ogawa/group_reader.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader;

/// Made once, when it is first asked for, and kept as long as its archive: pointers to it that are handed out share the
/// archive's count. Children are parsed when they are first asked for. Any number of threads may use it at once.
class ObjectReader final : public AbcA::ObjectReader
{
public:
    /// The object in child `index` of `group`, which is the parent's or, for the top, the root group. Never throws for
    /// what is wrong with that child: require_usable() says so.
    ObjectReader(ArchiveReader& archive, ObjectReader* parent, AbcA::ObjectHeader header,
                 const Ogawa::GroupReader& group, std::uint64_t index);
    ~ObjectReader() override;

    const AbcA::ObjectHeader& getHeader() const override { return header_; }
    AbcA::ArchiveReaderPtr getArchive() override;
    AbcA::ObjectReaderPtr getParent() override;
    AbcA::CompoundPropertyReaderPtr getProperties() override;
    size_t getNumChildren() override { return children().size(); }
    const AbcA::ObjectHeader& getChildHeader(size_t i) override;
    const AbcA::ObjectHeader* getChildHeader(const std::string& name) override;
    AbcA::ObjectReaderPtr getChild(const std::string& name) override;
    AbcA::ObjectReaderPtr getChild(size_t i) override;
    bool getPropertiesHash(AbcA::Digest& digest) override { return read_hash(0, digest); }
    bool getChildrenHash(AbcA::Digest& digest) override { return read_hash(1, digest); }
    AbcA::ObjectReaderPtr asObjectPtr() override;

    ArchiveReader& archive() const { return archive_; }

    /// Throws what is wrong with the object's group: not a group, outside the file, its own ancestor, nested too deep.
    void require_usable() const;

private:
    friend class ChildTable;

    const ChildTable& children() const;
    ChildTable* parse_children() const;
    ObjectReader& node(std::uint32_t index) const;
    AbcA::ObjectReaderPtr open_child(std::uint32_t index);
    bool is_own_ancestor() const;
    bool read_hash(std::uint64_t which, AbcA::Digest& digest) const;

    ArchiveReader& archive_;
    ObjectReader* const parent_; ///< null for the top
    const AbcA::ObjectHeader header_;
    Ogawa::GroupReader group_;
    const char* refusal_ = nullptr; ///< why the object cannot be used
    const std::uint32_t depth_;     ///< of the top: 0
    mutable std::atomic<const ChildTable*> children_{nullptr};
    ObjectReader* made_before_ = nullptr; ///< the sibling whose node was made before this one; kept by the child table
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
