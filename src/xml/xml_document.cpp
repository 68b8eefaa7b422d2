#include "xml/xml_document.h"

#include "shell/failure.h"
#include "xml/xml_errors.h"
#include "xml/xml_file.h"
#include "xml/xml_parser.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace ostin::xml {

using detail::Fail;

namespace {

const xmlChar* Xml(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

ParseError FileError(int error, const std::string& path) {
  const bool missing = error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
  return ParseError{missing ? Code(detail::kResourceNotFound) : Code(detail::kUnspecified),
                    missing ? "The system cannot locate the object specified."
                            : std::strerror(error),
                    path,
                    0,
                    0,
                    {}};
}

} // namespace

std::shared_ptr<XmlDocument> XmlDocument::Create() {
  return std::shared_ptr<XmlDocument>(new XmlDocument());
}

XmlDocument::XmlDocument() {
  Take(detail::EmptyTree(), {});
}

bool XmlDocument::Take(std::shared_ptr<detail::Tree> tree, ParseError error) {
  tree_ = tree ? std::move(tree) : detail::EmptyTree();
  node_ = reinterpret_cast<xmlNodePtr>(tree_->doc);
  parseError_ = std::move(error);
  return parseError_.errorCode == 0;
}

void XmlDocument::setProperty(const std::string& name, const std::string& value) {
  if (name != "SelectionLanguage") Fail("Property name is invalid: " + name);
  if (value != "XPath") Fail("Property value is invalid: " + value);
}

bool XmlDocument::load(const std::string& path) {
  std::string text;
  const int error = detail::ReadWholeFile(path, text);
  if (error == EACCES || error == EPERM || error == EISDIR) detail::FailForErrno(EACCES);
  if (error != 0) return Take(nullptr, FileError(error, path));
  auto outcome = detail::Parse(text, path, {validateOnParse, resolveExternals, preserveWhiteSpace});
  return Take(std::move(outcome.tree), std::move(outcome.error));
}

bool XmlDocument::loadXML(const std::string& text) {
  auto outcome = detail::Parse(text, {}, {validateOnParse, resolveExternals, preserveWhiteSpace});
  return Take(std::move(outcome.tree), std::move(outcome.error));
}

void XmlDocument::save(const std::string& path) const {
  // Serialised straight into the file: a large score is never held as one string.
  detail::ReplaceFile(path, [&](const detail::ContentWriter& write) {
    detail::Serialize(*tree_, reinterpret_cast<xmlNodePtr>(tree_->doc), write);
  });
}

XmlNode XmlDocument::documentElement() const {
  return Wrap(xmlDocGetRootElement(tree_->doc));
}

XmlNode XmlDocument::doctype() const {
  return Wrap(reinterpret_cast<xmlNodePtr>(tree_->doc->intSubset));
}

XmlNode XmlDocument::createElement(const std::string& name) const {
  if (xmlValidateName(Xml(name), 0) != 0) Fail("The name '" + name + "' is not a valid name.");
  xmlNodePtr element = xmlNewDocNode(tree_->doc, nullptr, Xml(name), nullptr);
  if (!element) Fail("Out of memory.");
  tree_->Keep(element);
  return Wrap(element);
}

void XmlDocument::setBreakBetweenTags(bool on) {
  tree_->breakBetweenTags = on;
}

XmlNode XmlDocument::createTextNode(const std::string& text) const {
  xmlNodePtr node = detail::NewText(tree_->doc, text);
  if (!node) Fail("Out of memory.");
  tree_->Keep(node);
  return Wrap(node);
}

} // namespace ostin::xml
