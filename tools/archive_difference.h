/// Where two archives differ.
#pragma once

#include "findings.h"

#include <Alembic/AbcCoreAbstract/ObjectReader.h>

/// What is in only one of two archives, and what is not the same in both: objects by their full names with metadata,
/// instances, properties with their types, metadata and samplings, and the values of every sample that both have,
/// within `tolerance`. The order of objects and properties, and what the archives say about themselves, do not count.
/// The two names stand for the archives in texts.
class ArchiveDifference
{
public:
    ArchiveDifference(const std::string& first_name, const std::string& second_name, double tolerance)
        : first_name_(first_name)
        , second_name_(second_name)
        , tolerance_(tolerance)
    {
    }

    /// Compares the archives of these two top objects. What cannot be read is a difference, too.
    Findings compare(const Alembic::AbcCoreAbstract::ObjectReaderPtr& first,
                     const Alembic::AbcCoreAbstract::ObjectReaderPtr& second);

private:
    class PropertyPair;

    void compare_properties(const Alembic::AbcCoreAbstract::ObjectReaderPtr& first,
                            const Alembic::AbcCoreAbstract::ObjectReaderPtr& second);
    void compare_metadata(const std::string& object, const std::string& property,
                          const Alembic::AbcCoreAbstract::MetaData& first,
                          const Alembic::AbcCoreAbstract::MetaData& second);
    std::string only_in(bool is_first) const;

    std::string first_name_, second_name_;
    double tolerance_;
    Findings findings_;
};
