/// Optional constructor arguments.
#include <Alembic/Abc/Argument.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

Arguments::Arguments(ErrorHandler::Policy policy, const AbcA::MetaData& metaData, AbcA::TimeSamplingPtr timeSampling,
                     uint32_t timeIndex, SchemaInterpMatching match, SparseFlag sparse)
    : policy_(policy)
    , meta_data_(metaData)
    , time_sampling_(std::move(timeSampling))
    , time_sampling_index_(timeIndex)
    , matching_(match)
    , sparse_(sparse)
{
}

void Argument::setInto(Arguments& args) const
{
    switch (kind_) {
    case NOTHING:
        break;
    case POLICY:
        args(value_.policy);
        break;
    case TIME_SAMPLING_INDEX:
        args(value_.time_sampling_index);
        break;
    case META_DATA:
        args(*value_.meta_data);
        break;
    case TIME_SAMPLING:
        args(*value_.time_sampling);
        break;
    case MATCHING:
        args(value_.matching);
        break;
    case SPARSE:
        args(value_.sparse);
        break;
    }
}

Arguments collect_arguments(const Argument& arg0, const Argument& arg1, const Argument& arg2, const Argument& arg3)
{
    Arguments args;
    arg0.setInto(args);
    arg1.setInto(args);
    arg2.setInto(args);
    arg3.setInto(args);
    return args;
}

AbcA::MetaData GetMetaData(const Argument& arg0, const Argument& arg1, const Argument& arg2, const Argument& arg3)
{
    return collect_arguments(arg0, arg1, arg2, arg3).getMetaData();
}

AbcA::TimeSamplingPtr GetTimeSampling(const Argument& arg0, const Argument& arg1, const Argument& arg2,
                                      const Argument& arg3)
{
    return collect_arguments(arg0, arg1, arg2, arg3).getTimeSampling();
}

uint32_t GetTimeSamplingIndex(const Argument& arg0, const Argument& arg1, const Argument& arg2, const Argument& arg3)
{
    return collect_arguments(arg0, arg1, arg2, arg3).getTimeSamplingIndex();
}

bool IsSparse(const Argument& arg0, const Argument& arg1, const Argument& arg2, const Argument& arg3)
{
    return collect_arguments(arg0, arg1, arg2, arg3).isSparse();
}

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
