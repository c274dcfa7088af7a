/// What identifies a schema: its title and its place; and how metadata are compared with it.
#pragma once

#include <Alembic/Abc/Foundation.h>

#include <string>

/// Declares the struct `NAME` that names a schema: its title, the title of what it specialises (or ""), the name of its
/// compound in an object, and whether a sparse layer of it replaces weaker ones instead of merging with them.
#define ALEMBIC_ABC_DECLARE_SCHEMA_INFO(TITLE, BASE, DEFAULTNAME, REPLACE, NAME)                                       \
    struct ALEMBIC_EXPORT NAME                                                                                         \
    {                                                                                                                  \
        static const char* title() { return TITLE; }                                                                   \
        static const char* schemaBaseType() { return BASE; }                                                           \
        static const char* defaultName() { return DEFAULTNAME; }                                                       \
        static bool replaceOnSparse() { return REPLACE; }                                                              \
    }

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// The same, at run time.
struct ALEMBIC_EXPORT SchemaDescription
{
    const char* title;
    const char* base_type;
    const char* default_name;
    bool replace_on_sparse;

    template <class INFO>
    static SchemaDescription of()
    {
        return SchemaDescription{INFO::title(), INFO::schemaBaseType(), INFO::defaultName(), INFO::replaceOnSparse()};
    }

    /// `TITLE:DEFAULTNAME`.
    std::string object_title() const;

    /// A compound's metadata, or an object's, name this schema. An empty title matches everything.
    bool matches_compound(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const;
    /// An object's metadata name this schema. Strictly: `schemaObjTitle` or `schema` is the object title.
    bool matches_object(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const;
    /// The same for objects being written, whose `schemaObjTitle` alone counts.
    bool matches_written_object(const AbcA::MetaData& meta_data, SchemaInterpMatching matching) const;

    /// Throws `Incorrect match of schema: A to expected: B`.
    [[noreturn]] void throw_mismatch(const AbcA::MetaData& meta_data) const;

    /// `meta_data` with what a written compound, or object, of this schema is recognised by.
    AbcA::MetaData compound_metadata(AbcA::MetaData meta_data, bool sparse) const;
    AbcA::MetaData object_metadata(AbcA::MetaData meta_data, bool sparse) const;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
