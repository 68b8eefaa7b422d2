#pragma once
// Reading and safely replacing whole files, with the failures MSXML gives for them.
#include <functional>
#include <string>
#include <string_view>

namespace ostin::xml::detail {

// Reads the whole file into content; returns 0 or the errno value of the failure.
int ReadWholeFile(const std::string& path, std::string& content);

// Replaces the file by content through a temporary file in its folder, so that the file is
// either as it was or complete. Raises 0x80070005 for a read-only file or a refusing folder,
// 0x80070003 for a missing folder.
void ReplaceFile(const std::string& path, std::string_view content);
// The same, with the content written by produce through the function it is given.
using ContentWriter = std::function<void(std::string_view)>;
void ReplaceFile(const std::string& path, const std::function<void(const ContentWriter&)>& produce);

} // namespace ostin::xml::detail
