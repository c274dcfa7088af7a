/// AbcCurveHeader: the names of its types.
#include "abc_curve_header.h"

const char* AbcCurveHeader::get_basis_type_name(const BasisType& type)
{
    switch (type) {
    case BASIS_TYPE_NONE:
        return "BASIS_TYPE_NONE";
    case BASIS_TYPE_BEZIER:
        return "BASIS_TYPE_BEZIER";
    case BASIS_TYPE_BSPLINE:
        return "BASIS_TYPE_BSPLINE";
    case BASIS_TYPE_CATMULLROM:
        return "BASIS_TYPE_CATMULLROM";
    case BASIS_TYPE_HERMITE:
        return "BASIS_TYPE_HERMITE";
    case BASIS_TYPE_POWER:
        return "BASIS_TYPE_POWER";
    case BASIS_TYPE_COUNT:
        return "BASIS_TYPE_COUNT";
    }
    return "BASIS_TYPE_UNKNOWN";
}

const char* AbcCurveHeader::get_curve_type_name(const CurveType& type)
{
    switch (type) {
    case CURVE_TYPE_CUBIC:
        return "CURVE_TYPE_CUBIC";
    case CURVE_TYPE_LINEAR:
        return "CURVE_TYPE_LINEAR";
    case CURVE_TYPE_VARIABLE_ORDER:
        return "CURVE_TYPE_VARIABLE_ORDER";
    case CURVE_TYPE_COUNT:
        return "CURVE_TYPE_COUNT";
    }
    return "CURVE_TYPE_UNKNOWN";
}

const char* AbcCurveHeader::get_periodicity_type_name(const PeriodicityType& type)
{
    switch (type) {
    case PERIODICITY_TYPE_NON_PERIODIC:
        return "PERIODICITY_TYPE_NON_PERIODIC";
    case PERIODICITY_TYPE_PERIODIC:
        return "PERIODICITY_TYPE_PERIODIC";
    case PERIODICITY_TYPE_COUNT:
        return "PERIODICITY_TYPE_COUNT";
    }
    return "PERIODICITY_TYPE_UNKNOWN";
}
