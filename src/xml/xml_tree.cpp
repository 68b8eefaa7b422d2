#include "xml/xml_tree.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

namespace ostin::xml::detail {

namespace {

constexpr const char* kLineEnd = "\r\n";

const char* Chars(const xmlChar* text) {
  return text ? reinterpret_cast<const char*>(text) : "";
}

// Writes character data; a line feed is written as CR LF, as MSXML writes line ends.
// Serialised text on its way out: kept whole, or handed on in pieces once it has grown, so a
// large document is never held as one string.
struct Output {
  static constexpr std::size_t kPiece = 1 << 20;

  std::string text;
  const std::function<void(std::string_view)>* pass = nullptr; // null: the text is kept whole
  char passedLast = 0;

  template <class Piece> Output& operator+=(const Piece& piece) {
    text += piece;
    return *this;
  }
  char back() const { return text.empty() ? passedLast : text.back(); }
  // Hands on what has gathered once it makes a piece.
  void PassOn() {
    if (!pass || text.size() < kPiece) return;
    passedLast = text.back();
    (*pass)(text);
    text.clear();
  }
};

void AppendLines(Output& out, const xmlChar* text) {
  char previous = 0;
  for (const char* c = Chars(text); *c; previous = *c++) {
    if (*c == '\n' && previous != '\r') out += '\r';
    out += *c;
  }
}

void AppendEscaped(Output& out, const xmlChar* text, bool attribute) {
  char previous = 0;
  for (const char* c = Chars(text); *c; previous = *c++) {
    if (*c == '&') {
      out += "&amp;";
    } else if (*c == '<') {
      out += "&lt;";
    } else if (*c == '>' && !attribute) {
      out += "&gt;";
    } else if (*c == '"' && attribute) {
      out += "&quot;";
    } else {
      if (*c == '\n' && previous != '\r' && !attribute) out += '\r';
      out += *c;
    }
  }
}

void AppendText(std::string& out, const xmlNode* node) {
  if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
    out += Chars(node->content);
    return;
  }
  if (!ShowsChildren(node)) return;
  for (const xmlNode* child = node->children; child; child = child->next) {
    AppendText(out, child);
  }
}

void WriteAttribute(Output& out, const xmlNode* attr) {
  out += QualifiedName(attr);
  out += "=\"";
  for (const xmlNode* child = attr->children; child; child = child->next) {
    AppendEscaped(out, child->content, true);
  }
  out += '"';
}

void WriteNamespaces(Output& out, const xmlNs* ns) {
  for (; ns; ns = ns->next) {
    out += ns->prefix ? std::string(" xmlns:") + Chars(ns->prefix) : std::string(" xmlns");
    out += "=\"";
    AppendEscaped(out, ns->href, true);
    out += '"';
  }
}

void Write(Output& out, const Tree& tree, const xmlNode* node);

void WriteElement(Output& out, const Tree& tree, const xmlNode* element) {
  // Most elements have no prefix: their name is written as it stands, without a copy.
  const std::string prefixed = element->ns && element->ns->prefix ? QualifiedName(element) : "";
  const std::string_view name =
      prefixed.empty() ? std::string_view(Chars(element->name)) : std::string_view(prefixed);
  out += '<';
  out += name;
  WriteNamespaces(out, element->nsDef);
  for (const xmlAttr* attr = element->properties; attr; attr = attr->next) {
    out += ' ';
    WriteAttribute(out, reinterpret_cast<const xmlNode*>(attr));
  }
  if (!element->children) {
    out += "/>";
    return;
  }
  out += '>';
  for (const xmlNode* child = element->children; child; child = child->next) {
    if (tree.breakBetweenTags && out.back() == '>' && child->type != XML_TEXT_NODE) out += kLineEnd;
    Write(out, tree, child);
  }
  if (tree.breakBetweenTags && out.back() == '>') out += kLineEnd;
  out += "</";
  out += name;
  out += '>';
  out.PassOn();
}

// A doctype the loaded text did not give, in libxml2's own form.
void WriteDumpedDoctype(Output& out, const xmlNode* node) {
  std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), xmlBufferFree);
  xmlNodeDump(buffer.get(), node->doc, const_cast<xmlNode*>(node), 0, 0);
  out += Chars(xmlBufferContent(buffer.get()));
}

void WriteDocument(Output& out, const Tree& tree, const xmlNode* document) {
  if (!document->children) return;
  if (!tree.declaration.empty()) out += tree.declaration + kLineEnd;
  for (const xmlNode* child = document->children; child; child = child->next) {
    Write(out, tree, child);
    out += kLineEnd;
  }
}

