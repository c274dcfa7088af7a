/// What curves carry beside their shape: radii, texture coordinates, colours and normals.
#pragma once

#include "abc_curve_header.h"

#include <Alembic/AbcGeom/All.h>

/// Fills `radii` and `radius_indices`: half the schema's widths, else ".radius" of the schema, else ".radius" among the
/// arbitrary geometry parameters. Both are empty where there is no such parameter, or an index leads beyond its values.
void read_curve_radii(const Alembic::AbcGeom::ICurvesSchema& schema, const Alembic::Abc::ISampleSelector& selector,
                      AbcCurveHeader& header);

/// Fills `uv_maps` with the schema's texture coordinates. Untouched without values, or when an index leads beyond them.
void read_curve_uvs(const Alembic::AbcGeom::ICurvesSchema& schema, const Alembic::Abc::ISampleSelector& selector,
                    AbcCurveHeader& header);

/// Fills `color_maps` with ".color" of the schema, else ".color" among the arbitrary geometry parameters: four floats a
/// colour, whatever their interpretation; 1.0 is 255. Untouched without values, or when an index leads beyond them.
void read_curve_colors(const Alembic::AbcGeom::ICurvesSchema& schema, const Alembic::Abc::ISampleSelector& selector,
                       AbcCurveHeader& header);
