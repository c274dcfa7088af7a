/// Filling a deformation header from a schema's variance and samples; the same for meshes, curves and points.
#pragma once

#include "abc_deformation_header.h"

#include <Alembic/AbcGeom/All.h>

#include <cstddef>

/// The header's type for Alembic's answer; any answer that is none of its three is taken as constant.
AbcDeformationHeader::DeformationType deformation_type_of(Alembic::AbcGeom::MeshTopologyVariance variance);

/// Sets count, start and end time. Without samples: count 0, both times 0.0.
void set_sample_range(AbcDeformationHeader& header, std::size_t sample_count,
                      const Alembic::AbcGeom::TimeSampling& sampling);
