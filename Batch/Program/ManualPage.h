#ifndef MANUALPAGE_H
#define MANUALPAGE_H

#include <string>

namespace CLI
{
class App;
} // namespace CLI

/// The manual page (section 1) of a program, made from its commands and options.
std::string ManualPage(const CLI::App& program);

#endif
