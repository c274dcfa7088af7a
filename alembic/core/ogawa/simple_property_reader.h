/// @file
/// What scalar and array properties have in common.
#pragma once

#include "core/ogawa/compound_property_reader.h"
#include "core/ogawa/sample_data.h"

#include <memory>
#include <utility>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// A small object made for each request. `Interface` is AbcA's reader of the kind, `blocks_per_sample` the data blocks
/// that each stored sample takes in the group.
template <class Interface, unsigned blocks_per_sample>
class SimplePropertyReader : public Interface,
                             public std::enable_shared_from_this<SimplePropertyReader<Interface, blocks_per_sample>>
{
public:
    /// `record` belongs to the table of `parent`; `group` holds the samples.
    SimplePropertyReader(std::shared_ptr<CompoundPropertyReader> parent, const PropertyRecord& record,
                         const Ogawa::GroupReader& group)
        : parent_(std::move(parent))
        , record_(record)
        , group_(group)
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

    /// Data block `block` of a sample; no data when the group does not have it. Throws for an index that is not there.
    Ogawa::DataReader stored_data(AbcA::index_t index, unsigned block = 0) const
    {
        const SampleRange& samples = record_.samples;
        if (index < 0 || index >= static_cast<AbcA::index_t>(samples.count))
            ABCA_THROW("Invalid sample index: " << index << ", should be between 0 and " << samples.count - 1);
        const std::uint64_t stored = samples.stored_index(static_cast<std::uint64_t>(index));
        return Ogawa::DataReader(parent_->file(), group_, stored * blocks_per_sample + block);
    }

private:
    const std::shared_ptr<CompoundPropertyReader> parent_;
    const PropertyRecord& record_;
    const Ogawa::GroupReader group_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
