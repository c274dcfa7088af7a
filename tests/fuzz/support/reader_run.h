/// @file
/// Calls every reader of AbcInput on every object, as a host does, and checks what the host relies on.
#pragma once

#include <abc_file_list.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace vo_fuzz {

/// What a run over all readers came by.
struct ReaderReport
{
    bool opened = false;
    std::size_t objects = 0;
    std::size_t successes = 0;         ///< calls that returned true
    std::set<std::string> errors;      ///< texts of exceptions, their last line
    std::set<std::string> broken;      ///< promises that were not kept; empty unless there is a fault in the module
    std::vector<std::string> messages; ///< warnings and errors that the module logged
};

/// Runs all readers, in both forms, on up to 40 objects of the archive (each as every kind of object) and on names that
/// it has not, at `times` seconds. AbcInput has been started.
ReaderReport run_readers(const AbcFileList& files, const std::vector<double>& times = {0.0, 0.02, 1e9});

/// Starts the library (once for the process), writes `bytes` to a scratch file and runs all readers on it.
ReaderReport run_readers_on_bytes(const std::string& bytes, const std::vector<double>& times = {0.0, 0.02, 1e9});

/// The same on several layers, the weakest first.
ReaderReport run_readers_on_layers(const std::vector<std::string>& layers, const std::vector<double>& times = {0.0});

} // namespace vo_fuzz
