/// One element of any data type, compared by value.
#include <Alembic/AbcCoreAbstract/ScalarSample.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// Calls visit(T()) with the C++ type of `pod`, which is known to be a type.
template <class VISIT>
auto with_type(PlainOldDataType pod, VISIT visit)
{
    switch (pod) {
    case kBooleanPOD:
        return visit(bool_t());
    case kUint8POD:
        return visit(uint8_t());
    case kInt8POD:
        return visit(int8_t());
    case kUint16POD:
        return visit(uint16_t());
    case kInt16POD:
        return visit(int16_t());
    case kUint32POD:
        return visit(uint32_t());
    case kInt32POD:
        return visit(int32_t());
    case kUint64POD:
        return visit(uint64_t());
    case kInt64POD:
        return visit(int64_t());
    case kFloat16POD:
        return visit(float16_t());
    case kFloat32POD:
        return visit(float32_t());
    case kFloat64POD:
        return visit(float64_t());
    case kStringPOD:
        return visit(std::string());
    default:
        return visit(std::wstring());
    }
}

template <class T>
bool nearly_equal(const T& a, const T& b, double error)
{
    if constexpr (std::is_floating_point<T>::value || std::is_same<T, float16_t>::value) {
        const double x = static_cast<double>(a);
        const double y = static_cast<double>(b);
        const double difference = std::fabs(x - y);
        return x == y || difference <= error || difference <= error * std::fabs(x);
    } else {
        return a == b;
    }
}

} // namespace

ScalarSample::ScalarSample(const DataType& dataType)
    : data_type_(dataType)
{
    const PlainOldDataType pod = dataType.getPod();
    if (PODNumBytes(pod) == 0 || dataType.getExtent() == 0)
        ABCA_THROW("A scalar sample cannot hold the data type " << dataType << " with extent "
                                                                << unsigned(dataType.getExtent()));
    if (pod == kStringPOD)
        strings_.resize(dataType.getExtent());
    else if (pod == kWstringPOD)
        wide_strings_.resize(dataType.getExtent());
    else
        numbers_.resize(dataType.getNumBytes());
}

void* ScalarSample::memory()
{
    if (data_type_.getPod() == kStringPOD) return strings_.data();
    if (data_type_.getPod() == kWstringPOD) return wide_strings_.data();
    return numbers_.data();
}

const void* ScalarSample::getData() const
{
    return const_cast<ScalarSample*>(this)->memory();
}

void ScalarSample::copyFrom(const void* data)
{
    with_type(data_type_.getPod(), [&](auto zero) {
        typedef decltype(zero) T;
        const T* const from = static_cast<const T*>(data);
        std::copy(from, from + data_type_.getExtent(), static_cast<T*>(memory()));
    });
}

void ScalarSample::setToDefault()
{
    with_type(data_type_.getPod(), [&](auto zero) {
        typedef decltype(zero) T;
        std::fill_n(static_cast<T*>(memory()), data_type_.getExtent(), zero);
    });
}

bool ScalarSample::operator==(const void* rhs) const
{
    return with_type(data_type_.getPod(), [&](auto zero) {
        typedef decltype(zero) T;
        const T* const mine = static_cast<const T*>(getData());
        return std::equal(mine, mine + data_type_.getExtent(), static_cast<const T*>(rhs));
    });
}

bool ScalarSample::operator==(const ScalarSample& rhs) const
{
    return data_type_ == rhs.data_type_ && *this == rhs.getData();
}

bool ScalarSample::equalWithRelAbsError(const void* rhs, double relAbsError) const
{
    return with_type(data_type_.getPod(), [&](auto zero) {
        typedef decltype(zero) T;
        const T* const mine = static_cast<const T*>(getData());
        return std::equal(mine, mine + data_type_.getExtent(), static_cast<const T*>(rhs),
                          [=](const T& a, const T& b) { return nearly_equal(a, b, relAbsError); });
    });
}

bool ScalarSample::equalWithRelAbsError(const ScalarSample& rhs, double relAbsError) const
{
    return data_type_ == rhs.data_type_ && equalWithRelAbsError(rhs.getData(), relAbsError);
}

bool ScalarSample::operator<(const void* rhs) const
{
    return with_type(data_type_.getPod(), [&](auto zero) {
        typedef decltype(zero) T;
        const T* const mine = static_cast<const T*>(getData());
        const T* const other = static_cast<const T*>(rhs);
        return std::lexicographical_compare(mine, mine + data_type_.getExtent(), other, other + data_type_.getExtent());
    });
}

bool ScalarSample::operator<(const ScalarSample& rhs) const
{
    return data_type_ == rhs.data_type_ ? *this < rhs.getData() : data_type_ < rhs.data_type_;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
