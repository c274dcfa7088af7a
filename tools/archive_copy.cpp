#include "archive_copy.h"

#include "archive_session.h"
#include "wide_string_watch.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

/// A part of the work that an object is, 0 to 1.
struct Part
{
    double begin, end;

    double at(double done) const { return begin + (end - begin) * done; }
    /// Part `i` of `count` equal ones.
    Part get_part(std::size_t i, std::size_t count) const
    {
        return {at(static_cast<double>(i) / static_cast<double>(count)),
                at(static_cast<double>(i + 1) / static_cast<double>(count))};
    }
};

/// Archives may state billions of repeats, which cost next to nothing: less than telling how far the copy is.
constexpr std::int64_t repeats_at_once = 4096;

class ArchiveCopier
{
public:
    ArchiveCopier(const ArchiveSession& session, const std::string& path, const CopyOptions& options,
                  WideStringWatch& wide_strings)
        : session_(session)
        , options_(options)
        , source_(session.get_archive().getPtr())
        , target_(Alembic::AbcCoreOgawa::WriteArchive()(path, source_->getMetaData()))
        , wide_strings_(wide_strings)
    {
        // In their order: those that are equal become one.
        for (std::uint32_t i = 0; i < options.cut.get_count(); ++i)
            new_samplings_.push_back(target_->addTimeSampling(options.cut.get_sampling(i)));
    }

    CopyCounts copy()
    {
        const AbcA::ObjectReaderPtr top = source_->getTop();
        object_count_ = count_objects(*top);
        copy_object(*top, *target_->getTop());
        if (!options_.cut.is_cut() && options_.selection.keeps_all()) copy_sample_counts();
        return counts_;
    }

private:
    /// `done` of the current object, 0 to 1.
    void show_progress(double done) const
    {
        options_.progress((static_cast<double>(counts_.objects) + done) / static_cast<double>(object_count_));
    }

    /// A full disk is no damage of the object that is being copied.
    template <class Write>
    static void write(Write&& write_sample)
    {
        try {
            write_sample();
        } catch (const std::exception& error) {
            throw ToolError("the copy cannot be written: " + reason_in(error.what()) + ". Is the disk full?");
        }
    }

    AbcA::ObjectReaderPtr open_child(AbcA::ObjectReader& object, std::size_t i) const
    {
        const AbcA::ObjectReaderPtr child = object.getChild(i);
        if (!child) throw session_.error(object.getChildHeader(i).getFullName(), "cannot be opened.");
        return child;
    }

    std::uint64_t count_objects(AbcA::ObjectReader& object) const
    {
        return session_.on_object(object.getFullName(), [&] {
            options_.progress(0.0);
            std::uint64_t count = 1;
            for (std::size_t i = 0; i < object.getNumChildren(); ++i)
                if (options_.selection.is_kept(object.getChildHeader(i).getFullName()))
                    count += count_objects(*open_child(object, i));
            return count;
        });
    }

    void copy_object(AbcA::ObjectReader& object, AbcA::ObjectWriter& copy)
    {
        object_path_ = object.getFullName();
        show_progress(0.0);
        session_.on_object(object.getFullName(), [&] {
            copy_properties(*object.getProperties(), *copy.getProperties(), object_path_, {0.0, 1.0});
            ++counts_.objects;
            for (std::size_t i = 0; i < object.getNumChildren(); ++i) {
                const AbcA::ObjectHeader& header = object.getChildHeader(i);
                if (options_.selection.is_kept(header.getFullName()))
                    copy_object(*open_child(object, i), *copy.createChild(header));
            }
        });
    }

    void copy_properties(AbcA::CompoundPropertyReader& compound, AbcA::CompoundPropertyWriter& copy,
                         const std::string& path, const Part& part)
    {
        const std::size_t count = compound.getNumProperties();
        for (std::size_t i = 0; i < count; ++i) {
            const AbcA::PropertyHeader& header = compound.getPropertyHeader(i);
            const std::string property_path = path + " property " + header.getName();
            names_.push_back(header.getName());
            session_.on_object(property_path,
                               [&] { copy_property(compound, header, copy, property_path, part.get_part(i, count)); });
            names_.pop_back();
            ++counts_.properties;
        }
    }

    void copy_property(AbcA::CompoundPropertyReader& compound, const AbcA::PropertyHeader& header,
                       AbcA::CompoundPropertyWriter& copy, const std::string& path, const Part& part)
    {
        const std::string& name = header.getName();
        if (header.isCompound()) {
            const auto inner = compound.getCompoundProperty(name);
            copy_properties(*inner, *copy.createCompoundProperty(name, header.getMetaData()), path, part);
            return;
        }
        const std::uint32_t sampling = find_sampling(*header.getTimeSampling());
        const std::uint32_t new_sampling = new_samplings_[sampling];
        const AbcA::DataType& type = header.getDataType();
        if (header.isScalar()) {
            const auto scalar = compound.getScalarProperty(name);
            const auto to = copy.createScalarProperty(name, header.getMetaData(), type, new_sampling);
            const AbcA::ArraySamplePtr value = AbcA::AllocateArraySample(type, AbcA::Dimensions(1));
            copy_samples(*scalar, sampling, *to, part, [&](AbcA::index_t i) {
                scalar->getSample(i, const_cast<void*>(value->getData()));
                wide_strings_.note(object_path_, names_, static_cast<std::int64_t>(to->getNumSamples()), *value);
                write([&] { to->setSample(value->getData()); });
            });
        } else {
            const auto array = compound.getArrayProperty(name);
            const auto to = copy.createArrayProperty(name, header.getMetaData(), type, new_sampling);
            std::optional<AbcA::Dimensions> before; // of the sample before
            copy_samples(*array, sampling, *to, part, [&](AbcA::index_t i) {
                AbcA::ArraySamplePtr sample; // read even if its digest is that of the one before: it may be wrong
                array->getSample(i, sample);
                note_shape(path, *array, i, before, *sample);
                before = sample->getDimensions();
                wide_strings_.note(object_path_, names_, static_cast<std::int64_t>(to->getNumSamples()), *sample);
                write([&] { to->setSample(*sample); });
            });
        }
    }

