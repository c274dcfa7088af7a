/// Transforms, read.
#include <Alembic/AbcGeom/IXform.h>

#include <Alembic/AbcGeom/IGeomBase.h>

#include "geom/property_lookup.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Alembic {
namespace AbcGeom {
inline namespace ALEMBIC_VERSION_NS {

namespace {

constexpr size_t max_scalar_extent = 255;   // an extent is stored in one byte
constexpr size_t max_operations = 1u << 16; // far beyond any transform; each takes a hundred times its size in the file

} // namespace

IXformSchema::IXformSchema(const ICompoundProperty& parent, const std::string& name, const Argument& arg0,
                           const Argument& arg1)
    : Abc::ISchema<XformSchemaInfo>(parent, name, arg0, arg1)
{
    init();
}

IXformSchema::IXformSchema(const ICompoundProperty& property, const Argument& arg0, const Argument& arg1)
    : Abc::ISchema<XformSchemaInfo>(property, arg0, arg1)
{
    init();
}

void IXformSchema::init()
{
    const AbcA::CompoundPropertyReaderPtr schema = getPtr();
    if (!schema) {
        return; // the compound itself was an error
    }
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::init()");
    inherits_ = optional_property<IBoolProperty>(*this, ".inherits", kNoMatching);
    is_constant_identity_ = schema->getPropertyHeader("isNotConstantIdentity") == nullptr;
    find_values(schema);
    read_operations(schema);
    ALEMBIC_ABC_SAFE_CALL_END_RESET();
}

void IXformSchema::find_values(const AbcA::CompoundPropertyReaderPtr& schema)
{
    const AbcA::PropertyHeader* header = schema->getPropertyHeader(".vals");
    if (!header) {
        return;
    }
    if (header->isCompound() || header->getDataType().getPod() != kFloat64POD) {
        ABCA_THROW("Incorrect match of header datatype: " << header->getDataType()
                                                          << " to expected: float64_t, property: .vals");
    }
    if (header->isScalar()) {
        scalar_values_ = IScalarProperty(schema->getScalarProperty(".vals"), ErrorHandler::kThrowPolicy);
    } else {
        array_values_ = IArrayProperty(schema->getArrayProperty(".vals"), ErrorHandler::kThrowPolicy);
    }
}

void IXformSchema::read_operations(const AbcA::CompoundPropertyReaderPtr& schema)
{
    const AbcA::PropertyHeader* header = schema->getPropertyHeader(".ops");
    if (!header) {
        return;
    }
    if (header->isCompound() || header->getDataType().getPod() != kUint8POD) {
        ABCA_THROW("Incorrect match of header datatype: " << header->getDataType()
                                                          << " to expected: uint8_t, property: .ops");
    }
    std::vector<XformOp> operations;
    const auto decode = [&](const uint8_t* codes, size_t count) { operations.assign(codes, codes + count); };
    if (header->isScalar()) {
        std::array<uint8_t, max_scalar_extent> codes{};
        const AbcA::ScalarPropertyReaderPtr property = schema->getScalarProperty(".ops");
        if (property->getNumSamples() > 0) {
            property->getSample(0, codes.data());
            decode(codes.data(), header->getDataType().getExtent());
        }
    } else {
        const AbcA::ArrayPropertyReaderPtr property = schema->getArrayProperty(".ops");
        if (property->getNumSamples() > 0) {
            AbcA::ArraySamplePtr codes;
            property->getSample(0, codes);
            const size_t count = codes->size() * header->getDataType().getExtent();
            ABCA_ASSERT(count <= max_operations, "A transform cannot have " << count << " operations, property: .ops");
            decode(static_cast<const uint8_t*>(codes->getData()), count);
        }
    }
    if (operations.empty()) {
        return;
    }
    mark_animated_channels(schema, operations);
    operations_ = std::make_shared<const std::vector<XformOp>>(std::move(operations));
}

void IXformSchema::mark_animated_channels(const AbcA::CompoundPropertyReaderPtr& schema,
                                          std::vector<XformOp>& operations) const
{
    // A remark for the user, no more: one of another type is no reason to refuse the transform.
    const AbcA::PropertyHeader* header = schema->getPropertyHeader(".animChans");
    if (!header || !IUInt32ArrayProperty::matches(*header, kNoMatching)) {
        return;
    }
    const AbcA::ArrayPropertyReaderPtr property = schema->getArrayProperty(".animChans");
    const size_t sample_count = property->getNumSamples();
    if (sample_count == 0) {
        return;
    }
    AbcA::ArraySamplePtr sample;
    property->getSample(static_cast<AbcA::index_t>(sample_count) - 1, sample); // the last knows of all changes
    // Numbers count over the channels of all operations; those of none are left out.
    std::vector<std::pair<XformOp*, size_t>> all_channels;
    all_channels.reserve(operations.size() * 4);
    for (XformOp& operation : operations) {
        for (size_t channel = 0; channel < operation.getNumChannels(); ++channel) {
            all_channels.emplace_back(&operation, channel);
        }
    }
    const uint32_t* numbers = static_cast<const uint32_t*>(sample->getData());
    const size_t number_count = sample->size() * header->getDataType().getExtent();
    for (size_t i = 0; i < number_count; ++i) {
        if (numbers[i] < all_channels.size()) {
            all_channels[numbers[i]].first->mark_animated(all_channels[numbers[i]].second);
        }
    }
}

void IXformSchema::set_channels(std::vector<XformOp>& operations, const double* values, size_t count)
{
    for (XformOp& operation : operations) {
        const size_t taken = std::min(operation.getNumChannels(), count);
        std::copy_n(values, taken, operation.channels_.data());
        values += taken;
        count -= taken;
    }
}

AbcA::TimeSamplingPtr IXformSchema::getTimeSampling() const
{
    if (inherits_.getPtr()) {
        return inherits_.getTimeSampling();
    }
    return std::make_shared<AbcA::TimeSampling>();
}

bool IXformSchema::isConstant() const
{
    return inherits_.isConstant() && scalar_values_.isConstant() && array_values_.isConstant();
}

bool IXformSchema::getInheritsXforms(const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::getInheritsXforms()");
    if (inherits_.getNumSamples() > 0) {
        return inherits_.getValue(selector).asBool();
    }
    ALEMBIC_ABC_SAFE_CALL_END();
    return true;
}

void IXformSchema::get(XformSample& sample, const ISampleSelector& selector) const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::get()");
    sample.reset();
    if (!valid()) {
        return;
    }
    sample.setInheritsXforms(getInheritsXforms(selector));
    if (!operations_) {
        return;
    }
    sample.ops_ = *operations_;
    sample.filled_by_ = XformSample::FilledBy::add_op;
    if (scalar_values_.getNumSamples() > 0) {
        std::array<double, max_scalar_extent> values;
        scalar_values_.get(values.data(), selector);
        set_channels(sample.ops_, values.data(), scalar_values_.getDataType().getExtent());
    } else if (array_values_.getNumSamples() > 0) {
        AbcA::ArraySamplePtr values;
        array_values_.get(values, selector);
        set_channels(sample.ops_, static_cast<const double*>(values->getData()),
                     values->size() * values->getDataType().getExtent());
    }
    ALEMBIC_ABC_SAFE_CALL_END();
}

IBox3dProperty IXformSchema::getChildBoundsProperty() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::getChildBoundsProperty()");
    return optional_box(*this, ".childBnds");
    ALEMBIC_ABC_SAFE_CALL_END();
    return IBox3dProperty();
}

ICompoundProperty IXformSchema::getArbGeomParams() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::getArbGeomParams()");
    return optional_compound(*this, ".arbGeomParams");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

ICompoundProperty IXformSchema::getUserProperties() const
{
    ALEMBIC_ABC_SAFE_CALL_BEGIN("IXformSchema::getUserProperties()");
    return optional_compound(*this, ".userProperties");
    ALEMBIC_ABC_SAFE_CALL_END();
    return ICompoundProperty();
}

void IXformSchema::reset()
{
    inherits_.reset();
    scalar_values_.reset();
    array_values_.reset();
    operations_.reset();
    is_constant_identity_ = true;
    Abc::ISchema<XformSchemaInfo>::reset();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcGeom
} // namespace Alembic
