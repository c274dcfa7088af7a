#include "wide_string_watch.h"

#include "object_selection.h"
#include "text.h"

#include <Alembic/Util/Murmur3.h>
#include <fmt/format.h>

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

Alembic::Util::Digest digest_of(const AbcA::ArraySample& sample)
{
    std::wstring all;
    const auto* const texts = static_cast<const std::wstring*>(sample.getData());
    for (std::size_t i = 0; i < sample.size() * sample.getDataType().getExtent(); ++i)
        all.append(texts[i]).push_back(0);
    Alembic::Util::Digest digest;
    Alembic::Util::MurmurHash3_x64_128(all.data(), all.size() * sizeof(wchar_t), sizeof(wchar_t), digest.d);
    return digest;
}

} // namespace

void WideStringWatch::note(const std::string& object_path, const std::vector<std::string>& names, std::int64_t index,
                           const AbcA::ArraySample& sample)
{
    if (sample.getDataType().getPod() != AbcA::kWstringPOD) return;
    if (properties_.empty() || properties_.back().object_path != object_path || properties_.back().names != names)
        properties_.push_back({object_path, names, {}});
    std::vector<Run>& runs = properties_.back().runs;
    const Alembic::Util::Digest contents = digest_of(sample);
    if (!runs.empty() && runs.back().last + 1 == index && runs.back().contents == contents)
        runs.back().last = index;
    else
        runs.push_back({index, index, contents});
}

std::uint64_t WideStringWatch::count_lost(const Property& property, AbcA::ArchiveReader& copy)
{
    AbcA::CompoundPropertyReaderPtr compound = find_stored_object(copy.getTop(), property.object_path)->getProperties();
    for (std::size_t i = 0; i + 1 < property.names.size(); ++i)
        compound = compound->getCompoundProperty(property.names[i]);
    const AbcA::BasePropertyReaderPtr reader = compound->getProperty(property.names.back());
    std::uint64_t count = 0;
    for (const Run& run : property.runs) { // equal samples are kept or lost together
        AbcA::ArraySamplePtr stored = AbcA::AllocateArraySample(reader->getDataType(), AbcA::Dimensions(1));
        if (reader->isScalar())
            reader->asScalarPtr()->getSample(run.first, const_cast<void*>(stored->getData()));
        else
            reader->asArrayPtr()->getSample(run.first, stored);
        if (!(digest_of(*stored) == run.contents)) count += static_cast<std::uint64_t>(run.last - run.first + 1);
    }
    return count;
}

std::vector<std::string> WideStringWatch::find_lost(AbcA::ArchiveReader& copy) const
{
    std::vector<std::string> lines;
    for (const Property& property : properties_)
        if (const std::uint64_t count = count_lost(property, copy))
            lines.push_back(
                fmt::format("{} property {}: {} of wide strings read as others now: Ogawa archives take those "
                            "for equal that begin alike. Store them as strings.",
                            property.object_path, fmt::join(property.names, "/"), counted(count, "sample", "samples")));
    return lines;
}
