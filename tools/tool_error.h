/// ToolError: what ends a subcommand with exit status 1.
#pragma once

#include <stdexcept>
#include <string>

/// Bad input, worded for the user: "FILE: OBJECT: what, and what to do". main prints it after the tool's name.
class ToolError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
