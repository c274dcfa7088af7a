/// @file
/// Everything that an archive holds as text, so that archives of different back ends can be compared.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <string>

namespace vo_test {

namespace AbcA = Alembic::AbcCoreAbstract;

/// Objects in their order, properties by name, all samples with their keys, values and look-ups. Asks for everything
/// there is; throws what the back end throws.
std::string archive_text(AbcA::ArchiveReader& archive);

} // namespace vo_test
