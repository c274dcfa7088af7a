/// ArrayRepeats: which large samples of an array need not be read, since they repeat the one before.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <optional>

/// Goes through the samples of one array property, in order. Archives keep a digest of each: those of large samples are
/// compared, small samples are read as fast.
class ArrayRepeats
{
public:
    explicit ArrayRepeats(Alembic::AbcCoreAbstract::ArrayPropertyReader& array)
        : array_(array)
    {
    }

    /// Whether the sample has the contents and the dimensions of the one before. False where there is no telling.
    bool repeats(std::int64_t index);

    /// A sample that was read, since it was not known to repeat the one before.
    void note(std::int64_t index, const Alembic::AbcCoreAbstract::ArraySample& sample);

private:
    struct Print
    {
        Alembic::AbcCoreAbstract::ArraySampleKey key;
        Alembic::AbcCoreAbstract::Dimensions shape;
    };
    std::optional<Print> find_print(std::int64_t index) const;

    Alembic::AbcCoreAbstract::ArrayPropertyReader& array_;
    std::optional<Print> before_; ///< of the sample before, if that is large and has one
};
