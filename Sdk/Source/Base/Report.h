#ifndef REPORT_H
#define REPORT_H

#include <string>

namespace OPX::KltAPI
{

/// Writes one line to the standard error output. Any thread.
void Report(const std::string& message);

} // namespace OPX::KltAPI

#endif
