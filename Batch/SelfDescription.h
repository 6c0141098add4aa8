#ifndef SELFDESCRIPTION_H
#define SELFDESCRIPTION_H

#include <CLI/CLI.hpp>

#include <string>

/// The manual page (section 1) of a program, made from its commands and options.
std::string ManualPage(const CLI::App& program);

/// A script that has bash complete commands, options and files.
std::string BashCompletion(const CLI::App& program);

#endif
