/// A handle of an array property that is being read: any number of elements a sample.
#pragma once

#include <Alembic/Abc/IBaseProperty.h>
#include <Alembic/Abc/ICompoundProperty.h>
#include <Alembic/Abc/ISampleSelector.h>
#include <Alembic/Abc/TypeDescription.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT IArrayProperty : public IBasePropertyT<AbcA::ArrayPropertyReaderPtr>
{
public:
    typedef IArrayProperty this_type;

    /// Invalid.
    IArrayProperty() = default;

    /// The array property of that name. Error: `Nonexistent array property: NAME`.
    IArrayProperty(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument());

    /// Takes over a reader.
    IArrayProperty(AbcA::ArrayPropertyReaderPtr ptr, const Argument& arg0 = Argument());
    IArrayProperty(AbcA::ArrayPropertyReaderPtr ptr, WrapExistingFlag wrapFlag, const Argument& arg0 = Argument());

    size_t getNumSamples() const;
    /// No sample differs from another; so also with none or one.
    bool isConstant() const;
    /// Every sample has exactly one element.
    bool isScalarLike() const;
    AbcA::TimeSamplingPtr getTimeSampling() const;

    /// Sets the pointer to a sample that owns its data; untouched on an error.
    void get(AbcA::ArraySamplePtr& sample, const ISampleSelector& selector = ISampleSelector()) const;

    /// Reads straight into the caller's memory, converted to `pod` or as stored. The memory must hold as many values
    /// as the sample has elements (getDimensions) times the extent.
    void getAs(void* sample, PlainOldDataType pod, const ISampleSelector& selector = ISampleSelector()) const;
    void getAs(void* sample, const ISampleSelector& selector = ISampleSelector()) const;

    /// Reads `count` elements from element `first` on, as stored; an addition of this library, announced by
    /// ALEMBIC_HAS_PARTIAL_READS. False where the archive's back end can only read whole samples, and on an error.
    bool getPart(void* sample, uint64_t first, size_t count, const ISampleSelector& selector = ISampleSelector()) const;

    /// Identifies the sample's contents without reading them. False when nothing is stored.
    bool getKey(AbcA::ArraySampleKey& key, const ISampleSelector& selector = ISampleSelector()) const;
    /// Elements along each dimension, without reading the data.
    void getDimensions(Dimensions& dim, const ISampleSelector& selector = ISampleSelector()) const;

    ICompoundProperty getParent() const;

protected:
    explicit IArrayProperty(ErrorHandler::Policy policy)
        : IBasePropertyT<AbcA::ArrayPropertyReaderPtr>(policy)
    {
    }

    /// What typed properties do when made: find the reader, or take one, and compare its header with their type.
    void open_typed(const ICompoundProperty& parent, const std::string& name, const TypeDescription& type,
                    SchemaInterpMatching matching);
    void wrap_typed(AbcA::ArrayPropertyReaderPtr property, const TypeDescription& type, SchemaInterpMatching matching);
};

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
