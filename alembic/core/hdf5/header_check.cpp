/// @file
/// The stored form of object headers, as far as it must be known to tell sound ones from damaged ones.
#include "core/hdf5/header_check.h"

#include "core/hdf5/message_check.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

constexpr std::uint16_t link_message = 0x06;
constexpr std::uint16_t layout_message = 0x08;
constexpr std::uint16_t attribute_message = 0x0c;
constexpr std::uint16_t continuation_message = 0x10;
constexpr std::uint8_t message_is_shared = 0x02;

// Flags of a header of the second version.
constexpr std::uint8_t size_width_mask = 0x03;
constexpr std::uint8_t has_creation_order = 0x04;
constexpr std::uint8_t has_attribute_limits = 0x10;
constexpr std::uint8_t has_times = 0x20;
constexpr std::size_t checksum_size = 4;

/// A run of messages: of the header itself, or of one of its continuations.
struct Run
{
    std::uint64_t position; ///< in the file
    std::uint64_t size;     ///< bytes
};

class HeaderCheck
{
public:
    explicit HeaderCheck(const Ogawa::FileSource& file)
        : file_(file)
    {
    }

    void check(std::uint64_t position)
    {
        const std::string start = read({position, prefix_size(position)});
        runs_.push_back(start[0] == 'O' ? second_version_run(position, start) : first_version_run(position, start));
        // Continuations are found on the way. Together they cannot take more than the file has.
        std::uint64_t total = 0;
        for (std::size_t i = 0; i < runs_.size(); ++i) {
            total += runs_[i].size;
            if (total > file_.size()) fail("its continuations overlap");
            check_run(runs_[i], i > 0);
        }
    }

private:
    [[noreturn]] static void fail(const char* reason) { ABCA_THROW("A header is damaged: " << reason); }

    std::string read(const Run& run) const
    {
        if (run.position > file_.size() || run.size > file_.size() - run.position) fail("it ends after the file does");
        std::string bytes(static_cast<std::size_t>(run.size), '\0');
        file_.read(run.position, &bytes[0], bytes.size());
        return bytes;
    }

    /// Bytes up to the first message, of the longest form that still fits the file.
    std::uint64_t prefix_size(std::uint64_t position) const
    {
        constexpr std::uint64_t longest = 4 + 1 + 1 + 16 + 4 + 8, shortest = 16;
        if (position > file_.size() || file_.size() - position < shortest) fail("it ends after the file does");
        return std::min(longest, file_.size() - position);
    }

    static Run first_version_run(std::uint64_t position, std::string_view start)
    {
        constexpr std::uint64_t prefix = 16;
        ByteCursor cursor(start);
        std::uint8_t version = 0, reserved = 0;
        std::uint16_t count = 0;
        std::uint32_t references = 0, size = 0;
        cursor.take(version);
        cursor.take(reserved);
        cursor.take(count);
        cursor.take(references);
        cursor.take(size);
        if (version != 1) fail("it has an unknown version");
        return {position + prefix, size};
    }

    Run second_version_run(std::uint64_t position, std::string_view start)
    {
        ByteCursor cursor(start);
        std::string_view skipped;
        std::uint8_t version = 0, flags = 0;
        cursor.take(4, skipped);
        cursor.take(version);
        cursor.take(flags);
        if (skipped != "OHDR" || version != 2) fail("it has an unknown version");
        std::uint64_t size = 0;
        std::string_view stored_size;
        if ((flags & has_times && !cursor.take(16, skipped)) ||
            (flags & has_attribute_limits && !cursor.take(4, skipped)) ||
            !cursor.take(std::size_t(1) << (flags & size_width_mask), stored_size))
            fail("it ends after the file does");
        std::memcpy(&size, stored_size.data(), stored_size.size());
        is_second_version_ = true;
        messages_have_order_ = (flags & has_creation_order) != 0;
        return {position + (start.size() - cursor.left()), size};
    }

    void check_run(const Run& run, bool is_continuation)
    {
        const std::string bytes = read(run);
        std::string_view messages = bytes;
        if (is_second_version_ && is_continuation) {
            if (messages.size() < 4 + checksum_size || messages.substr(0, 4) != "OCHK") fail("a continuation is lost");
            messages = messages.substr(4, messages.size() - 4 - checksum_size);
        }
        ByteCursor cursor(messages);
        const std::size_t message_header = is_second_version_ ? (messages_have_order_ ? 6 : 4) : 8;
        while (cursor.left() >= message_header) // what is left over is a gap
            check_message(cursor);
    }

    void check_message(ByteCursor& cursor)
    {
        std::uint16_t type = 0, size = 0;
        std::uint8_t narrow_type = 0, flags = 0;
        std::string_view skipped, body;
        if (is_second_version_) {
            cursor.take(narrow_type);
            type = narrow_type;
        } else {
            cursor.take(type);
        }
        cursor.take(size);
        cursor.take(flags);
        cursor.take(is_second_version_ ? (messages_have_order_ ? 2 : 0) : 3, skipped);
        if (!cursor.take(size, body)) fail("a message ends after the header does");
        if (type == continuation_message) add_continuation(body);
        if (type == link_message) check_link(body);
        if (type == layout_message) check_layout(body);
        if (type != attribute_message) return;
        if (flags & message_is_shared) fail("an attribute lies elsewhere");
        check_attribute(body);
    }

    void add_continuation(std::string_view body)
    {
        ByteCursor cursor(body);
        std::uint64_t address = 0, size = 0;
        if (!cursor.take(address) || !cursor.take(size) || address > file_.size() || size == 0)
            fail("a continuation is lost");
        runs_.push_back({address, size});
    }

    const Ogawa::FileSource& file_;
    std::vector<Run> runs_;
    bool is_second_version_ = false;
    bool messages_have_order_ = false;
};

} // namespace

void check_object_header(const Ogawa::FileSource& file, std::uint64_t position)
{
    HeaderCheck(file).check(position);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
