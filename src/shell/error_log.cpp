#include "shell/error_log.h"

#include <chrono>
#include <ctime>
#include <fstream>

namespace ostin {

namespace {
struct LogState {
  std::string path;        // set by the plug-in's Init
  std::string startedPath; // the path the logger was started with
  bool started = false;
};

LogState& State() {
  static LogState state;
  return state;
}

std::string Timestamp() {
  std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm tm{};
  localtime_r(&now, &tm);
  char buffer[32];
  std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &tm);
  return buffer;
}

// One entry is one line: line breaks inside the text are folded.
std::string OneLine(const std::string& text) {
  std::string line;
  line.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    line += (c == '\r' || c == '\n') ? std::string(" / ") : std::string(1, c);
  }
  return line;
}
} // namespace

void SetLogPath(const std::string& path) {
  State().path = path;
}
const std::string& LogPath() {
  return State().path;
}

void WriteLog(const std::string& text) noexcept {
  try {
    LogState& state = State();
    if (!state.started) {
      // The logger starts once per process, with the path known at that moment.
      state.startedPath = state.path;
      state.started = true;
    }
    if (state.startedPath.empty()) return;
    std::ofstream out(state.startedPath, std::ios::app | std::ios::binary);
    out << Timestamp() << " Error: " << OneLine(text) << '\n';
  } catch (...) {
  }
}

void ResetLogForTests() {
  State() = LogState{};
}

} // namespace ostin
