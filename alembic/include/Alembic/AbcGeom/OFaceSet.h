/// Face sets, written: numbers of faces of the mesh whose child object the set is.
#pragma once

#include <Alembic/AbcGeom/FaceSetExclusivity.h>
#include <Alembic/AbcGeom/OGeomBase.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OFaceSetSchema : public OGeomBaseSchema<FaceSetSchemaInfo>
{
public:
    typedef OFaceSetSchema this_type;

    /// A view of the caller's face numbers, which must live until set() returns.
    class Sample
    {
    public:
        Sample() = default;
        Sample(const Abc::Int32ArraySample& face_nums) // NOLINT: implicit
            : faces_(face_nums)
        {
        }

        const Abc::Int32ArraySample& getFaces() const { return faces_; }
        void setFaces(const Abc::Int32ArraySample& faces) { faces_ = faces; }

        /// Stored as they are: nothing is computed for face sets.
        const Abc::Box3d& getSelfBounds() const { return self_bounds_; }
        void setSelfBounds(const Abc::Box3d& bounds) { self_bounds_ = bounds; }

        void reset() { *this = Sample(); }

    private:
        Abc::Int32ArraySample faces_;
        Abc::Box3d self_bounds_;
    };

    OFaceSetSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OFaceSetSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                   const Argument& arg3 = Argument());
    OFaceSetSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs faces (an empty array will do); in later ones faces that are not given repeat.
    void set(const Sample& sample);

    /// Whether each face of the mesh is in one set at most. Stored once it is not the default, non-exclusive.
    void setFaceExclusivity(FaceSetExclusivity facesExclusive);
    FaceSetExclusivity getFaceExclusivity();

private:
    struct State;
};

/// Bounds of the points of some faces of a mesh. Faces that the mesh has not, and points that it has not, are left out.
ALEMBIC_EXPORT Abc::Box3d computeBoundsFromPositionsByFaces(const Abc::Int32ArraySample& faces,
                                                            const Abc::Int32ArraySample& meshFaceCounts,
                                                            const Abc::Int32ArraySample& vertexIndices,
                                                            const Abc::P3fArraySample& meshP);

typedef Abc::OSchemaObject<OFaceSetSchema> OFaceSet;
typedef Alembic::Util::shared_ptr<OFaceSet> OFaceSetPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
