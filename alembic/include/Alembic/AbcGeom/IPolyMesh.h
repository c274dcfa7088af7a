/// Polygon meshes, read.
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

class ALEMBIC_EXPORT IPolyMeshSchema : public IGeomBaseSchema<PolyMeshSchemaInfo>
{
public:
    typedef IPolyMeshSchema this_type;

    /// What is absent is null. Nothing checks that the parts fit each other.
    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        P3fArraySamplePtr getPositions() const { return positions_; }
        /// Units per second, one a point.
        V3fArraySamplePtr getVelocities() const { return velocities_; }
        /// Point numbers of all faces, one face after the other.
        Int32ArraySamplePtr getFaceIndices() const { return face_indices_; }
        /// Corners of each face.
        Int32ArraySamplePtr getFaceCounts() const { return face_counts_; }
        /// In the space of the object; the empty box when absent.
        Box3d getSelfBounds() const { return self_bounds_; }

        bool valid() const { return positions_ && face_indices_ && face_counts_; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class IPolyMeshSchema;
        P3fArraySamplePtr positions_;
        V3fArraySamplePtr velocities_;
        Int32ArraySamplePtr face_indices_;
        Int32ArraySamplePtr face_counts_;
        Box3d self_bounds_;
    };

    /// Invalid.
    IPolyMeshSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    IPolyMeshSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
        : IGeomBaseSchema<PolyMeshSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    IPolyMeshSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
        : IGeomBaseSchema<PolyMeshSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// Of the positions.
    size_t getNumSamples() const { return positions_.getNumSamples(); }
    AbcA::TimeSamplingPtr getTimeSampling() const { return positions_.getTimeSampling(); }

    /// By positions, indices and counts; velocities, normals and texture coordinates do not count.
    MeshTopologyVariance getTopologyVariance() const;
    bool isConstant() const { return getTopologyVariance() == kConstantTopology; }

    /// Each property at the index that the selector gives with its own time sampling and count. What the mesh has not
    /// stays as it is in `sample`.
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    /// Invalid when absent or of another kind.
    IV2fGeomParam getUVsParam() const;
    IN3fGeomParam getNormalsParam() const;

    IInt32ArrayProperty getFaceCountsProperty() const { return handed_out(face_counts_, getErrorHandlerPolicy()); }
    IInt32ArrayProperty getFaceIndicesProperty() const { return handed_out(face_indices_, getErrorHandlerPolicy()); }
    IP3fArrayProperty getPositionsProperty() const { return handed_out(positions_, getErrorHandlerPolicy()); }
    /// Invalid when absent.
    IV3fArrayProperty getVelocitiesProperty() const { return handed_out(velocities_, getErrorHandlerPolicy()); }

    /// Appends the names of the mesh's face sets in byte order.
    void getFaceSetNames(std::vector<std::string>& faceSetNames) const;
    /// Has the throw policy. An unknown name is an error.
    IFaceSet getFaceSet(const std::string& faceSetName) const;
    bool hasFaceSet(const std::string& faceSetName) const;

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override
    {
        return IGeomBaseSchema<PolyMeshSchemaInfo>::valid() && positions_.valid() && face_indices_.valid() &&
               face_counts_.valid();
    }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IPolyMeshSchema::valid());

private:
    void init(SchemaInterpMatching matching);

    IP3fArrayProperty positions_;
    IInt32ArrayProperty face_indices_;
    IInt32ArrayProperty face_counts_;
    IV3fArrayProperty velocities_;
    SchemaInterpMatching matching_ = kNoMatching;
};

typedef Abc::ISchemaObject<IPolyMeshSchema> IPolyMesh;
typedef Alembic::Util::shared_ptr<IPolyMesh> IPolyMeshPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
