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

/// The reason in an error text of Alembic, in one line: without the names of functions and the marks around it.
std::string reason_in(const std::string& error_text);
