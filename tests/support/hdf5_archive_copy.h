/// @file
/// Writes what any archive holds as an HDF5 archive, in the layout of the older back end.
#pragma once

#include "stored_values.h"

#include <Alembic/AbcCoreAbstract/All.h>
#include <hdf5.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace hdf5_archives {

namespace AbcA = Alembic::AbcCoreAbstract;
using stored_values::store;
using stored_values::StoredValues;

/// An open thing of libhdf5.
class Id
{
public:
    Id(hid_t id, herr_t (*close)(hid_t))
        : id_(id)
        , close_(close)
    {
        if (id < 0) throw std::runtime_error("libhdf5 could not make something for a test");
    }
    ~Id() { close_(id_); }
    Id(const Id&) = delete;
    Id& operator=(const Id&) = delete;
    operator hid_t() const { return id_; }

private:
    const hid_t id_;
    herr_t (*const close_)(hid_t);
};

inline void check(herr_t result)
{
    if (result < 0) throw std::runtime_error("libhdf5 refused something that a test needs");
}

/// A row of values, or a single one.
inline hid_t make_space(std::size_t count, bool single = false)
{
    if (single) return H5Screate(H5S_SCALAR);
    const hsize_t extent = count;
    return count > 0 ? H5Screate_simple(1, &extent, nullptr) : H5Screate(H5S_NULL);
}

