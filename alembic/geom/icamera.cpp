/// Cameras, read.
#include <Alembic/AbcGeom/ICamera.h>

#include <Alembic/AbcGeom/IGeomBase.h>

#include "geom/property_lookup.h"

#include <algorithm>
#include <vector>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr int core_size = 16;
constexpr size_t max_operations = 1u << 16; // far beyond any film back; each takes a hundred times its size in the file

/// Finds `name` in `schema`, be it a scalar with several values or an array; neither when it is absent. Throws when the
/// values are not of type `pod`.
void find_either(const ICompoundProperty& schema, const char* name, PlainOldDataType pod, IScalarProperty& scalar,
                 IArrayProperty& array)
{
    const AbcA::CompoundPropertyReaderPtr compound = schema.getPtr();
    const AbcA::PropertyHeader* header = compound->getPropertyHeader(name);
    if (!header) {
        return;
    }
    if (header->isCompound() || header->getDataType().getPod() != pod) {
        ABCA_THROW("Incorrect match of header datatype: " << header->getDataType() << " to expected: " << PODName(pod)
                                                          << ", property: " << name);
    }
    if (header->isScalar()) {
        scalar = IScalarProperty(compound->getScalarProperty(name), ErrorHandler::kThrowPolicy);
    } else {
        array = IArrayProperty(compound->getArrayProperty(name), ErrorHandler::kThrowPolicy);
    }
}

/// All values of one sample of whichever of the two there is.
template <class VALUE>
std::vector<VALUE> read_either(const IScalarProperty& scalar, const IArrayProperty& array, AbcA::index_t index)
{
    if (scalar.getPtr()) {
        std::vector<VALUE> values(scalar.getDataType().getExtent());
        scalar.get(values.data(), index);
        return values;
    }
    AbcA::ArraySamplePtr sample;
    array.get(sample, index);
    const VALUE* first = static_cast<const VALUE*>(sample->getData());
    return std::vector<VALUE>(first, first + sample->size() * sample->getDataType().getExtent());
}

} // namespace

void ICameraSchema::init()
{
    if (!getPtr()) {
        return; // the compound itself was an error
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICameraSchema::init()");
    core_ = IScalarProperty(*this, ".core", ErrorHandler::kThrowPolicy);
    if (core_.getDataType() != DataType(kFloat64POD, core_size)) {
        ABCA_THROW("Incorrect match of header datatype: " << core_.getDataType()
                                                          << " to expected: float64_t[16], property: .core");
    }
    find_either(*this, ".filmBackOps", kStringPOD, scalar_operations_, array_operations_);
    find_either(*this, ".filmBackChannels", kFloat64POD, scalar_channels_, array_channels_);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

bool ICameraSchema::isConstant() const
{
    return core_.isConstant() && scalar_channels_.isConstant() && array_channels_.isConstant();
}

void ICameraSchema::get(CameraSample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICameraSchema::get()");
    sample.reset();
    core_.get(sample.core_.data(), selector);
    read_film_back(sample, selector);
    ALEMBIC_ABC_SAFE_CALL_END();
}

void ICameraSchema::read_film_back(CameraSample& sample, const ISampleSelector& selector) const
{
    const size_t operation_count = scalar_operations_.getNumSamples() + array_operations_.getNumSamples();
    const size_t channel_samples = scalar_channels_.getNumSamples() + array_channels_.getNumSamples();
    if (operation_count == 0 || channel_samples == 0) {
        return;
    }
    // The channels' own time sampling says nothing: they are written along with the core values.
    const AbcA::index_t index = selector.getIndex(core_.getTimeSampling(), static_cast<AbcA::index_t>(channel_samples));
    const std::vector<std::string> operations = read_either<std::string>(scalar_operations_, array_operations_, 0);
    const std::vector<double> channels = read_either<double>(scalar_channels_, array_channels_, index);
    ABCA_ASSERT(operations.size() <= max_operations,
                "A camera cannot have " << operations.size() << " film back operations, property: .filmBackOps");
    size_t next = 0;
    for (const std::string& operation : operations) {
        FilmBackXformOp op = FilmBackXformOp::decode(operation);
        for (size_t i = 0; i < op.getNumChannels() && next < channels.size(); ++i) {
            op.setChannelValue(i, channels[next++]);
        }
        sample.addOp(std::move(op));
    }
}

ICompoundProperty ICameraSchema::getArbGeomParams() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICameraSchema::getArbGeomParams()");
    return optional_compound(*this, ".arbGeomParams");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

ICompoundProperty ICameraSchema::getUserProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICameraSchema::getUserProperties()");
    return optional_compound(*this, ".userProperties");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

IBox3dProperty ICameraSchema::getChildBoundsProperty() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("ICameraSchema::getChildBoundsProperty()");
    return optional_box(*this, ".childBnds");
    ALEMBIC_ABC_SAFE_CALL_END();
    return IBox3dProperty();
}

void ICameraSchema::reset()
{
    core_.reset();
    scalar_operations_.reset();
    array_operations_.reset();
    scalar_channels_.reset();
    array_channels_.reset();
    Abc::ISchema<CameraSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
