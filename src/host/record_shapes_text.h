#pragma once
// Text blocks and fonts.
// One field a line: clang-format would run the tables together.
// clang-format off

// A text block; the 2004 calls add the text's tag before the text.
#define OSTIN_SHAPE_TextBlock(F) OSTIN_SHAPE_TextBlockHead(F) F(I32, TextTag, 1) F(TXT, Text, 1)
#define OSTIN_SHAPE_TextBlockPlain(F) OSTIN_SHAPE_TextBlockHead(F) F(TXT, Text, 1)
#define OSTIN_SHAPE_TextBlockHead(F)                                                               \
  F(I16, TextID, 1)                                                                                \
  F(I16, Width, 1)                                                                                 \
  F(I16, Height, 1)                                                                                \
  F(I16, ShapeID, 1)                                                                               \
  F(I16, LineSpacing, 1)                                                                           \
  F(I16, XAdd, 1)                                                                                  \
  F(I16, YAdd, 1)                                                                                  \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Insethi, 1)                                                                               \
  F(I16, Insetlo, 1)                                                                               \
  F(I16, Stdlinehi, 1)                                                                             \
  F(I16, Stdlinelo, 1)

// One font of the document's font table. Its calls (CreateFontInfo, LoadFontInfo,
// NextFontInfo) have no Save and are written by hand over the font table of the
// document's texts, so the record is not listed among the stored records.
#define OSTIN_SHAPE_FontName(F)                                                                    \
  F(I16, CharsetAndOS, 1)                                                                          \
  F(I16, PitchAndFamily, 1)                                                                        \
  F(TXT, Text, 1)

#define OSTIN_TEXT_RECORDS(R)
#define OSTIN_TEXT_VARIANTS(V)                                                                     \
  V(TextBlock, TextBlock, K2, OSTIN_SHAPE_TextBlock, OSTIN_SHAPE_TextBlockPlain, 2004, CLS)
#define OSTIN_TEXT_HANDMADE(H)
// clang-format on
