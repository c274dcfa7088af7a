/// What one element of a property is: a plain data type, and how many of them.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>

#include <iosfwd>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// A plain data type and an extent, e.g. three float32_t for a point. Ordered by type, then extent.
class DataType : public Alembic::Util::totally_ordered<DataType>
{
public:
    /// Unknown type, extent 0.
    DataType() = default;
    explicit DataType(PlainOldDataType pod, uint8_t extent = 1)
        : pod_(pod)
        , extent_(extent)
    {
    }

    PlainOldDataType getPod() const { return pod_; }
    void setPod(PlainOldDataType pod) { pod_ = pod; }

    uint8_t getExtent() const { return extent_; }
    void setExtent(uint8_t extent) { extent_ = extent; }

    /// Bytes of one element in memory.
    size_t getNumBytes() const { return extent_ * PODNumBytes(pod_); }

    bool operator==(const DataType& b) const { return pod_ == b.pod_ && extent_ == b.extent_; }
    bool operator<(const DataType& b) const { return pod_ < b.pod_ || (pod_ == b.pod_ && extent_ < b.extent_); }

private:
    PlainOldDataType pod_ = kUnknownPOD;
    uint8_t extent_ = 0;
};

/// Prints `float32_t[3]`, without brackets when the extent is below 2.
ALEMBIC_EXPORT std::ostream& operator<<(std::ostream& ostr, const DataType& a);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
