/// What is known of an object without opening it.
#pragma once

#include <Alembic/AbcCoreAbstract/Foundation.h>
#include <Alembic/AbcCoreAbstract/MetaData.h>

#include <string>

namespace Alembic {
namespace AbcCoreAbstract {
inline namespace ALEMBIC_VERSION_NS {

/// Name, full name from the archive's top (`/a/b`; the top itself is `ABC` and `/`), metadata.
class ObjectHeader
{
public:
    ObjectHeader() = default;
    ObjectHeader(const std::string& name, const MetaData& metaData)
        : name_(name)
        , meta_data_(metaData)
    {
    }
    ObjectHeader(const std::string& name, const std::string& fullName, const MetaData& metaData)
        : name_(name)
        , full_name_(fullName)
        , meta_data_(metaData)
    {
    }

    const std::string& getName() const { return name_; }
    void setName(const std::string& name) { name_ = name; }

    const std::string& getFullName() const { return full_name_; }
    void setFullName(const std::string& fullName) { full_name_ = fullName; }

    const MetaData& getMetaData() const { return meta_data_; }
    MetaData& getMetaData() { return meta_data_; }

private:
    std::string name_;
    std::string full_name_;
    MetaData meta_data_;
};

} // namespace ALEMBIC_VERSION_NS
} // namespace AbcCoreAbstract
} // namespace Alembic
