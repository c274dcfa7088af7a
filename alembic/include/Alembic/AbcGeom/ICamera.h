/// Cameras, read.
#pragma once

#include <Alembic/AbcGeom/CameraSample.h>
#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ICameraSchema : public Abc::ISchema<CameraSchemaInfo>
{
public:
    typedef ICameraSchema this_type;

    /// Invalid.
    ICameraSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    ICameraSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : Abc::ISchema<CameraSchemaInfo>(parent, name, arg0, arg1)
    {
        init();
    }
    ICameraSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                  const Argument& arg1 = Argument())
        : Abc::ISchema<CameraSchemaInfo>(property, arg0, arg1)
    {
        init();
    }

    /// Of the core values.
    AbcA::TimeSamplingPtr getTimeSampling() const { return core_.getTimeSampling(); }
    size_t getNumSamples() const { return core_.getNumSamples(); }

    /// Core values and film back channels are constant.
    bool isConstant() const;

    /// Resets `sample`, then fills it with the core values and the film back operations, whose values are those at the
    /// index that the selector gives with the time sampling of the core values. Values that are not stored keep the
    /// identity's.
    void get(CameraSample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    CameraSample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        CameraSample sample;
        get(sample, selector);
        return sample;
    }

    /// Parameters and properties that users added; invalid when absent.
    ICompoundProperty getArbGeomParams() const;
    ICompoundProperty getUserProperties() const;

    /// Box of the children; invalid when absent.
    IBox3dProperty getChildBoundsProperty() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override { return Abc::ISchema<CameraSchemaInfo>::valid() && core_.valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(ICameraSchema::valid());

private:
    void init();
    void read_film_back(CameraSample& sample, const ISampleSelector& selector) const;

    IScalarProperty core_; ///< sixteen doubles
    /// Either may be stored as one scalar element, or as an array where that has too many numbers.
    IScalarProperty scalar_operations_;
    IArrayProperty array_operations_;
    IScalarProperty scalar_channels_;
    IArrayProperty array_channels_;
};

typedef Abc::ISchemaObject<ICameraSchema> ICamera;
typedef Alembic::Util::shared_ptr<ICamera> ICameraPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
