/// An archive as it is stored: objects with their properties, samples as plain arrays. Instances are not followed.
#pragma once

#include <Alembic/Abc/IArchive.h>
#include <Alembic/AbcCoreAbstract/All.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace AbcA = Alembic::AbcCoreAbstract;

/// A property of an object, whatever its kind.
class StoredProperty
{
public:
    /// Opens the property `header` of `parent`; `path` names it below its object: ".geom/P". Throws what Alembic
    /// throws.
    StoredProperty(const AbcA::CompoundPropertyReaderPtr& parent, const AbcA::PropertyHeader& header, std::string path);

    const std::string& get_path() const { return path_; }
    const AbcA::PropertyHeader& get_header() const { return header_; }
    bool is_compound() const { return header_.isCompound(); }
    bool is_string() const;                                                           ///< text, narrow or wide
    const AbcA::CompoundPropertyReaderPtr& get_compound() const { return compound_; } ///< null of all other kinds

    /// Samples that were set, repeated ones included; 0 for a compound.
    std::size_t get_sample_count() const;
    /// The archive says that no sample differs from the first.
    bool is_constant() const;
    /// Seconds.
    double get_time(std::size_t sample) const;
    /// The sample nearest to a time in seconds; there must be one.
    std::size_t find_sample(double time) const;

    /// Elements of the sample, without reading them; 1 for a scalar.
    std::uint64_t get_element_count(std::size_t sample) const;
    /// The sample as an array, a scalar as one of one element; it owns its data. Throws what Alembic throws.
    AbcA::ArraySamplePtr read(std::size_t sample) const;
    /// What identifies the contents of an array's sample without reading them; false where there is no telling.
    bool get_key(std::size_t sample, AbcA::ArraySampleKey& key) const;
    /// Whether the sample is stored as the one before it, so that it need not be looked at again.
    bool repeats(std::size_t sample) const;

private:
    std::string path_;
    AbcA::PropertyHeader header_;
    AbcA::CompoundPropertyReaderPtr compound_;
    AbcA::ScalarPropertyReaderPtr scalar_;
    AbcA::ArrayPropertyReaderPtr array_;
};

/// Where something is: an object, and a property of it, or "" for the object itself; why it cannot be read.
using StoredFailure =
    std::function<void(const std::string& object, const std::string& property, const std::string& reason)>;

/// All properties of an object, compounds before what they hold, in stored order. One that cannot be opened is given to
/// `fail` and left out.
std::vector<StoredProperty> list_stored_properties(const AbcA::ObjectReaderPtr& object, const StoredFailure& fail);

/// Calls `visit` for `top` and all objects below it, parents before children, in stored order. One that cannot be
/// opened is given to `fail`, and the walk goes on; so is one more than 1000 levels deep.
void walk_stored_objects(const AbcA::ObjectReaderPtr& top,
                         const std::function<void(const AbcA::ObjectReaderPtr&)>& visit, const StoredFailure& fail);

/// Calls `work` with a null pointer to the C++ type of a plain data type's numbers (bool_t as std::uint8_t), or of its
/// strings. False for an unknown type.
template <class Work>
bool with_stored_type(AbcA::PlainOldDataType type, Work&& work)
{
    using namespace Alembic::Util;
    // clang-format off
    switch (type) {
    case kBooleanPOD: work(static_cast<const std::uint8_t*>(nullptr)); return true;
    case kUint8POD:   work(static_cast<const std::uint8_t*>(nullptr)); return true;
    case kInt8POD:    work(static_cast<const std::int8_t*>(nullptr)); return true;
    case kUint16POD:  work(static_cast<const std::uint16_t*>(nullptr)); return true;
    case kInt16POD:   work(static_cast<const std::int16_t*>(nullptr)); return true;
    case kUint32POD:  work(static_cast<const std::uint32_t*>(nullptr)); return true;
    case kInt32POD:   work(static_cast<const std::int32_t*>(nullptr)); return true;
    case kUint64POD:  work(static_cast<const std::uint64_t*>(nullptr)); return true;
    case kInt64POD:   work(static_cast<const std::int64_t*>(nullptr)); return true;
    case kFloat16POD: work(static_cast<const float16_t*>(nullptr)); return true;
    case kFloat32POD: work(static_cast<const float*>(nullptr)); return true;
    case kFloat64POD: work(static_cast<const double*>(nullptr)); return true;
    case kStringPOD:  work(static_cast<const std::string*>(nullptr)); return true;
    case kWstringPOD: work(static_cast<const std::wstring*>(nullptr)); return true;
    default: return false;
    }
    // clang-format on
}
