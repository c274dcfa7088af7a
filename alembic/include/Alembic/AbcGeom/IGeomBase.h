/// What all geometry schemas have in common when read: bounds, arbitrary parameters, user properties.
#pragma once

#include <Alembic/AbcGeom/Foundation.h>
#include <Alembic/AbcGeom/SchemaInfoDeclarations.h>

#include <string>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

/// The box `name` of the compound `schema`, with the throw policy. Throws when it is absent or something else.
ALEMBIC_EXPORT IBox3dProperty required_box(const ICompoundProperty& schema, const std::string& name);

/// An optional box of the compound `schema`, with its policy: invalid when absent, throws when it is something else.
ALEMBIC_EXPORT IBox3dProperty optional_box(const ICompoundProperty& schema, const std::string& name);

/// An optional compound of the compound `schema`, with its policy: invalid when absent, throws when it is something
/// else.
ALEMBIC_EXPORT ICompoundProperty optional_compound(const ICompoundProperty& schema, const std::string& name);

/// A copy of a property for the caller, with the policy of the schema. Inside a schema properties throw, so that
/// the schema's own handler reports what they say.
template <class PROPERTY>
PROPERTY handed_out(const PROPERTY& property, ErrorHandler::Policy policy)
{
    PROPERTY copy(property);
    if (copy.getPtr()) {
        copy.getErrorHandler().setPolicy(policy);
    }
    return copy;
}

/// Base of the reading schemas of meshes, subdivision surfaces, curves, points, patches and face sets.
template <class INFO>
class ALEMBIC_EXPORT IGeomBaseSchema : public Abc::ISchema<INFO>
{
public:
    typedef INFO info_type;
    typedef IGeomBaseSchema<INFO> this_type;

    /// Invalid.
    IGeomBaseSchema() = default;

