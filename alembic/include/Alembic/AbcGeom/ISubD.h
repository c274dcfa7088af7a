/// Subdivision surfaces, read.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/IFaceSet.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/IGeomParam.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT ISubDSchema : public IGeomBaseSchema<SubDSchemaInfo>
{
public:
    typedef ISubDSchema this_type;

    /// What is absent is null. Nothing checks that the parts fit each other.
    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        P3fArraySamplePtr getPositions() const { return positions_; }
        /// Point numbers of all faces, one face after the other.
        Int32ArraySamplePtr getFaceIndices() const { return face_indices_; }
        /// Corners of each face.
        Int32ArraySamplePtr getFaceCounts() const { return face_counts_; }

        /// 0 when absent.
        int32_t getFaceVaryingInterpolateBoundary() const { return face_varying_interpolate_boundary_; }
        int32_t getFaceVaryingPropagateCorners() const { return face_varying_propagate_corners_; }
        int32_t getInterpolateBoundary() const { return interpolate_boundary_; }

        /// Point numbers of all creases, one crease after the other.
        Int32ArraySamplePtr getCreaseIndices() const { return crease_indices_; }
        /// Points of each crease.
        Int32ArraySamplePtr getCreaseLengths() const { return crease_lengths_; }
        /// One a crease.
        FloatArraySamplePtr getCreaseSharpnesses() const { return crease_sharpnesses_; }
        /// Point numbers of corners.
        Int32ArraySamplePtr getCornerIndices() const { return corner_indices_; }
        /// One a corner.
        FloatArraySamplePtr getCornerSharpnesses() const { return corner_sharpnesses_; }
        /// Face numbers of holes.
        Int32ArraySamplePtr getHoles() const { return holes_; }

        /// `catmull-clark` when absent.
        std::string getSubdivisionScheme() const { return scheme_; }
        /// Units per second, one a point.
        V3fArraySamplePtr getVelocities() const { return velocities_; }
        /// In the space of the object; the empty box when absent.
        Box3d getSelfBounds() const { return self_bounds_; }

        bool valid() const { return positions_ && face_indices_ && face_counts_; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class ISubDSchema;
        P3fArraySamplePtr positions_;
        Int32ArraySamplePtr face_indices_;
        Int32ArraySamplePtr face_counts_;
        int32_t face_varying_interpolate_boundary_ = 0;
        int32_t face_varying_propagate_corners_ = 0;
        int32_t interpolate_boundary_ = 0;
        Int32ArraySamplePtr crease_indices_;
        Int32ArraySamplePtr crease_lengths_;
        FloatArraySamplePtr crease_sharpnesses_;
        Int32ArraySamplePtr corner_indices_;
        FloatArraySamplePtr corner_sharpnesses_;
        Int32ArraySamplePtr holes_;
        std::string scheme_ = "catmull-clark";
        V3fArraySamplePtr velocities_;
        Box3d self_bounds_;
    };

    /// Invalid.
    ISubDSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    ISubDSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                const Argument& arg1 = Argument())
        : IGeomBaseSchema<SubDSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    ISubDSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(), const Argument& arg1 = Argument())
        : IGeomBaseSchema<SubDSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// By positions, indices and counts alone.
    MeshTopologyVariance getTopologyVariance() const;
    bool isConstant() const { return getTopologyVariance() == kConstantTopology; }

    /// The greatest count of all the surface's properties.
    size_t getNumSamples() const;
    /// Of the positions.
    AbcA::TimeSamplingPtr getTimeSampling() const { return positions_.getTimeSampling(); }

    /// Each property at the index that the selector gives with its own time sampling and count. What the surface has
    /// not stays as it is in `sample`. A property that is there without samples is an error (but for velocities).
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    IInt32ArrayProperty getFaceCountsProperty() const { return handed_out(face_counts_, getErrorHandlerPolicy()); }
    IInt32ArrayProperty getFaceIndicesProperty() const { return handed_out(face_indices_, getErrorHandlerPolicy()); }
    IP3fArrayProperty getPositionsProperty() const { return handed_out(positions_, getErrorHandlerPolicy()); }

    /// These are invalid when absent.
    IInt32Property getFaceVaryingInterpolateBoundaryProperty() const;
    IInt32Property getFaceVaryingPropagateCornersProperty() const;
    IInt32Property getInterpolateBoundaryProperty() const;
    IInt32ArrayProperty getCreaseIndicesProperty() const;
    IInt32ArrayProperty getCreaseLengthsProperty() const;
    IFloatArrayProperty getCreaseSharpnessesProperty() const;
    IInt32ArrayProperty getCornerIndicesProperty() const;
    IFloatArrayProperty getCornerSharpnessesProperty() const;
    IInt32ArrayProperty getHolesProperty() const;
    IStringProperty getSubdivisionSchemeProperty() const;
    IV3fArrayProperty getVelocitiesProperty() const;

    /// Invalid when absent or of another kind.
    IV2fGeomParam getUVsParam() const;

    /// Appends the names of the surface's face sets in byte order.
    void getFaceSetNames(std::vector<std::string>& faceSetNames) const;
    /// Has the throw policy. An unknown name is an error.
    IFaceSet getFaceSet(const std::string& faceSetName) const;
    bool hasFaceSet(const std::string& faceSetName) const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override
    {
        return IGeomBaseSchema<SubDSchemaInfo>::valid() && positions_.valid() && face_indices_.valid() &&
               face_counts_.valid();
    }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(ISubDSchema::valid());

private:
    void init(SchemaInterpMatching matching);

    /// The properties that a plain surface does without; most surfaces have few of them.
    struct Optional
    {
        IInt32Property face_varying_interpolate_boundary;
        IInt32Property face_varying_propagate_corners;
        IInt32Property interpolate_boundary;
        IInt32ArrayProperty crease_indices;
        IInt32ArrayProperty crease_lengths;
        IFloatArrayProperty crease_sharpnesses;
        IInt32ArrayProperty corner_indices;
        IFloatArrayProperty corner_sharpnesses;
        IInt32ArrayProperty holes;
        IStringProperty scheme;
        IV3fArrayProperty velocities;
    };

    IP3fArrayProperty positions_;
    IInt32ArrayProperty face_indices_;
    IInt32ArrayProperty face_counts_;
    Optional optional_;
    SchemaInterpMatching matching_ = kNoMatching;
};

typedef Abc::ISchemaObject<ISubDSchema> ISubD;
typedef Alembic::Util::shared_ptr<ISubD> ISubDPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
