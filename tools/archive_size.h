/// Where the bytes of an archive go.
#pragma once

#include "archive_session.h"
#include "findings.h"

#include <cstdint>
#include <string>
#include <vector>

enum class SizeUnit { OBJECT, PROPERTY, SAMPLE };

struct SizeEntry
{
    std::string object, property; ///< property: empty by object
    std::int64_t sample = -1;     ///< by sample alone
    std::uint64_t samples = 0;    ///< that were set
    std::uint64_t stored = 0;     ///< of these, those whose bytes are counted here: nobody before had the same
    std::uint64_t bytes = 0;      ///< of the stored ones
    std::uint64_t shared = 0;     ///< bytes of the others, stored once for several
};

struct ArchiveSize
{
    std::uint64_t file_bytes = 0;   ///< of all files
    std::uint64_t sample_bytes = 0; ///< values of samples, each different one once
    std::uint64_t shared_bytes = 0; ///< what they would take more without sharing
    std::vector<SizeEntry> entries; ///< largest first
    Findings hints;                 ///< what would shrink; "saved_bytes" in the details, about
    Findings unreadable;            ///< objects and properties that are not counted, or not to their end, and why
};

/// Reads keys and sizes of all samples, and few samples themselves. A sample that several places have is counted for
/// the first of them.
ArchiveSize measure_archive(const ArchiveSession& session, const std::vector<std::string>& files, SizeUnit unit);
