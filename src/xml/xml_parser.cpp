#include "xml/xml_parser.h"

#include "shell/failure.h"
#include "xml/xml_errors.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xpath.h>

#include <cctype>
#include <climits>
#include <cstring>
#include <mutex>

namespace ostin::xml::detail {

namespace {

constexpr std::string_view::size_type kNone = std::string_view::npos;

// The settings of the parse running on this thread; null when libxml2 is used by anyone else.
thread_local const ParseSettings* activeSettings = nullptr;
xmlExternalEntityLoader defaultLoader = nullptr;

class ActiveSettings {
public:
  explicit ActiveSettings(const ParseSettings& settings) { activeSettings = &settings; }
  ~ActiveSettings() { activeSettings = nullptr; }
  ActiveSettings(const ActiveSettings&) = delete;
  ActiveSettings& operator=(const ActiveSettings&) = delete;
};

bool IsDrivePath(std::string_view path) {
  return path.size() >= 3 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':' &&
         (path[2] == '/' || path[2] == '\\');
}

bool HasScheme(std::string_view path) {
  return path.find("://") != kNone;
}

// A system identifier as a file path: "//" before an absolute or drive path is dropped, and a
// relative path is taken from the folder of the file that names it.
std::string LocalPath(std::string_view id, const char* base) {
  if (id.substr(0, 2) == "//" && (id.substr(2, 1) == "/" || IsDrivePath(id.substr(2)))) {
    id.remove_prefix(2);
  }
  if (id.empty() || id.front() == '/' || IsDrivePath(id) || HasScheme(id) || !base) {
    return std::string(id);
  }
  const std::string_view folder(base, std::strlen(base));
  const auto slash = folder.rfind('/');
  if (slash == kNone || HasScheme(folder)) return std::string(id);
  return std::string(folder.substr(0, slash + 1)) + std::string(id);
}

const char* CurrentFile(xmlParserCtxtPtr ctxt) {
  return ctxt && ctxt->input ? ctxt->input->filename : nullptr;
}

// Every external entity libxml2 reads passes here: refused when the parse does not resolve
// externals, otherwise read from its local path (the default loader keeps XML_PARSE_NONET).
xmlParserInputPtr LoadEntity(const char* url, const char* id, xmlParserCtxtPtr ctxt) {
  if (activeSettings && !activeSettings->resolveExternals) return nullptr;
  if (!url) return defaultLoader(url, id, ctxt);
  return defaultLoader(LocalPath(url, CurrentFile(ctxt)).c_str(), id, ctxt);
}

// The external subset's system identifier goes to the loader as written, not as a URI.
xmlParserInputPtr ResolveEntity(void* ctx, const xmlChar* publicId, const xmlChar* systemId) {
  auto* ctxt = static_cast<xmlParserCtxtPtr>(ctx);
  if (!systemId) return xmlSAX2ResolveEntity(ctx, publicId, systemId);
  const std::string path = LocalPath(reinterpret_cast<const char*>(systemId), CurrentFile(ctxt));
  return xmlLoadExternalEntity(path.c_str(), reinterpret_cast<const char*>(publicId), ctxt);
}

void Initialise() {
  static std::once_flag once;
  std::call_once(once, [] {
    xmlInitParser();
    defaultLoader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(LoadEntity);
  });
}

bool StartsWith(std::string_view text, std::size_t pos, std::string_view word) {
  return pos <= text.size() && text.substr(pos, word.size()) == word;
}

std::size_t EndOf(std::string_view text, std::size_t pos, std::string_view close) {
  const auto at = text.find(close, pos);
  return at == kNone ? kNone : at + close.size();
}

// The end of a DOCTYPE declaration whose name starts at pos: its '>' outside literals, comments,
// processing instructions and the internal subset.
std::size_t DoctypeEnd(std::string_view text, std::size_t pos) {
  int depth = 0;
  while (pos < text.size()) {
    const char c = text[pos];
    if (c == '"' || c == '\'') {
      pos = EndOf(text, pos + 1, std::string_view(&c, 1));
    } else if (StartsWith(text, pos, "<!--")) {
      pos = EndOf(text, pos + 4, "-->");
    } else if (StartsWith(text, pos, "<?")) {
      pos = EndOf(text, pos + 2, "?>");
    } else {
      ++pos;
      depth += c == '[' ? 1 : c == ']' ? -1 : 0;
      if (c == '>' && depth <= 0) return pos;
    }
  }
  return kNone;
}

struct Prolog {
  std::string declaration;
  std::string doctype;
};

// The XML declaration and the DOCTYPE declaration as the text writes them.
Prolog ScanProlog(std::string_view text) {
  Prolog prolog;
  std::size_t pos = StartsWith(text, 0, "\xEF\xBB\xBF") ? 3 : 0;
  if (StartsWith(text, pos, "<?xml") && pos + 5 < text.size() &&
      std::isspace(static_cast<unsigned char>(text[pos + 5]))) {
    const std::size_t end = EndOf(text, pos, "?>");
    if (end == kNone) return prolog;
    prolog.declaration = text.substr(pos, end - pos);
    pos = end;
  }
  while (pos < text.size()) {
    while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos])))
      ++pos;
    std::size_t end = kNone;
    if (StartsWith(text, pos, "<!--")) {
      end = EndOf(text, pos + 4, "-->");
    } else if (StartsWith(text, pos, "<?")) {
      end = EndOf(text, pos + 2, "?>");
    } else if (StartsWith(text, pos, "<!DOCTYPE")) {
      end = DoctypeEnd(text, pos + 9);
      if (end != kNone) prolog.doctype = text.substr(pos, end - pos);
      return prolog;
    }
    if (end == kNone) return prolog;
    pos = end;
  }
  return prolog;
}

