/// How materials store dictionaries and pairs of names as strings.
#pragma once

#include <Alembic/AbcMaterial/SchemaInfoDeclarations.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

using Dictionary = std::map<std::string, std::string>;

/// Throws for a text with a zero character in it, which an archive cannot keep.
ALEMBIC_EXPORT void require_text(const std::string& text);

/// `first.second`, or `first` alone when the second is empty. Throws when the first is empty or has a dot: it could not
/// be told apart again.
ALEMBIC_EXPORT std::string join_names(const std::string& first, const std::string& second);

/// What join_names() joined: the parts before and after the first dot.
ALEMBIC_EXPORT std::pair<std::string, std::string> split_names(const std::string& joined);

/// A dictionary that is stored as a string array `name` of alternating keys and values in `parent`; empty when there is
/// no such property. A key without value is left out.
ALEMBIC_EXPORT Dictionary read_dictionary(const Abc::ICompoundProperty& parent, const std::string& name);

/// Stores a dictionary; nothing when it is empty.
ALEMBIC_EXPORT void write_dictionary(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                                     const Dictionary& dictionary);

/// First parts of a dictionary's keys, and second parts of the keys that begin with `first`; sorted, each once.
ALEMBIC_EXPORT std::vector<std::string> first_names(const Dictionary& dictionary);
ALEMBIC_EXPORT std::vector<std::string> second_names(const Dictionary& dictionary, const std::string& first);

/// The sub-compound of a name; an invalid one when `parent` is invalid or has no such compound.
ALEMBIC_EXPORT Abc::ICompoundProperty compound_if_any(const Abc::ICompoundProperty& parent, const std::string& name);

/// The text of a scalar property. False, `result` untouched, when there is none.
ALEMBIC_EXPORT bool read_text(const Abc::ICompoundProperty& parent, const std::string& name, std::string& result);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
