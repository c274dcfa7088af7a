/// Creases of subdivision meshes.
#include "abc_input.h"

#include "read_array.h"
#include "reader_scope.h"

using namespace Alembic::AbcGeom;

bool AbcInput::load_mesh_subdiv(const AbcFileList& files, const CoreString& object_name, const double& time,
                                CoreVector<CoreString>& property_names, CoreArray<int>& crease_indices,
                                CoreArray<float>& crease_sharpnesses)
{
    const ISampleSelector selector(time, ISampleSelector::kNearIndex);
    return with_typed_object<ISubD>(files, object_name, [&](AbcInputArchiveHandle& handle, const ISubD& mesh) {
        const ISubDSchema& schema = mesh.getSchema();
        if (schema.getNumSamples() == 0) return true; // outputs stay as they are
        const IInt32ArrayProperty indices = schema.getCreaseIndicesProperty();
        const IFloatArrayProperty sharpnesses = schema.getCreaseSharpnessesProperty();
        const bool has_creases =
            indices.valid() && indices.getNumSamples() > 0 && sharpnesses.valid() && sharpnesses.getNumSamples() > 0;
        const bool is_read = has_creases && can_hold<int>(indices, element_count(indices, selector)) &&
                             can_hold<float>(sharpnesses, element_count(sharpnesses, selector)) &&
                             read_array(indices, selector, crease_indices) &&
                             read_array(sharpnesses, selector, crease_sharpnesses);
        get_property_names(handle, object_name, property_names);
        return is_read;
    });
}
