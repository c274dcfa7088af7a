/// AbcInput: the readers, and the way to open and release input archives.
#pragma once

#include "abc_file_list.h"
#include "abc_input_archive_handle.h"
#include "vo_abc_io_export.h"

#include <vo_core/core_array.h>
#include <vo_core/core_string.h>
#include <vo_core/core_vector.h>
#include <vo_geometry/geometry_normal_map.h>
#include <vo_geometry/geometry_uv_map.h>
#include <vo_gmath/gmath_matrix4x4.h>
#include <vo_gmath/gmath_time_sampling.h>
#include <vo_gmath/gmath_vec3.h>
#include <vo_resource/resource_property.h>

class AbcAnimationHeader;
class AbcCameraHeader;
class AbcCurveHeader;
class AbcDeformationHeader;
class AbcPivotData;
class AppBase;
class AppProgressBar;

/// Reads Alembic archives into the host's records. All functions are static and may be called from any thread between
/// init and destroy.
///
/// Times are seconds as stored in the archive, lengths are as stored. `object_name` and `object_path` are full names,
/// as "/root/body/bodyShape". Readers come in two forms: one takes the files and does everything; the other takes a
/// handle that holds the object already (get_*_deformation_header, get_animation_header, load_points and their like set
/// it). The result is false when the archive cannot be opened, or when the object does not exist or is of another kind;
/// the outputs are then untouched unless said otherwise. Outputs are resized to what was read. Alembic's own exceptions
/// (std::exception) while samples are read pass to the caller; locks and handles are released on the way.
class VO_ABC_IO_EXPORT AbcInput
{
public:
    // ---- Library and archives -------------------------------------------------------------------------------------

    /// Starts the library; once, before anything else. `application` is asked about files that changed on disk, and may
    /// be null.
    static void init(AppBase* application);
    /// Shuts the library down; once, after all handles were released. Later calls open nothing and do no harm.
    static void destroy();

    /// A new handle on the archive of `filenames`, never null; without an archive in it (is_archive_valid() false) when
    /// the files cannot be opened. An archive that changed on disk is opened afresh. The caller gives the handle back
    /// with release_archive, then deletes it.
    static AbcInputArchiveHandle* get_archive(const AbcFileList& filenames);
    /// Gives a handle back; the last one closes the archive. The handle is emptied, not deleted.
    static void release_archive(AbcInputArchiveHandle* handle);
    /// True when the files form an archive that can be opened.
    static bool is_archive_valid(const AbcFileList& filenames);
    /// Writes a report on all open archives to the log, at level 3.
    static void log_statistics();

    // ---- Objects --------------------------------------------------------------------------------------------------

    /// Sets keys[i] to the data key of the object of the full name object_names[i], taken at 0.0 s. Objects with equal
    /// geometry have equal keys. Names that are not those of curves, meshes or points leave their key as it is. `keys`
    /// holds at least as many entries as `object_names`. `progress` may be null and ends at 1.0.
    static void make_object_key(const AbcFileList& filenames, CoreArray<CoreString>& keys,
                                const CoreArray<CoreString>& object_names, AppProgressBar* progress);
    /// The data key, at `time` seconds, of the curves, mesh or points the handle holds; empty for other objects and
    /// without one.
    static CoreString get_object_data_hash_key(const AbcInputArchiveHandle& handle, const double& time);

    /// Names of the properties of an object that can be loaded: first its user properties, then its arbitrary geometry
    /// parameters, each in stored order and each name once. Properties inside a compound of user properties are named
    /// "compound.property". Names are replaced by those found; false, untouched, when the object does not exist.
    static bool get_property_names(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                   CoreVector<CoreString>& names);

    // ---- User properties and arbitrary geometry parameters --------------------------------------------------------

    /// What is known of a property without reading its samples.
    struct PropertyType
    {
        ResourceProperty::Type type = ResourceProperty::TYPE_NONE; ///< of each value, as load_property gives it
        unsigned int extent = 1;                                   ///< values per element
        ResourceProperty::Interpretation interpretation = ResourceProperty::INTERPRETATION_NONE;
        ResourceProperty::Scope scope = ResourceProperty::SCOPE_UNKNOWN; ///< unknown unless a geometry parameter
        bool is_array = false;                                           ///< false: always one element
        bool is_indexed = false;                                         ///< elements are shared by index
        unsigned int sample_count = 0;                                   ///< stored samples, repeated ones included
        bool is_constant = true;                                         ///< all samples are the same
    };

