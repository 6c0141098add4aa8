#ifndef STARTVALUES_H
#define STARTVALUES_H

#include <arv.h>

#include <filesystem>

namespace OPX::KltAPI
{

/// Gives the features of a simulated camera the values in the file beside its description: one "Feature = value" per
/// line, raw features in hexadecimal bytes; empty lines and lines that begin with # are skipped. Lines that cannot be
/// used are reported with file and line, and the others still apply. Without the file nothing happens.
void ApplyStartValues(ArvGc* nodeMap, const std::filesystem::path& descriptionFile);

} // namespace OPX::KltAPI

#endif
