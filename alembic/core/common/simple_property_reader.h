/// @file
/// What the scalar and array properties of all back ends have in common.
#pragma once

#include "core/common/property_record.h"

#include <memory>
#include <utility>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// A small object made for each request. `Interface` is AbcA's reader of the kind, `Compound` the back end's compound.
template <class Interface, class Compound>
class SimplePropertyReader : public Interface
{
public:
    /// `record` belongs to the table of `parent`.
    SimplePropertyReader(std::shared_ptr<Compound> parent, const PropertyRecord& record)
        : parent_(std::move(parent))
        , record_(record)
    {
    }

    const AbcA::PropertyHeader& getHeader() const final { return record_.header; }
    AbcA::ObjectReaderPtr getObject() final { return parent_->getObject(); }
    AbcA::CompoundPropertyReaderPtr getParent() final { return parent_; }
    size_t getNumSamples() final { return record_.samples.count; }
    bool isConstant() final { return record_.samples.first_changed == 0; }

    std::pair<AbcA::index_t, AbcA::chrono_t> getFloorIndex(AbcA::chrono_t time) final
    {
        return this->getTimeSampling()->getFloorIndex(time, record_.samples.count);
    }
    std::pair<AbcA::index_t, AbcA::chrono_t> getCeilIndex(AbcA::chrono_t time) final
    {
        return this->getTimeSampling()->getCeilIndex(time, record_.samples.count);
    }
    std::pair<AbcA::index_t, AbcA::chrono_t> getNearIndex(AbcA::chrono_t time) final
    {
        return this->getTimeSampling()->getNearIndex(time, record_.samples.count);
    }

protected:
    const PropertyRecord& record() const { return record_; }
    Compound& compound() const { return *parent_; }

    /// Throws for the index of a sample that is not there.
    void require_sample(AbcA::index_t index) const
    {
        if (index < 0 || index >= static_cast<AbcA::index_t>(record_.samples.count))
            ABCA_THROW("Invalid sample index: " << index << ", should be between 0 and " << record_.samples.count - 1);
    }

private:
    const std::shared_ptr<Compound> parent_;
    const PropertyRecord& record_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
