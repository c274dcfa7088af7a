/// Transforms at a time: as a matrix, and decomposed.
#include "abc_input.h"

#include "abc_internal.h"
#include "abc_pivot_data.h"
#include "reader_scope.h"

using namespace Alembic::AbcGeom;

bool AbcInput::evaluate_pivot_matrix(const AbcInputArchiveHandle& handle, const double& time,
                                     GMathMatrix4x4<double>& matrix)
{
    return with_handle_object<IXform>(handle, [&](const IXform& xform) {
        matrix = AbcInternal::get_xform_matrix(xform.getSchema(), time, nullptr);
        return true;
    });
}

bool AbcInput::evaluate_pivot_data(const AbcInputArchiveHandle& handle, const double& time, AbcPivotData& pivot_data)
{
    return with_handle_object<IXform>(handle, [&](const IXform& xform) {
        pivot_data = AbcInternal::get_xform_transform(xform.getSchema(), time);
        return true;
    });
}

bool AbcInput::get_pivot_data(const AbcFileList& files, const CoreString& object_name, AbcPivotData& pivot_data)
{
    return with_typed_object<IXform>(files, object_name, [&](const AbcInputArchiveHandle&, const IXform& xform) {
        const IXformSchema& schema = xform.getSchema();
        pivot_data = AbcInternal::get_xform_transform(schema, schema.getTimeSampling()->getSampleTime(0));
        return true;
    });
}
