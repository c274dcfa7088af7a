/// @file
/// What the compound properties of all back ends have in common.
#pragma once

#include "core/common/property_table.h"
#include "core/common/property_type.h"

#include <memory>
#include <string>
#include <utility>

namespace Alembic {
namespace AbcCoreCommon {
inline namespace ALEMBIC_VERSION_NS {

/// The header of an object's own compound: it has no name.
inline const AbcA::PropertyHeader& unnamed_compound()
{
    static const AbcA::PropertyHeader unnamed("", AbcA::MetaData());
    return unnamed;
}

/// A small object made for each request; it keeps its object and its parents alive. `Reader` is the class derived from
/// it.
template <class Reader>
class CompoundPropertyReader : public AbcA::CompoundPropertyReader, public std::enable_shared_from_this<Reader>
{
public:
    /// `parent` is null for an object's own compound. `header` and `table` stay as long as the object's archive. Throws
    /// when compounds are nested deeper than `max_depth`.
    CompoundPropertyReader(AbcA::ObjectReaderPtr object, std::shared_ptr<Reader> parent,
                           const AbcA::PropertyHeader& header, const PropertyTable& table, std::uint32_t max_depth)
        : object_(std::move(object))
        , parent_(std::move(parent))
        , header_(header)
        , table_(table)
        , depth_(parent_ ? parent_->depth_ + 1 : 0)
    {
        if (depth_ > max_depth)
            ABCA_THROW("Read invalid: compound properties are nested too deep in " << object_->getFullName());
    }

    const AbcA::PropertyHeader& getHeader() const final { return header_; }
    AbcA::ObjectReaderPtr getObject() final { return object_; }
    AbcA::CompoundPropertyReaderPtr getParent() final { return parent_; }
    AbcA::CompoundPropertyReaderPtr asCompoundPtr() final { return this->shared_from_this(); }
    size_t getNumProperties() final { return table_.size(); }

    const AbcA::PropertyHeader& getPropertyHeader(size_t i) final
    {
        if (i >= table_.size()) ABCA_THROW("Out of range index in CprData::getPropertyHeader: " << i);
        return table_.record(static_cast<std::uint32_t>(i)).header;
    }

    const AbcA::PropertyHeader* getPropertyHeader(const std::string& name) final
    {
        const std::uint32_t index = table_.find(name);
        return index == NameIndex::none ? nullptr : &table_.record(index).header;
    }

protected:
    const std::shared_ptr<Reader>& parent() const { return parent_; }

    /// The property of that name and its number; null when there is none. Throws when it is not a `wanted` one.
    const PropertyRecord* find(const std::string& name, AbcA::PropertyType wanted, std::uint32_t& index) const
    {
        index = table_.find(name);
        if (index == NameIndex::none) return nullptr;
        const PropertyRecord& record = table_.record(index);
        check_type(name, record.header, wanted);
        return &record;
    }

private:
    const AbcA::ObjectReaderPtr object_;
    const std::shared_ptr<Reader> parent_;
    const AbcA::PropertyHeader& header_;
    const PropertyTable& table_;
    const std::uint32_t depth_; ///< of an object's own compound: 0
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreCommon
} // namespace Alembic
