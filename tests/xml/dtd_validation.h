#pragma once
// Validation of a MusicXML text against the document types in the data folder, whatever
// document type the text names itself.
#include "xml/xml_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace ostin::xml::test_support {

// The data folder's document type for a score root: partwise.dtd or timewise.dtd.
inline std::string ScoreDtd(const std::string& root) {
  return std::string(OSTIN_DATA_DIR) +
         (root == "score-timewise" ? "/timewise.dtd" : "/partwise.dtd");
}

// Parses text, validating it against dtdFile (empty: ScoreDtd of its root): its DOCTYPE
// declaration (internal subset and all) is replaced by one naming dtdFile, or one is added
// after the XML declaration. Line numbers of errors stay those of the text. The text must
// parse without its document type (no named entities of it). The parse error; errorCode 0
// when it is valid.
inline ParseError ValidateAgainst(const std::string& text, std::string dtdFile) {
  auto plain = XmlDocument::Create();
  plain->validateOnParse = plain->resolveExternals = false;
  if (!plain->loadXML(text)) return plain->parseError();
  const std::string root = plain->documentElement().nodeName();
  if (dtdFile.empty()) dtdFile = ScoreDtd(root);
  std::string doctype = "<!DOCTYPE " + root + " SYSTEM \"" + dtdFile + "\">", bound = text;
  const std::string old = plain->doctype() ? plain->doctype().xml() : "";
  const auto at = old.empty() ? std::string::npos : bound.find(old);
  if (at != std::string::npos) {
    doctype.append(static_cast<std::size_t>(std::count(old.begin(), old.end(), '\n')), '\n');
    bound.replace(at, old.size(), doctype);
  } else {
    bound.insert(bound.rfind("<?xml ", 0) == 0 ? bound.find("?>") + 2 : 0, doctype);
  }
  auto checked = XmlDocument::Create();
  checked->validateOnParse = checked->resolveExternals = true;
  checked->loadXML(bound);
  return checked->parseError();
}

// Validates a score text against data/partwise.dtd or data/timewise.dtd, by its root; for
// EXPECT_TRUE, with the reason and place of the first error when it fails.
inline ::testing::AssertionResult ValidScore(const std::string& text) {
  const ParseError error = ValidateAgainst(text, "");
  if (error.errorCode == 0) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << error.reason << " (line " << error.line << ", position "
                                       << error.linepos << ": " << error.srcText << ")";
}

} // namespace ostin::xml::test_support
