/// @file
/// The stored form of the indices of many links and attributes.
#include "core/hdf5/dense_index_check.h"

#include "core/hdf5/checksum.h"
#include "core/hdf5/fractal_heap.h"
#include "core/hdf5/record_tree.h"
#include "core/hdf5/stored_bytes.h"
#include "core/ogawa/byte_cursor.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

namespace {

using AbcCoreOgawa::ByteCursor;

[[noreturn]] void fail(const char* reason)
{
    ABCA_THROW("An index of links or attributes is damaged: " << reason);
}

/// Where a record of an index has what is needed of it.
struct RecordForm
{
    RecordKind kind;
    std::size_t id_place;
    std::size_t key_place; ///< of the hash of the name, or of the number
};

/// What differs between links and attributes.
struct MemberForm
{
    std::size_t id_size;
    RecordForm by_name, by_order;
    std::size_t order_size; ///< bytes of the numbers
    bool has_flags;         ///< in a byte behind the ID
    std::string_view (*check)(std::string_view message);
};

constexpr MemberForm link_form = {7, {{5, 11}, 4, 0}, {{6, 15}, 8, 0}, 8, false, check_link};
constexpr MemberForm attribute_form = {8, {{8, 17}, 0, 13}, {{9, 13}, 0, 9}, 4, true, check_attribute};

class DenseCheck
{
public:
    DenseCheck(const Ogawa::ByteSource& file, const DenseIndex& index, const MemberForm& form, CheckLedger& ledger)
        : file_(file)
        , index_(index)
        , form_(form)
        , ledger_(ledger)
        , heap_(file, index.heap, form.id_size, ledger)
    {
    }

    void check()
    {
        walk_records(
            file_, index_.by_name, form_.by_name.kind, [this](std::string_view record) { use_name(record); }, ledger_);
        if (index_.by_order == nowhere) return;
        walk_records(
            file_, index_.by_order, form_.by_order.kind, [this](std::string_view record) { use_order(record); },
            ledger_);
        std::sort(ids_.begin(), ids_.end());
        std::sort(numbered_ids_.begin(), numbered_ids_.end());
        if (ids_ != numbered_ids_) fail("its trees do not lead to the same");
    }

private:
    static std::uint64_t number_at(std::string_view record, std::size_t place, std::size_t size)
    {
        std::uint64_t number = 0;
        ByteCursor cursor(record.substr(place));
        take_sized(cursor, size, number);
        return number;
    }

    std::string_view id_in(std::string_view record, const RecordForm& form) const
    {
        if (form_.has_flags && record[form.id_place + form_.id_size] & ~known_message_flags)
            fail("a member lies elsewhere");
        return record.substr(form.id_place, form_.id_size);
    }

    /// Names come in the order of their hashes, each once.
    void use_name(std::string_view record)
    {
        const std::string_view id = id_in(record, form_.by_name);
        const std::string message = heap_.read_object(id);
        std::string name(form_.check(message));
        const auto hash = static_cast<std::uint32_t>(number_at(record, form_.by_name.key_place, sizeof(std::uint32_t)));
        if (name.find('\0') != name.npos || checksum(name) != hash) fail("a name is not the one it is found by");
        std::pair<std::uint32_t, std::string> found(hash, std::move(name));
        if (!ids_.empty() && found <= last_name_) fail("its names are out of order");
        last_name_ = std::move(found);
        ids_.push_back(number_at(id, 0, form_.id_size));
    }

    /// Numbers come in their order, and lead to what has a name, once.
    void use_order(std::string_view record)
    {
        const std::uint64_t id = number_at(id_in(record, form_.by_order), 0, form_.id_size);
        const std::uint64_t number = number_at(record, form_.by_order.key_place, form_.order_size);
        if (!numbered_ids_.empty() && number <= last_number_) fail("its numbers are out of order");
        last_number_ = number;
        numbered_ids_.push_back(id);
    }

    const Ogawa::ByteSource& file_;
    const DenseIndex& index_;
    const MemberForm& form_;
    CheckLedger& ledger_;
    const FractalHeap heap_;
    std::vector<std::uint64_t> ids_, numbered_ids_; ///< found by name, and by number
    std::pair<std::uint32_t, std::string> last_name_;
    std::uint64_t last_number_ = 0;
};

} // namespace

void check_dense_links(const Ogawa::ByteSource& file, const DenseIndex& index, CheckLedger& ledger)
{
    DenseCheck(file, index, link_form, ledger).check();
}

void check_dense_attributes(const Ogawa::ByteSource& file, const DenseIndex& index, CheckLedger& ledger)
{
    DenseCheck(file, index, attribute_form, ledger).check();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
