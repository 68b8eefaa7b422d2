#pragma once
// Caret commands: host text carries its fonts inline (^font(Times New Roman,8192)^size(12)
// ^efx(plain)Allegro). The host parses one command at a time; these walks ask it to.
#include <array>
#include <cstdint>
#include <string>

namespace ostin {

// Text tags: the text store a caret command belongs to.
inline constexpr int32_t kNameTextTag = 25196;       // text blocks of names
inline constexpr int32_t kLineTextTag = 29555;       // custom line texts
inline constexpr int32_t kExpressionTextTag = 30832; // expressions
inline constexpr int32_t kVerseTextTag = 0x7665;     // lyric verses
inline constexpr int32_t kChorusTextTag = 0x6368;    // lyric choruses
inline constexpr int32_t kSectionTextTag = 0x7365;   // lyric sections

// Style bits of Efx.
inline constexpr int16_t kEfxBold = 0x01;
inline constexpr int16_t kEfxItalic = 0x02;
inline constexpr int16_t kEfxHidden = 0x80;

// The playback values of an expression that "^value()" and "^control()" insert.
struct ExpressionValues {
  int16_t Value = 0;
  int16_t Auxdata1 = 0;
};

// One run of text in one font.
struct TextPortion {
  int16_t Font = 0;
  std::string FontName;
  int16_t Size = 0;
  int16_t Efx = 0;
  std::array<int32_t, 4> HostValues{}; // the host's own, carried with the portion
  std::string Text;
  bool IsText = false;
  bool IsMusic = false;
  bool IsMusicText = false;
};

// FxParseCaretCommand: the host parses the command at the start of text into the portion's
// Font, Size, Efx and host values, and gives the text behind it. literalCaret tells an
// escaped caret "^^".
std::string ConsumeCaretCommand(const std::string& text, bool& literalCaret, int32_t tag,
                                TextPortion& portion);

// The value of a known insert at the start of text ("^flat()", "^value()", ...) with the
// length it takes in consumed; consumed 0 for anything else.
std::string InsertValue(const std::string& text, int& consumed,
                        const ExpressionValues* expression = nullptr);

// The text without its caret commands.
std::string ParseCaretCommands(int32_t tag, const std::string& text);

// The plain text of a smart shape label; empty when it is in a music font or holds commands
// past its leading ones.
std::string SmartShapeText(const std::string& text);

} // namespace ostin
