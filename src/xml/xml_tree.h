#pragma once
// The libxml2 document behind every node handle, and the tree operations the service shares.
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ostin::xml::detail {

// One libxml2 document with every node cut loose from it; all of them are freed together.
struct Tree {
  explicit Tree(xmlDocPtr document) : doc(document) {}
  ~Tree();
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  // Holds a node that is outside the tree (created, cloned or removed) until the tree dies.
  // Nodes are never freed before the tree, so the list is read safely at its end: those
  // still without a parent then are freed with their subtrees, the rest with the document.
  void Keep(xmlNodePtr node) {
    detached.push_back(node);
    if (detached.size() >= compactAt) Compact();
  }
  // Drops the nodes that have found a parent since, so the list stays the size of what is
  // really loose.
  void Compact();
  // The document's one XPath context and the compiled form of an expression, both kept for
  // the life of the tree: making them anew for every query costs more than the query itself.
  xmlXPathContextPtr XPathContext();
  xmlXPathCompExprPtr Compiled(const std::string& expression);

  xmlDocPtr doc;
  std::string declaration;          // the XML declaration as written in the loaded text
  std::string doctypeText;          // the DOCTYPE declaration as written in the loaded text
  const xmlNode* doctype = nullptr; // the node doctypeText stands for
  std::size_t sizeHint = 0;         // the loaded text's length, to reserve when serialising
  std::vector<xmlNodePtr> detached;
  std::size_t compactAt = 1024;
  bool breakBetweenTags = false; // serialise a line break wherever two tags meet
  xmlXPathContextPtr xpath = nullptr;
  std::unordered_map<std::string, xmlXPathCompExprPtr> compiled;
};

// Whether the node's children are shown (a doctype's declarations and entity contents are not).
bool ShowsChildren(const xmlNode* node);
// The name with its namespace prefix, as written.
std::string QualifiedName(const xmlNode* node);
// The text of the node and all its descendants.
std::string TextOf(const xmlNode* node);
// Puts a detached node under parent, before `before` (at the end when null), never merging text.
void Link(xmlNodePtr parent, xmlNodePtr node, xmlNodePtr before);
// A new text node of the document; short texts are stored inside the node itself.
xmlNodePtr NewText(xmlDocPtr doc, const std::string& text);
// Gives a text node new content, stored the same way.
void SetText(xmlNodePtr node, const std::string& text);
// Drops the XPath document-order numbers of a subtree that has moved.
void ForgetOrder(xmlNodePtr node);
// The node in the service's serialised form.
std::string Serialize(const Tree& tree, const xmlNode* node);
// The same text handed to pass in pieces, in order.
void Serialize(const Tree& tree, const xmlNode* node,
               const std::function<void(std::string_view)>& pass);

} // namespace ostin::xml::detail
