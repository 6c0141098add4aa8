#ifndef COMPLETION_H
#define COMPLETION_H

#include <CLI/CLI.hpp>

#include <string>

/// Scripts that have a shell complete commands, options, and the names of files and folders. Made from the commands and
/// options of a program.
std::string BashCompletion(const CLI::App& program);
std::string ZshCompletion(const CLI::App& program);
std::string FishCompletion(const CLI::App& program);

#endif
