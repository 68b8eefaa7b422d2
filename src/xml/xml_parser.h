#pragma once
// Turns XML text into a tree the way MSXML's load and loadXML do.
#include "xml/xml_document.h"
#include "xml/xml_tree.h"

#include <memory>
#include <string>
#include <string_view>

namespace ostin::xml::detail {

struct ParseSettings {
  bool validateOnParse = true;
  bool resolveExternals = true;
  bool preserveWhiteSpace = false;
};

// The tree (null on failure) and the parse error (errorCode 0 on success).
struct ParseOutcome {
  std::shared_ptr<Tree> tree;
  ParseError error;
};

// url is the file the text came from (empty for text given directly): the base for relative
// system identifiers and the url of a parse error.
ParseOutcome Parse(std::string_view text, const std::string& url, const ParseSettings& settings);

// An empty document, as a new XmlDocument holds.
std::shared_ptr<Tree> EmptyTree();

// The line of text with the given 1-based number, without its line end.
std::string LineOf(std::string_view text, int line);

} // namespace ostin::xml::detail
