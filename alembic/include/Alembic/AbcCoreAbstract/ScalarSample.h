/// One element of any data type, held by value.
#pragma once

#include <Alembic/AbcCoreAbstract/DataType.h>
#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// Holds and compares a scalar property's value. Raw memory that is passed in holds one element of the same type:
/// extent values one after the other (for strings: std::string objects).
class ALEMBIC_EXPORT ScalarSample : private Alembic::Util::noncopyable
{
public:
    /// Starts with the default value. Throws for an unknown type or extent 0.
    explicit ScalarSample(const DataType& dataType);

    void copyFrom(const void* data);
    const DataType& getDataType() const { return data_type_; }
    const void* getData() const;
    /// Zero, false or empty.
    void setToDefault();

    bool operator==(const void* rhs) const;
    /// False also when the types differ.
    bool operator==(const ScalarSample& rhs) const;

    /// Each value within `relAbsError` of the other, absolutely or relative to it. Anything but floating point numbers
    /// must be equal.
    bool equalWithRelAbsError(const void* rhs, double relAbsError) const;
    bool equalWithRelAbsError(const ScalarSample& rhs, double relAbsError) const;

    /// Lexicographical over the values; samples of different types are ordered by type.
    bool operator<(const void* rhs) const;
    bool operator<(const ScalarSample& rhs) const;

private:
    void* memory();

    DataType data_type_;
    std::vector<uint8_t> numbers_; // the bytes of a number type
    std::vector<std::string> strings_;
    std::vector<std::wstring> wide_strings_;
};

typedef Alembic::Util::shared_ptr<ScalarSample> ScalarSamplePtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
