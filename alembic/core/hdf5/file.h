/// @file
/// An open HDF5 file, and the way to the objects in it.
#pragma once

#include "core/hdf5/check_ledger.h"
#include "core/hdf5/library.h"
#include "core/hdf5/message_check.h"
#include "ogawa/byte_source.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Its user holds a LibraryLock.
class File
{
public:
    /// Opens a file for reading. Throws "Nonexistent or not an Alembic file: NAME" when it cannot be opened or is no
    /// HDF5 file.
    explicit File(const std::string& name);

    const Ogawa::ByteSource& bytes() const { return *bytes_; }

    /// Where the chunks of a data set that was opened here are found; nothing when it has none.
    std::optional<ChunkIndex> chunks_of(hid_t data_set) const;

    /// Bytes the file has.
    std::uint64_t size() const { return bytes_->size(); }

    /// The file's root group.
    Handle open_root();

    /// Opens the group at an address that a link gave. Throws when there is none, or it is damaged; `name` is for the
    /// message.
    Handle open_group(haddr_t address, const std::string& name);

    /// Opens what the hard link `name` in the group leads to; nothing when there is no such link. Links of other kinds
    /// lead to other places or files: archives have none, and they are not followed. Throws for those, and when it is
    /// not of that kind or damaged.
    Handle open_linked(hid_t group, const std::string& name, H5I_type_t kind);

private:
    Handle open_object(haddr_t address, H5I_type_t kind, const std::string& name);
    void check(haddr_t address, const std::string& name);

    Handle driver_; ///< libhdf5 still needs it while it closes the file
    Handle file_;
    const Ogawa::ByteSource* bytes_ = nullptr;         ///< the driver's
    std::unordered_map<haddr_t, std::string> checked_; ///< what is wrong with objects that are costly to check, or ""
    CheckLedger ledger_{0};                            ///< of all checks
};

/// Where an object stands in its file.
haddr_t address_of(hid_t object);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
