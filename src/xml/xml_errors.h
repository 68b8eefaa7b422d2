#pragma once
// The failures the document service raises, and the capture of libxml2's error reports.
#include <libxml/xmlerror.h>

#include <cstdint>
#include <optional>
#include <string>

namespace ostin::xml::detail {

inline constexpr uint32_t kUnspecified = 0x80004005u;  // E_FAIL
inline constexpr uint32_t kAccessDenied = 0x80070005u; // E_ACCESSDENIED
inline constexpr uint32_t kPathNotFound = 0x80070003u;
inline constexpr uint32_t kResourceNotFound = 0x800C0006u; // INET_E_OBJECT_NOT_FOUND

// Raises a failure from the document service (source "msxml3.dll").
[[noreturn]] void Fail(uint32_t code, const std::string& description);
[[noreturn]] void Fail(const std::string& description);
// Raises the failure a file operation meets for errno value `error`.
[[noreturn]] void FailForErrno(int error);
// Raises the failure of a call through a handle that refers to no node.
[[noreturn]] void FailUnset();

struct CapturedError {
  int domain = 0;
  int code = 0;
  int line = 0;
  int column = 0;
  std::string message; // without its trailing line end
  std::string file;
};

// While alive, collects libxml2's reports on this thread instead of printing them; the first
// error (warnings aside) is kept.
class ErrorCapture {
public:
  ErrorCapture();
  ~ErrorCapture();
  ErrorCapture(const ErrorCapture&) = delete;
  ErrorCapture& operator=(const ErrorCapture&) = delete;

  const std::optional<CapturedError>& first() const { return first_; }
  // The first error's message, or the fallback when there was none.
  std::string Message(const std::string& fallback) const;

private:
  static void Receive(void* self, xmlErrorPtr error);

  xmlStructuredErrorFunc savedHandler_;
  void* savedContext_;
  std::optional<CapturedError> first_;
};

std::string TrimLineEnd(std::string text);

} // namespace ostin::xml::detail
