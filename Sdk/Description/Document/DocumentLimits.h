#ifndef DOCUMENTLIMITS_H
#define DOCUMENTLIMITS_H

#include "Document/Problem.h"

#include <cstddef>
#include <string>

namespace OPX::KltAPI
{

/// Far above the largest descriptions that cameras have (some megabytes).
const std::size_t MaximumDocumentSize = 64U << 20;

/// Of elements.
const std::size_t MaximumNesting = 16;

/// Of elements and attributes. The versions of GenApi have had some hundred.
const std::size_t MaximumNames = 10000;

/// In bytes. Registers are a few bytes long, sometimes a few kilobytes. Those with a number are shorter: Aravis keeps a
/// copy of each one. A description may have longer ones than what is read and written at once.
const long long MaximumRegisterLength = 64LL << 20;
const long long MaximumNumberLength = 1024;
const long long MaximumValueLength = 16LL << 20;

/// What Aravis' document of a description may take, in bytes, and what its parts take there (measured, and rounded up).
/// A document of this size takes six seconds to parse. That of a camera with 100,000 features of five elements each
/// takes a fifth of it.
const std::size_t MaximumSize = 1U << 30;
const std::size_t SizeOfElement = 350;
const std::size_t SizeOfRegister = 800;
const std::size_t SizeOfFormula = 2300;

/// Looks for what would cost a parser minutes or gigabytes: entities that multiply, elements with thousands of
/// attributes, millions of elements, encodings that hide all that. To be called before anything parses \a xml.
/// \param firstLine the line of the file in which it begins
Problem ProblemOfText(const std::string& xml, int firstLine);

} // namespace OPX::KltAPI

#endif