bool IsBlank(const xmlChar* text) {
  for (; text && *text; ++text) {
    if (!std::strchr(" \t\r\n", *text)) return false;
  }
  return true;
}

bool KeepsSpace(xmlNodePtr element, bool inherited) {
  xmlChar* space = xmlGetNsProp(element, BAD_CAST "space", XML_XML_NAMESPACE);
  if (!space) return inherited;
  const bool preserve = xmlStrEqual(space, BAD_CAST "preserve");
  const bool reset = xmlStrEqual(space, BAD_CAST "default");
  xmlFree(space);
  return preserve || (inherited && !reset);
}

// Drops whitespace-only text nodes, except under xml:space="preserve", as MSXML does.
void DropBlankText(xmlNodePtr parent, bool preserve) {
  xmlNodePtr next = nullptr;
  for (xmlNodePtr child = parent->children; child; child = next) {
    next = child->next;
    if (child->type == XML_ELEMENT_NODE) {
      DropBlankText(child, KeepsSpace(child, preserve));
    } else if (!preserve && child->type == XML_TEXT_NODE && IsBlank(child->content)) {
      xmlUnlinkNode(child);
      xmlFreeNode(child);
    }
  }
}

// Error numbers: a missing file or DTD is 0x800C0006; any other error is 0xC00CE000 plus
// libxml2's error number, so the kind of error can still be told from the number.
ParseError ErrorFrom(const CapturedError& error, std::string_view text, const std::string& url) {
  ParseError result;
  result.errorCode = error.domain == XML_FROM_IO
                         ? Code(kResourceNotFound)
                         : Code(0xC00CE000u + static_cast<uint32_t>(error.code));
  result.reason = error.message;
  result.url = url;
  result.line = error.line;
  result.linepos = error.column;
  if (error.file.empty() || error.file == url) result.srcText = LineOf(text, error.line);
  return result;
}

struct ParserContextFree {
  void operator()(xmlParserCtxtPtr ctxt) const { xmlFreeParserCtxt(ctxt); }
};

int OptionsFor(const ParseSettings& settings, bool validate) {
  // Compact: short texts are kept inside their nodes, as the service's own texts are.
  int options = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_COMPACT;
  if (settings.resolveExternals) options |= XML_PARSE_DTDLOAD;
  if (validate) options |= XML_PARSE_DTDVALID;
  return options;
}

std::shared_ptr<Tree> TreeFrom(xmlDocPtr doc, Prolog prolog, std::size_t size, bool keepSpace) {
  auto tree = std::make_shared<Tree>(doc);
  if (!keepSpace) DropBlankText(reinterpret_cast<xmlNodePtr>(doc), false);
  xmlXPathOrderDocElems(doc);
  tree->declaration = std::move(prolog.declaration);
  if (doc->intSubset && !prolog.doctype.empty()) {
    tree->doctype = reinterpret_cast<const xmlNode*>(doc->intSubset);
    tree->doctypeText = std::move(prolog.doctype);
  }
  tree->sizeHint = size;
  return tree;
}

} // namespace

std::shared_ptr<Tree> EmptyTree() {
  Initialise();
  return std::make_shared<Tree>(xmlNewDoc(BAD_CAST "1.0"));
}

std::string LineOf(std::string_view text, int line) {
  if (line < 1) return {};
  std::size_t start = 0;
  for (int number = 1; number < line; ++number) {
    start = text.find_first_of("\r\n", start);
    if (start == kNone) return {};
    start += StartsWith(text, start, "\r\n") ? 2 : 1;
  }
  const auto end = text.find_first_of("\r\n", start);
  return std::string(text.substr(start, end == kNone ? kNone : end - start));
}

ParseOutcome Parse(std::string_view text, const std::string& url, const ParseSettings& settings) {
  Initialise();
  if (text.size() > INT_MAX) {
    return {
        nullptr,
        ErrorFrom({XML_FROM_PARSER, XML_ERR_INTERNAL_ERROR, 0, 0, "The document is too large.", {}},
                  text, url)};
  }
  Prolog prolog = ScanProlog(text);
  const bool validate =
      settings.validateOnParse && settings.resolveExternals && !prolog.doctype.empty();
  const ActiveSettings active(settings);
  const ErrorCapture capture;
  std::unique_ptr<xmlParserCtxt, ParserContextFree> ctxt(xmlNewParserCtxt());
  if (!ctxt) Fail("Out of memory.");
  ctxt->sax->resolveEntity = ResolveEntity;
  xmlDocPtr doc = xmlCtxtReadMemory(ctxt.get(), text.data(), static_cast<int>(text.size()),
                                    url.empty() ? nullptr : url.c_str(), nullptr,
                                    OptionsFor(settings, validate));
  if (doc && ctxt->wellFormed && (!validate || ctxt->valid) && !capture.first()) {
    return {TreeFrom(doc, std::move(prolog), text.size(), settings.preserveWhiteSpace), {}};
  }
  xmlFreeDoc(doc);
  const CapturedError unknown{
      XML_FROM_PARSER, XML_ERR_DOCUMENT_EMPTY, 0, 0, "The document is not valid XML.", {}};
  return {nullptr, ErrorFrom(capture.first().value_or(unknown), text, url)};
}

} // namespace ostin::xml::detail
