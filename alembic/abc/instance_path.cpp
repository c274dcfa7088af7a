/// Following instances.
#include <abc/instance_path.h>
#include <abc/metadata_lookup.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

using namespace AbcCoreAbstract;

namespace {

std::string stored_source(ObjectReader& stored)
{
    const CompoundPropertyReaderPtr properties = stored.getProperties();
    const PropertyHeader* header = properties ? properties->getPropertyHeader(".instanceSource") : nullptr;
    if (!header || !header->isScalar() || !(header->getDataType() == DataType(kStringPOD, 1))) {
        ABCA_THROW("Instance " << stored.getFullName() << " does not tell what it is an instance of");
    }
    std::string source;
    properties->getScalarProperty(".instanceSource")->getSample(0, &source);
    return source;
}

ObjectReaderPtr follow(ObjectReader& stored, std::string& source, int& budget);

/// The object of a full name, instances on the way and at its end followed; null when there is none.
ObjectReaderPtr find_object(ObjectReader& any, const std::string& full_name, int& budget)
{
    ObjectReaderPtr object = any.getArchive()->getTop();
    size_t begin = 0;
    while (object && begin < full_name.size()) {
        const size_t slash = full_name.find('/', begin);
        const size_t end = slash == std::string::npos ? full_name.size() : slash;
        if (end > begin) {
            object = object->getChild(full_name.substr(begin, end - begin));
            std::string ignored;
            if (object && is_instance(object->getMetaData())) object = follow(*object, ignored, budget);
        }
        begin = end + 1;
    }
    return object;
}

ObjectReaderPtr follow(ObjectReader& stored, std::string& source, int& budget)
{
    source = stored_source(stored);
    if (--budget < 0) {
        ABCA_THROW("Instance " << stored.getFullName() << " of " << source << " leads through more than "
                               << max_followed_instances << " instances, or in a circle");
    }
    const ObjectReaderPtr object = find_object(stored, source, budget);
    if (!object) ABCA_THROW("Instance " << stored.getFullName() << " of " << source << ": there is no such object");
    return object;
}

} // namespace

bool is_instance(const MetaData& meta_data)
{
    return meta_data.size() != 0 && value_is(meta_data, "isInstance", "1");
}

std::string child_full_name(const std::string& parent, const std::string& child)
{
    return !parent.empty() && parent.back() == '/' ? parent + child : parent + "/" + child;
}

bool is_same_or_above(const std::string& ancestor, const std::string& object)
{
    if (ancestor.empty() || ancestor == "/") return true;
    return object.compare(0, ancestor.size(), ancestor) == 0 &&
           (object.size() == ancestor.size() || object[ancestor.size()] == '/');
}

ObjectReaderPtr follow_instance(ObjectReader& stored, std::string& source)
{
    int budget = max_followed_instances;
    return follow(stored, source, budget);
}

void refuse_loop(const std::string& source, const std::string& instance, ObjectReader* parent, const InstancePath* path)
{
    for (;;) {
        // Up to the root of the instance that `parent` is seen in, or to the top, the names are those of the file.
        const InstancePath* root = path;
        while (root && !root->stored)
            root = root->above.get();
        const bool below_root = !root || is_same_or_above(root->source_full_name, source);
        if (below_root && is_same_or_above(source, parent->getFullName())) {
            ABCA_THROW("Instance " << instance << " of " << source << " would contain itself");
        }
        if (!root) return;
        parent = root->parent.get();
        path = root->above.get();
    }
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
