/// What is wrong with an archive, or hardly meant.
#pragma once

#include "archive_session.h"
#include "findings.h"

/// Reads everything that is stored, and lists: what cannot be read; numbers that are not finite; topology, face sets,
/// creases, curves, velocities and geometry parameters that do not fit each other; bounds that are missing or too
/// small; samples that are missing; instances of nothing; HDF5.
Findings check_archive(const ArchiveSession& session, const std::vector<std::string>& files);
