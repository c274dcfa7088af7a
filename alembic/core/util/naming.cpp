/// Standard names.
#include <Alembic/Util/Naming.h>

#include <Alembic/Util/Exception.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

namespace {

bool may_start(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool may_follow(char c)
{
    return may_start(c) || (c >= '0' && c <= '9');
}

} // namespace

bool isStandardName(const std::string& name)
{
    if (name.empty() || !may_start(name[0])) return false;
    for (const char c : name)
        if (!may_follow(c)) return false;
    return true;
}

void makeStandardName(std::string& name, char fixChar)
{
    if (!may_start(fixChar))
        ALEMBIC_THROW("makeStandardName: '" << fixChar << "' may not stand in a name: use a letter or '_'");
    if (name.empty()) {
        name = fixChar;
        return;
    }
    if (!may_start(name[0])) name[0] = fixChar;
    for (char& c : name)
        if (!may_follow(c)) c = fixChar;
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic
