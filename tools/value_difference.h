/// How two samples differ, number by number.
#pragma once

#include <Alembic/AbcCoreAbstract/ArraySample.h>

#include <cstdint>
#include <string>

struct ValueDifference
{
    std::uint64_t differing_count = 0; ///< elements; 0: none beyond the tolerance
    std::uint64_t element_count = 0;   ///< of each sample
    bool is_numeric = true;            ///< false: texts; the next one is then meaningless
    double greatest = 0.0;             ///< greatest difference of two numbers; infinite where one is no number
    std::uint64_t element = 0;         ///< where that is, or the first text that differs
    std::string first, second;         ///< that element in both, "1.5" or "(0, 1, 2)"
};

/// Whether numbers can be compared with numbers, and texts with texts.
bool are_comparable(const Alembic::AbcCoreAbstract::DataType& a, const Alembic::AbcCoreAbstract::DataType& b);

/// Compares two samples of as many elements, of comparable types and one extent. Numbers that are further apart than
/// `tolerance` differ; those of unlike types are compared in double. NaN equals NaN. Texts are the same or not.
ValueDifference find_difference(const Alembic::AbcCoreAbstract::ArraySample& a,
                                const Alembic::AbcCoreAbstract::ArraySample& b, double tolerance);

/// One element of a sample as text.
std::string element_text(const Alembic::AbcCoreAbstract::ArraySample& sample, std::uint64_t element);
