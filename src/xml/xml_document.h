#pragma once
// The XML document service: MSXML 3's DOM document over libxml2 and libxslt.
#include "xml/xml_node.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ostin::xml {

// What went wrong in the last load or loadXML; errorCode 0 when it succeeded.
struct ParseError {
  int32_t errorCode = 0;
  std::string reason;
  std::string url;
  int32_t line = 0;
  int32_t linepos = 0; // 1-based column
  std::string srcText; // the source line of the error, without its line end
};

// A document; as a node it is the document node (nodeType 9). Node handles keep its content
// alive, even past a later load, which gives the document new content and new nodes.
class XmlDocument : public XmlNode {
public:
  static std::shared_ptr<XmlDocument> Create();
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;

  // Settings read by the next load or loadXML; async is kept but loads always complete at once.
  bool async = true;
  bool validateOnParse = true;
  bool resolveExternals = true;
  bool preserveWhiteSpace = false;
  // This service's own: from now on the document serialises with a line break wherever one
  // tag directly follows another, as if "\r\n" stood between them in the tree.
  void setBreakBetweenTags(bool on);
  // Only ("SelectionLanguage", "XPath") is accepted.
  void setProperty(const std::string& name, const std::string& value);

  // false with parseError() filled when the file cannot be parsed; a file that may not be read
  // raises 0x80070005.
  bool load(const std::string& path);
  bool loadXML(const std::string& text);
  // Writes xml() over the file through a temporary file in the same folder.
  void save(const std::string& path) const;

  XmlNode documentElement() const;
  XmlNode doctype() const; // empty when there is none
  const ParseError& parseError() const { return parseError_; }

  // New nodes outside the tree, to be inserted.
  XmlNode createElement(const std::string& name) const;
  XmlNode createTextNode(const std::string& text) const;

  // Applies the XSLT 1.0 style sheet to this document; the output becomes result's content.
  void transformNodeToObject(const XmlDocument& styleSheet, XmlDocument& result) const;

private:
  XmlDocument();
  bool Take(std::shared_ptr<detail::Tree> tree, ParseError error);

  ParseError parseError_;
};

} // namespace ostin::xml
