/// @file
/// The stored form of object headers, as far as it must be known to tell sound ones from damaged ones.
#include "core/hdf5/header_check.h"

#include "core/hdf5/btree_check.h"
#include "core/hdf5/checksum.h"
#include "core/hdf5/chunks.h"
#include "core/hdf5/dense_index_check.h"
#include "core/hdf5/message_check.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

constexpr std::uint16_t space_message = 0x01;
constexpr std::uint16_t link_index_message = 0x02;
constexpr std::uint16_t type_message = 0x03;
constexpr std::uint16_t first_fill_message = 0x04;
constexpr std::uint16_t fill_message = 0x05;
constexpr std::uint16_t link_message = 0x06;
constexpr std::uint16_t external_files_message = 0x07;
constexpr std::uint16_t layout_message = 0x08;
constexpr std::uint16_t filters_message = 0x0b;
constexpr std::uint16_t attribute_message = 0x0c;
constexpr std::uint16_t continuation_message = 0x10;
constexpr std::uint16_t symbol_table_message = 0x11;
constexpr std::uint16_t attribute_index_message = 0x15;
constexpr std::uint16_t reference_count_message = 0x16;

// Flags of a header of the second version.
constexpr std::uint8_t size_width_mask = 0x03;
constexpr std::uint8_t has_creation_order = 0x04;
constexpr std::uint8_t has_attribute_limits = 0x10;
constexpr std::uint8_t has_times = 0x20;
constexpr std::size_t checksum_size = 4;

constexpr std::size_t first_version_unit = 8; ///< messages of the first version are padded to it

/// A run of messages: of the header itself, or of one of its continuations.
struct Run
{
    std::uint64_t position;  ///< in the file
    std::uint64_t size;      ///< bytes
    std::size_t front, back; ///< bytes of it around the messages
};

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("A header is damaged: " << reason);
}

class HeaderCheck
{
public:
    HeaderCheck(const Ogawa::ByteSource& file, ReadBudget& budget)
        : file_(file)
        , budget_(budget)
    {
    }

    void check(std::uint64_t position)
    {
        const std::string start = read_bytes(file_, position, prefix_size(position));
        runs_.push_back(start[0] == 'O' ? second_version_run(position, start) : first_version_run(position, start));
        for (std::size_t i = 0; i < runs_.size(); ++i) // continuations are found on the way
            check_run(runs_[i], i > 0);
        check_data_set();
    }