inline void write_attribute(hid_t owner, const std::string& name, hid_t type, hid_t memory_type, const void* values,
                            std::size_t count, bool single = false)
{
    const Id space(make_space(count, single), H5Sclose);
    const Id attribute(H5Acreate2(owner, name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    if (count > 0) check(H5Awrite(attribute, memory_type, values));
}

inline void write_words(hid_t owner, const std::string& name, const std::vector<std::uint32_t>& words)
{
    write_attribute(owner, name, H5T_STD_U32LE, H5T_NATIVE_UINT32, words.data(), words.size());
}

/// A string that fills its attribute: there is no room for a closing zero.
inline void write_string(hid_t owner, const std::string& name, const std::string& text)
{
    const Id type(H5Tcopy(H5T_C_S1), H5Tclose);
    check(H5Tset_size(type, std::max<std::size_t>(1, text.size())));
    write_attribute(owner, name, type, type, text.c_str(), 1, true);
}

inline void write_metadata(hid_t owner, const std::string& name, const AbcA::MetaData& metadata)
{
    const std::string text = metadata.serialize();
    if (!text.empty()) write_string(owner, name, text);
}

/// The type of the stored values of a POD; that of characters for texts.
inline hid_t make_type(AbcA::PlainOldDataType pod, bool in_memory)
{
    const hid_t in_file[] = {H5T_STD_U8LE,   H5T_STD_U8LE,   H5T_STD_I8LE,  H5T_STD_U16LE, H5T_STD_I16LE,
                             H5T_STD_U32LE,  H5T_STD_I32LE,  H5T_STD_U64LE, H5T_STD_I64LE, H5T_IEEE_F32LE,
                             H5T_IEEE_F32LE, H5T_IEEE_F64LE, H5T_STD_I8LE,  H5T_STD_I32LE};
    const hid_t here[] = {H5T_NATIVE_UINT8,  H5T_NATIVE_UINT8,  H5T_NATIVE_INT8,   H5T_NATIVE_UINT16, H5T_NATIVE_INT16,
                          H5T_NATIVE_UINT32, H5T_NATIVE_INT32,  H5T_NATIVE_UINT64, H5T_NATIVE_INT64,  H5T_NATIVE_FLOAT,
                          H5T_NATIVE_FLOAT,  H5T_NATIVE_DOUBLE, H5T_NATIVE_INT8,   H5T_NATIVE_INT32};
    const hid_t type = H5Tcopy((in_memory ? here : in_file)[pod]);
    if (pod == AbcA::kBooleanPOD) check(H5Tset_precision(type, 1));
    if (pod == AbcA::kFloat16POD) {
        check(H5Tset_fields(type, 15, 10, 5, 0, 10));
        check(H5Tset_size(type, 2));
    }
    return type;
}

/// How an archive is stored.
enum class Form {
    USUAL,    ///< as the older back end stores it
    DEFLATED, ///< data sets are chunked, too
    DENSE,    ///< links and attributes lie in heaps, found through trees, however few there are
    LATEST,   ///< the latest form of everything
};

/// Copies one archive.
class ArchiveCopy
{
public:
    ArchiveCopy(AbcA::ArchiveReader& source, const std::string& path, Form form)
        : source_(source)
        , form_(form)
    {
        const Id access(H5Pcreate(H5P_FILE_ACCESS), H5Pclose);
        if (form == Form::LATEST) check(H5Pset_libver_bounds(access, H5F_LIBVER_LATEST, H5F_LIBVER_LATEST));
        const Id file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, access), H5Fclose);
        const std::int32_t version = -8, release = 10812;
        write_attribute(file, "abc_version", H5T_STD_I32LE, H5T_NATIVE_INT32, &version, 1);
        write_attribute(file, "abc_release_version", H5T_STD_I32LE, H5T_NATIVE_INT32, &release, 1);
        write_time_samplings(file);
        write_object(file, "ABC", *source.getTop());
    }

private:
    void write_time_samplings(hid_t root)
    {
        std::vector<std::int64_t> most;
        for (std::uint32_t i = 0; i < source_.getNumTimeSamplings(); ++i) {
            most.push_back(source_.getMaxNumSamplesForTimeSamplingIndex(i));
            if (i == 0) continue; // the identity
            const AbcA::TimeSampling& sampling = *source_.getTimeSampling(i);
            const AbcA::TimeSamplingType type = sampling.getTimeSamplingType();
            const std::string number = std::to_string(i);
            const double per_cycle = type.getTimePerCycle();
            const std::uint32_t samples = type.getNumSamplesPerCycle();
            if (!type.isAcyclic())
                write_attribute(root, number + ".ttpc", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, &per_cycle, 1, true);
            if (!type.isUniform())
                write_attribute(root, number + ".tspc", H5T_STD_U32LE, H5T_NATIVE_UINT32, &samples, 1, true);
            const std::vector<double>& times = sampling.getStoredTimes();
            write_attribute(root, number + ".time", H5T_IEEE_F64LE, H5T_NATIVE_DOUBLE, times.data(), times.size());
        }
        write_attribute(root, "abc_max_samples", H5T_STD_I64LE, H5T_NATIVE_INT64, most.data(), most.size());
    }

    hid_t make_group(hid_t parent, const std::string& name, bool is_object) const
    {
        const Id creation(H5Pcreate(H5P_GROUP_CREATE), H5Pclose);
        constexpr unsigned in_order = H5P_CRT_ORDER_TRACKED | H5P_CRT_ORDER_INDEXED;
        if (is_object || form_ == Form::DENSE) check(H5Pset_link_creation_order(creation, in_order));
        if (form_ == Form::DENSE) {
            check(H5Pset_link_phase_change(creation, 0, 0));
            check(H5Pset_attr_creation_order(creation, in_order));
            check(H5Pset_attr_phase_change(creation, 0, 0));
        }
        return H5Gcreate2(parent, name.c_str(), H5P_DEFAULT, creation, H5P_DEFAULT);
    }

    void write_object(hid_t parent, const std::string& name, AbcA::ObjectReader& object)
    {
        const Id group(make_group(parent, name, true), H5Gclose);
        write_words(group, ".prop.info", {0});
        write_metadata(group, ".prop.meta", object.getMetaData());
        write_compound(group, ".prop", *object.getProperties());
        for (std::size_t i = 0; i < object.getNumChildren(); ++i)
            write_object(group, object.getChildHeader(i).getName(), *object.getChild(i));
    }

    void write_compound(hid_t parent, const std::string& name, AbcA::CompoundPropertyReader& compound)
    {
        if (compound.getNumProperties() == 0) return;
        const Id group(make_group(parent, name, false), H5Gclose);
        for (std::size_t i = 0; i < compound.getNumProperties(); ++i) {
            const AbcA::PropertyHeader& header = compound.getPropertyHeader(i);
            write_metadata(group, header.getName() + ".meta", header.getMetaData());
            if (header.isCompound()) {
                write_words(group, header.getName() + ".info", {0});
                write_compound(group, header.getName(), *compound.getCompoundProperty(i));
            } else if (header.isScalar()) {
                write_scalar(group, *compound.getScalarProperty(i));
            } else {
                write_array(group, *compound.getArrayProperty(i));
            }
        }
    }

    /// Writes a property's header, and calls `write(holder, name, index)` for each sample that is stored. `changed[i]`
    /// tells whether sample i differs from the one before.
    template <class Write>
    void write_samples(hid_t group, const AbcA::PropertyHeader& header, std::uint32_t kind,
                       const std::vector<bool>& changed, const Write& write)
    {
        const auto count = static_cast<std::uint32_t>(changed.size());
        std::uint32_t first = 0, last = 0;
        for (std::uint32_t i = 1; i < count; ++i) {
            if (!changed[i]) continue;
            if (first == 0) first = i;
            last = i;
        }
        const bool no_repeats = count > 1 && first == 1 && last == count - 1;
        std::uint32_t sampling = 0;
        while (source_.getTimeSampling(sampling) != header.getTimeSampling())
            ++sampling;
        const AbcA::DataType& type = header.getDataType();
        std::vector<std::uint32_t> words = {kind | std::uint32_t(type.getPod()) << 2 | (sampling > 0 ? 0x40u : 0u) |
                                            (no_repeats ? 0x80u : 0u) | std::uint32_t(type.getExtent()) << 8};
        if (count > 1) words.push_back(count);
        if (count > 1 && !no_repeats && first > 0) words.insert(words.end(), {first, last});
        if (sampling > 0) words.push_back(sampling);
        write_words(group, header.getName() + ".info", words);

        if (count > 0) write(group, header.getName() + ".smp0", 0);
        if (first == 0) return;
        const Id later(make_group(group, header.getName() + ".smpi", false), H5Gclose);
        for (std::uint32_t i = first; i <= last; ++i) {
            const std::string digits = std::to_string(i);
            write(later, std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits, i);
        }
    }

    void write_scalar(hid_t group, AbcA::ScalarPropertyReader& property)
    {
        const AbcA::DataType& type = property.getDataType();
        const AbcA::ArraySamplePtr value = AbcA::AllocateArraySample(type, AbcA::Dimensions(1));
        std::vector<StoredValues> samples;
        std::vector<bool> changed;
        for (std::size_t i = 0; i < property.getNumSamples(); ++i) {
            property.getSample(static_cast<AbcA::index_t>(i), const_cast<void*>(value->getData()));
            samples.push_back(store(type, value->getData(), 1));
            changed.push_back(i == 0 || !(samples[i] == samples[i - 1]));
        }
        write_samples(
            group, property.getHeader(), 1, changed, [&](hid_t holder, const std::string& name, std::size_t i) {
                if (type.getPod() == AbcA::kStringPOD && type.getExtent() == 1) {
                    write_string(holder, name, samples[i].bytes.substr(0, samples[i].bytes.size() - 1));
                    return;
                }
                const Id in_file(make_type(type.getPod(), false), H5Tclose),
                    here(make_type(type.getPod(), true), H5Tclose);
                const bool single = type.getExtent() == 1 && type.getPod() != AbcA::kWstringPOD;
                write_attribute(holder, name, in_file, here, samples[i].bytes.data(), samples[i].count, single);
            });
    }

    void write_array(hid_t group, AbcA::ArrayPropertyReader& property)
    {
        std::vector<bool> changed;
        AbcA::ArraySampleKey key, previous;
        for (std::size_t i = 0; i < property.getNumSamples(); ++i) {
            property.getKey(static_cast<AbcA::index_t>(i), key);
            changed.push_back(i == 0 || key != previous);
            previous = key;
        }
        write_samples(group, property.getHeader(), property.isScalarLike() ? 3 : 2, changed,
                      [&](hid_t holder, const std::string& name, std::size_t i) {
                          write_data_set(holder, name, property, static_cast<AbcA::index_t>(i));
                      });
    }

    void write_data_set(hid_t holder, const std::string& name, AbcA::ArrayPropertyReader& property, AbcA::index_t index)
    {
        const AbcA::DataType& type = property.getDataType();
        AbcA::ArraySamplePtr sample;
        AbcA::ArraySampleKey key;
        property.getSample(index, sample);
        property.getKey(index, key);
        const StoredValues values = store(type, sample->getData(), sample->size());

        const Id creation(H5Pcreate(H5P_DATASET_CREATE), H5Pclose);
        if (form_ == Form::DEFLATED && values.count > 1) {
            const hsize_t chunk = (values.count + 1) / 2;
            check(H5Pset_chunk(creation, 1, &chunk));
            check(H5Pset_deflate(creation, 6));
        }
        const Id in_file(make_type(type.getPod(), false), H5Tclose), here(make_type(type.getPod(), true), H5Tclose);
        const Id space(make_space(values.count), H5Sclose);
        const Id data(H5Dcreate2(holder, name.c_str(), in_file, space, H5P_DEFAULT, creation, H5P_DEFAULT), H5Dclose);
        if (values.count > 0) check(H5Dwrite(data, here, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.bytes.data()));
        write_attribute(data, "key", H5T_STD_U8LE, H5T_NATIVE_UINT8, key.digest.d, sizeof key.digest.d);

        const AbcA::Dimensions& shape = sample->getDimensions();
        if (shape.rank() < 2 && type.getPod() < AbcA::kStringPOD) return;
        write_words(holder, name + ".dims",
                    std::vector<std::uint32_t>(shape.rootPtr(), shape.rootPtr() + shape.rank()));
    }

    AbcA::ArchiveReader& source_;
    const Form form_;
};

/// Writes what `source` holds as the HDF5 archive `path`.
inline void write_copy(AbcA::ArchiveReader& source, const std::string& path, Form form = Form::USUAL)
{
    const ArchiveCopy copy(source, path, form);
}

} // namespace hdf5_archives
