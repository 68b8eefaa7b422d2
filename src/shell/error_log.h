#pragma once
// The error log: "OstinLightError.log" in the host's music folder, one line per entry.
#include <string>

namespace ostin {

inline constexpr const char* kErrorLogName = "OstinLightError.log";

// Sets the path that the logger starts with at its first entry.
void SetLogPath(const std::string& path);
const std::string& LogPath();

// Adds one entry to the log. Never raises: a failure to write is dropped.
void WriteLog(const std::string& text) noexcept;

// Forgets that the logger was started, so that a test can start it again.
void ResetLogForTests();

} // namespace ostin
