/// @file
/// Opens objects, once their headers are known to be sound.
#include "core/hdf5/file.h"

#include "core/hdf5/file_driver.h"
#include "core/hdf5/header_check.h"
#include "core/hdf5/limits.h"

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// libhdf5 keeps hundreds of megabytes of what describes objects by default; nearly all of it is needed once.
void limit_metadata_cache(hid_t access, const std::string& failure)
{
    H5AC_cache_config_t config;
    config.version = H5AC__CURR_CACHE_CONFIG_VERSION;
    if (H5Pget_mdc_config(access, &config) < 0) throw_failed(failure);
    config.set_initial_size = true;
    config.initial_size = config.min_size = config.max_size = metadata_cache_bytes;
    config.incr_mode = H5C_incr__off;
    config.flash_incr_mode = H5C_flash_incr__off;
    config.decr_mode = H5C_decr__off;
    if (H5Pset_mdc_config(access, &config) < 0) throw_failed(failure);
}

} // namespace

File::File(const std::string& name)
{
    const std::string failure = "Nonexistent or not an Alembic file: " + name;
    driver_ = register_driver();
    const Handle access = require(Handle(H5Pcreate(H5P_FILE_ACCESS), H5Pclose), failure);
    if (H5Pset_driver(access.id(), driver_.id(), nullptr) < 0) throw_failed(failure);
    limit_metadata_cache(access.id(), failure);
    file_ = Handle(H5Fopen(name.c_str(), H5F_ACC_RDONLY, access.id()), H5Fclose);
    const std::string refusal = take_driver_refusal();
    if (!file_ && !refusal.empty()) ABCA_THROW(failure << ": " << refusal);
    if (!file_) throw_failed(failure);
    bytes_ = driver_bytes(file_.id());
    if (!bytes_) throw_failed(failure);
    ledger_ = CheckLedger(check_budget(bytes_->size()));
}

void File::check(haddr_t address, const std::string& name)
{
    const auto known = checked_.find(address);
    std::string wrong = known == checked_.end() ? std::string() : known->second;
    if (known == checked_.end()) {
        const std::uint64_t left = ledger_.left();
        try {
            check_object(*bytes_, address, ledger_);
        } catch (const std::exception& error) {
            wrong = error.what();
        }
        if (left - ledger_.left() > forgotten_check_bytes)
            checked_.emplace(address, wrong);
        else
            ledger_.restore(left);
    }
    if (!wrong.empty()) ABCA_THROW("Could not open '" << name << "': " << wrong);
}

Handle File::open_object(haddr_t address, H5I_type_t kind, const std::string& name)
{
    check(address, name);
    Handle object = require(Handle(H5Oopen_by_addr(file_.id(), address), H5Oclose), "Could not open '" + name + "'");
    if (H5Iget_type(object.id()) != kind)
        ABCA_THROW("Could not open '" << name << "': it is not a " << (kind == H5I_GROUP ? "group" : "data set"));
    return object;
}

std::optional<ChunkIndex> File::chunks_of(hid_t data_set) const
{
    ReadBudget budget(bytes_->size());
    return check_object_header(*bytes_, address_of(data_set), budget).chunks;
}

Handle File::open_root()
{
    Handle root = require(Handle(H5Gopen2(file_.id(), "/", H5P_DEFAULT), H5Gclose), "Could not open the root group");
    check(address_of(root.id()), "/");
    return root;
}

Handle File::open_group(haddr_t address, const std::string& name)
{
    return open_object(address, H5I_GROUP, name);
}

Handle File::open_linked(hid_t group, const std::string& name, H5I_type_t kind)
{
    const htri_t there = H5Lexists(group, name.c_str(), H5P_DEFAULT);
    if (there == 0) return {};
    H5L_info_t link;
    if (there < 0 || H5Lget_info(group, name.c_str(), &link, H5P_DEFAULT) < 0)
        throw_failed("Could not open '" + name + "'");
    if (link.type != H5L_TYPE_HARD) ABCA_THROW("Could not open '" << name << "': it is a link to another place");
    return open_object(link.u.address, kind, name);
}

haddr_t address_of(hid_t object)
{
    H5O_info_t info;
    if (H5Oget_info2(object, &info, H5O_INFO_BASIC) < 0) throw_failed("Could not find out where an object stands");
    return info.addr;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