    /// The compound `name` of `parent`, or `property` itself. Arguments: policy (else the parent's), matching. A
    /// compound without self bounds is an error.
    IGeomBaseSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
        : Abc::ISchema<INFO>(parent, name, arg0, arg1)
    {
        init(arg0, arg1);
    }
    IGeomBaseSchema(const ICompoundProperty& property, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
        : Abc::ISchema<INFO>(property, arg0, arg1)
    {
        init(arg0, arg1);
    }
    IGeomBaseSchema(const ICompoundProperty& property, WrapExistingFlag flag, const Argument& arg0 = Argument(),
                    const Argument& arg1 = Argument())
        : Abc::ISchema<INFO>(property, flag, arg0, arg1)
    {
        init(arg0, arg1);
    }

    /// Finds the bounds; called by the constructors.
    void init(const Argument& arg0, const Argument& arg1);

    /// Clears everything but the policy.
    void reset() override
    {
        self_bounds_.reset();
        Abc::ISchema<INFO>::reset();
    }

    bool valid() const override { return Abc::ISchema<INFO>::valid() && self_bounds_.valid(); }

    /// Box of each sample, in the space of the object.
    IBox3dProperty getSelfBoundsProperty() const { return handed_out(self_bounds_, this->getErrorHandlerPolicy()); }

    /// Box of the children; invalid when absent.
    IBox3dProperty getChildBoundsProperty() const;

    /// Parameters and properties that users added; invalid when absent.
    ICompoundProperty getArbGeomParams() const;
    ICompoundProperty getUserProperties() const;

    ALEMBIC_OVERRIDE_OPERATOR_BOOL(this_type::valid());

protected:
    /// The box at the selected sample; `bounds` stays as it is when there is none.
    void read_self_bounds(Box3d& bounds, const ISampleSelector& selector) const
    {
        if (self_bounds_.getNumSamples() > 0) {
            self_bounds_.get(bounds, selector);
        }
    }

    const IBox3dProperty& self_bounds() const { return self_bounds_; }

private:
    IBox3dProperty self_bounds_;
};

template <class INFO>
void IGeomBaseSchema<INFO>::init(const Argument&, const Argument&)
{
    if (!this->getPtr()) {
        return; // the compound itself was an error
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IGeomBaseSchema::init()");
    self_bounds_ = required_box(*this, ".selfBnds");
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

template <class INFO>
IBox3dProperty IGeomBaseSchema<INFO>::getChildBoundsProperty() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IGeomBaseSchema::getChildBoundsProperty()");
    return optional_box(*this, ".childBnds");
    ALEMBIC_ABC_SAFE_CALL_END();
    return IBox3dProperty();
}

template <class INFO>
ICompoundProperty IGeomBaseSchema<INFO>::getArbGeomParams() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IGeomBaseSchema::getArbGeomParams()");
    return optional_compound(*this, ".arbGeomParams");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

template <class INFO>
ICompoundProperty IGeomBaseSchema<INFO>::getUserProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IGeomBaseSchema::getUserProperties()");
    return optional_compound(*this, ".userProperties");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

/// Any geometry schema, read by its bounds.
class ALEMBIC_EXPORT IGeomBase : public IGeomBaseSchema<GeomBaseSchemaInfo>
{
public:
    typedef IGeomBase this_type;

    class ALEMBIC_EXPORT Sample
    {
    public:
        typedef Sample this_type;
        /// The empty box where none was read.
        Box3d getSelfBounds() const { return self_bounds_; }
        void reset() { self_bounds_.makeEmpty(); }

    private:
        friend class IGeomBase;
        Box3d self_bounds_;
    };

    /// Matching looks at the base type of the schema, so every geometry schema matches.
    static bool matches(const AbcA::MetaData& metaData, SchemaInterpMatching matching = kStrictMatching);
    static bool matches(const AbcA::PropertyHeader& header, SchemaInterpMatching matching = kStrictMatching)
    {
        return matches(header.getMetaData(), matching);
    }

    IGeomBase() = default;
    IGeomBase(const ICompoundProperty& parent, const std::string& name, const Argument& arg0 = Argument(),
              const Argument& arg1 = Argument())
        : IGeomBaseSchema<GeomBaseSchemaInfo>(parent, name, arg0, arg1)
    {
    }
    IGeomBase(const ICompoundProperty& property, const Argument& arg0 = Argument(), const Argument& arg1 = Argument())
        : IGeomBaseSchema<GeomBaseSchemaInfo>(property, arg0, arg1)
    {
    }
    IGeomBase(const ICompoundProperty& property, WrapExistingFlag flag, const Argument& arg0 = Argument(),
              const Argument& arg1 = Argument())
        : IGeomBaseSchema<GeomBaseSchemaInfo>(property, flag, arg0, arg1)
    {
    }

    /// Of the self bounds.
    size_t getNumSamples() const { return self_bounds().getNumSamples(); }
    bool isConstant() const { return self_bounds().isConstant(); }
    AbcA::TimeSamplingPtr getTimeSampling() const { return self_bounds().getTimeSampling(); }

    void get(Sample& sample, const ISampleSelector& selector = ISampleSelector()) const;
    Sample getValue(const ISampleSelector& selector = ISampleSelector()) const
    {
        Sample sample;
        get(sample, selector);
        return sample;
    }

    ALEMBIC_OVERRIDE_OPERATOR_BOOL(IGeomBase::valid());
};

typedef Abc::ISchemaObject<IGeomBase> IGeomBaseObject;

extern template class IGeomBaseSchema<GeomBaseSchemaInfo>;
extern template class IGeomBaseSchema<PolyMeshSchemaInfo>;
extern template class IGeomBaseSchema<SubDSchemaInfo>;
extern template class IGeomBaseSchema<FaceSetSchemaInfo>;
extern template class IGeomBaseSchema<CurvesSchemaInfo>;
extern template class IGeomBaseSchema<PointsSchemaInfo>;
extern template class IGeomBaseSchema<NuPatchSchemaInfo>;

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
