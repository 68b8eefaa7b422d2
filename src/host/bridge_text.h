#pragma once
// Bridge calls of texts and fonts. Text crosses as bytes in the host's code page.
#include <cstdint>
#include <string>

#include "host/record_macros.h"
#include "host/record_shapes_text.h"

// Raw texts by tag and id. GetRawText answers 0, with empty text, for a text the
// document does not hold; SetRawText writes the text under that id (from 1).
int16_t GetRawText(int32_t tag, int16_t id, std::string* text);
int16_t SetRawText(int32_t tag, int16_t id, const std::string& text);

// The document's number of a font; a name the document does not know yet is added to its
// font table. 0 for failure.
int16_t FxFontNameToNum(const std::string& name);
// The name of a font number; 0, with an empty name, for a number the document lacks.
int16_t FxFontNumToName(int16_t num, std::string* name);

// Parses the caret command at the start of text and gives the text behind it in *rest. The
// command changes only what it sets: ^font the font and the first host value, ^size the
// size, ^efx the style bits. *literalCaret is -1 when the command was an escaped caret "^^",
// else 0. The tag names the text store the text belongs to.
int16_t FxParseCaretCommand(const std::string& text, int16_t* literalCaret, int32_t tag,
                            int16_t* font, int16_t* size, int16_t* efx, int32_t* value1,
                            int32_t* value2, int32_t* value3, int32_t* value4, std::string* rest);

// The font table as records: Cmper is the font number, Inci 0. CreateFontInfo answers for a
// font the table holds, and fails past its last font.
int16_t CreateFontInfo(OSTIN_KEYP_K2);
int16_t LoadFontInfo(OSTIN_KEYV_K2 OSTIN_SHAPE_FontName(OSTIN_PTR_PARAM));
int16_t NextFontInfo(OSTIN_KEYP_K2 OSTIN_SHAPE_FontName(OSTIN_PTR_PARAM));
