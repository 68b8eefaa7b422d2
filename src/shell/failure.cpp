#include "shell/failure.h"

#include <new>

#include "shell/error_log.h"

namespace ostin {

namespace {
// Numbers the platform gives to failures of the C++ runtime.
constexpr int32_t kOutOfMemory = Code(0x8007000E);
constexpr int32_t kUnspecified = Code(0x80004005);
constexpr std::string_view kRuntimeSource = "C++ runtime";
} // namespace

ErrorRegisters& Err() {
  static ErrorRegisters registers;
  return registers;
}

Failure CurrentFailure() {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(kOutOfMemory, std::string(kRuntimeSource), "Out of memory");
  } catch (const std::exception& e) {
    return Failure(kUnspecified, std::string(kRuntimeSource), e.what());
  } catch (...) {
    return Failure(kUnspecified, std::string(kRuntimeSource), "Unknown failure");
  }
}

void Register(const Failure& failure) {
  Err().ErrNumber = failure.Number;
  Err().ErrSource = failure.Source;
  Err().ErrDescription = failure.Description;
}

void StandardHandler(std::string_view logText, int32_t ownNumber) {
  StandardHandlerAt(logText, ownNumber, ": ");
}

void StandardHandlerAt(std::string_view logText, int32_t ownNumber, std::string_view tail) {
  Failure failure = CurrentFailure();
  Register(failure);
  if (failure.IsOwn()) throw failure;
  WriteLog(std::string(logText) + std::to_string(failure.Number) + std::string(tail) +
           failure.Description);
  throw Failure::Internal(ownNumber);
}

void RaiseLogged(const std::string& logText, int32_t number) {
  WriteLog(logText);
  throw Failure::Internal(number);
}

} // namespace ostin
