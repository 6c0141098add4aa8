#ifndef CATALOGUEEXCERPT_H
#define CATALOGUEEXCERPT_H

#include "Document/NodeNames.h"

#include <string>

/// The part of a description that decides which features there are, of which type, with which access and entries: the
/// SDK reads it in a fraction of the time. Their values are not in it.
std::string CatalogueExcerpt(const OPX::KltAPI::Element& root, const OPX::KltAPI::NodeNames& names);

#endif
