/// Reading and writing `token=value;token=value`.
#include <Alembic/Util/TokenMap.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

namespace {

// Calls add(token, value) for each pair of `config`, in order. A piece without an assign separator ends the reading, as
// it does for every reader of such texts.
template <class ADD>
void for_each_pair(const std::string& config, char pair_separator, char assign_separator, ADD add)
{
    size_t position = 0;
    for (;;) {
        const size_t pair_end = config.find(pair_separator, position);
        const size_t assign = config.find(assign_separator, position);
        if (assign == std::string::npos || assign > pair_end) return;
        const size_t value_end = pair_end == std::string::npos ? config.size() : pair_end;
        add(config.substr(position, assign - position), config.substr(assign + 1, value_end - assign - 1));
        if (pair_end == std::string::npos) return;
        position = pair_end + 1;
    }
}

} // namespace

TokenMap::TokenMap(const std::string& config, char pairSeparator, char assignSeparator, bool unique, bool quiet)
{
    if (unique)
        setUnique(config, pairSeparator, assignSeparator, quiet);
    else
        set(config, pairSeparator, assignSeparator);
}

void TokenMap::set(const std::string& config, char pairSeparator, char assignSeparator)
{
    for_each_pair(config, pairSeparator, assignSeparator,
                  [this](std::string&& token, std::string&& value) { pairs_[token] = std::move(value); });
}

void TokenMap::setUnique(const std::string& config, char pairSeparator, char assignSeparator, bool quiet)
{
    for_each_pair(config, pairSeparator, assignSeparator, [this, quiet](std::string&& token, std::string&& value) {
        const bool is_new = pairs_.emplace(token, std::move(value)).second;
        if (!is_new && !quiet) ALEMBIC_THROW("TokenMap::setUnique: the token " << token << " exists already");
    });
}

std::string TokenMap::get(char pairSeparator, char assignSeparator, bool check) const
{
    const auto has_separator = [=](const std::string& text) {
        return text.find(pairSeparator) != std::string::npos || text.find(assignSeparator) != std::string::npos;
    };
    std::string config;
    for (const auto& [token, value] : pairs_) {
        if (value.empty()) continue;
        if (check && (has_separator(token) || has_separator(value)))
            ALEMBIC_THROW("TokenMap::get: Token-Value pair  contains separator characters: "
                          << pairSeparator << " or " << assignSeparator << " for " << token << " or " << value);
        if (!config.empty()) config += pairSeparator;
        config.append(token).append(1, assignSeparator).append(value);
    }
    return config;
}

std::string TokenMap::value(const std::string& token) const
{
    const const_iterator found = pairs_.find(token);
    return found == pairs_.end() ? std::string() : found->second;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
