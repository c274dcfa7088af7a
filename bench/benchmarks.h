/// The families of benchmarks; each is registered on the folder that holds the scenes.
#pragma once

#include <string>

void register_reading_benchmarks(const std::string& scenes);
void register_writing_benchmarks(const std::string& scenes);
