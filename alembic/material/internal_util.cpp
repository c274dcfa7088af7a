/// Names joined by dots, and dictionaries stored as arrays of strings.
#include <Alembic/AbcMaterial/InternalUtil.h>

#include <set>

namespace Alembic {
namespace AbcMaterial {
inline namespace ALEMBIC_VERSION_NS {

void require_text(const std::string& text)
{
    if (text.find('\0') != std::string::npos)
        ABCA_THROW("'" << text.c_str() << "...' cannot be stored in a material: it holds a zero character");
}

std::string join_names(const std::string& first, const std::string& second)
{
    require_text(first);
    require_text(second);
    if (first.empty() || first.find('.') != std::string::npos)
        ABCA_THROW("'" << first << "' cannot name a target or node of a material: it must not be empty or hold a dot");
    return second.empty() ? first : first + "." + second;
}

std::pair<std::string, std::string> split_names(const std::string& joined)
{
    const size_t dot = joined.find('.');
    if (dot == std::string::npos) return {joined, std::string()};
    return {joined.substr(0, dot), joined.substr(dot + 1)};
}

Dictionary read_dictionary(const Abc::ICompoundProperty& parent, const std::string& name)
{
    Dictionary dictionary;
    const AbcA::PropertyHeader* header = parent.getPropertyHeader(name);
    if (!header || !Abc::IStringArrayProperty::matches(*header)) return dictionary;
    const Abc::IStringArrayProperty property(parent, name);
    if (property.getNumSamples() == 0) return dictionary;
    const Abc::StringArraySamplePtr words = property.getValue();
    for (size_t i = 1; i < words->size(); i += 2)
        dictionary[(*words)[i - 1]] = (*words)[i];
    return dictionary;
}

void write_dictionary(const AbcA::CompoundPropertyWriterPtr& parent, const std::string& name,
                      const Dictionary& dictionary)
{
    if (dictionary.empty()) return;
    std::vector<std::string> words;
    for (const auto& [key, value] : dictionary) {
        words.push_back(key);
        words.push_back(value);
    }
    Abc::OStringArrayProperty(parent, name).set(Abc::StringArraySample(words));
}

std::vector<std::string> first_names(const Dictionary& dictionary)
{
    std::set<std::string> names;
    for (const auto& entry : dictionary)
        names.insert(split_names(entry.first).first);
    return {names.begin(), names.end()};
}

std::vector<std::string> second_names(const Dictionary& dictionary, const std::string& first)
{
    std::set<std::string> names;
    for (const auto& entry : dictionary) {
        const auto [target, type] = split_names(entry.first);
        if (target == first) names.insert(type);
    }
    return {names.begin(), names.end()};
}

Abc::ICompoundProperty compound_if_any(const Abc::ICompoundProperty& parent, const std::string& name)
{
    const AbcA::PropertyHeader* header = parent.getPropertyHeader(name);
    if (!header || !header->isCompound()) return Abc::ICompoundProperty();
    return Abc::ICompoundProperty(parent, name);
}

bool read_text(const Abc::ICompoundProperty& parent, const std::string& name, std::string& result)
{
    const AbcA::PropertyHeader* header = parent.getPropertyHeader(name);
    if (!header || !Abc::IStringProperty::matches(*header)) return false;
    const Abc::IStringProperty property(parent, name);
    if (property.getNumSamples() == 0) return false;
    result = property.getValue();
    return true;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcMaterial
} // namespace Alembic