    const ObjectHeader& header() const { return header_; }

private:
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
        return {position + prefix, size, 0, 0};
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
        if ((flags & has_times && !cursor.take(16, skipped)) ||
            (flags & has_attribute_limits && !cursor.take(4, skipped)) ||
            !take_sized(cursor, std::size_t(1) << (flags & size_width_mask), size) || size > file_.size())
            fail("it ends after the file does");
        is_second_version_ = true;
        messages_have_order_ = (flags & has_creation_order) != 0;
        const std::size_t front = start.size() - cursor.left();
        return {position, front + size + checksum_size, front, checksum_size};
    }

    void check_run(const Run& run, bool is_continuation)
    {
        const std::string bytes = read_bytes(file_, run.position, run.size, budget_);
        const std::string_view all = bytes;
        if (is_continuation && is_second_version_ && all.substr(0, 4) != "OCHK") fail("a continuation is lost");
        if (is_second_version_ && !ends_in_checksum(all)) fail("it does not have its checksum");
        ByteCursor cursor(all.substr(run.front, all.size() - run.front - run.back));
        const std::size_t message_header = is_second_version_ ? (messages_have_order_ ? 6 : 4) : 8;
        while (cursor.left() >= message_header)
            check_message(cursor);
        // In the second version what is left over is a gap.
        if (!is_second_version_ && cursor.left() > 0) fail("a message is cut");
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
        if (flags & ~known_message_flags) fail("a message lies elsewhere");
        if (!is_second_version_ && size % first_version_unit != 0) fail("a message has a size that cannot be");
        use_message(type, body);
    }

    void use_message(std::uint16_t type, std::string_view body)
    {
        switch (type) {
        case space_message:
            require_first(rank_.has_value());
            rank_ = check_space(body);
            return;
        case type_message:
            require_first(value_bytes_.has_value());
            value_bytes_ = check_type(body);
            return;
        case first_fill_message:
            return check_first_fill(body);
        case fill_message:
            return check_fill(body);
        case link_index_message:
            require_first(header_.dense_links.has_value());
            header_.dense_links = check_link_index(body);
            return;
        case attribute_index_message:
            require_first(header_.dense_attributes.has_value());
            header_.dense_attributes = check_attribute_index(body);
            return;
        case reference_count_message:
            if (!is_second_version_ || body.size() < 5 || body[0] != 0) fail("its count of references is lost");
            return;
        case link_message:
            check_link(body);
            return;
        case external_files_message:
            fail("values of archives do not lie in other files");
        case layout_message:
            require_first(has_layout_);
            has_layout_ = true;
            header_.chunks = check_layout(body);
            return;
        case filters_message:
            return check_filters(body);
        case attribute_message:
            check_attribute(body);
            return;
        case continuation_message:
            return add_continuation(body);
        case symbol_table_message:
            return take_link_table(body);
        default:
            return;
        }
    }

    /// Of two, libhdf5 might take the other one.
    static void require_first(bool is_second)
    {
        if (is_second) fail("what there is one of stands there twice");
    }

    /// A data set has a type, a space and a layout, and they fit.
    void check_data_set() const
    {
        if (!rank_ && !value_bytes_ && !has_layout_) return;
        if (!rank_ || !value_bytes_ || !has_layout_) fail("a part of a data set is lost");
        const std::optional<ChunkIndex>& chunks = header_.chunks;
        if (chunks && (*rank_ == 0 || chunks->rank != *rank_ + 1 || chunks->value_bytes != *value_bytes_))
            fail("its chunks are not those of its values");
    }

    void take_link_table(std::string_view body)
    {
        require_first(header_.links.has_value());
        ByteCursor cursor(body);
        LinkTable table = {};
        if (!cursor.take(table.tree) || !cursor.take(table.heap)) fail("a table of links is lost");
        header_.links = table;
    }

    void add_continuation(std::string_view body)
    {
        ByteCursor cursor(body);
        std::uint64_t address = 0, size = 0;
        if (!cursor.take(address) || !cursor.take(size) || address > file_.size() || size == 0)
            fail("a continuation is lost");
        const std::size_t front = is_second_version_ ? 4 : 0, back = is_second_version_ ? checksum_size : 0;
        if (size < front + back) fail("a continuation is lost");
        runs_.push_back({address, size, front, back});
        header_.continuations.push_back(address);
    }

    const Ogawa::ByteSource& file_;
    ReadBudget& budget_;
    std::vector<Run> runs_;
    bool is_second_version_ = false;
    bool messages_have_order_ = false;
    bool has_layout_ = false;
    std::optional<std::uint8_t> rank_;
    std::optional<std::uint64_t> value_bytes_;
    ObjectHeader header_;
};

void check_chunks(const Ogawa::ByteSource& file, const ChunkIndex& chunks, ReadBudget& budget)
{
    if (chunks.tree == nowhere) return;
    TreeUse use;
    use.use_entry = [&](std::string_view key, std::uint64_t address) {
        if (parse_chunk(key, address).size > file.size() - address) fail("a chunk ends after the file does");
    };
    walk_tree(file, chunks.tree, TreeKind::CHUNKS, chunk_key_size(chunks), use, budget);
}

} // namespace

ObjectHeader check_object_header(const Ogawa::ByteSource& file, std::uint64_t position, ReadBudget& budget)
{
    HeaderCheck check(file, budget);
    check.check(position);
    return check.header();
}

void check_object(const Ogawa::ByteSource& file, std::uint64_t position, CheckLedger& ledger)
{
    const ObjectHeader header = check_object_header(file, position, ledger);
    ledger.claim(position, position);
    for (const std::uint64_t continuation : header.continuations)
        ledger.claim(continuation, position);
    if (header.links) check_symbol_table(file, *header.links, ledger);
    if (header.dense_links && header.dense_links->heap != nowhere) check_dense_links(file, *header.dense_links, ledger);
    if (header.dense_attributes && header.dense_attributes->heap != nowhere)
        check_dense_attributes(file, *header.dense_attributes, ledger);
    if (header.chunks) check_chunks(file, *header.chunks, ledger);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
