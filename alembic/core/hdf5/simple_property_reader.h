/// @file
/// What scalar and array properties have in common: where their samples stand.
#pragma once

#include "core/common/simple_property_reader.h"
#include "core/hdf5/compound_property_reader.h"
#include "core/hdf5/file.h"

#include <cstdint>
#include <string>

namespace Alembic {
namespace AbcCoreHDF5 {
inline namespace ALEMBIC_VERSION_NS {

/// Where one stored sample stands: its name in a group.
struct SamplePlace
{
    hid_t group;
    std::string name;
};

/// The samples of one property. Its user holds a LibraryLock.
class StoredSamples
{
public:
    /// The place of stored sample `index`, among those of `property` in the compound's group. Throws when the group of
    /// the later samples is missing.
    SamplePlace place_of(File& file, hid_t group, const std::string& property, std::uint64_t index);

private:
    Handle later_; ///< the group of all samples but the first, opened when it is first needed
};

template <class Interface>
class SimplePropertyReader : public AbcCoreCommon::SimplePropertyReader<Interface, CompoundPropertyReader>,
                             public std::enable_shared_from_this<SimplePropertyReader<Interface>>
{
public:
    using AbcCoreCommon::SimplePropertyReader<Interface, CompoundPropertyReader>::SimplePropertyReader;

protected:
    /// The place of what is stored for sample `index`. The caller holds a LibraryLock. Throws for an index that is not
    /// there.
    SamplePlace place_of(AbcA::index_t index)
    {
        this->require_sample(index);
        const std::uint64_t stored = this->record().samples.stored_sample(static_cast<std::uint64_t>(index));
        return samples_.place_of(this->compound().file(), this->compound().group(), this->getName(), stored);
    }

private:
    StoredSamples samples_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreHDF5
} // namespace Alembic
