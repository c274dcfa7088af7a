/// Subdivision surfaces, written.
#pragma once

#include <Alembic/AbcGeom/OMeshBase.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// Of a sample's boundary rules: not set. Never stored.
const int32_t ABC_GEOM_SUBD_NULL_INT_VALUE = -1073741824;

class ALEMBIC_EXPORT OSubDSchema : public OMeshSchema<SubDSchemaInfo>
{
public:
    typedef OSubDSchema this_type;

    class Sample : public OMeshSampleBase
    {
    public:
        Sample() = default;
        Sample(const Abc::P3fArraySample& positions, const Abc::Int32ArraySample& faceIndices,
               const Abc::Int32ArraySample& faceCounts,
               const Abc::Int32ArraySample& creaseIndices = Abc::Int32ArraySample(),
               const Abc::Int32ArraySample& creaseLengths = Abc::Int32ArraySample(),
               const Abc::FloatArraySample& creaseSharpnesses = Abc::FloatArraySample(),
               const Abc::Int32ArraySample& cornerIndices = Abc::Int32ArraySample(),
               const Abc::FloatArraySample& cornerSharpnesses = Abc::FloatArraySample(),
               const Abc::Int32ArraySample& holes = Abc::Int32ArraySample());

        /// Boundary rules; not set: ABC_GEOM_SUBD_NULL_INT_VALUE.
        int32_t getInterpolateBoundary() const { return interpolate_boundary_; }
        void setInterpolateBoundary(int32_t i) { interpolate_boundary_ = i; }
        int32_t getFaceVaryingInterpolateBoundary() const { return face_varying_interpolate_boundary_; }
        void setFaceVaryingInterpolateBoundary(int32_t i) { face_varying_interpolate_boundary_ = i; }
        int32_t getFaceVaryingPropagateCorners() const { return face_varying_propagate_corners_; }
        void setFaceVaryingPropagateCorners(int32_t i) { face_varying_propagate_corners_ = i; }

        /// The points of all creases, one crease after the other.
        const Abc::Int32ArraySample& getCreaseIndices() const { return crease_indices_; }
        void setCreaseIndices(const Abc::Int32ArraySample& sample) { crease_indices_ = sample; }

        /// Number of points of each crease.
        const Abc::Int32ArraySample& getCreaseLengths() const { return crease_lengths_; }
        void setCreaseLengths(const Abc::Int32ArraySample& sample) { crease_lengths_ = sample; }

        /// One per crease; 10 and more is infinitely sharp.
        const Abc::FloatArraySample& getCreaseSharpnesses() const { return crease_sharpnesses_; }
        void setCreaseSharpnesses(const Abc::FloatArraySample& sample) { crease_sharpnesses_ = sample; }

        void setCreases(const Abc::Int32ArraySample& creaseIndices, const Abc::Int32ArraySample& creaseLengths)
        {
            crease_indices_ = creaseIndices;
            crease_lengths_ = creaseLengths;
        }
        void setCreases(const Abc::Int32ArraySample& creaseIndices, const Abc::Int32ArraySample& creaseLengths,
                        const Abc::FloatArraySample& creaseSharpnesses)
        {
            setCreases(creaseIndices, creaseLengths);
            crease_sharpnesses_ = creaseSharpnesses;
        }

        const Abc::Int32ArraySample& getCornerIndices() const { return corner_indices_; }
        void setCornerIndices(const Abc::Int32ArraySample& sample) { corner_indices_ = sample; }
        const Abc::FloatArraySample& getCornerSharpnesses() const { return corner_sharpnesses_; }
        void setCornerSharpnesses(const Abc::FloatArraySample& sample) { corner_sharpnesses_ = sample; }
        void setCorners(const Abc::Int32ArraySample& cornerIndices, const Abc::FloatArraySample& cornerSharpnesses)
        {
            corner_indices_ = cornerIndices;
            corner_sharpnesses_ = cornerSharpnesses;
        }

        /// Numbers of the faces that are left out.
        const Abc::Int32ArraySample& getHoles() const { return holes_; }
        void setHoles(const Abc::Int32ArraySample& sample) { holes_ = sample; }

        /// "catmull-clark", "loop", "bilinear" ...
        std::string getSubdivisionScheme() const { return scheme_; }
        void setSubdivisionScheme(const std::string& scheme) { scheme_ = scheme; }

        void reset() { *this = Sample(); }

        bool has_creases() const;
        bool has_corners() const { return corner_indices_.valid() || corner_sharpnesses_.valid(); }
        bool has_scheme() const { return scheme_ != default_scheme; }

        /// No positions, indices or counts, but something else: only that is written.
        bool isPartialSample() const;

        static constexpr const char* default_scheme = "catmull-clark"; ///< of surfaces that store none

    private:
        Abc::Int32ArraySample crease_indices_;
        Abc::Int32ArraySample crease_lengths_;
        Abc::FloatArraySample crease_sharpnesses_;
        Abc::Int32ArraySample corner_indices_;
        Abc::FloatArraySample corner_sharpnesses_;
        Abc::Int32ArraySample holes_;
        int32_t interpolate_boundary_ = ABC_GEOM_SUBD_NULL_INT_VALUE;
        int32_t face_varying_interpolate_boundary_ = ABC_GEOM_SUBD_NULL_INT_VALUE;
        int32_t face_varying_propagate_corners_ = ABC_GEOM_SUBD_NULL_INT_VALUE;
        std::string scheme_ = default_scheme;
    };

    OSubDSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OSubDSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                const Argument& arg3 = Argument());
    OSubDSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs positions, indices and counts (empty arrays will do), unless the schema is sparse.
    void set(const Sample& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OSubDSchema> OSubD;
typedef Alembic::Util::shared_ptr<OSubD> OSubDPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
