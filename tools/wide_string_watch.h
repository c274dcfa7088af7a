/// WideStringWatch: tells which wide strings an Ogawa archive did not keep.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <string>
#include <vector>

/// Ogawa archives take samples of wide strings for equal when as many strings have the same first quarter. What was
/// written is noted here, and compared with what can be read.
class WideStringWatch
{
public:
    /// A sample that was appended to a property: `names` are those of its compounds, and last its own; `index` that of
    /// the sample. Samples of other types are ignored.
    void note(const std::string& object_path, const std::vector<std::string>& names, std::int64_t index,
              const Alembic::AbcCoreAbstract::ArraySample& sample);

    /// A line for each property with samples that read as others.
    std::vector<std::string> find_lost(Alembic::AbcCoreAbstract::ArchiveReader& copy) const;

private:
    /// Samples one after the other that are equal.
    struct Run
    {
        std::int64_t first, last;
        Alembic::Util::Digest contents;
    };
    struct Property
    {
        std::string object_path;
        std::vector<std::string> names;
        std::vector<Run> runs;
    };

    static std::uint64_t count_lost(const Property& property, Alembic::AbcCoreAbstract::ArchiveReader& copy);

    std::vector<Property> properties_;
};
