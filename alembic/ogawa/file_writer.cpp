/// @file
/// The container writer: buffering, the header, and the order of the last writes.
#include "file_writer.h"

#include <Alembic/Util/Exception.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <future>
#include <system_error>
#include <thread>

namespace Alembic::Ogawa {

namespace {

constexpr std::size_t buffer_capacity = 256 * 1024;
constexpr std::size_t write_through_size = 32 * 1024; ///< from here on a call costs less than the copy it would save
constexpr std::size_t max_parts = 8;

} // namespace

FileWriter::FileWriter(std::unique_ptr<OutputTarget> target)
    : target_(std::move(target))
{
    buffer_.reserve(buffer_capacity);
    std::array<unsigned char, header_size> header = {};
    std::memcpy(header.data(), magic, sizeof magic);
    header[version_position] = container_version >> 8;
    header[version_position + 1] = container_version & 0xff;
    const Bytes bytes = {header.data(), header.size()};
    // At once, so that a target that takes nothing is noticed when it is opened.
    target_->write(0, &bytes, 1);
    target_->flush();
    written_ = header_size;
}

void FileWriter::check() const
{
    if (failed_) throw Util::Exception(failure_);
}

void FileWriter::give_up(const std::string& failure) noexcept
{
    if (failed_) return;
    failed_ = true;
    try {
        failure_ = failure;
    } catch (const std::exception&) { // no memory for the text: the flag alone has to do
    }
}

template <class Operation>
void FileWriter::guarded(Operation operation)
{
    check();
    try {
        operation();
    } catch (const std::exception& exception) {
        give_up(exception.what());
        throw;
    }
}

void FileWriter::write_buffer()
{
    if (buffer_.empty()) return;
    const Bytes bytes = {buffer_.data(), buffer_.size()};
    target_->write(written_, &bytes, 1);
    written_ += buffer_.size();
    buffer_.clear();
}

void FileWriter::append(const Bytes* parts, std::size_t part_count, std::uint64_t size)
{
    if (size >= write_through_size) {
        std::array<Bytes, max_parts + 2> all = {Bytes{buffer_.data(), buffer_.size()}};
        std::memcpy(&all[1], parts, part_count * sizeof(Bytes));
        target_->write(written_, all.data(), part_count + 1);
        written_ += buffer_.size() + size;
        buffer_.clear();
        return;
    }
    if (size > buffer_capacity - buffer_.size()) write_buffer();
    for (std::size_t i = 0; i < part_count; ++i) {
        const char* data = static_cast<const char*>(parts[i].data);
        buffer_.insert(buffer_.end(), data, data + parts[i].size);
    }
}

std::uint64_t FileWriter::append_data(std::initializer_list<Bytes> parts)
{
    std::uint64_t size = 0;
    std::array<Bytes, max_parts + 1> block = {Bytes{&size, sizeof size}};
    std::size_t count = 1;
    std::uint64_t entry = empty_data;
    guarded([&] {
        if (parts.size() > max_parts) throw Util::Exception("Too many parts for one Ogawa data block");
        for (const Bytes& part : parts) {
            if (part.size == 0) continue;
            block[count++] = part;
            size += part.size;
        }
        if (size == 0) return;
        entry = data_bit | (written_ + buffer_.size());
        append(block.data(), count, count_size + size);
    });
    return entry;
}

std::uint64_t FileWriter::append_data(std::size_t head_size, const std::function<void(void*)>& make_head,
                                      const Bytes& body)
{
    std::vector<char> head(head_size);
    std::future<void> making; // waits at its end, however that is reached
    if (body.size >= least_body_for_thread && std::thread::hardware_concurrency() > 1) {
        try {
            making = std::async(std::launch::async, make_head, head.data());
        } catch (const std::system_error&) { // no thread to be had
        }
    }
    if (!making.valid()) {
        make_head(head.data());
        return append_data({{head.data(), head.size()}, body});
    }
    const std::vector<char> placeholder(head_size);
    const std::uint64_t entry = append_data({{placeholder.data(), placeholder.size()}, body});
    guarded([&] {
        making.get();
        static_assert(least_body_for_thread >= write_through_size, "the block went past the buffer");
        const Bytes bytes = {head.data(), head.size()};
        target_->write((entry & position_mask) + count_size, &bytes, 1);
    });
    return entry;
}

std::uint64_t FileWriter::append_group(const std::vector<std::uint64_t>& entries)
{
    const std::uint64_t* next = entries.data();
    return append_group(entries.size(), [&next] { return *next++; });
}

std::uint64_t FileWriter::append_group(std::uint64_t count, const std::function<std::uint64_t()>& next)
{
    std::uint64_t entry = empty_group;
    guarded([&] {
        if (count == 0) return;
        entry = written_ + buffer_.size();
        std::array<std::uint64_t, 512> some; // most groups are small: not filled first
        some[0] = count;
        std::size_t used = 1;
        for (std::uint64_t left = count; left > 0; used = 0) {
            for (; left > 0 && used < some.size(); --left)
                some[used++] = next();
            const Bytes piece = {some.data(), used * entry_size};
            append(&piece, 1, piece.size);
        }
    });
    return entry;
}

void FileWriter::finish(std::uint64_t root_entry)
{
    guarded([&] {
        write_buffer();
        const Bytes root = {&root_entry, sizeof root_entry};
        target_->write(root_position, &root, 1);
        target_->flush();
        const Bytes frozen = {&frozen_flag, 1};
        target_->write(frozen_position, &frozen, 1);
        target_->close();
    });
    give_up("The archive is finished already: nothing can be added");
}

} // namespace Alembic::Ogawa
