/// The walk through the typed layers.
#include "walk_budget.h"

#include <Alembic/AbcCollection/All.h>
#include <Alembic/AbcGeom/All.h>
#include <Alembic/AbcMaterial/All.h>

#include <iostream>
#include <limits>

namespace vo_fuzz {

namespace {

using namespace Alembic::AbcGeom;
using Alembic::AbcCollection::ICollections;
using Alembic::AbcMaterial::IMaterial;

const double times[] = {0.0, 0.02, -1e300, std::numeric_limits<double>::quiet_NaN()};

/// How each schema is asked for all that it has; what they share stands in TypedWalk.
template <class Parameter>
void read_parameter(const Parameter& parameter, const ISampleSelector& at)
{
    if (!parameter.valid()) return;
    parameter.isConstant();
    parameter.getArrayExtent();
    parameter.getScope();
    const auto expanded = parameter.getExpandedValue(at);
    const auto indexed = parameter.getIndexedValue(at);
    if (expanded.getVals() && indexed.getVals() && indexed.getIndices() && indexed.getIndices()->size() > 0 &&
        expanded.getVals()->size() != indexed.getIndices()->size())
        WalkBudget::fail("an expanded parameter has not one value for each index");
}

template <class Mesh>
void read_face_sets(const Mesh& mesh)
{
    std::vector<std::string> names;
    mesh.getFaceSetNames(names);
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), 20); ++i)
        if (mesh.hasFaceSet(names[i])) mesh.getFaceSet(names[i]).getSchema().getValue();
}

void read(const IPolyMeshSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
    schema.getTopologyVariance();
    read_parameter(schema.getUVsParam(), at);
    read_parameter(schema.getNormalsParam(), at);
    read_face_sets(schema);
}

void read(const ISubDSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
    schema.getTopologyVariance();
    read_parameter(schema.getUVsParam(), at);
    read_face_sets(schema);
}

void read(const ICurvesSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
    schema.getTopologyVariance();
    read_parameter(schema.getUVsParam(), at);
    read_parameter(schema.getNormalsParam(), at);
    read_parameter(schema.getWidthsParam(), at);
}

void read(const IPointsSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
    read_parameter(schema.getWidthsParam(), at);
}

void read(const INuPatchSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
    schema.getTopologyVariance();
    schema.hasTrimCurve();
    read_parameter(schema.getUVsParam(), at);
    read_parameter(schema.getNormalsParam(), at);
}

void read(const IXformSchema& schema, const ISampleSelector& at)
{
    XformSample sample = schema.getValue(at);
    sample.getMatrix();
    sample.getTranslation();
    schema.getInheritsXforms(at);
    schema.isConstantIdentity();
    for (std::size_t i = 0; i < std::min<std::size_t>(sample.getNumOps(), 100); ++i)
        sample[i].isRotateOp();
}

void read(const ICameraSchema& schema, const ISampleSelector& at)
{
    CameraSample sample = schema.getValue(at);
    sample.getFilmBackMatrix();
    sample.getFieldOfView();
}

void read(const ILightSchema& schema, const ISampleSelector& at)
{
    if (schema.getCameraSchema().valid()) read(schema.getCameraSchema(), at);
}

void read(const IFaceSetSchema& schema, const ISampleSelector& at)
{
    schema.getValue(at);
}

class TypedWalk : public WalkBudget
{
public:
    TypedWalk(WalkReport& report, bool match_all)
        : WalkBudget(report)
        , match_all_(match_all)
    {
    }

    void walk(IObject object, int depth)
    {
        if (!spend() || depth > most_depth || !object.valid()) return;
        ++report_.objects;
        attempt([&] { read_as_schemas(object); });
        attempt([&] { read_properties(object.getProperties(), 0); });
        attempt([&] {
            GetVisibility(object);
            IsAncestorInvisible(object);
            object.getPropertiesHash(digest_);
            object.isInstanceRoot();
            object.instanceSourcePath();
            std::string assigned;
            Alembic::AbcMaterial::getMaterialAssignmentPath(object, assigned);
        });
        attempt([&] {
            for (std::size_t i = 0; i < object.getNumChildren() && left(); ++i)
                attempt([&] { walk(object.getChild(i), depth + 1); });
        });
        keep_log(object);
    }

private:
    void read_as_schemas(const IObject& object)
    {
        read_sampled<IPolyMesh>(object);
        read_sampled<ISubD>(object);
        read_sampled<ICurves>(object);
        read_sampled<IPoints>(object);
        read_sampled<INuPatch>(object);
        read_sampled<IXform>(object);
        read_sampled<ICamera>(object);
        read_sampled<ILight>(object);
        read_sampled<IFaceSet>(object);
        read_plain<IMaterial>(object, [&](IMaterial& material) { read_material(material.getSchema()); });
        read_plain<ICollections>(object, [&](ICollections& collections) {
            for (std::size_t i = 0; i < std::min<std::size_t>(collections.getSchema().getNumCollections(), 20); ++i)
                collections.getSchema().getCollection(i).getValue();
        });
    }

    template <class Typed, class Read>
    void read_plain(const IObject& object, const Read& read_it)
    {
        if (!match_all_ && !Typed::matches(object.getHeader())) return;
        attempt([&] {
            Typed typed(object, match_all_ ? kNoMatching : kStrictMatching);
            if (typed.valid()) read_it(typed);
            keep_log(typed);
            keep_log(typed.getSchema());
        });
    }

