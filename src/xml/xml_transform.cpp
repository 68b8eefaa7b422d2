// XSLT 1.0 through libxslt, with the output taken into the result document as if loaded.
#include "xml/xml_document.h"

#include "xml/xml_errors.h"
#include "xml/xml_parser.h"

#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <cstdarg>
#include <cstdio>
#include <utility>

namespace ostin::xml {

using detail::Fail;

namespace {

struct DocFree {
  void operator()(xmlDocPtr doc) const { xmlFreeDoc(doc); }
};
struct StyleFree {
  void operator()(xsltStylesheetPtr style) const { xsltFreeStylesheet(style); }
};
struct ContextFree {
  void operator()(xsltTransformContextPtr context) const { xsltFreeTransformContext(context); }
};
struct SecurityFree {
  void operator()(xsltSecurityPrefsPtr prefs) const { xsltFreeSecurityPrefs(prefs); }
};
using DocPtr = std::unique_ptr<xmlDoc, DocFree>;

// Collects libxslt's messages (and libxml2's) while alive, instead of printing them.
class XsltMessages {
public:
  XsltMessages() { xsltSetGenericErrorFunc(this, &XsltMessages::Receive); }
  ~XsltMessages() { xsltSetGenericErrorFunc(nullptr, nullptr); }
  XsltMessages(const XsltMessages&) = delete;
  XsltMessages& operator=(const XsltMessages&) = delete;

  // libxslt's words, or libxml2's first error, or the fallback.
  std::string Text(const std::string& fallback) const {
    const std::string own = detail::TrimLineEnd(text_);
    return own.empty() ? libxml_.Message(fallback) : own;
  }

private:
  static void Receive(void* self, const char* format, ...) {
    char buffer[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    static_cast<XsltMessages*>(self)->text_ += buffer;
  }

  detail::ErrorCapture libxml_;
  std::string text_;
};

xsltStylesheetPtr CompileStyleSheet(xmlDocPtr source, const XsltMessages& messages) {
  DocPtr copy(xmlCopyDoc(source, 1));
  if (!copy) Fail("Out of memory.");
  xsltStylesheetPtr style = xsltParseStylesheetDoc(copy.get());
  if (!style) Fail(messages.Text("The style sheet is not a valid XSLT style sheet."));
  copy.release(); // the style sheet owns it now
  return style;
}

// The output of the style sheet applied to a copy of the source, serialised.
std::string Apply(xsltStylesheetPtr style, xmlDocPtr source, const XsltMessages& messages) {
  DocPtr input(xmlCopyDoc(source, 1));
  std::unique_ptr<xsltSecurityPrefs, SecurityFree> security(xsltNewSecurityPrefs());
  std::unique_ptr<xsltTransformContext, ContextFree> context(
      xsltNewTransformContext(style, input.get()));
  if (!input || !security || !context) Fail("Out of memory.");
  xsltSetSecurityPrefs(security.get(), XSLT_SECPREF_READ_NETWORK, xsltSecurityForbid);
  xsltSetSecurityPrefs(security.get(), XSLT_SECPREF_WRITE_NETWORK, xsltSecurityForbid);
  xsltSetCtxtSecurityPrefs(security.get(), context.get());
  DocPtr output(
      xsltApplyStylesheetUser(style, input.get(), nullptr, nullptr, nullptr, context.get()));
  if (!output || context->state != XSLT_STATE_OK) Fail(messages.Text("The transformation failed."));
  xmlChar* text = nullptr;
  int length = 0;
  if (xsltSaveResultToString(&text, &length, output.get(), style) != 0) Fail("Out of memory.");
  std::string result(reinterpret_cast<const char*>(text ? text : BAD_CAST ""),
                     static_cast<std::size_t>(length));
  xmlFree(text);
  return result;
}

} // namespace

void XmlDocument::transformNodeToObject(const XmlDocument& styleSheet, XmlDocument& result) const {
  std::string output;
  {
    const XsltMessages messages;
    std::unique_ptr<xsltStylesheet, StyleFree> style(
        CompileStyleSheet(styleSheet.tree_->doc, messages));
    output = Apply(style.get(), tree_->doc, messages);
  }
  if (output.empty()) {
    result.Take(nullptr, {});
    return;
  }
  // The output is read back without its DTD: it names no file this program has to read.
  auto outcome = detail::Parse(output, {}, {false, false, result.preserveWhiteSpace});
  if (!outcome.tree) Fail(outcome.error.reason);
  result.Take(std::move(outcome.tree), {});
}

} // namespace ostin::xml
