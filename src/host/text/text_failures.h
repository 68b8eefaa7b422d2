#pragma once
// Failure numbers of the text and font operations: the handler of each operation and the
// places that raise when the host refuses a call.
#include "shell/failure.h"

namespace ostin::text_failures {

inline constexpr int32_t kCheckFont = Code(0x8004078F);
inline constexpr int32_t kFindFont = Code(0x80040790);
inline constexpr int32_t kFirstMusicFont = Code(0x80040791);
inline constexpr int32_t kFirstTextFont = Code(0x80040792);
inline constexpr int32_t kInsertValue = Code(0x80040793);
inline constexpr int32_t kParseCaretCommands = Code(0x80040794);
inline constexpr int32_t kParseTextPortions = Code(0x80040795);
inline constexpr int32_t kTextPortionData = Code(0x80040796);
inline constexpr int32_t kParseMusicFont = Code(0x80040797);
inline constexpr int32_t kParseMusicTextFont = Code(0x80040798);
inline constexpr int32_t kParseAccidental = Code(0x80040799);
inline constexpr int32_t kParseNotehead = Code(0x8004079A);
inline constexpr int32_t kGetNotehead = Code(0x8004079B);
inline constexpr int32_t kSmartShapeText = Code(0x8004079C);
inline constexpr int32_t kAddTextNodes = Code(0x800407A1);
inline constexpr int32_t kJazzTextStrip = Code(0x800407A2);
inline constexpr int32_t kJazzTextExtendedStrip = Code(0x800407A3);
inline constexpr int32_t kParseCaretCommandRefused = Code(0x800407A4);
inline constexpr int32_t kSetRawTextRefused = Code(0x800407A6);
inline constexpr int32_t kFontNameToNumRefused = Code(0x800407A7);
inline constexpr int32_t kReadRawText = Code(0x800407A8);
inline constexpr int32_t kWriteRawText = Code(0x800407A9);
inline constexpr int32_t kFontNumberOf = Code(0x800407AB);
inline constexpr int32_t kFontNameOf = Code(0x800407AD);

} // namespace ostin::text_failures
