/// Transforms, read.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>
#include <Alembic/AbcGeom/XformSample.h>

#include <memory>
#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT IXformSchema : public Abc::ISchema<XformSchemaInfo>
{
public:
    typedef IXformSchema this_type;

    /// Invalid. Answers as a transform without samples.
    IXformSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    IXformSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument());
    IXformSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument());

    /// Of the property that says whether the transform inherits; without one the identity sampling, never null.
    AbcA::TimeSamplingPtr getTimeSampling() const;
    /// How often the transform was set; 0 when never.
    size_t getNumSamples() const { return inherits_.getNumSamples(); }

    /// Neither the operations' values nor the inheritance change.
    bool isConstant() const;
    /// No sample has a value other than the identity's.
    bool isConstantIdentity() const { return is_constant_identity_; }

    /// Resets `sample`, then fills it with the operations, their values at the selected index, and the inheritance.
    /// Nothing is interpolated. Values that are not stored stay 0.
    void get(XformSample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    XformSample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        XformSample sample;
        get(sample, selector);
        return sample;
    }

    /// False: the transforms of the ancestors do not apply. True without samples.
    bool getInheritsXforms(const ISampleSelector& selector = ISampleSelector()) const;

    size_t getNumOps() const { return operations_ ? operations_->size() : 0; }

    /// Box of the children; invalid when absent.
    IBox3dProperty getChildBoundsProperty() const;

    /// Parameters and properties that users added; invalid when absent.
    ICompoundProperty getArbGeomParams() const;
    ICompoundProperty getUserProperties() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override { return Abc::ISchema<XformSchemaInfo>::valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IXformSchema::valid());

private:
    void init();
    void find_values(const AbcA::CompoundPropertyReaderPtr& schema);
    void read_operations(const AbcA::CompoundPropertyReaderPtr& schema);
    void mark_animated_channels(const AbcA::CompoundPropertyReaderPtr& schema, std::vector<XformOp>& operations) const;
    /// Values in stored order into the channels of all operations; what `values` has not stays as it is.
    static void set_channels(std::vector<XformOp>& operations, const double* values, size_t count);

    IBoolProperty inherits_;
    IScalarProperty scalar_values_; ///< all channels in one element
    IArrayProperty array_values_;   ///< one element a channel; where there are too many for a scalar
    /// Types, hints and animated channels, values 0; shared by the copies of the schema.
    std::shared_ptr<const std::vector<XformOp>> operations_;
    bool is_constant_identity_ = true;
};

typedef Abc::ISchemaObject<IXformSchema> IXform;
typedef Alembic::Util::shared_ptr<IXform> IXformPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
