#include <gtest/gtest.h>

#include "shell/error_log.h"
#include "shell/failure.h"
#include "temp_registry.h"

namespace ostin {
namespace {

using testing::TempRegistryTest;

class FailureTest : public TempRegistryTest {};

constexpr int32_t kInner = Code(0x80040400);
constexpr int32_t kOuter = Code(0x80040401);

void Inner(const std::function<void()>& body) {
  Guarded("Test Inner error ", kInner, body);
}
void Outer(const std::function<void()>& body) {
  Guarded("Test Outer error ", kOuter, [&] { Inner(body); });
}

TEST_F(FailureTest, HandlerRoads) {
  // What is checked, the body, the number and description that come out, the log line.
  using Case = std::tuple<std::string, std::function<void()>, int32_t, std::string, std::string>;
  const Case cases[] = {
      // clang-format off
      {"own failure passes up unchanged", [] { throw Failure(Code(0x80040555), "FinalePlugIn", "words for the user"); },
       Code(0x80040555), "words for the user", ""},
      {"foreign failure becomes the deepest operation's own", [] { throw Failure(0x1234, "msxml3.dll", "broken"); },
       kInner, "MusicXML internal error", "Test Inner error 4660: broken"},
      {"a C++ exception is a foreign failure", [] { throw std::runtime_error("oops"); },
       kInner, "MusicXML internal error", "Test Inner error -2147467259: oops"},
      // clang-format on
  };
  for (const auto& [name, body, number, description, logged] : cases) {
    std::filesystem::remove(Path("error.log"));
    try {
      Outer(body);
      ADD_FAILURE() << name;
    } catch (const Failure& failure) {
      EXPECT_EQ(std::tie(failure.Number, failure.Source, failure.Description),
                std::make_tuple(number, "FinalePlugIn", description))
          << name;
    }
    std::string log = Log();
    if (logged.empty()) {
      EXPECT_EQ(log, "") << name;
    } else {
      EXPECT_NE(log.find(logged), std::string::npos) << log;
      EXPECT_EQ(log.find("Test Outer"), std::string::npos) << "logged once, at the deepest";
      EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    }
    // The registers hold what the outermost handler saw.
    EXPECT_EQ(Err().ErrNumber, number) << name;
  }
}

TEST_F(FailureTest, GuardedGivesTheBodysResultAndLoggingNeverRaises) {
  EXPECT_EQ(Guarded("x ", 1, [] { return 42; }), 42);
  WriteLog("first\r\nsecond\nthird");
  EXPECT_NE(Log().find("Error: first / second / third\n"), std::string::npos) << Log();
  // A logger started before its path is set keeps no file; a path in no folder raises nothing.
  ResetLogForTests();
  WriteLog("before the path");
  SetLogPath(Path("late.log"));
  WriteLog("after the path");
  EXPECT_FALSE(std::filesystem::exists(Path("late.log")));
  ResetLogForTests();
  SetLogPath(Path("no-such-folder/error.log"));
  EXPECT_NO_THROW(WriteLog("lost"));
}

} // namespace
} // namespace ostin
