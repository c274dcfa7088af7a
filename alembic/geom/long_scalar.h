/// Numbers of one property that is a scalar while they fit its extent, which is one byte in a file, and an array of
/// single elements beyond that. Readers go by the property's kind.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

template <class TRAITS>
class LongScalar
{
public:
    using value_type = typename TRAITS::value_type;

    static constexpr size_t longest_scalar = 255;

    bool exists() const { return scalar_.getPtr() || array_.getPtr(); }

    /// Creates the property for `count` values in each sample; nothing for no values.
    void create(const AbcA::CompoundPropertyWriterPtr& compound, const std::string& name, size_t count,
                uint32_t time_sampling_index)
    {
        if (count == 0) return;
        const Alembic::Util::PlainOldDataType pod = TRAITS::dataType().getPod();
        if (count <= longest_scalar) {
            const AbcA::DataType type(pod, static_cast<uint8_t>(count));
            scalar_ = Abc::OScalarProperty(compound, name, type, time_sampling_index);
        } else {
            array_ = Abc::OTypedArrayProperty<TRAITS>(compound, name, time_sampling_index);
        }
    }

    /// As many values as create() was told.
    void set(const std::vector<value_type>& values)
    {
        if (scalar_.getPtr())
            scalar_.set(values.data());
        else if (array_.getPtr())
            array_.set(Abc::TypedArraySample<TRAITS>(values));
    }

    void repeat()
    {
        if (scalar_.getPtr())
            scalar_.setFromPrevious();
        else if (array_.getPtr())
            array_.setFromPrevious();
    }

    void set_time_sampling(uint32_t index)
    {
        if (scalar_.getPtr())
            scalar_.setTimeSampling(index);
        else if (array_.getPtr())
            array_.setTimeSampling(index);
    }

private:
    Abc::OScalarProperty scalar_;
    Abc::OTypedArrayProperty<TRAITS> array_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
