/// What every other header builds on: standard names, small base classes, a mutex.
#pragma once

#include <Alembic/Util/Config.h>
#include <Alembic/Util/Export.h>

#include <half.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

using std::int16_t;
using std::int32_t;
using std::int64_t;
using std::int8_t;
using std::size_t;
using std::uint16_t;
using std::uint32_t;
using std::uint64_t;
using std::uint8_t;

using std::string;
using std::wstring;

using std::dynamic_pointer_cast;
using std::enable_shared_from_this;
using std::shared_ptr;
using std::static_pointer_cast;
using std::unique_ptr;
using std::unordered_map;
using std::weak_ptr;

/// Base class of what has an identity and is not copied.
class noncopyable
{
public:
    noncopyable(const noncopyable&) = delete;
    noncopyable& operator=(const noncopyable&) = delete;

protected:
    noncopyable() = default;
    ~noncopyable() = default;
};

/// Base class that completes `==` and `<` of T to all six comparisons.
template <class T>
class totally_ordered
{
public:
    friend bool operator!=(const T& a, const T& b) { return !(a == b); }
    friend bool operator>(const T& a, const T& b) { return b < a; }
    friend bool operator<=(const T& a, const T& b) { return !(b < a); }
    friend bool operator>=(const T& a, const T& b) { return !(a < b); }
};

/// A plain mutex.
class mutex : private noncopyable
{
public:
    mutex() = default;
    void lock() { mutex_.lock(); }
    void unlock() { mutex_.unlock(); }

private:
    std::mutex mutex_;
};

/// Holds a mutex from here to the end of its own scope.
class scoped_lock : private noncopyable
{
public:
    scoped_lock(mutex& l)
        : mutex_(l)
    {
        mutex_.lock();
    }
    ~scoped_lock() { mutex_.unlock(); }

private:
    mutex& mutex_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
