#include "xml/xml_node.h"

#include "xml/xml_errors.h"
#include "xml/xml_tree.h"

#include <libxml/xpath.h>

#include <utility>

namespace ostin::xml {

using detail::Fail;

namespace {

const xmlChar* Xml(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

bool IsElement(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE;
}

// Siblings and parents as MSXML shows them: an attribute has neither.
bool HasPlace(const xmlNode* node) {
  return node->type != XML_ATTRIBUTE_NODE;
}

std::vector<xmlNodePtr> Children(const xmlNode* node) {
  std::vector<xmlNodePtr> children;
  if (!detail::ShowsChildren(node)) return children;
  for (xmlNodePtr child = node->children; child; child = child->next)
    children.push_back(child);
  return children;
}

// Whether the node's qualified name is that name; an unprefixed name is compared in place.
bool NameIs(const xmlNode* node, std::string_view name) {
  const bool prefixed = (node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE) &&
                        node->ns && node->ns->prefix;
  if (prefixed) return detail::QualifiedName(node) == name;
  return node->name && name == reinterpret_cast<const char*>(node->name);
}

// Each descendant element goes to the list of every name it matches ("*" matches all).
void CollectElements(xmlNodePtr node, const std::vector<std::string>& names,
                     std::vector<std::vector<xmlNodePtr>>& found) {
  for (xmlNodePtr child = node->children; child; child = child->next) {
    if (!IsElement(child)) continue;
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (names[i] == "*" || NameIs(child, names[i])) found[i].push_back(child);
    }
    CollectElements(child, names, found);
  }
}

xmlAttrPtr FindAttribute(const xmlNode* element, const std::string& name) {
  if (!IsElement(element)) return nullptr;
  for (xmlAttrPtr attr = element->properties; attr; attr = attr->next) {
    if (detail::QualifiedName(reinterpret_cast<xmlNodePtr>(attr)) == name) return attr;
  }
  return nullptr;
}

// Replaces the children of an element or attribute by one text node (none for empty text).
void ReplaceChildren(detail::Tree& tree, xmlNodePtr node, const std::string& text) {
  // One text child takes the new text itself, which spares a node for each change.
  xmlNodePtr only = node->children;
  if (only && !only->next && only->type == XML_TEXT_NODE && !text.empty()) {
    detail::SetText(only, text);
    return;
  }
  while (xmlNodePtr child = node->children) {
    xmlUnlinkNode(child);
    tree.Keep(child);
  }
  if (!text.empty()) detail::Link(node, detail::NewText(node->doc, text), nullptr);
}

std::vector<xmlNodePtr> Evaluate(detail::Tree& tree, xmlNodePtr context,
                                 const std::string& expression) {
  detail::ErrorCapture capture;
  xmlXPathContextPtr xpath = tree.XPathContext();
  if (!xpath) Fail("Out of memory.");
  xmlXPathCompExprPtr compiled = tree.Compiled(expression);
  if (!compiled) Fail(capture.Message("Invalid XPath expression.") + ": " + expression);
  xpath->doc = tree.doc;
  xpath->node = context;
  xpath->contextSize = -1;
  xpath->proximityPosition = -1;
  std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> result(
      xmlXPathCompiledEval(compiled, xpath), xmlXPathFreeObject);
  if (!result) Fail(capture.Message("Invalid XPath expression.") + ": " + expression);
  if (result->type != XPATH_NODESET) Fail("Expression does not evaluate to a node-set.");
  std::vector<xmlNodePtr> nodes;
  const xmlNodeSet* set = result->nodesetval;
  for (int i = 0; set && i < set->nodeNr; ++i) {
    if (set->nodeTab[i]->type != XML_NAMESPACE_DECL) nodes.push_back(set->nodeTab[i]);
  }
  return nodes;
}

const char* TypeName(xmlElementType type) {
  switch (type) {
  case XML_ATTRIBUTE_NODE:
    return "ATTRIBUTE";
  case XML_DOCUMENT_NODE:
    return "DOCUMENT";
  case XML_DTD_NODE:
    return "DOCUMENTTYPE";
  case XML_TEXT_NODE:
    return "TEXT";
  case XML_CDATA_SECTION_NODE:
    return "CDATA";
  default:
    return "NODE";
  }
}

// Raises MSXML's failures for putting child under parent (in the place of `replaced`, if any).
void CheckInsertion(const xmlNode* parent, const xmlNode* child, const xmlNode* replaced) {
  const bool container = IsElement(parent) || parent->type == XML_DOCUMENT_NODE ||
                         parent->type == XML_DOCUMENT_FRAG_NODE;
  const bool movable = child->type != XML_ATTRIBUTE_NODE && child->type != XML_DOCUMENT_NODE &&
                       child->type != XML_DTD_NODE;
  if (!container || !movable) {
    Fail(std::string("This operation can not be performed with a Node of type ") +
         TypeName(container ? child->type : parent->type) + ".");
  }
  for (const xmlNode* up = parent; up; up = up->parent) {
    if (up == child) Fail("Inserting a node or its ancestor under itself is not allowed.");
  }
  if (parent->type != XML_DOCUMENT_NODE) return;
  if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE) {
    Fail(std::string("This operation can not be performed with a Node of type ") +
         TypeName(child->type) + ".");
  }
  if (!IsElement(child)) return;
  for (const xmlNode* other = parent->children; other; other = other->next) {
    if (IsElement(other) && other != child && other != replaced) {
      Fail("Only one top level element is allowed in an XML document.");
    }
  }
}

} // namespace