    /// The type of a property of the object that the handle holds. `property_name` is one that get_property_names
    /// lists.
    static bool get_property_type(const AbcInputArchiveHandle& handle, const CoreString& property_name,
                                  PropertyType& type);

    /// A property at the sample nearest to `time`: from an object of any kind in the archive of `files`, or from the
    /// object that the handle holds. Without samples it has no elements. False also, with a warning in the log, when
    /// indices lead beyond the elements; `property` is untouched whenever the result is false.
    static bool load_property(const AbcFileList& files, const CoreString& object_name, const CoreString& property_name,
                              const double& time, ResourceProperty& property);
    static bool load_property(const AbcInputArchiveHandle& handle, const CoreString& property_name, const double& time,
                              ResourceProperty& property);

    /// The same, interpolated number by number between the samples before and after `time` when the values are
    /// floating-point and both samples have as many elements and the same indices. A sample within 0.001 s of `time` is
    /// taken as it is, and so is the nearest one of everything else and beyond the first and last sample.
    static bool evaluate_property(const AbcInputArchiveHandle& handle, const CoreString& property_name,
                                  const double& time, ResourceProperty& property);

    // ---- Time sampling --------------------------------------------------------------------------------------------

    /// How one property is sampled over the current frame or shutter interval; filled by the host.
    struct PlainPropertyInfo
    {
        GMathTimeSampling time_sampling;        ///< seconds; one time per sample of the interval
        CoreArray<unsigned int> sample_indices; ///< one stored sample's index per sample of time_sampling
        bool multi_sample = false;              ///< false: always evaluated from one sample, whatever is asked
    };

    /// The samples to read at `time`: `absolute` at their stored times, `relative` the same minus `time`. Without
    /// `all_samples` both hold the nearest sample alone, `sample_index` tells which; with it both hold every sample and
    /// `sample_index` stays as it is.
    static void compute_time_sampling(const GMathTimeSampling& sampling, const double& time, const bool& all_samples,
                                      GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                      unsigned int& sample_index);
    /// The same over two samplings, `second` following `first` after a split (a loop, for example). Without
    /// `all_samples`, the one that holds `time` is used: `second` when `first` begins later or ends earlier. With it,
    /// all samples of `first` and then of `second` are given; in `relative`, those of `first` are moved by -`offset`
    /// when `before_split`, otherwise those of `second` by +`offset`.
    static void compute_time_sampling(const GMathTimeSampling& first, const GMathTimeSampling& second,
                                      const double& time, const bool& before_split, const double& offset,
                                      const bool& all_samples, GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                      unsigned int& sample_index);
    /// The same for properties: `sample_index` is the stored sample's index, from the records' tables. `second` may be
    /// null; it must be given when `time` can lie outside the samples of `info`.
    static void compute_time_sampling(const PlainPropertyInfo& info, const double& time, const double& split_time,
                                      const double& offset, const bool& all_samples, unsigned int& sample_index,
                                      GMathTimeSampling& relative, GMathTimeSampling& absolute,
                                      PlainPropertyInfo* second);

    // ---- Polygon and subdivision meshes ---------------------------------------------------------------------------

    /// A polygon or subdivision mesh at the sample nearest to `time`. True, outputs untouched, when it has no samples;
    /// false also when its topology is corrupt (logged; positions, velocities and counts are then filled).
    /// `positions`: one per point; `velocities`: archive units per second, empty when none are stored; `face_counts`:
    /// one per polygon; `face_indices`: position indices of all polygons, each polygon's run reversed to the host's
    /// winding (by intention, an index equal to the number of positions is delivered, too: look before you follow it);
    /// `face_groups`: one index into `group_names` per polygon; `property_names`: see get_property_names. `progress`
    /// may be null and goes from 0.0 over 0.3 and 0.6 to 1.0.
    static bool load_mesh(const AbcFileList& files, const CoreString& object_name, const double& time,
                          CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                          CoreArray<unsigned int>& face_indices, CoreArray<unsigned int>& face_counts,
                          CoreArray<unsigned int>& face_groups, CoreArray<CoreString>& group_names,
                          CoreArray<GeometryUvMap>& uv_maps, CoreArray<GeometryNormalMap>& normal_maps,
                          CoreVector<CoreString>& property_names, AppProgressBar* progress);

