/// AbcDeformationHeader: the names of its types.
#include "abc_deformation_header.h"

const char* AbcDeformationHeader::get_deformation_type_name(const DeformationType& type)
{
    switch (type) {
    case DEFORMATION_TYPE_CONSTANT:
        return "DEFORMATION_TYPE_CONSTANT";
    case DEFORMATION_TYPE_HOMOGENEOUS:
        return "DEFORMATION_TYPE_HOMOGENEOUS";
    case DEFORMATION_TYPE_HETEROGENEOUS:
        return "DEFORMATION_TYPE_HETEROGENEOUS";
    case DEFORMATION_TYPE_COUNT:
        return "DEFORMATION_TYPE_COUNT";
    }
    return "DEFORMATION_TYPE_UNKNOWN";
}
