/// What polygon meshes and subdivision surfaces have in common when they are written.
#pragma once

#include <Alembic/AbcGeom/OFaceSet.h>
#include <Alembic/AbcGeom/OGeomBase.h>
#include <Alembic/AbcGeom/OGeomParam.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Data of one sample of a mesh: views of the caller's arrays, which must live until set() returns. In samples after
/// the first, what is not given repeats the previous sample.
class ALEMBIC_EXPORT OMeshSampleBase
{
public:
    OMeshSampleBase() = default;
    explicit OMeshSampleBase(const Abc::P3fArraySample& positions)
        : positions_(positions)
    {
    }
    OMeshSampleBase(const Abc::P3fArraySample& positions, const Abc::Int32ArraySample& face_indices,
                    const Abc::Int32ArraySample& face_counts, const OV2fGeomParam::Sample& uvs)
        : positions_(positions)
        , face_indices_(face_indices)
        , face_counts_(face_counts)
        , uvs_(uvs)
    {
    }

    /// Points, in object space.
    const Abc::P3fArraySample& getPositions() const { return positions_; }
    void setPositions(const Abc::P3fArraySample& sample) { positions_ = sample; }

    /// One vector per point, units per second.
    const Abc::V3fArraySample& getVelocities() const { return velocities_; }
    void setVelocities(const Abc::V3fArraySample& velocities) { velocities_ = velocities; }

    /// The point numbers of all faces, one face after the other.
    const Abc::Int32ArraySample& getFaceIndices() const { return face_indices_; }
    void setFaceIndices(const Abc::Int32ArraySample& sample) { face_indices_ = sample; }

    /// Number of points of each face.
    const Abc::Int32ArraySample& getFaceCounts() const { return face_counts_; }
    void setFaceCounts(const Abc::Int32ArraySample& counts) { face_counts_ = counts; }

    /// In object space; computed from the positions when not given.
    const Abc::Box3d& getSelfBounds() const { return self_bounds_; }
    void setSelfBounds(const Abc::Box3d& bounds) { self_bounds_ = bounds; }

    const OV2fGeomParam::Sample& getUVs() const { return uvs_; }
    void setUVs(const OV2fGeomParam::Sample& uvs) { uvs_ = uvs; }

protected:
    bool has_no_mesh() const { return !positions_.valid() && !face_indices_.valid() && !face_counts_.valid(); }
    bool has_velocities_or_uvs() const { return velocities_.valid() || uvs_.valid(); }

private:
    Abc::P3fArraySample positions_;
    Abc::V3fArraySample velocities_;
    Abc::Int32ArraySample face_indices_;
    Abc::Int32ArraySample face_counts_;
    Abc::Box3d self_bounds_;
    OV2fGeomParam::Sample uvs_;
};

/// Face sets and texture coordinates of a mesh schema. Defined for the two mesh schemas alone.
template <class INFO>
class ALEMBIC_EXPORT OMeshSchema : public OGeomBaseSchema<INFO>
{
public:
    OMeshSchema() = default;
    OMeshSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0,
                const Argument& arg1, const Argument& arg2, const Argument& arg3)
        : OGeomBaseSchema<INFO>(parent, name, arg0, arg1, arg2, arg3)
    {
    }

    /// Creates a face set: a child of the mesh's object. The reference lives as long as the schema. A name twice is an
    /// error; under the quiet policies it gives an invalid face set.
    OFaceSet& createFaceSet(const std::string& faceSetName);

    /// Appends the names of the face sets created so far, in byte order.
    void getFaceSetNames(std::vector<std::string>& faceSetNames);

    /// An unknown name is an error.
    OFaceSet getFaceSet(const std::string& faceSetName);
    bool hasFaceSet(const std::string& faceSetName);

    /// Name that the texture coordinates had where they come from. No effect once UVs were set.
    void setUVSourceName(const std::string& name);
};

extern template class ALEMBIC_EXPORT OMeshSchema<PolyMeshSchemaInfo>;
extern template class ALEMBIC_EXPORT OMeshSchema<SubDSchemaInfo>;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
