/// A sorted dictionary of strings that is written as `token=value;token=value`.
#pragma once

#include <Alembic/Util/Exception.h>
#include <Alembic/Util/Foundation.h>

#include <map>
#include <string>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

class ALEMBIC_EXPORT TokenMap
{
public:
    typedef std::map<std::string, std::string> map_type;
    typedef map_type::value_type value_type;
    typedef map_type::iterator iterator;
    typedef map_type::const_iterator const_iterator;
    typedef map_type::reverse_iterator reverse_iterator;
    typedef map_type::const_reverse_iterator const_reverse_iterator;

    TokenMap() = default;
    /// Parses `config`: setUnique() when `unique`, else set().
    explicit TokenMap(const std::string& config, char pairSeparator = ';', char assignSeparator = '=',
                      bool unique = false, bool quiet = true);

    /// Adds every pair of `config`, overwriting. A value may contain the assign separator; a piece without one ends the
    /// reading, and what follows it is ignored.
    void set(const std::string& config, char pairSeparator = ';', char assignSeparator = '=');

    /// Adds the pairs whose token is new. One that exists is left alone when `quiet`, else throws.
    void setUnique(const std::string& config, char pairSeparator = ';', char assignSeparator = '=', bool quiet = true);

    /// All pairs with a value that is not empty, sorted by token. With `check`, throws for a token or value that
    /// contains a separator, since the text could not be read back.
    std::string get(char pairSeparator = ';', char assignSeparator = '=', bool check = false) const;

    void clear() { pairs_.clear(); }
    size_t size() const { return pairs_.size(); }
    bool tokenExists(const std::string& token) const { return pairs_.count(token) != 0; }

    /// The token's value, "" when there is none.
    std::string value(const std::string& token) const;
    std::string operator[](const std::string& token) const { return value(token); }

    /// Adds or overwrites one pair.
    void setValue(const std::string& keyStr, const std::string& valueStr) { pairs_[keyStr] = valueStr; }

    iterator begin() { return pairs_.begin(); }
    const_iterator begin() const { return pairs_.begin(); }
    iterator end() { return pairs_.end(); }
    const_iterator end() const { return pairs_.end(); }
    reverse_iterator rbegin() { return pairs_.rbegin(); }
    const_reverse_iterator rbegin() const { return pairs_.rbegin(); }
    reverse_iterator rend() { return pairs_.rend(); }
    const_reverse_iterator rend() const { return pairs_.rend(); }

    /// The pair with this token, or end().
    const_iterator find(const std::string& token) const { return pairs_.find(token); }

    /// The same tokens with the same values.
    bool exactMatch(const TokenMap& other) const { return pairs_ == other.pairs_; }

private:
    map_type pairs_;
};

inline bool operator==(const TokenMap& a, const TokenMap& b)
{
    return a.exactMatch(b);
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
