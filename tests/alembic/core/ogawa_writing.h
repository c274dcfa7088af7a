/// What the tests of the Ogawa writer share: data types, archives written to memory, error texts.
#pragma once

#include "raw_archive.h"

#include <Alembic/AbcCoreOgawa/ReadWrite.h>

#include <sstream>
#include <string>
#include <vector>

namespace AbcA = Alembic::AbcCoreAbstract;

inline const AbcA::DataType int_type(AbcA::kInt32POD);
inline const AbcA::DataType point_type(AbcA::kFloat32POD, 3);
inline const AbcA::DataType string_type(AbcA::kStringPOD);
inline const AbcA::DataType wide_string_type(AbcA::kWstringPOD);

/// The text of the exception that `operation` throws, "" when it throws none.
template <class Operation>
std::string error_of(Operation operation)
{
    try {
        operation();
    } catch (const Alembic::Util::Exception& exception) {
        return exception.what();
    }
    return "";
}

/// Runs `write` with the archive's top object and gives the stored bytes.
template <class Operation>
RawArchive written_by(Operation write, const AbcA::MetaData& metadata = AbcA::MetaData())
{
    std::stringstream stream;
    write(Alembic::AbcCoreOgawa::WriteArchive()(&stream, metadata)->getTop());
    return RawArchive(stream.str());
}

/// A view of `values`, which must outlive it.
template <class T>
AbcA::ArraySample array_of(const std::vector<T>& values, const AbcA::DataType& type)
{
    return AbcA::ArraySample(values.data(), type, AbcA::Dimensions(values.size() / type.getExtent()));
}
