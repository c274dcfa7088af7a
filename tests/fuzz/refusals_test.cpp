/// For each refusal of the container and of the Ogawa back end an archive that reaches it, and the message it gives.
#include "support/archive_walk.h"
#include "support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace vo_fuzz;

namespace {

struct Row
{
    const char* shape;   ///< name of the archive
    const char* message; ///< how one of its errors begins
};

const Row rows[] = {
    // the container
    {"empty", "it is empty"},
    {"other_letters", "it does not start as an Ogawa file does"},
    {"cut_in_the_header", "it ends inside its header: was copying it interrupted?"},
    {"container_from_the_future", "its container version is 2, only version 1 is known"},
    {"last_byte_missing", "its root group lies outside the file: was copying it interrupted?"},
    {"group_count_times_8_is_file_size", "Ogawa IStreams::read failed."},
    {"sample_beyond_the_file", "Ogawa IStreams::read failed."},
    {"data_size_a_terabyte", "Ogawa IData illegal size."},
    // the root of an archive
    {"never_completed", "Ogawa streams not cleanly closed while being written."},
    {"root_of_five_children", "Invalid Alembic file."},
    {"file_version_from_the_future", "Unsupported file version detected: 1"},
    {"file_version_negative", "Unsupported file version detected: -1"},
    {"library_version_too_old", "Unsupported Alembic version detected: 9998"},
    {"times_cut", "Read invalid: TimeSamples sample times."},
    {"times_cut_in_its_numbers", "Read invalid: TimeSamples info."},
    {"metadata_table_cut", "Read invalid: Indexed MetaData string."},
    {"metadata_table_too_large", "Read invalid: Indexed MetaData buffer unexpectedly big."},
    // objects
    {"object_all_ones", "Ogawa IStreams::read failed."},
    {"object_into_the_header", "Invalid object data group"},
    {"nested_objects", "Invalid object data group: objects are nested too deep"},
    {"object_is_its_own_grandchild", "Invalid object data group: it is the group of one of its ancestors"},
    {"shared_objects_unfold", "Read invalid: bytes has more objects than fit into its"},
    {"nested_objects_of_long_names", "Read invalid: the full names of the objects in bytes take more than 16777216"},
    {"data_where_a_group_belongs", "Invalid data in CprImpl(Object)"},
    {"object_headers_in_the_file_header", "ReadObjectHeaders Invalid data at index"},
    {"more_object_headers_than_objects", "Read invalid: Object Headers of more children than the 3 in the group."},
    {"object_headers_cut_by_1", "Read invalid: Object Headers name and MetaData index."},
    {"object_name_empty", "Read invalid: Object Headers name and MetaData index."},
    {"top_headers_cut", "Read invalid: Object Headers name and MetaData index."},
    {"object_headers_in_few_bytes", "Read invalid: Object Headers name size."},
    {"object_headers_end_in_metadata_size", "Read invalid: Object Headers MetaData size."},
    {"object_headers_end_in_metadata", "Read invalid: Object Headers MetaData string."},
    {"object_metadata_not_in_the_table", "Read invalid: Object Headers MetaData index."},
    // properties
    {"property_headers_in_the_file_header", "Read invalid: Property header start."},
    {"property_headers_in_few_bytes", "Read invalid: Property header start."},
    {"property_headers_overlap", "Read invalid: the property headers read so far take more bytes than the file has"},
    {"property_headers_of_no_width", "Read invalid: Property Header bad uint32 hint."},
    {"property_headers_cut_by_1", "Read invalid: Property Headers name."},
    {"property_name_empty", "Read invalid: Property Headers name."},
    {"property_headers_end_in_metadata", "Read invalid: Property Header MetaData string."},
    {"property_metadata_not_in_the_table", "Read invalid: Property Header MetaData index."},
    {"more_property_headers_than_properties", "Read invalid: a compound has headers for more properties than the"},
    {"pod_unknown", "Read invalid POD type: 15"},
    {"extent_0", "Read invalid: Property Header extent 0."},
    {"time_sampling_not_there", "Invalid index provided to getTimeSampling."},
    {"samples_backwards", "Read invalid: Property Header changes from sample 2 to 1 of 3"},
    {"properties_without_groups", "Array Property not backed by a valid group."},
    {"properties_without_groups", "Scalar Property not backed by a valid group."},
    {"properties_without_groups", "Compound Property not backed by a valid group."},
    {"compound_is_its_own_child", "Compound Property not backed by a valid group."},
    {"nested_compounds", "Read invalid: compound properties are nested too deep in /root"},
    // samples
    {"samples_missing", "ReadData invalid: Null IDataPtr."},
    {"samples_shorter_than_a_digest", "Incorrect data, expected to be empty or to have a key and data"},
    {"dimensions_of_texts_smaller_than_data", ""}, // fewer texts than stored are sound
    {"dimensions_of_texts_larger_than_data", ""},  // more than there are bytes: counted instead
    {"texts_without_terminators", "Incorrect data, expected 3 strings, got: 0"},
    {"scalars_of_wrong_size", "ScalarPropertyReader::getSample size is not correct expected: 64 got: 30"},
};

} // namespace

TEST(Refusals, EachIsReachedAndSaysWhy)
{
    std::map<std::string, std::set<std::string>> errors_of;
    for (const Shape& shape : all_shapes())
        errors_of[shape.name] = walk_bytes(shape.bytes).errors;
    for (const Row& row : rows) {
        ASSERT_EQ(errors_of.count(row.shape), 1u) << row.shape;
        const std::set<std::string>& errors = errors_of[row.shape];
        const std::string message = row.message;
        const bool found =
            message.empty() ? errors.empty() : std::any_of(errors.begin(), errors.end(), [&](const std::string& error) {
                return error.compare(0, message.size(), message) == 0;
            });
        EXPECT_TRUE(found) << row.shape << " should give '" << message << "', gives " << testing::PrintToString(errors);
    }
}
