#pragma once
// Failure numbers of the raising places of the text and font records.
#include "host/record.h"

namespace ostin {

// The text block's plain calls; its 2004 calls raise numbers of their own at the same
// places, while each operation keeps one handler.
inline constexpr RecordPlaces kTextBlockPlaces{Code(0x80040306), Code(0x80040307), Code(0x80040785),
                                               Code(0x80040308), Code(0x80040786), Code(0x80040309),
                                               Code(0x80040787), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false,
                                               Code(0x8004079F), Code(0x00000000)};
inline constexpr RecordPlaces kTextBlock2004Places{
    Code(0x8004079D), Code(0x8004079E), Code(0x80040785), Code(0x8004079F),
    Code(0x80040786), Code(0x800407A0), Code(0x80040787), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kFontNamePlaces{Code(0x80040788), Code(0x80040789), Code(0x8004078A),
                                              Code(0x80040442), Code(0x8004078B), Code(0x00000000),
                                              Code(0x00000000), Code(0x800406AB), Code(0x8004078C),
                                              Code(0x00000000), Code(0x00000000), false};

} // namespace ostin
