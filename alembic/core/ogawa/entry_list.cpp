/// @file
/// Runs of entries at even distances.
#include "entry_list.h"

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// Seven bits a byte, the lowest first; the high bit says that more follow.
constexpr int bits_per_byte = 7;
constexpr std::uint8_t more_follow = 0x80;

void put_number(std::uint64_t number, std::vector<std::uint8_t>& bytes)
{
    for (; number >= more_follow; number >>= bits_per_byte)
        bytes.push_back(std::uint8_t(number) | more_follow);
    bytes.push_back(std::uint8_t(number));
}

std::uint64_t take_number(const std::vector<std::uint8_t>& bytes, std::size_t& at)
{
    std::uint64_t number = 0;
    int shift = 0;
    for (; (bytes[at] & more_follow) != 0; shift += bits_per_byte)
        number |= std::uint64_t(bytes[at++] & ~more_follow) << shift;
    return number | std::uint64_t(bytes[at++]) << shift;
}

// A distance backwards is a number near 2^64: the sign goes into the lowest bit, to make it a small one.
std::uint64_t sign_to_low_bit(std::uint64_t distance)
{
    return distance >> 63 != 0 ? ~(distance << 1) : distance << 1;
}

std::uint64_t sign_from_low_bit(std::uint64_t number)
{
    return (number & 1) != 0 ? ~(number >> 1) : number >> 1;
}

} // namespace

void EntryList::append_run(std::uint64_t distance, std::uint64_t count)
{
    if (run_ > 0 && distance == distance_) {
        run_ += count;
        return;
    }
    if (run_ > 0) {
        put_number(sign_to_low_bit(distance_), bytes_);
        put_number(run_, bytes_);
    }
    distance_ = distance;
    run_ = count;
}

void EntryList::append(std::uint64_t entry, std::uint64_t times)
{
    if (times == 0) return;
    append_run(entry - last_, 1);
    if (times > 1) append_run(0, times - 1);
    last_ = entry;
    size_ += times;
}

std::uint64_t EntryList::Reader::next()
{
    if (left_in_run_ == 0) {
        const bool is_open_run = at_ == list_.bytes_.size();
        distance_ = is_open_run ? list_.distance_ : sign_from_low_bit(take_number(list_.bytes_, at_));
        left_in_run_ = is_open_run ? list_.run_ : take_number(list_.bytes_, at_);
    }
    --left_in_run_;
    return entry_ += distance_;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
