#pragma once
// The one form in which every failure travels, the process-wide failure registers,
// and the standard handler that every operation ends in.
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace ostin {

inline constexpr std::string_view kPlugInSource = "FinalePlugIn";
inline constexpr std::string_view kInternalError = "MusicXML internal error";
inline constexpr int32_t kObjectErrorBase = static_cast<int32_t>(0x80040000u);

// Number from a hexadecimal failure code such as 0x8004031B.
constexpr int32_t Code(uint32_t hex) {
  return static_cast<int32_t>(hex);
}

class Failure : public std::exception {
public:
  Failure(int32_t number, std::string source, std::string description)
      : Number(number), Source(std::move(source)), Description(std::move(description)) {}

  // A failure raised by the program itself: source "FinalePlugIn", no words for the user yet.
  static Failure Internal(int32_t number) {
    return Failure(number, std::string(kPlugInSource), std::string(kInternalError));
  }

  bool IsOwn() const { return Source == kPlugInSource; }
  const char* what() const noexcept override { return Description.c_str(); }

  int32_t Number;
  std::string Source;
  std::string Description;
};

// The three process-wide registers; each handler copies the failure into them first.
struct ErrorRegisters {
  int32_t ErrNumber = 0;
  std::string ErrSource;
  std::string ErrDescription;
};
ErrorRegisters& Err();

// Turns whatever is in flight into a Failure: a Failure as it is, a foreign C++ exception
// with a source of its own. Call only inside a catch block.
Failure CurrentFailure();

// Copies the failure into the registers.
void Register(const Failure& failure);

// The standard handler: own failures pass up unchanged, a foreign one is logged once as
// log text + number + ": " + description and goes on as this operation's internal error.
[[noreturn]] void StandardHandler(std::string_view logText, int32_t ownNumber);
// The same, with `tail` in place of ": " between the number and the description, for
// operations whose log line names a place in the score.
[[noreturn]] void StandardHandlerAt(std::string_view logText, int32_t ownNumber,
                                    std::string_view tail);

// Runs body under the standard handler of one operation.
template <class Body>
decltype(auto) Guarded(std::string_view logText, int32_t ownNumber, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    StandardHandler(logText, ownNumber);
  }
}

// Runs body under the standard handler; `tail` gives the place for the log line.
template <class Tail, class Body>
decltype(auto) GuardedAt(std::string_view logText, int32_t ownNumber, Tail&& tail, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    StandardHandlerAt(logText, ownNumber, tail());
  }
}

// Logs the text, then raises the program's own failure with that number.
[[noreturn]] void RaiseLogged(const std::string& logText, int32_t number);

} // namespace ostin
