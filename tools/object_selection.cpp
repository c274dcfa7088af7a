#include "object_selection.h"

#include "archive_session.h"

#include <algorithm>
#include <functional>

namespace AbcA = Alembic::AbcCoreAbstract;

namespace {

/// The object itself and those below it. The libraries refuse what is nested too deep for a recursion.
void for_each_below(AbcA::ObjectReader& object, const std::function<void(AbcA::ObjectReader&)>& use)
{
    use(object);
    for (std::size_t i = 0; i < object.getNumChildren(); ++i)
        if (const AbcA::ObjectReaderPtr child = object.getChild(i)) for_each_below(*child, use);
}

/// "/a/b" of "/a/b/c", "/" of "/a"; empty of "/".
std::string parent_of(const std::string& path)
{
    if (path == "/") return {};
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == path.npos ? "/" : path.substr(0, slash);
}

} // namespace

AbcA::ObjectReaderPtr find_stored_object(AbcA::ObjectReaderPtr object, const std::string& path)
{
    for (std::size_t start = 0; object && start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (end > start) object = object->getChild(path.substr(start, end - start));
        start = end + 1;
    }
    return object;
}

std::string get_instance_source(AbcA::ObjectReader& object)
{
    if (object.getMetaData().get("isInstance") != "1") return {};
    const AbcA::CompoundPropertyReaderPtr properties = object.getProperties();
    const AbcA::PropertyHeader* const header = properties->getPropertyHeader(".instanceSource");
    const bool is_text = header && header->isScalar() && header->getDataType() == AbcA::DataType(AbcA::kStringPOD, 1);
    if (!is_text) return {};
    const AbcA::ScalarPropertyReaderPtr source = properties->getScalarProperty(".instanceSource");
    std::string path;
    if (source->getNumSamples() > 0) source->getSample(0, &path);
    return path;
}

ObjectSelection::ObjectSelection(const ArchiveSession& session, const std::vector<std::string>& paths)
    : keeps_all_(paths.empty())
{
    std::vector<std::string> sources;
    for (const std::string& path : paths)
        add(session, path, sources);
    while (!sources.empty()) {
        const std::string source = sources.back();
        sources.pop_back();
        // An instance may lead to nothing; it is then kept as it is.
        const bool is_there = session.on_object(
            source, [&] { return find_stored_object(session.get_archive().getTop().getPtr(), source) != nullptr; });
        if (is_there && whole_.count(source) == 0) add(session, source, sources);
    }
}

void ObjectSelection::add(const ArchiveSession& session, const std::string& path,
                          std::vector<std::string>& instance_sources)
{
    const AbcA::ObjectReaderPtr top = session.get_archive().getTop().getPtr();
    const AbcA::ObjectReaderPtr object = session.on_object(path, [&] { return find_stored_object(top, path); });
    if (!object) throw session.error(path, "there is no such object. 'vo_abc tree' lists all.");
    // The top object of layers has no name.
    const std::string full_name = object->getFullName().empty() ? "/" : object->getFullName();
    if (!whole_.insert(full_name).second) return;
    for (std::string above = parent_of(full_name); !above.empty(); above = parent_of(above))
        ancestors_.insert(above);
    session.on_object(path, [&] {
        for_each_below(*object, [&](AbcA::ObjectReader& below) {
            const std::string source = get_instance_source(below);
            if (!source.empty()) instance_sources.push_back(source);
        });
    });
}

bool ObjectSelection::is_kept(const std::string& path) const
{
    if (keeps_all_ || ancestors_.count(path) > 0) return true;
    for (std::string above = path; !above.empty(); above = parent_of(above))
        if (whole_.count(above) > 0) return true;
    return false;
}