    /// The stored samples of the mesh's positions that cover [`start_time`, `end_time`].
    static bool get_mesh_sampling(const AbcInputArchiveHandle& handle, const double& start_time, const double& end_time,
                                  GMathTimeSampling& sampling);
    static bool get_mesh_sampling(const AbcFileList& files, const CoreString& object_name, const double& start_time,
                                  const double& end_time, GMathTimeSampling& sampling);

    /// How a polygon or subdivision mesh changes over time. Sets it on the handle; a failure leaves the handle without
    /// an object.
    static bool get_mesh_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                            AbcDeformationHeader& header);

    /// Positions of the mesh at `time`, interpolated between samples, and velocities in archive units per second,
    /// stored ones or derived from the positions; always derived with `ignore_velocities`. One of each per point.
    static bool evaluate_mesh_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                          CoreArray<GMathVec3<float>>& positions,
                                          CoreArray<GMathVec3<float>>& velocities, bool ignore_velocities);
    static bool load_mesh_deformation(const AbcFileList& files, const CoreString& object_name, const double& time,
                                      CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                                      bool ignore_velocities);

    /// Creases of a subdivision mesh at the sample nearest to `time`, as stored: vertex indices of all creases, and
    /// their sharpnesses. False, both untouched, also when it has none; `property_names` (see get_property_names) is
    /// then filled all the same. True, outputs untouched, when the mesh has no samples.
    static bool load_mesh_subdiv(const AbcFileList& files, const CoreString& object_name, const double& time,
                                 CoreVector<CoreString>& property_names, CoreArray<int>& crease_indices,
                                 CoreArray<float>& crease_sharpnesses);

    /// Normals of a polygon mesh at `time`, interpolated between samples: one map in the host's winding, or outputs
    /// untouched when the mesh has no normals per face vertex. True whenever the handle holds an object, of any kind.
    static bool evaluate_mesh_normals(const AbcInputArchiveHandle& handle, const double& time,
                                      CoreArray<GeometryNormalMap>& normal_maps);
    static bool load_mesh_normals(const AbcFileList& files, const CoreString& object_name, const double& time,
                                  CoreArray<GeometryNormalMap>& normal_maps);

    // ---- Curves ---------------------------------------------------------------------------------------------------

    /// Everything about curves at the sample nearest to `time`. True, record untouched, for curves without samples.
    /// False, record untouched, also when vertex counts are negative or ask for more points than there are (logged). A
    /// parameter whose indices lead beyond its values counts as missing. `progress` is not used.
    static bool load_curve(const AbcFileList& files, const CoreString& object_path, const double& time,
                           AbcCurveHeader& header, AppProgressBar* progress);

    /// The stored samples of the curves' positions that cover [`start`, `end`].
    static bool get_curve_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                   GMathTimeSampling& sampling);
    static bool get_curve_sampling(const AbcFileList& files, const CoreString& object_path, const double& start,
                                   const double& end, GMathTimeSampling& sampling);

    /// How curves change over time. Sets them on the handle; a failure leaves the handle without an object.
    static bool get_curve_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_path,
                                             AbcDeformationHeader& header);

    /// Positions of the curves at `time`, and velocities in archive units per second; one of each per control point.
    /// True, outputs untouched, for curves without samples. Stored velocities are used when there is one for each
    /// position and they are not to be ignored; else differences between samples, or zero, stand for them.
    static bool evaluate_curve_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                           CoreArray<GMathVec3<float>>& positions,
                                           CoreArray<GMathVec3<float>>& velocities, bool ignore_file_velocities);
    static bool load_curve_deformation(const AbcFileList& files, const CoreString& object_path, const double& time,
                                       CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                                       bool ignore_file_velocities);

    /// Normals of the curves at `time`: one map, or outputs untouched when the curves have none that fit their points.
    /// Interpolated between samples with as many normals, those of the earlier sample otherwise.
    static bool evaluate_curve_normals(const AbcInputArchiveHandle& handle, const double& time,
                                       CoreArray<GeometryNormalMap>& normal_maps);
    static bool load_curve_normals(const AbcFileList& files, const CoreString& object_path, const double& time,
                                   CoreArray<GeometryNormalMap>& normal_maps);

    // ---- Points ---------------------------------------------------------------------------------------------------

    /// Points at `time`: positions, and velocities in archive units per second, one of each per point. Sets the points
    /// on the handle. True, both untouched, for points without samples. Stored velocities are used as those of curves;
    /// points whose ids change are never blended, only moved along theirs. `progress` is not used.
    static bool load_points(AbcInputArchiveHandle& handle, const CoreString& object_path, const double& time,
                            CoreArray<GMathVec3<float>>& positions, CoreArray<GMathVec3<float>>& velocities,
                            bool ignore_file_velocities, CoreVector<CoreString>& property_names,
                            AppProgressBar* progress);

    /// The same for the points that the handle holds. Stored velocities are used when usable, whatever the last
    /// argument.
    static bool evaluate_point_deformation(const AbcInputArchiveHandle& handle, const double& time,
                                           CoreArray<GMathVec3<float>>& positions,
                                           CoreArray<GMathVec3<float>>& velocities, bool ignore_file_velocities);

    /// The stored samples of the points that cover [`start`, `end`].
    static bool get_point_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                   GMathTimeSampling& sampling);

    /// How points change over time. Sets them on the handle; a failure leaves the handle without an object.
    static bool get_point_deformation_header(AbcInputArchiveHandle& handle, const CoreString& object_path,
                                             AbcDeformationHeader& header);

    // ---- Transforms -----------------------------------------------------------------------------------------------

    /// Local matrix of the handle's transform at `time`, in the host's convention (column vectors); interpolated
    /// between samples, those at the ends hold beyond them.
    static bool evaluate_pivot_matrix(const AbcInputArchiveHandle& handle, const double& time,
                                      GMathMatrix4x4<double>& matrix);
    /// The handle's transform at `time`, decomposed.
    static bool evaluate_pivot_data(const AbcInputArchiveHandle& handle, const double& time, AbcPivotData& pivot_data);
    /// A transform at the time of its first sample, decomposed.
    static bool get_pivot_data(const AbcFileList& files, const CoreString& object_name, AbcPivotData& pivot_data);
    /// Samples and time range of a transform. Sets it on the handle; a failure leaves the handle without an object.
    static bool get_animation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                     AbcAnimationHeader& header);

    // ---- Visibility -----------------------------------------------------------------------------------------------

    /// Whether the handle's object is visible at `time`: the first of the object and its ancestors that does not defer
    /// to its parent decides; true when none does, and without an object. Takes no lock: the caller holds the handle's.
    static bool is_object_visible_at(AbcInputArchiveHandle& handle, const double& time);

    // ---- Cameras --------------------------------------------------------------------------------------------------

    /// Attributes of the handle's camera at `time`; lengths of the film back in metres. True, `header` untouched, for a
    /// camera without samples.
    static bool evaluate_camera_attributes(const AbcInputArchiveHandle& handle, const double& time,
                                           AbcCameraHeader& header);
    /// The stored samples of the camera that cover [`start`, `end`].
    static bool get_camera_sampling(const AbcInputArchiveHandle& handle, const double& start, const double& end,
                                    GMathTimeSampling& sampling);
    static bool get_camera_sampling(const AbcFileList& files, const CoreString& object_name, const double& start,
                                    const double& end, GMathTimeSampling& sampling);
    /// Samples and time range of a camera. Sets it on the handle; a failure leaves the handle without an object.
    static bool get_camera_animation_header(AbcInputArchiveHandle& handle, const CoreString& object_name,
                                            AbcAnimationHeader& header);

private:
    /// The geometry of load_points and evaluate_point_deformation. The caller holds the handle's lock.
    static bool load_points_geometry(const AbcInputArchiveHandle& handle, CoreArray<GMathVec3<float>>& positions,
                                     CoreArray<GMathVec3<float>>& velocities, const double& time,
                                     bool ignore_file_velocities);
};
