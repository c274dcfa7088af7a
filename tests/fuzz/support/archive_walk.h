/// @file
/// Asks an archive for everything it has, as a program would that trusts it.
#pragma once

#include <Alembic/Abc/All.h>

#include <cstddef>
#include <set>
#include <string>

namespace vo_fuzz {

/// What a walk came by. Errors are those that were thrown, or logged by handles that do not throw.
struct WalkReport
{
    std::size_t objects = 0;
    std::size_t properties = 0;
    std::size_t samples = 0;
    std::set<std::string> errors; ///< the last line of each text; the first hundred
};

/// Reads all objects, properties and samples below the top: headers, hashes, keys, dimensions, values as they are and
/// converted, by index and by name. Stops after some thousands of samples.
WalkReport walk_core(const Alembic::AbcCoreAbstract::ArchiveReaderPtr& archive);

/// The same through the typed layers under an error policy: every object as each schema, whether it matches or, with
/// `match_all`, not; every geometry parameter, every time sampling, instances and material networks.
WalkReport walk_typed(const Alembic::AbcCoreAbstract::ArchiveReaderPtr& archive,
                      Alembic::Abc::ErrorHandler::Policy policy, bool match_all = false);

/// Opens bytes as a stream and walks both ways with every policy. The reason when they cannot be opened.
WalkReport walk_bytes(const std::string& bytes, bool match_all = false);

} // namespace vo_fuzz
