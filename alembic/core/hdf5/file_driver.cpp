/// @file
/// The file driver. Its functions are called by libhdf5: no exception may leave them.
#include "core/hdf5/file_driver.h"

#include "core/hdf5/bounded_source.h"
#include "core/hdf5/header_check.h"
#include "core/hdf5/limits.h"
#include "core/hdf5/superblock.h"

#if H5_VERSION_GE(1, 13, 2)
#include <H5FDdevelop.h>
#endif

#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// What libhdf5 knows as an open file: its own record, then ours.
struct OpenFile
{
    H5FD_t common;
    std::unique_ptr<BoundedSource> source;
    haddr_t end_of_addresses;
};

OpenFile& ours(H5FD_t* file)
{
    return *reinterpret_cast<OpenFile*>(file);
}

const OpenFile& ours(const H5FD_t* file)
{
    return *reinterpret_cast<const OpenFile*>(file);
}

/// Belongs to who holds the LibraryLock.
std::string refusal;

void keep_refusal(const char* reason) noexcept
{
    try {
        refusal = reason;
    } catch (...) {
        refusal.clear();
    }
}

H5FD_t* driver_open(const char* name, unsigned flags, hid_t, haddr_t)
{
    if (flags != H5F_ACC_RDONLY) return nullptr;
    try {
        refusal.clear();
        auto file = std::make_unique<OpenFile>();
        file->source = std::make_unique<BoundedSource>(name);
        const Superblock superblock = read_superblock(*file->source);
        file->source->end_at(superblock.end);
        CheckLedger ledger(check_budget(superblock.end));
        check_object(*file->source, superblock.root, ledger);
        return &file.release()->common;
    } catch (const std::exception& error) {
        keep_refusal(error.what());
    } catch (...) {
        keep_refusal("it cannot be read");
    }
    return nullptr;
}

herr_t driver_close(H5FD_t* file)
{
    delete &ours(file);
    return 0;
}

/// Two open files are never the same one.
int driver_compare(const H5FD_t* a, const H5FD_t* b)
{
    return std::less<const H5FD_t*>()(a, b) ? -1 : a == b ? 0 : 1;
}

herr_t driver_query(const H5FD_t*, unsigned long* features)
{
    // Metadata is not accumulated: releases of libhdf5 that are in use take damaged addresses for what was accumulated.
    *features = H5FD_FEAT_DATA_SIEVE | H5FD_FEAT_DEFAULT_VFD_COMPATIBLE;
    return 0;
}

haddr_t driver_get_end_of_addresses(const H5FD_t* file, H5FD_mem_t)
{
    return ours(file).end_of_addresses;
}

herr_t driver_set_end_of_addresses(H5FD_t* file, H5FD_mem_t, haddr_t address)
{
    ours(file).end_of_addresses = address;
    return 0;
}

haddr_t driver_get_end_of_file(const H5FD_t* file, H5FD_mem_t)
{
    return ours(file).source->size();
}

herr_t driver_get_handle(H5FD_t* file, hid_t, void** handle)
{
    *handle = static_cast<Ogawa::ByteSource*>(ours(file).source.get());
    return 0;
}

herr_t driver_read(H5FD_t* file, H5FD_mem_t, hid_t, haddr_t address, std::size_t size, void* into)
{
    try {
        ours(file).source->read(address, into, size);
        return 0;
    } catch (...) {
        return -1;
    }
}

herr_t driver_write(H5FD_t*, H5FD_mem_t, hid_t, haddr_t, std::size_t, const void*)
{
    return -1;
}

H5FD_class_t make_driver_class()
{
    H5FD_class_t driver = {};
#ifdef H5FD_CLASS_VERSION
    driver.version = H5FD_CLASS_VERSION;
#endif
    driver.name = "alembic";
    driver.maxaddr = std::numeric_limits<std::int64_t>::max();
    driver.fc_degree = H5F_CLOSE_STRONG;
    driver.open = driver_open;
    driver.close = driver_close;
    driver.cmp = driver_compare;
    driver.query = driver_query;
    driver.get_eoa = driver_get_end_of_addresses;
    driver.set_eoa = driver_set_end_of_addresses;
    driver.get_eof = driver_get_end_of_file;
    driver.get_handle = driver_get_handle;
    driver.read = driver_read;
    driver.write = driver_write;
    for (H5FD_mem_t& kind : driver.fl_map)
        kind = H5FD_MEM_SUPER; // one list of free space for all, which nobody asks for when reading
    return driver;
}

} // namespace

Handle register_driver()
{
    static const H5FD_class_t driver_class = make_driver_class();
    return require(Handle(H5FDregister(&driver_class), H5FDunregister), "libhdf5 takes no file driver");
}

std::string take_driver_refusal()
{
    return std::exchange(refusal, {});
}

const Ogawa::ByteSource* driver_bytes(hid_t file)
{
    void* source = nullptr;
    return H5Fget_vfd_handle(file, H5P_DEFAULT, &source) < 0 ? nullptr : static_cast<const Ogawa::ByteSource*>(source);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
