/// @file
/// The lock, the silence and the handles.
#include "core/hdf5/library.h"

#include <cstdlib>
#include <mutex>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

/// Never destroyed: archives may be closed while the process ends.
std::recursive_mutex& library_mutex()
{
    static auto* const mutex = new std::recursive_mutex;
    return *mutex;
}

/// How the program that we are part of wants errors of libhdf5 printed. Programs may have set it in either of two ways.
struct ErrorPrinting
{
    unsigned is_new_way = 1;
    H5E_auto2_t print = nullptr;
    H5E_auto1_t print_old_way = nullptr;
    void* data = nullptr;
};

// Both belong to who holds the mutex.
unsigned nesting = 0;
ErrorPrinting callers_printing;

void silence()
{
    ErrorPrinting& callers = callers_printing;
    callers = ErrorPrinting();
    H5Eauto_is_v2(H5E_DEFAULT, &callers.is_new_way);
    if (callers.is_new_way) {
        H5Eget_auto2(H5E_DEFAULT, &callers.print, &callers.data);
        H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    } else {
        H5Eget_auto1(&callers.print_old_way, &callers.data);
        H5Eset_auto1(nullptr, nullptr);
    }
}

void restore()
{
    H5Eclear2(H5E_DEFAULT);
    if (callers_printing.is_new_way)
        H5Eset_auto2(H5E_DEFAULT, callers_printing.print, callers_printing.data);
    else
        H5Eset_auto1(callers_printing.print_old_way, callers_printing.data);
}

/// After some damaged files libhdf5 cannot close itself when the process ends, and says so. Called once a call failed:
/// the handler then runs before libhdf5's own.
void be_silent_at_exit()
{
    static const bool done = std::atexit([] { H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); }) == 0;
    static_cast<void>(done);
}

/// Keeps the text of the first error, the one that the others follow from.
herr_t take_reason(unsigned, const H5E_error2_t* error, void* reason)
{
    try {
        if (error->desc) *static_cast<std::string*>(reason) = error->desc;
    } catch (...) {
        return -1;
    }
    return 1;
}

} // namespace

LibraryLock::LibraryLock()
{
    library_mutex().lock();
    if (nesting++ == 0) silence();
}

LibraryLock::~LibraryLock()
{
    if (--nesting == 0) restore();
    library_mutex().unlock();
}

void Handle::reset() noexcept
{
    if (id_ < 0) return;
    const LibraryLock lock;
    close_(id_);
    id_ = H5I_INVALID_HID;
}

void throw_failed(const std::string& what)
{
    std::string reason;
    {
        const LibraryLock lock;
        be_silent_at_exit();
        H5Ewalk2(H5E_DEFAULT, H5E_WALK_UPWARD, take_reason, &reason);
        H5Eclear2(H5E_DEFAULT);
    }
    ABCA_THROW(what << (reason.empty() ? "" : ": ") << reason);
}

Handle require(Handle handle, const std::string& what)
{
    if (!handle) throw_failed(what);
    return handle;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
