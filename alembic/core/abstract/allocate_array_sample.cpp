/// Memory for array samples.
#include <Alembic/AbcCoreAbstract/ArraySample.h>

#include <cstdlib>
#include <limits>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// From this size on an array is aligned to huge pages and asks for them: faulting fresh pages of 4 KiB in takes several
// times as long as reading the data into them.
constexpr size_t huge_page_bytes = size_t(2) << 20;
constexpr size_t large_array_bytes = 2 * huge_page_bytes;

// No allocation may be larger than a pointer difference.
constexpr uint64_t max_array_bytes = std::numeric_limits<std::ptrdiff_t>::max() - huge_page_bytes;

// Bytes of the array, or an exception when the extents multiply to more than memory can address.
size_t checked_byte_count(const DataType& type, const Dimensions& dims)
{
    uint64_t bytes = type.getNumBytes();
    for (size_t i = 0; i < dims.rank(); ++i)
        if (dims[i] == 0) return 0;
    for (size_t i = 0; i < dims.rank(); ++i)
        if (__builtin_mul_overflow(bytes, dims[i], &bytes) || bytes > max_array_bytes)
            ABCA_THROW("Cannot allocate an array of " << type << " with dimensions " << dims
                                                      << ": it is larger than any memory");
    return dims.rank() == 0 ? 0 : static_cast<size_t>(bytes);
}

void* allocate_bytes(size_t byte_count)
{
    if (byte_count < large_array_bytes) return std::malloc(byte_count);
    const size_t whole_pages = (byte_count + huge_page_bytes - 1) / huge_page_bytes * huge_page_bytes;
    void* const memory = std::aligned_alloc(huge_page_bytes, whole_pages);
#if defined(MADV_HUGEPAGE)
    if (memory) madvise(memory, whole_pages, MADV_HUGEPAGE); // a hint: an error changes nothing
#endif
    return memory;
}

void free_numbers(ArraySample* sample)
{
    std::free(const_cast<void*>(sample->getData()));
    delete sample;
}

ArraySamplePtr allocate_numbers(const DataType& type, const Dimensions& dims)
{
    const size_t byte_count = checked_byte_count(type, dims);
    if (byte_count == 0) return std::make_shared<ArraySample>(nullptr, type, dims);
    std::unique_ptr<void, void (*)(void*)> memory(allocate_bytes(byte_count), &std::free);
    if (!memory)
        ABCA_THROW("Out of memory: an array of " << type << " with dimensions " << dims << " takes " << byte_count
                                                 << " bytes");
    ArraySample* const sample = new ArraySample(memory.get(), type, dims);
    memory.release(); // from here on the pointer's deleter frees it, also when making the pointer fails
    return ArraySamplePtr(sample, &free_numbers);
}

template <class T>
ArraySamplePtr allocate_strings(const DataType& type, const Dimensions& dims)
{
    const size_t byte_count = checked_byte_count(type, dims);
    if (byte_count == 0) return std::make_shared<ArraySample>(nullptr, type, dims);
    std::unique_ptr<T[]> memory;
    try {
        memory.reset(new T[byte_count / sizeof(T)]);
    } catch (const std::bad_alloc&) {
        ABCA_THROW("Out of memory: an array of " << type << " with dimensions " << dims << " takes " << byte_count
                                                 << " bytes");
    }
    ArraySample* const sample = new ArraySample(memory.get(), type, dims);
    memory.release();
    return ArraySamplePtr(sample, TArrayDeleter<T>());
}

} // namespace

ArraySamplePtr AllocateArraySample(const DataType& dtype, const Dimensions& dims)
{
    const PlainOldDataType pod = dtype.getPod();
    if (PODNumBytes(pod) == 0) return ArraySamplePtr();
    if (pod == kStringPOD) return allocate_strings<std::string>(dtype, dims);
    if (pod == kWstringPOD) return allocate_strings<std::wstring>(dtype, dims);
    return allocate_numbers(dtype, dims);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
