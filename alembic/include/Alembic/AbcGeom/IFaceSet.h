/// Face sets, read: named groups of a mesh's faces, child objects of the mesh.
#pragma once

#include <Alembic/AbcGeom/FaceSetExclusivity.h>
#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/IGeomBase.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT IFaceSetSchema : public IGeomBaseSchema<FaceSetSchemaInfo>
{
public:
    typedef IFaceSetSchema this_type;

    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;

        /// Numbers of the mesh's faces, in any order.
        Int32ArraySamplePtr getFaces() const { return faces_; }
        /// Not filled by reading.
        Box3d getSelfBounds() const { return self_bounds_; }

        bool valid() const { return faces_ != nullptr; }
        void reset() { *this = Sample(); }
        ALEMBIC_OPERATOR_BOOL(valid());

    private:
        friend class IFaceSetSchema;
        Int32ArraySamplePtr faces_;
        Box3d self_bounds_;
    };

    /// Invalid.
    IFaceSetSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching.
    IFaceSetSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument())
        : IGeomBaseSchema<FaceSetSchemaInfo>(parent, name, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    IFaceSetSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                   const Argument& arg1 = Argument())
        : IGeomBaseSchema<FaceSetSchemaInfo>(property, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }
    /// From a compound's handle or reader.
    template <class PTR>
    IFaceSetSchema(PTR ptr, WrapExistingFlag flag, const Argument& arg0 = Argument(), const Argument& arg1 = Argument())
        : IGeomBaseSchema<FaceSetSchemaInfo>(ICompoundProperty(ptr), flag, arg0, arg1)
    {
        init(GetSchemaInterpMatching(arg0, arg1));
    }

    /// Constant faces.
    bool isConstant() const { return faces_.isConstant(); }
    /// The greatest count of all the face set's properties.
    size_t getNumSamples() const;
    /// Of the faces.
    AbcA::TimeSamplingPtr getTimeSampling() const;

    /// The faces at the selected index.
    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    /// What was said last; non-exclusive when nothing was.
    FaceSetExclusivity getFaceExclusivity() const;

    IInt32ArrayProperty getFacesProperty() const { return handed_out(faces_, getErrorHandlerPolicy()); }

    /// Clears everything but the policy.
    void reset() override;
    bool valid() const override { return IGeomBaseSchema<FaceSetSchemaInfo>::valid() && faces_.valid(); }
    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IFaceSetSchema::valid());

private:
    void init(SchemaInterpMatching matching);

    IInt32ArrayProperty faces_;
    IUInt32Property exclusivity_;
};

typedef Abc::ISchemaObject<IFaceSetSchema> IFaceSet;
typedef Alembic::Util::shared_ptr<IFaceSet> IFaceSetPtr;

/// Names of the face sets among the children of `mesh`, in byte order, appended to `names`.
ALEMBIC_EXPORT void append_face_set_names(const IObject& mesh, std::vector<std::string>& names);

/// Whether the child `name` of `mesh` is a face set.
ALEMBIC_EXPORT bool has_face_set(const IObject& mesh, const std::string& name);

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
