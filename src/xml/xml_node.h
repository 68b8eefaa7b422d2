#pragma once
// Handles to the nodes of a document held by the XML document service, with MSXML's operations.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct _xmlNode;

namespace ostin::xml {

namespace detail {
struct Tree;
}

// MSXML's node type numbers, as nodeType() gives them.
enum NodeType : int32_t {
  NODE_ELEMENT = 1,
  NODE_ATTRIBUTE = 2,
  NODE_TEXT = 3,
  NODE_CDATA_SECTION = 4,
  NODE_ENTITY_REFERENCE = 5,
  NODE_PROCESSING_INSTRUCTION = 7,
  NODE_COMMENT = 8,
  NODE_DOCUMENT = 9,
  NODE_DOCUMENT_TYPE = 10,
  NODE_DOCUMENT_FRAGMENT = 11,
};

class XmlNodeList;

// A cheap, copyable handle to one node of any kind; it keeps the node's document alive.
// An empty handle is false; calling an operation through it raises failure 91.
class XmlNode {
public:
  XmlNode() = default;
  // Used by the service itself to hand out nodes.
  XmlNode(std::shared_ptr<detail::Tree> tree, _xmlNode* node);

  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(const XmlNode& other) const { return node_ == other.node_; }

  int32_t nodeType() const;
  std::string nodeName() const;
  // The text of the node and its descendants; writing replaces all children by one text node.
  std::string text() const;
  void text(const std::string& value) const;
  // The node serialised; a doctype gives its DOCTYPE text as it was loaded.
  std::string xml() const;

  XmlNode parentNode() const;
  XmlNode firstChild() const;
  XmlNode lastChild() const;
  XmlNode previousSibling() const;
  XmlNode nextSibling() const;
  XmlNodeList childNodes() const;
  bool hasChildNodes() const;

  // XPath 1.0 relative to this node; results in document order.
  XmlNode selectSingleNode(const std::string& xpath) const;
  XmlNodeList selectNodes(const std::string& xpath) const;

  // Each returns the node now in the tree (moved if it was elsewhere in the same document; a
  // node of another document is copied in and the copy returned).
  XmlNode appendChild(const XmlNode& newChild) const;
  // An empty refChild appends.
  XmlNode insertBefore(const XmlNode& newChild, const XmlNode& refChild) const;
  // Returns the old child, now outside the tree.
  XmlNode replaceChild(const XmlNode& newChild, const XmlNode& oldChild) const;
  XmlNode removeChild(const XmlNode& child) const;
  // A copy outside the tree; attributes are copied either way, children only when deep.
  XmlNode cloneNode(bool deep) const;

  // Element operations.
  std::string tagName() const;
  std::string getAttribute(const std::string& name) const; // empty when absent
  void setAttribute(const std::string& name, const std::string& value) const;
  XmlNode getAttributeNode(const std::string& name) const;         // empty when absent
  XmlNodeList getElementsByTagName(const std::string& name) const; // "*" for all
  // This service's own: getElementsByTagName for each name, from one walk of the subtree.
  std::vector<XmlNodeList> getElementsByTagNames(const std::vector<std::string>& names) const;
  // This service's own: the first child element of that name, or an empty node; what
  // selectSingleNode(name) finds, without an XPath evaluation.
  XmlNode firstChildElement(std::string_view name) const;

protected:
  _xmlNode* Get() const; // the node, or failure 91 for an empty handle
  XmlNode Wrap(_xmlNode* node) const;
  XmlNodeList ListOf(std::vector<_xmlNode*> nodes) const;

  std::shared_ptr<detail::Tree> tree_;
  _xmlNode* node_ = nullptr;

private:
  XmlNode Insert(const XmlNode& newChild, _xmlNode* before, _xmlNode* replaced) const;
  _xmlNode* ChildOf(const XmlNode& child) const; // the child, or a failure if it is not one
};

// A snapshot of nodes, taken when the list was made.
class XmlNodeList {
public:
  XmlNodeList() = default;
  XmlNodeList(std::shared_ptr<detail::Tree> tree, std::vector<_xmlNode*> nodes);

  int32_t length() const { return static_cast<int32_t>(nodes_.size()); }
  XmlNode item(int32_t index) const; // empty out of range
  XmlNode nextNode();                // empty at the end
  void reset() { cursor_ = 0; }

private:
  std::shared_ptr<detail::Tree> tree_;
  std::vector<_xmlNode*> nodes_;
  std::size_t cursor_ = 0;
};

} // namespace ostin::xml
