#include "xml/xml_errors.h"

#include "shell/failure.h"

#include <cerrno>
#include <cstring>

namespace ostin::xml::detail {

namespace {
constexpr const char* kSource = "msxml3.dll";
} // namespace

void Fail(uint32_t code, const std::string& description) {
  throw Failure(Code(code), kSource, description);
}

void Fail(const std::string& description) {
  Fail(kUnspecified, description);
}

void FailForErrno(int error) {
  switch (error) {
  case EACCES:
  case EPERM:
  case EROFS:
  case EISDIR:
    Fail(kAccessDenied, "Access is denied.");
  case ENOENT:
  case ENOTDIR:
    Fail(kPathNotFound, "The system cannot find the path specified.");
  default:
    Fail(kUnspecified, std::strerror(error));
  }
}

// An empty object reference is a runtime error of the program, not of the service.
void FailUnset() {
  throw Failure(91, "OstinConvLt", "Object variable or With block variable not set");
}

std::string TrimLineEnd(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
    text.pop_back();
  return text;
}

ErrorCapture::ErrorCapture()
    : savedHandler_(xmlStructuredError), savedContext_(xmlStructuredErrorContext) {
  xmlSetStructuredErrorFunc(this, &ErrorCapture::Receive);
}

ErrorCapture::~ErrorCapture() {
  xmlSetStructuredErrorFunc(savedContext_, savedHandler_);
}

std::string ErrorCapture::Message(const std::string& fallback) const {
  return first_ ? first_->message : fallback;
}

void ErrorCapture::Receive(void* self, xmlErrorPtr error) {
  auto* capture = static_cast<ErrorCapture*>(self);
  if (capture->first_ || !error || error->level < XML_ERR_ERROR) return;
  capture->first_ = CapturedError{error->domain,
                                  error->code,
                                  error->line,
                                  error->int2,
                                  TrimLineEnd(error->message ? error->message : ""),
                                  error->file ? error->file : ""};
}

} // namespace ostin::xml::detail
