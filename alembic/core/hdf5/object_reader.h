/// @file
/// An object of an HDF5 archive: a node of the tree that the archive keeps.
#pragma once

#include "core/common/name_index.h"
#include "core/hdf5/library.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

class ArchiveReader;

/// Made once, when it is first asked for, and kept as long as its archive: pointers to it that are handed out share the
/// archive's count. Children are listed when they are first asked for. Any number of threads may use it at once.
class ObjectReader final : public AbcA::ObjectReader
{
public:
    /// The object whose group stands at `address`. `parent` is null for the top.
    ObjectReader(ArchiveReader& archive, ObjectReader* parent, AbcA::ObjectHeader header, haddr_t address);
    ~ObjectReader() override;

    const AbcA::ObjectHeader& getHeader() const override { return header_; }
    AbcA::ArchiveReaderPtr getArchive() override;
    AbcA::ObjectReaderPtr getParent() override;
    AbcA::CompoundPropertyReaderPtr getProperties() override;
    size_t getNumChildren() override;
    const AbcA::ObjectHeader& getChildHeader(size_t i) override;
    const AbcA::ObjectHeader* getChildHeader(const std::string& name) override;
    AbcA::ObjectReaderPtr getChild(const std::string& name) override;
    AbcA::ObjectReaderPtr getChild(size_t i) override;
    AbcA::ObjectReaderPtr asObjectPtr() override;

private:
    struct Children;

    const Children& children() const;
    std::unique_ptr<Children> list_children() const;
    ObjectReader& node(std::size_t index) const;
    std::unique_ptr<ObjectReader> make_node(const std::string& name, haddr_t address) const;
    Handle open_group() const;

    ArchiveReader& archive_;
    ObjectReader* const parent_;
    const AbcA::ObjectHeader header_;
    const haddr_t address_;
    const std::uint32_t depth_; ///< of the top: 0
    mutable std::atomic<const Children*> children_{nullptr};
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
