/// The user properties and arbitrary geometry parameters of an object: listed, and found by name.
#pragma once

#include <Alembic/AbcGeom/All.h>

#include <functional>
#include <string>

/// One property that can be loaded.
struct UserProperty
{
    std::string name;                         ///< "compound.property" inside compounds
    Alembic::Abc::ICompoundProperty parent;   ///< where it is stored
    Alembic::Abc::PropertyHeader header;      ///< its own; of a compound when it is indexed
    Alembic::Abc::ICompoundProperty elements; ///< of an indexed parameter: where .vals and .indices are; else invalid
    bool is_parameter = false;                ///< a geometry parameter: it has a scope

    bool is_indexed() const { return elements.valid(); }
    /// Header of what holds the values: of .vals when it is indexed.
    Alembic::Abc::PropertyHeader value_header() const;
    /// Values of an array property, invalid for a scalar one; indices, invalid unless it is indexed.
    Alembic::Abc::IArrayProperty values() const;
    Alembic::Abc::IArrayProperty indices() const;
};

/// Calls `visit` for every property of the object that can be loaded: user properties, then arbitrary geometry
/// parameters, each in stored order, compounds flattened. A name may come twice; the first one counts. `visit` returns
/// false to stop. The caller holds the archive's lock. Alembic's exceptions pass.
void walk_user_properties(const Alembic::Abc::IObject& object, const std::function<bool(const UserProperty&)>& visit);

/// The first property of that name; false, `found` untouched, when there is none.
bool find_user_property(const Alembic::Abc::IObject& object, const std::string& name, UserProperty& found);