XmlNode::XmlNode(std::shared_ptr<detail::Tree> tree, xmlNodePtr node)
    : tree_(std::move(tree)), node_(node) {}

xmlNodePtr XmlNode::Get() const {
  if (!node_) detail::FailUnset();
  return node_;
}

XmlNode XmlNode::Wrap(xmlNodePtr node) const {
  return node ? XmlNode(tree_, node) : XmlNode();
}

XmlNodeList XmlNode::ListOf(std::vector<xmlNodePtr> nodes) const {
  return XmlNodeList(tree_, std::move(nodes));
}

int32_t XmlNode::nodeType() const {
  const xmlElementType type = Get()->type;
  return type == XML_DTD_NODE ? NODE_DOCUMENT_TYPE : static_cast<int32_t>(type);
}

std::string XmlNode::nodeName() const {
  switch (Get()->type) {
  case XML_TEXT_NODE:
    return "#text";
  case XML_CDATA_SECTION_NODE:
    return "#cdata-section";
  case XML_COMMENT_NODE:
    return "#comment";
  case XML_DOCUMENT_NODE:
    return "#document";
  case XML_DOCUMENT_FRAG_NODE:
    return "#document-fragment";
  default:
    return detail::QualifiedName(node_);
  }
}

std::string XmlNode::text() const {
  return detail::TextOf(Get());
}

void XmlNode::text(const std::string& value) const {
  xmlNodePtr node = Get();
  if (IsElement(node) || node->type == XML_ATTRIBUTE_NODE) {
    ReplaceChildren(*tree_, node, value);
  } else if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE ||
             node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE) {
    xmlNodeSetContent(node, Xml(value));
  } else {
    Fail(std::string("This operation can not be performed with a Node of type ") +
         TypeName(node->type) + ".");
  }
}

std::string XmlNode::xml() const {
  return detail::Serialize(*tree_, Get());
}

XmlNode XmlNode::parentNode() const {
  xmlNodePtr node = Get();
  return HasPlace(node) ? Wrap(node->parent) : XmlNode();
}

XmlNode XmlNode::firstChild() const {
  xmlNodePtr node = Get();
  return detail::ShowsChildren(node) ? Wrap(node->children) : XmlNode();
}

XmlNode XmlNode::lastChild() const {
  xmlNodePtr node = Get();
  return detail::ShowsChildren(node) ? Wrap(node->last) : XmlNode();
}

XmlNode XmlNode::previousSibling() const {
  xmlNodePtr node = Get();
  return HasPlace(node) ? Wrap(node->prev) : XmlNode();
}

XmlNode XmlNode::nextSibling() const {
  xmlNodePtr node = Get();
  return HasPlace(node) ? Wrap(node->next) : XmlNode();
}

XmlNodeList XmlNode::childNodes() const {
  return ListOf(Children(Get()));
}

bool XmlNode::hasChildNodes() const {
  return static_cast<bool>(firstChild());
}

XmlNode XmlNode::selectSingleNode(const std::string& xpath) const {
  const std::vector<xmlNodePtr> nodes = Evaluate(*tree_, Get(), xpath);
  return nodes.empty() ? XmlNode() : Wrap(nodes.front());
}

XmlNodeList XmlNode::selectNodes(const std::string& xpath) const {
  return ListOf(Evaluate(*tree_, Get(), xpath));
}

xmlNodePtr XmlNode::ChildOf(const XmlNode& child) const {
  xmlNodePtr node = child.Get();
  if (node->parent != Get() || !HasPlace(node)) {
    Fail(0x80070057u, "The parameter node is not a child of this node.");
  }
  return node;
}

