/// @file
/// Scalar and array properties of an Ogawa archive that is being written.
#pragma once

#include "compound_property_writer.h"
#include "sample_sequence.h"

#include <Alembic/AbcCoreAbstract/All.h>

#include <memory>

namespace Alembic {
namespace AbcCoreOgawa {
inline namespace ALEMBIC_VERSION_NS {

/// What both kinds have in common. Keeps its parent alive; is written when the last pointer to it goes.
template <class Base>
class OgawaSimpleWriter : public Base
{
public:
    /// `record` is owned by the parent.
    OgawaSimpleWriter(std::shared_ptr<OgawaCompoundWriter> parent, WrittenProperty& record)
        : parent_(std::move(parent))
        , record_(record)
        , samples_(parent_->object()->archive(), record)
    {
    }

    ~OgawaSimpleWriter() override
    {
        const std::shared_ptr<OgawaArchiveWriter> archive = parent_->object()->shared_archive();
        archive->finish_part([this] { samples_.finish(); });
        record_.writer.reset();
        OgawaArchiveWriter::release_parent(archive, std::move(parent_));
    }

    const AbcA::PropertyHeader& getHeader() const override { return record_.header; }
    AbcA::ObjectWriterPtr getObject() override { return parent_->object(); }
    AbcA::CompoundPropertyWriterPtr getParent() override { return parent_; }
    void setFromPreviousSample() override { samples_.append_previous(); }
    std::size_t getNumSamples() override { return record_.sample_count; }
    void setTimeSamplingIndex(std::uint32_t index) override { samples_.set_time_sampling(index); }

protected:
    std::shared_ptr<OgawaCompoundWriter> parent_;
    WrittenProperty& record_;
    SampleSequence samples_;
};

class OgawaScalarWriter final : public OgawaSimpleWriter<AbcA::ScalarPropertyWriter>,
                                public std::enable_shared_from_this<OgawaScalarWriter>
{
public:
    using OgawaSimpleWriter::OgawaSimpleWriter;

    AbcA::ScalarPropertyWriterPtr asScalarPtr() override { return shared_from_this(); }
    void setSample(const void* sample) override;
};

class OgawaArrayWriter final : public OgawaSimpleWriter<AbcA::ArrayPropertyWriter>,
                               public std::enable_shared_from_this<OgawaArrayWriter>
{
public:
    using OgawaSimpleWriter::OgawaSimpleWriter;

    AbcA::ArrayPropertyWriterPtr asArrayPtr() override { return shared_from_this(); }
    void setSample(const AbcA::ArraySample& sample) override;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreOgawa
} // namespace Alembic
