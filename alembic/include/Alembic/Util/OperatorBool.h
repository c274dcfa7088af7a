/// Makes a class testable: `if (x)`, `!x`, `return x;` in a function returning bool, but never `int i = x;`.
#pragma once

#include <Alembic/Util/Foundation.h>

namespace Alembic {
namespace Util {
inline namespace ALEMBIC_VERSION_NS {

/// A pointer to this member converts to bool and to nothing else. One type for all classes, so that a derived class's
/// conversion hides the inherited one.
struct TestableAs
{
    int truth;
};
using TestResult = int TestableAs::*;

} // namespace ALEMBIC_VERSION_NS
} // namespace Util
} // namespace Alembic

/// Inside a class: an object is true when `EXPRESSION` is.
#define ALEMBIC_OPERATOR_BOOL(EXPRESSION)                                                                              \
    operator ::Alembic::Util::TestResult() const                                                                       \
    {                                                                                                                  \
        return (EXPRESSION) ? &::Alembic::Util::TestableAs::truth : nullptr;                                           \
    }                                                                                                                  \
    bool operator!() const                                                                                             \
    {                                                                                                                  \
        return !(EXPRESSION);                                                                                          \
    }

/// The same in a derived class, in place of the inherited test.
#define ALEMBIC_OVERRIDE_OPERATOR_BOOL(EXPRESSION) ALEMBIC_OPERATOR_BOOL(EXPRESSION)
