#pragma once
// A readable listing of a document: its settings, then every record by type and key.
#include <string>

#include "sim/document.h"

namespace ostin::sim {

std::string DescribeDocument(const Document& document);

} // namespace ostin::sim