    template <class Typed>
    void read_sampled(const IObject& object)
    {
        read_plain<Typed>(object, [&](Typed& typed) {
            auto& schema = typed.getSchema();
            attempt([&] {
                schema.getNumSamples();
                schema.isConstant();
            });
            for (const index_t index : sample_indices(schema.getNumSamples()))
                attempt([&] {
                    read(schema, ISampleSelector(index));
                    spend_sample(0);
                });
            for (const double time : times)
                attempt([&] {
                    const ISampleSelector at(time,
                                             spend() ? ISampleSelector::kNearIndex : ISampleSelector::kFloorIndex);
                    if (schema.getNumSamples() > 0) read(schema, at);
                });
            attempt([&] { read_parameters(schema.getArbGeomParams()); });
            attempt([&] { schema.getUserProperties().valid(); });
        });
    }

    template <class Type>
    void read_as(const ICompoundProperty& parent, const PropertyHeader& header)
    {
        if (!ITypedGeomParam<Type>::matches(header)) return;
        const ITypedGeomParam<Type> parameter(parent, header.getName());
        for (const index_t index : sample_indices(parameter.getNumSamples()))
            attempt([&] {
                read_parameter(parameter, ISampleSelector(index));
                spend_sample(0);
            });
    }

    void read_parameters(const ICompoundProperty& parameters)
    {
        if (!parameters.valid()) return;
        for (std::size_t i = 0; i < parameters.getNumProperties() && spend(); ++i)
            attempt([&] {
                const PropertyHeader header = parameters.getPropertyHeader(i);
                isUV(header);
                GetGeometryScope(header.getMetaData());
                read_as<V2fTPTraits>(parameters, header);
                read_as<V3fTPTraits>(parameters, header);
                read_as<C3fTPTraits>(parameters, header);
                read_as<Float32TPTraits>(parameters, header);
                read_as<Int32TPTraits>(parameters, header);
                read_as<StringTPTraits>(parameters, header);
            });
    }

    void read_material(Alembic::AbcMaterial::IMaterialSchema& schema)
    {
        std::vector<std::string> targets, types, names;
        std::string a, b, c;
        schema.getTargetNames(targets);
        for (const std::string& target : targets) {
            schema.getShaderTypesForTarget(target, types);
            for (const std::string& type : types) {
                if (!spend()) return;
                schema.getShader(target, type, a);
                read_properties(schema.getShaderParameters(target, type), 0);
                schema.getNetworkTerminal(target, type, a, b);
            }
        }
        for (std::size_t i = 0; i < schema.getNumNetworkNodes() && spend(); ++i)
            attempt([&] {
                auto node = schema.getNetworkNode(i);
                node.getTarget(a);
                node.getNodeType(a);
                for (std::size_t k = 0; k < std::min<std::size_t>(node.getNumConnections(), 20); ++k)
                    node.getConnection(k, a, b, c);
            });
        schema.getNetworkTerminalTargetNames(names);
        schema.getNetworkInterfaceParameterMappingNames(names);
        for (const std::string& name : names)
            if (spend()) schema.getNetworkInterfaceParameterMapping(name, a, b);
    }

    void read_properties(ICompoundProperty compound, int depth)
    {
        if (depth > most_depth || !compound.valid()) return;
        for (std::size_t i = 0; i < compound.getNumProperties() && spend(); ++i)
            attempt([&] {
                const PropertyHeader header = compound.getPropertyHeader(i);
                ++report_.properties;
                if (header.isCompound()) {
                    read_properties(ICompoundProperty(compound, header.getName()), depth + 1);
                } else if (header.isArray()) {
                    IArrayProperty property(compound, header.getName());
                    for (const double time : times)
                        if (property.getNumSamples() > 0) {
                            AbcA::ArraySamplePtr sample;
                            property.get(sample, ISampleSelector(time));
                            spend_sample(sample ? sample->size() * header.getDataType().getNumBytes() : 0);
                        }
                    keep_log(property);
                } else {
                    IScalarProperty property(compound, header.getName());
                    property.isConstant();
                    keep_log(property);
                }
            });
        keep_log(compound);
    }

    template <class Handle>
    void keep_log(Handle& handle)
    {
        const std::string log = handle.getErrorHandler().getErrorLog();
        if (!log.empty()) note(log);
    }

    const bool match_all_;
    Alembic::Util::Digest digest_;
};

} // namespace

WalkReport walk_typed(const AbcA::ArchiveReaderPtr& reader, ErrorHandler::Policy policy, bool match_all)
{
    WalkReport report;
    TypedWalk walk(report, match_all);
    walk.attempt([&] {
        IArchive archive(reader, policy);
        double start = 0.0, end = 0.0;
        walk.attempt([&] { GetArchiveStartAndEndTime(archive, start, end); });
        walk.attempt([&] {
            if (archive.getTop().getProperties().getPropertyHeader(".childBnds")) GetIArchiveBounds(archive).getValue();
        });
        for (std::uint32_t i = 0; i < std::min(archive.getNumTimeSamplings(), 100u); ++i)
            walk.attempt([&] {
                const TimeSamplingPtr sampling = archive.getTimeSampling(i);
                const auto all = static_cast<index_t>(sampling->getNumStoredTimes());
                for (const double time : times)
                    for (const index_t count : {index_t(1), all}) {
                        sampling->getNearIndex(time, count);
                        sampling->getFloorIndex(time, count);
                        sampling->getCeilIndex(time, count);
                    }
            });
        walk.walk(archive.getTop(), 0);
    });
    return report;
}

} // namespace vo_fuzz
