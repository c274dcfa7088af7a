/// WorldMatrices: where objects stand at one time.
#pragma once

#include "archive_session.h"

#include <vo_gmath/gmath_matrix4x4.h>

#include <string>
#include <unordered_map>

/// World matrices of an archive's objects, for column vectors, at one time (seconds). Each is computed once.
class WorldMatrices
{
public:
    using Matrix = GMathMatrix4x4<double>;

    WorldMatrices(const ArchiveSession& session, double time)
        : session_(session)
        , time_(time)
    {
    }

    /// That of the object of a full name: the product of the transforms from the top down to it, itself included. A
    /// transform that does not inherit starts afresh. Throws ToolError for a transform that cannot be read.
    const Matrix& get(const std::string& object_path);

private:
    Matrix compute(const std::string& object_path);

    const ArchiveSession& session_;
    const double time_;
    std::unordered_map<std::string, Matrix> matrices_;
};
