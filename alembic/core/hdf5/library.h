/// @file
/// libhdf5 as the back end uses it: one caller at a time, in silence, every handle closed.
#pragma once

// The calls of release 1.10, whichever release is installed.
#define H5_USE_110_API
#include <hdf5.h>

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>
#include <utility>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace AbcA = ::Alembic::AbcCoreAbstract;

/// Whoever calls libhdf5 holds one of these: libhdf5 is not safe for several threads, whatever file they work on. May
/// be nested. While it lives libhdf5 does not print its errors; what the caller's program chose is restored afterwards.
class LibraryLock
{
public:
    LibraryLock();
    ~LibraryLock();
    LibraryLock(const LibraryLock&) = delete;
    LibraryLock& operator=(const LibraryLock&) = delete;
};

/// An open file, group, attribute, ... of libhdf5, closed with the object.
class Handle
{
public:
    typedef herr_t (*Close)(hid_t);

    /// Nothing.
    Handle() = default;

    /// Owns `id`, if it is one: negative ones are libhdf5's answer to calls that failed.
    Handle(hid_t id, Close close)
        : id_(id)
        , close_(close)
    {
    }
    ~Handle() { reset(); }
    Handle(Handle&& other) noexcept
        : id_(std::exchange(other.id_, H5I_INVALID_HID))
        , close_(other.close_)
    {
    }
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(id_, other.id_);
        std::swap(close_, other.close_);
        return *this;
    }

    explicit operator bool() const { return id_ >= 0; }
    hid_t id() const { return id_; }

private:
    void reset() noexcept;

    hid_t id_ = H5I_INVALID_HID;
    Close close_ = nullptr;
};

/// Throws "WHAT", and libhdf5's reason if it has one, for the call that failed last.
[[noreturn]] void throw_failed(const std::string& what);

/// `handle` itself. Throws as throw_failed() when there is nothing in it.
Handle require(Handle handle, const std::string& what);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
