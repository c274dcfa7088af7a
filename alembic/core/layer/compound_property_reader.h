/// A compound property of a layered archive.
#pragma once

#include <Alembic/AbcCoreAbstract/All.h>

#include "core/layer/merged_table.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcCoreLayer {
inline namespace ALEMBIC_VERSION_NS {

class ObjectReader;

/// Merged when it is made, which happens once; kept by its object or the compound that it is in.
class CompoundPropertyReader final : public AbcCoreAbstract::CompoundPropertyReader
{
public:
    typedef std::vector<AbcCoreAbstract::CompoundPropertyReaderPtr> Versions;

    /// The compound of an object itself, which has the object's metadata. `versions` are the layers' own, weakest
    /// first.
    static std::unique_ptr<CompoundPropertyReader> of_object(ObjectReader& object, Versions versions);

    CompoundPropertyReader(ObjectReader& object, CompoundPropertyReader* parent,
                           const AbcCoreAbstract::PropertyHeader& header, Versions versions);
    ~CompoundPropertyReader() override;

    const AbcCoreAbstract::PropertyHeader& getHeader() const override { return header_; }
    AbcCoreAbstract::ObjectReaderPtr getObject() override;
    AbcCoreAbstract::CompoundPropertyReaderPtr getParent() override;
    AbcCoreAbstract::CompoundPropertyReaderPtr asCompoundPtr() override;
    size_t getNumProperties() override { return table_.size(); }
    const AbcCoreAbstract::PropertyHeader& getPropertyHeader(size_t i) override;
    const AbcCoreAbstract::PropertyHeader* getPropertyHeader(const std::string& name) override;
    AbcCoreAbstract::ScalarPropertyReaderPtr getScalarProperty(const std::string& name) override;
    AbcCoreAbstract::ArrayPropertyReaderPtr getArrayProperty(const std::string& name) override;
    AbcCoreAbstract::CompoundPropertyReaderPtr getCompoundProperty(const std::string& name) override;

private:
    struct Property
    {
        std::string_view name() const { return header->getName(); }

        const AbcCoreAbstract::PropertyHeader* header; // a layer's
        std::vector<uint32_t> sources;                 // of versions_, weakest first; of a simple property one
    };

    static void merge_property(MergedTable<Property>& table, const AbcCoreAbstract::PropertyHeader& header,
                               uint32_t version);
    /// The number of the property of that name, or the table's size. Throws when it is not of the `wanted` kind.
    size_t find(const std::string& name, AbcCoreAbstract::PropertyType wanted) const;
    CompoundPropertyReader& node(size_t number);

    ObjectReader& object_;
    CompoundPropertyReader* const parent_; // null for an object's own
    const AbcCoreAbstract::PropertyHeader header_;
    const Versions versions_; // weakest first
    MergedTable<Property> table_;
    std::unique_ptr<std::atomic<CompoundPropertyReader*>[]> nodes_; // one per property, null until it is asked for
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreLayer
} // namespace Alembic
