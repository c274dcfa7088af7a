/// A deformation header's type, count and times.
#include "deformation_header_reading.h"

#include <algorithm>
#include <cstdint>
#include <limits>

using namespace Alembic::AbcGeom;

AbcDeformationHeader::DeformationType deformation_type_of(MeshTopologyVariance variance)
{
    switch (variance) {
    case kHomogeneousTopology:
        return AbcDeformationHeader::DEFORMATION_TYPE_HOMOGENEOUS;
    case kHeterogeneousTopology:
        return AbcDeformationHeader::DEFORMATION_TYPE_HETEROGENEOUS;
    default:
        return AbcDeformationHeader::DEFORMATION_TYPE_CONSTANT;
    }
}

void set_sample_range(AbcDeformationHeader& header, std::size_t sample_count, const TimeSampling& sampling)
{
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    header.sample_count = static_cast<std::int32_t>(std::min(sample_count, most));
    header.start_time = sample_count > 0 ? sampling.getSampleTime(0) : 0.0;
    header.end_time = sample_count > 0 ? sampling.getSampleTime(static_cast<index_t>(sample_count) - 1) : 0.0;
}