XmlNode XmlNode::Insert(const XmlNode& newChild, xmlNodePtr before, xmlNodePtr replaced) const {
  xmlNodePtr parent = Get();
  xmlNodePtr child = newChild.Get();
  CheckInsertion(parent, child, replaced);
  if (child == before) return newChild;
  if (child->doc != parent->doc) {
    child = xmlDocCopyNode(child, parent->doc, 1);
    if (!child) Fail("Out of memory.");
  }
  xmlUnlinkNode(child);
  detail::Link(parent, child, before);
  detail::ForgetOrder(child);
  return Wrap(child);
}

XmlNode XmlNode::appendChild(const XmlNode& newChild) const {
  return Insert(newChild, nullptr, nullptr);
}

XmlNode XmlNode::insertBefore(const XmlNode& newChild, const XmlNode& refChild) const {
  return Insert(newChild, refChild ? ChildOf(refChild) : nullptr, nullptr);
}

XmlNode XmlNode::replaceChild(const XmlNode& newChild, const XmlNode& oldChild) const {
  xmlNodePtr old = ChildOf(oldChild);
  if (newChild.Get() == old) return oldChild;
  Insert(newChild, old, old);
  xmlUnlinkNode(old);
  tree_->Keep(old);
  return oldChild;
}

XmlNode XmlNode::removeChild(const XmlNode& child) const {
  xmlNodePtr node = ChildOf(child);
  xmlUnlinkNode(node);
  tree_->Keep(node);
  return child;
}

XmlNode XmlNode::cloneNode(bool deep) const {
  xmlNodePtr node = Get();
  if (node->type == XML_DOCUMENT_NODE || node->type == XML_DTD_NODE) {
    Fail(std::string("This operation can not be performed with a Node of type ") +
         TypeName(node->type) + ".");
  }
  xmlNodePtr copy = xmlDocCopyNode(node, node->doc, deep ? 1 : 2);
  if (!copy) Fail("Out of memory.");
  tree_->Keep(copy);
  return Wrap(copy);
}

std::string XmlNode::tagName() const {
  return detail::QualifiedName(Get());
}

std::string XmlNode::getAttribute(const std::string& name) const {
  xmlAttrPtr attr = FindAttribute(Get(), name);
  return attr ? detail::TextOf(reinterpret_cast<xmlNodePtr>(attr)) : std::string();
}

void XmlNode::setAttribute(const std::string& name, const std::string& value) const {
  xmlNodePtr element = Get();
  if (!IsElement(element)) {
    Fail(std::string("This operation can not be performed with a Node of type ") +
         TypeName(element->type) + ".");
  }
  if (xmlValidateName(Xml(name), 0) != 0) Fail("The name '" + name + "' is not a valid name.");
  xmlAttrPtr attr = FindAttribute(element, name);
  if (!attr) attr = xmlNewProp(element, Xml(name), nullptr);
  if (!attr) Fail("Out of memory.");
  ReplaceChildren(*tree_, reinterpret_cast<xmlNodePtr>(attr), value);
}

XmlNode XmlNode::getAttributeNode(const std::string& name) const {
  return Wrap(reinterpret_cast<xmlNodePtr>(FindAttribute(Get(), name)));
}

XmlNode XmlNode::firstChildElement(std::string_view name) const {
  for (xmlNodePtr child = Get()->children; child; child = child->next)
    if (IsElement(child) && NameIs(child, name)) return Wrap(child);
  return XmlNode();
}

XmlNodeList XmlNode::getElementsByTagName(const std::string& name) const {
  return std::move(getElementsByTagNames({name}).front());
}

std::vector<XmlNodeList>
XmlNode::getElementsByTagNames(const std::vector<std::string>& names) const {
  std::vector<std::vector<xmlNodePtr>> found(names.size());
  xmlNodePtr node = Get();
  if (IsElement(node) || node->type == XML_DOCUMENT_NODE) CollectElements(node, names, found);
  std::vector<XmlNodeList> lists;
  lists.reserve(names.size());
  for (auto& nodes : found)
    lists.push_back(ListOf(std::move(nodes)));
  return lists;
}

XmlNodeList::XmlNodeList(std::shared_ptr<detail::Tree> tree, std::vector<xmlNodePtr> nodes)
    : tree_(std::move(tree)), nodes_(std::move(nodes)) {}

XmlNode XmlNodeList::item(int32_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= nodes_.size()) return XmlNode();
  return XmlNode(tree_, nodes_[static_cast<std::size_t>(index)]);
}

XmlNode XmlNodeList::nextNode() {
  return cursor_ < nodes_.size() ? XmlNode(tree_, nodes_[cursor_++]) : XmlNode();
}

} // namespace ostin::xml
