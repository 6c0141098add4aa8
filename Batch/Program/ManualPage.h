#ifndef MANUALPAGE_H
#define MANUALPAGE_H

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// The manual page (section 1) of a program, made from its commands and options.
std::string ManualPage(const CLI::App& program);

/// The commands that are shown to users.
std::vector<const CLI::App*> CommandsOf(const CLI::App& program);

/// The options of a command except for its help, including those in groups.
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);

#endif
