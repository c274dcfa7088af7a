/// Optional constructor arguments in any order: policy, time sampling, metadata, matching, sparseness.
#pragma once

#include <Alembic/Abc/Base.h>
#include <Alembic/Abc/Foundation.h>

namespace Alembic {
namespace Abc {
inline namespace ALEMBIC_VERSION_NS {

/// What a list of arguments adds up to; later ones win over earlier ones of the same kind.
class ALEMBIC_EXPORT Arguments
{
public:
    Arguments(ErrorHandler::Policy policy = ErrorHandler::kThrowPolicy,
              const AbcA::MetaData& metaData = AbcA::MetaData(),
              AbcA::TimeSamplingPtr timeSampling = AbcA::TimeSamplingPtr(), uint32_t timeIndex = 0,
              SchemaInterpMatching match = kNoMatching, SparseFlag sparse = kFull);

    void operator()(const uint32_t& timeSamplingIndex) { time_sampling_index_ = timeSamplingIndex; }
    void operator()(const ErrorHandler::Policy& policy) { policy_ = policy; }
    void operator()(const AbcA::MetaData& metaData) { meta_data_ = metaData; }
    void operator()(const AbcA::TimeSamplingPtr& timeSampling) { time_sampling_ = timeSampling; }
    void operator()(const SchemaInterpMatching& matching) { matching_ = matching; }
    void operator()(const SparseFlag& sparse) { sparse_ = sparse; }

    ErrorHandler::Policy getErrorHandlerPolicy() const { return policy_; }
    const AbcA::MetaData& getMetaData() const { return meta_data_; }
    /// Null when none was given; otherwise it wins over the index.
    AbcA::TimeSamplingPtr getTimeSampling() const { return time_sampling_; }
    uint32_t getTimeSamplingIndex() const { return time_sampling_index_; }
    SchemaInterpMatching getSchemaInterpMatching() const { return matching_; }
    bool isSparse() const { return sparse_ == kSparse; }

private:
    ErrorHandler::Policy policy_;
    AbcA::MetaData meta_data_;
    AbcA::TimeSamplingPtr time_sampling_;
    uint32_t time_sampling_index_;
    SchemaInterpMatching matching_;
    SparseFlag sparse_;
};

/// One argument. Refers to metadata and time samplings instead of copying them: it lives for one expression only.
class ALEMBIC_EXPORT Argument
{
public:
    Argument()
        : kind_(NOTHING)
    {
        value_.time_sampling_index = 0;
    }
    Argument(ErrorHandler::Policy policy)
        : kind_(POLICY)
    {
        value_.policy = policy;
    }
    Argument(uint32_t timeSamplingIndex)
        : kind_(TIME_SAMPLING_INDEX)
    {
        value_.time_sampling_index = timeSamplingIndex;
    }
    Argument(const AbcA::MetaData& metaData)
        : kind_(META_DATA)
    {
        value_.meta_data = &metaData;
    }
    Argument(const AbcA::TimeSamplingPtr& tsPtr)
        : kind_(TIME_SAMPLING)
    {
        value_.time_sampling = &tsPtr;
    }
    Argument(SchemaInterpMatching match)
        : kind_(MATCHING)
    {
        value_.matching = match;
    }
    Argument(SparseFlag sparse)
        : kind_(SPARSE)
    {
        value_.sparse = sparse;
    }

    /// Says what it has to say; the default argument says nothing.
    void setInto(Arguments& args) const;

    /// The policy it holds, else the one given.
    ErrorHandler::Policy policy_or(ErrorHandler::Policy other) const { return kind_ == POLICY ? value_.policy : other; }
    /// The matching it holds, else the one given.
    SchemaInterpMatching matching_or(SchemaInterpMatching other) const
    {
        return kind_ == MATCHING ? value_.matching : other;
    }

private:
    enum Kind { NOTHING, POLICY, TIME_SAMPLING_INDEX, META_DATA, TIME_SAMPLING, MATCHING, SPARSE };
    union Value {
        ErrorHandler::Policy policy;
        uint32_t time_sampling_index;
        const AbcA::MetaData* meta_data;
        const AbcA::TimeSamplingPtr* time_sampling;
        SchemaInterpMatching matching;
        SparseFlag sparse;
    };

    Kind kind_;
    Value value_;
};

/// What the arguments add up to, starting from the defaults.
ALEMBIC_EXPORT Arguments collect_arguments(const Argument& arg0, const Argument& arg1 = Argument(),
                                           const Argument& arg2 = Argument(), const Argument& arg3 = Argument());

/// The policy of a handle, reader or writer, unless an argument tells another.
template <class T>
ErrorHandler::Policy GetErrorHandlerPolicy(const T& thing, const Argument& arg0, const Argument& arg1 = Argument(),
                                           const Argument& arg2 = Argument(), const Argument& arg3 = Argument())
{
    const ErrorHandler::Policy own = GetErrorHandlerPolicy(thing);
    return arg3.policy_or(arg2.policy_or(arg1.policy_or(arg0.policy_or(own))));
}

/// What the arguments say of one subject, or its default.
inline ErrorHandler::Policy GetErrorHandlerPolicyFromArgs(const Argument& arg0, const Argument& arg1 = Argument(),
                                                          const Argument& arg2 = Argument(),
                                                          const Argument& arg3 = Argument())
{
    return arg3.policy_or(arg2.policy_or(arg1.policy_or(arg0.policy_or(ErrorHandler::kThrowPolicy))));
}
inline SchemaInterpMatching GetSchemaInterpMatching(const Argument& arg0, const Argument& arg1 = Argument(),
                                                    const Argument& arg2 = Argument(),
                                                    const Argument& arg3 = Argument())
{
    return arg3.matching_or(arg2.matching_or(arg1.matching_or(arg0.matching_or(kNoMatching))));
}
ALEMBIC_EXPORT AbcA::MetaData GetMetaData(const Argument& arg0, const Argument& arg1 = Argument(),
                                          const Argument& arg2 = Argument(), const Argument& arg3 = Argument());
ALEMBIC_EXPORT AbcA::TimeSamplingPtr GetTimeSampling(const Argument& arg0, const Argument& arg1 = Argument(),
                                                     const Argument& arg2 = Argument(),
                                                     const Argument& arg3 = Argument());
ALEMBIC_EXPORT uint32_t GetTimeSamplingIndex(const Argument& arg0, const Argument& arg1 = Argument(),
                                             const Argument& arg2 = Argument(), const Argument& arg3 = Argument());
ALEMBIC_EXPORT bool IsSparse(const Argument& arg0, const Argument& arg1 = Argument(), const Argument& arg2 = Argument(),
                             const Argument& arg3 = Argument());

} // namespace ALEMBIC_VERSION_NS
} // namespace Abc
} // namespace Alembic
