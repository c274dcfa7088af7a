/// Whether an object is visible at a time.
#include "abc_input.h"

#include "reader_scope.h"

using namespace Alembic::AbcGeom;

bool AbcInput::is_object_visible_at(AbcInputArchiveHandle& handle, const double& time)
{
    const std::shared_ptr<IObject> object = share_alembic_object(handle);
    if (!object || !object->valid()) return true;
    return !IsAncestorInvisible(*object, ISampleSelector(time, ISampleSelector::kNearIndex));
}
