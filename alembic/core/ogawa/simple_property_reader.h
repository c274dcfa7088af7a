/// @file
/// What scalar and array properties have in common.
#pragma once

#include "core/common/simple_property_reader.h"
#include "core/ogawa/compound_property_reader.h"
#include "core/ogawa/sample_data.h"

#include <memory>
#include <utility>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// `Interface` is AbcA's reader of the kind, `blocks_per_sample` the data blocks that each stored sample takes in the
/// group.
template <class Interface, unsigned blocks_per_sample>
class SimplePropertyReader : public AbcCoreCommon::SimplePropertyReader<Interface, CompoundPropertyReader>,
                             public std::enable_shared_from_this<SimplePropertyReader<Interface, blocks_per_sample>>
{
public:
    /// `record` belongs to the table of `parent`; `group` holds the samples.
    SimplePropertyReader(std::shared_ptr<CompoundPropertyReader> parent, const PropertyRecord& record,
                         const Ogawa::GroupReader& group)
        : AbcCoreCommon::SimplePropertyReader<Interface, CompoundPropertyReader>(std::move(parent), record)
        , group_(group)
    {
    }

protected:
    /// Data block `block` of a sample; no data when the group does not have it. Throws for an index that is not there.
    Ogawa::DataReader stored_data(AbcA::index_t index, unsigned block = 0) const
    {
        this->require_sample(index);
        const std::uint64_t stored = this->record().samples.stored_index(static_cast<std::uint64_t>(index));
        return Ogawa::DataReader(this->compound().file(), group_, stored * blocks_per_sample + block);
    }

private:
    const Ogawa::GroupReader group_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
