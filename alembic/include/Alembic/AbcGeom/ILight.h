/// Lights, read: a camera schema, and what users added.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/ICamera.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ILightSchema : public Abc::ISchema<LightSchemaInfo>
{
public:
    typedef ILightSchema this_type;

    /// Invalid.
    ILightSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    ILightSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                 const Argument& arg1 = Argument())
        : Abc::ISchema<LightSchemaInfo>(parent, name, arg0, arg1)
    {
        init();
    }
    explicit ILightSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                          const Argument& arg1 = Argument())
        : Abc::ISchema<LightSchemaInfo>(property, arg0, arg1)
    {
        init();
    }

    /// Invalid when the light was never given camera values.
    ICameraSchema getCameraSchema() const { return camera_; }

    /// Box of the children; invalid when absent.
    IBox3dProperty getChildBoundsProperty() const { return handed_out(child_bounds_, getErrorHandlerPolicy()); }

    /// Of the children's box where there is one, else of the camera; null and 0 without either.
    AbcA::TimeSamplingPtr getTimeSampling() const;
    size_t getNumSamples() const;
    /// Fewer than two samples.
    bool isConstant() const { return getNumSamples() < 2; }

    /// Parameters and properties that users added; invalid when absent.
    ICompoundProperty getArbGeomParams() const;
    ICompoundProperty getUserProperties() const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override { return Abc::ISchema<LightSchemaInfo>::valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(ILightSchema::valid());

private:
    void init();

    ICameraSchema camera_;
    IBox3dProperty child_bounds_;
};

typedef Abc::ISchemaObject<ILightSchema> ILight;
typedef Alembic::Util::shared_ptr<ILight> ILightPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
