#ifndef TEMPLATECHECK_H
#define TEMPLATECHECK_H

#include "Document/Mistake.h"

#include <QString>

#include <vector>

/// Looks in a line of a template for what its author takes for a placeholder and the writer does not, and for text that
/// is lost.
std::vector<OPX::KltAPI::Mistake> CheckTemplateLine(int number, const QString& line);

#endif
