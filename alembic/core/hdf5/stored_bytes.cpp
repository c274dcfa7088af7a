/// @file
/// Reads pieces of a file.
#include "core/hdf5/stored_bytes.h"

#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstring>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

void require_inside(const Ogawa::ByteSource& file, std::uint64_t position, std::uint64_t size)
{
    if (position > file.size() || size > file.size() - position) ABCA_THROW("it ends after the file does");
}

} // namespace

std::string read_bytes(const Ogawa::ByteSource& file, std::uint64_t position, std::uint64_t size)
{
    require_inside(file, position, size);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.read(position, &bytes[0], bytes.size());
    return bytes;
}

std::string read_bytes(const Ogawa::ByteSource& file, std::uint64_t position, std::uint64_t size, ReadBudget& budget)
{
    require_inside(file, position, size); // only what is read is paid for
    budget.take(size);
    return read_bytes(file, position, size);
}

bool take_sized(AbcCoreOgawa::ByteCursor& cursor, std::size_t width, std::uint64_t& number)
{
    std::string_view bytes;
    number = 0;
    if (width > sizeof number || !cursor.take(width, bytes)) return false;
    std::memcpy(&number, bytes.data(), width);
    return true;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