void Write(Output& out, const Tree& tree, const xmlNode* node) {
  switch (node->type) {
  case XML_ELEMENT_NODE:
    return WriteElement(out, tree, node);
  case XML_TEXT_NODE:
    return AppendEscaped(out, node->content, false);
  case XML_CDATA_SECTION_NODE:
    out += "<![CDATA[";
    AppendLines(out, node->content);
    out += "]]>";
    return;
  case XML_COMMENT_NODE:
    out += "<!--";
    AppendLines(out, node->content);
    out += "-->";
    return;
  case XML_PI_NODE:
    out += "<?";
    out += Chars(node->name);
    if (node->content && *node->content) {
      out += ' ';
      AppendLines(out, node->content);
    }
    out += "?>";
    return;
  case XML_ENTITY_REF_NODE:
    out += '&';
    out += Chars(node->name);
    out += ';';
    return;
  case XML_ATTRIBUTE_NODE:
    return WriteAttribute(out, node);
  case XML_DTD_NODE:
    if (node == tree.doctype) {
      out += tree.doctypeText;
    } else {
      WriteDumpedDoctype(out, node);
    }
    return;
  case XML_DOCUMENT_NODE:
  case XML_DOCUMENT_FRAG_NODE:
    return WriteDocument(out, tree, node);
  default:
    return;
  }
}

} // namespace

xmlXPathContextPtr Tree::XPathContext() {
  if (!xpath) xpath = xmlXPathNewContext(doc);
  return xpath;
}

xmlXPathCompExprPtr Tree::Compiled(const std::string& expression) {
  constexpr std::size_t kMostKept = 512;
  auto found = compiled.find(expression);
  if (found != compiled.end()) return found->second;
  xmlXPathCompExprPtr expr = xmlXPathCtxtCompile(XPathContext(), BAD_CAST expression.c_str());
  if (!expr) return nullptr;
  // Expressions that name ids vary without end; the cache starts over when it is full.
  if (compiled.size() >= kMostKept) {
    for (auto& [text, kept] : compiled)
      xmlXPathFreeCompExpr(kept);
    compiled.clear();
  }
  compiled.emplace(expression, expr);
  return expr;
}

void Tree::Compact() {
  std::erase_if(detached, [](xmlNodePtr node) { return node->parent != nullptr; });
  compactAt = std::max<std::size_t>(1024, detached.size() * 2);
}

Tree::~Tree() {
  for (auto& [text, expr] : compiled)
    xmlXPathFreeCompExpr(expr);
  if (xpath) xmlXPathFreeContext(xpath);
  // Only the roots of detached subtrees are freed, each once; the rest go with their root or
  // the document. A node kept twice is marked when first taken.
  static int taken;
  std::vector<xmlNodePtr> roots;
  for (xmlNodePtr node : detached) {
    if (node->parent || node->_private == &taken) continue;
    node->_private = &taken;
    roots.push_back(node);
  }
  for (xmlNodePtr root : roots)
    xmlFreeNode(root);
  xmlFreeDoc(doc);
}

bool ShowsChildren(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE ||
         node->type == XML_ATTRIBUTE_NODE || node->type == XML_DOCUMENT_FRAG_NODE;
}

std::string QualifiedName(const xmlNode* node) {
  const bool prefixed = (node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE) &&
                        node->ns && node->ns->prefix;
  std::string name = prefixed ? std::string(Chars(node->ns->prefix)) + ':' : std::string();
  return name + Chars(node->name);
}

std::string TextOf(const xmlNode* node) {
  if (node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE) return Chars(node->content);
  std::string text;
  AppendText(text, node);
  return text;
}

void Link(xmlNodePtr parent, xmlNodePtr node, xmlNodePtr before) {
  node->parent = parent;
  node->next = before;
  node->prev = before ? before->prev : parent->last;
  if (node->prev) {
    node->prev->next = node;
  } else {
    parent->children = node;
  }
  if (before) {
    before->prev = node;
  } else {
    parent->last = node;
  }
}

// libxml2's compact form, as its parser makes it: a text shorter than two pointers lives in
// the node's unused attribute and namespace fields, which spares one allocation per text.
void SetText(xmlNodePtr node, const std::string& text) {
  auto* inside = reinterpret_cast<xmlChar*>(&node->properties);
  const bool owned = node->content && node->content != inside &&
                     !(node->doc && node->doc->dict && xmlDictOwns(node->doc->dict, node->content));
  if (owned) xmlFree(node->content);
  node->properties = nullptr;
  node->nsDef = nullptr;
  if (text.size() < 2 * sizeof(void*)) {
    std::memcpy(inside, text.c_str(), text.size() + 1);
    node->content = inside;
  } else {
    node->content =
        xmlStrndup(reinterpret_cast<const xmlChar*>(text.data()), static_cast<int>(text.size()));
  }
}

xmlNodePtr NewText(xmlDocPtr doc, const std::string& text) {
  xmlNodePtr node = xmlNewDocText(doc, nullptr);
  if (node) SetText(node, text);
  return node;
}

void ForgetOrder(xmlNodePtr node) {
  if (node->type != XML_ELEMENT_NODE) return;
  node->content = nullptr;
  for (xmlNodePtr child = node->children; child; child = child->next)
    ForgetOrder(child);
}

std::string Serialize(const Tree& tree, const xmlNode* node) {
  Output out;
  if (node->type == XML_DOCUMENT_NODE) out.text.reserve(tree.sizeHint + tree.sizeHint / 8);
  Write(out, tree, node);
  return std::move(out.text);
}

void Serialize(const Tree& tree, const xmlNode* node,
               const std::function<void(std::string_view)>& pass) {
  Output out;
  out.pass = &pass;
  out.text.reserve(Output::kPiece + Output::kPiece / 8);
  Write(out, tree, node);
  if (!out.text.empty()) pass(out.text);
}

} // namespace ostin::xml::detail