    static bool has_contents_of_previous(AbcA::ArrayPropertyReader& array, AbcA::index_t index,
                                         const AbcA::ArraySample& sample)
    {
        AbcA::ArraySamplePtr previous;
        array.getSample(index - 1, previous);
        return previous->getKey() == sample.getKey();
    }

    /// Ogawa archives take a sample for a repeat of the one before when only its shape differs, and keep no shape of
    /// one without elements.
    void note_shape(const std::string& path, AbcA::ArrayPropertyReader& array, AbcA::index_t index,
                    const std::optional<AbcA::Dimensions>& before, const AbcA::ArraySample& sample)
    {
        const AbcA::Dimensions& shape = sample.getDimensions();
        const bool is_empty = shape.rank() > 1 && shape.numPoints() == 0;
        const bool is_taken_for_repeat = before && *before != shape && before->numPoints() == shape.numPoints() &&
                                         has_contents_of_previous(array, index, sample);
        if (!is_empty && !is_taken_for_repeat) return;
        const std::string loss = path + ": the dimensions of some samples; an Ogawa archive cannot keep them.";
        if (counts_.losses.empty() || counts_.losses.back() != loss) counts_.losses.push_back(loss);
    }

    /// `copy_sample(i)` reads one sample and appends it; the writer finds out which of them repeat.
    template <class Reader, class Writer, class CopySample>
    void copy_samples(Reader& from, std::uint32_t sampling, Writer& to, const Part& part, const CopySample& copy_sample)
    {
        const auto count = static_cast<std::int64_t>(from.getNumSamples());
        if (count == 0) return;
        const bool is_constant = from.isConstant();
        const SampleSpan samples = options_.cut.get_samples(sampling, count);
        const auto sample_count = static_cast<double>(samples.last - samples.first + 1);
        for (std::int64_t i = samples.first; i <= samples.last; ++i) {
            const bool repeats = i > samples.first && is_constant;
            if (!repeats || i % repeats_at_once == 0)
                show_progress(part.at(static_cast<double>(i - samples.first) / sample_count));
            if (repeats)
                to.setFromPreviousSample(); // read once, however many there are
            else
                copy_sample(i);
            ++counts_.samples;
        }
    }

    /// Which of the archive's samplings a property has: the very one, or, where layers each have their own, an equal
    /// one.
    std::uint32_t find_sampling(const AbcA::TimeSampling& sampling) const
    {
        const std::uint32_t count = source_->getNumTimeSamplings();
        for (std::uint32_t i = 0; i < count; ++i)
            if (source_->getTimeSampling(i).get() == &sampling) return i;
        for (std::uint32_t i = 0; i < count; ++i)
            if (*source_->getTimeSampling(i) == sampling) return i;
        throw session_.error("a time sampling is not one of the archive's.");
    }

    /// A program may have stored more than its properties have.
    void copy_sample_counts()
    {
        constexpr std::int64_t most_stored = 0xffffffff;
        for (std::uint32_t i = 0; i < source_->getNumTimeSamplings(); ++i) {
            const AbcA::index_t count = source_->getMaxNumSamplesForTimeSamplingIndex(i);
            const AbcA::index_t other = target_->getMaxNumSamplesForTimeSamplingIndex(new_samplings_[i]);
            if (count > 0 && count <= most_stored) // several of the source's may have become one
                target_->setMaxNumSamplesForTimeSamplingIndex(new_samplings_[i], std::max(count, other));
        }
    }

    const ArchiveSession& session_;
    const CopyOptions& options_;
    const AbcA::ArchiveReaderPtr source_;
    const AbcA::ArchiveWriterPtr target_;
    std::vector<std::uint32_t> new_samplings_; ///< of each of the source's
    std::uint64_t object_count_ = 1;           ///< to copy
    std::string object_path_;                  ///< of the current object
    std::vector<std::string> names_;           ///< of the current property's compounds, and its own
    WideStringWatch& wide_strings_;
    CopyCounts counts_;
};

} // namespace

CopyCounts copy_archive(const ArchiveSession& session, const std::string& path, const CopyOptions& options)
{
    WideStringWatch wide_strings;
    CopyCounts counts = ArchiveCopier(session, path, options, wide_strings).copy();
    try {
        // What could not be written to its end does not open.
        for (std::string& loss : wide_strings.find_lost(*Alembic::AbcCoreOgawa::ReadArchive()(path)))
            counts.losses.push_back(std::move(loss));
    } catch (const std::exception& error) {
        throw ToolError("the copy was not written to its end: " + reason_in(error.what()) + ". Is the disk full?");
    }
    return counts;
}
