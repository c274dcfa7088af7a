/// What a program writes, read back: the input is the program. Every sample must come back as it was given.
#include "input.h"

#include "support/walk_budget.h"

#include <Alembic/AbcCoreOgawa/All.h>

#include <algorithm>
#include <cstring>
#include <sstream>
#include <vector>

namespace {

namespace AbcA = Alembic::AbcCoreAbstract;

/// Takes numbers and bytes off the input; zeros when it has ended.
class Program
{
public:
    Program(const std::uint8_t* data, std::size_t size)
        : at_(data)
        , end_(data + size)
    {
    }
    bool at_end() const { return at_ == end_; }
    std::uint8_t next() { return at_end() ? 0 : *at_++; }
    std::string bytes(std::size_t size)
    {
        std::string bytes(reinterpret_cast<const char*>(at_), std::min<std::size_t>(size, end_ - at_));
        at_ += bytes.size();
        bytes.resize(size);
        return bytes;
    }

private:
    const std::uint8_t *at_, *end_;
};

struct WrittenProperty
{
    std::string name;
    AbcA::DataType type;
    std::vector<std::string> samples;
};

struct WrittenObject
{
    std::string name;
    std::vector<WrittenProperty> properties;
    std::vector<WrittenObject> children;
};

std::string name_of(Program& program, std::size_t number)
{
    std::string name = std::to_string(number) + program.bytes(program.next() % 4);
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

WrittenProperty write_property(AbcA::CompoundPropertyWriter& parent, const std::string& name, Program& program)
{
    WrittenProperty written;
    written.name = name;
    written.type = AbcA::DataType(static_cast<AbcA::PlainOldDataType>(program.next() % 12), 1 + program.next() % 9);
    const auto property = parent.createArrayProperty(name, AbcA::MetaData(), written.type, 0);
    for (int count = program.next() % 6; count > 0; --count) {
        if (!written.samples.empty() && program.next() % 3 == 0) {
            property->setFromPreviousSample();
            written.samples.push_back(written.samples.back());
            continue;
        }
        const std::size_t points = program.next() % 5;
        const std::string sample = program.bytes(points * written.type.getNumBytes());
        property->setSample(AbcA::ArraySample(sample.data(), written.type, AbcA::Dimensions(points)));
        written.samples.push_back(sample);
    }
    return written;
}

WrittenObject write_object(const AbcA::ObjectWriterPtr& object, Program& program, int depth)
{
    WrittenObject written;
    written.name = object->getName();
    for (int steps = program.next() % 8; steps > 0 && !program.at_end(); --steps)
        if (depth < 5 && program.next() % 2 == 0) {
            const std::string name = name_of(program, written.children.size());
            AbcA::MetaData metadata;
            metadata.set("key", std::string(program.next() * 2, 'v'));
            written.children.push_back(
                write_object(object->createChild(AbcA::ObjectHeader(name, metadata)), program, depth + 1));
        } else {
            const std::string name = name_of(program, written.properties.size());
            written.properties.push_back(write_property(*object->getProperties(), name, program));
        }
    return written;
}

void require(bool holds, const char* what)
{
    if (!holds) vo_fuzz::WalkBudget::fail(what);
}

void compare(const WrittenObject& written, AbcA::ObjectReader& object)
{
    require(object.getName() == written.name, "an object has another name");
    require(object.getNumChildren() == written.children.size(), "an object has lost children");
    const AbcA::CompoundPropertyReaderPtr properties = object.getProperties();
    require(properties->getNumProperties() == written.properties.size(), "an object has lost properties");
    for (const WrittenProperty& property : written.properties) {
        const AbcA::ArrayPropertyReaderPtr read = properties->getArrayProperty(property.name);
        require(read && read->getDataType() == property.type, "a property has another type");
        require(read->getNumSamples() == property.samples.size(), "a property has lost samples");
        for (std::size_t i = 0; i < property.samples.size(); ++i) {
            AbcA::ArraySamplePtr sample;
            read->getSample(static_cast<AbcA::index_t>(i), sample);
            const std::size_t size = sample->size() * property.type.getNumBytes();
            require(size == property.samples[i].size(), "a sample has another size");
            require(size == 0 || std::memcmp(sample->getData(), property.samples[i].data(), size) == 0,
                    "a sample has other values");
        }
    }
    for (const WrittenObject& child : written.children)
        compare(child, *object.getChild(child.name));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Program program(data, size);
    std::ostringstream stream;
    WrittenObject written;
    {
        const auto archive = Alembic::AbcCoreOgawa::WriteArchive()(&stream, AbcA::MetaData());
        written = write_object(archive->getTop(), program, 0);
    }
    std::istringstream bytes(stream.str());
    const auto archive = Alembic::AbcCoreOgawa::ReadArchive({&bytes})("written");
    written.name = archive->getTop()->getName();
    compare(written, *archive->getTop());
    require_promises(vo_fuzz::run_readers_on_bytes(stream.str(), {0.0}));
    return 0;
}
