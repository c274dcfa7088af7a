/// Polygon meshes, written.
#pragma once

#include <Alembic/AbcGeom/OMeshBase.h>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT OPolyMeshSchema : public OMeshSchema<PolyMeshSchemaInfo>
{
public:
    typedef OPolyMeshSchema this_type;

    class Sample : public OMeshSampleBase
    {
    public:
        Sample() = default;
        Sample(const Abc::P3fArraySample& pos) // NOLINT: implicit
            : OMeshSampleBase(pos)
        {
        }
        Sample(const Abc::P3fArraySample& pos, const Abc::Int32ArraySample& indices,
               const Abc::Int32ArraySample& counts, const OV2fGeomParam::Sample& uvs = OV2fGeomParam::Sample(),
               const ON3fGeomParam::Sample& normals = ON3fGeomParam::Sample())
            : OMeshSampleBase(pos, indices, counts, uvs)
            , normals_(normals)
        {
        }

        const ON3fGeomParam::Sample& getNormals() const { return normals_; }
        void setNormals(const ON3fGeomParam::Sample& normals) { normals_ = normals; }

        void reset() { *this = Sample(); }

        /// No positions, indices or counts, but something else: only that is written.
        bool isPartialSample() const { return has_no_mesh() && (has_velocities_or_uvs() || normals_.valid()); }

    private:
        ON3fGeomParam::Sample normals_;
    };

    OPolyMeshSchema() = default;

    /// Creates the schema's compound `name` in `parent`. Arguments: error policy, time sampling, metadata, sparseness.
    OPolyMeshSchema(AbcA::CompoundPropertyWriterPtr parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                    const Argument& arg3 = Argument());
    OPolyMeshSchema(OCompoundProperty parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument(), const Argument& arg2 = Argument());

    /// The first sample needs positions, indices and counts (empty arrays will do), unless the schema is sparse.
    void set(const Sample& sample);

private:
    struct State;
};

typedef Abc::OSchemaObject<OPolyMeshSchema> OPolyMesh;
typedef Alembic::Util::shared_ptr<OPolyMesh> OPolyMeshPtr;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
