#pragma once
// The bits of Entry.Ef, Entry.Xef and Note.Flag as the engines use them.
#include <cstdint>

namespace ostin {

// Entry.Ef.
inline constexpr int32_t kEfValid = static_cast<int32_t>(0x80000000u); // start value of import
inline constexpr int32_t kEfNote = 0x40000000;                         // a note, not a rest
inline constexpr int32_t kEfLaunchesVoiceTwo = 0x20000000;
inline constexpr int32_t kEfVoiceTwo = 0x10000000;
inline constexpr int32_t kEfChords = 0x04000000; // Chord records hang here
inline constexpr int32_t kEfFloatingRest = 0x01000000;
inline constexpr int32_t kEfGrace = 0x00800000;
inline constexpr int32_t kEfNoteDetails = 0x00400000; // notehead, alteration, tablature records
inline constexpr int32_t kEfArticulations = 0x00200000;
inline constexpr int32_t kEfLyrics = 0x00100000;
inline constexpr int32_t kEfTupletStart = 0x00080000;
inline constexpr int32_t kEfPerformanceData = 0x00020000;
inline constexpr int32_t kEfHidden = 0x00008000;
inline constexpr int32_t kEfTieAlterations = 0x00001000;
inline constexpr int32_t kEfNewBeam = 0x00000800;
inline constexpr int32_t kEfSecondaryBeamBreaks = 0x00000400;
inline constexpr int32_t kEfFrozenStem = 0x00000100;
inline constexpr int32_t kEfCrossStaff = 0x00000040;
inline constexpr int32_t kEfStemDownWithUpBit = 0x00000010;  // with kEfStemUp: the stem points down
inline constexpr int32_t kEfStemUpWithoutUpBit = 0x00000008; // without kEfStemUp: it points up
inline constexpr int32_t kEfDoubleStem = 0x00000004;
inline constexpr int32_t kEfSplitStem = 0x00000002;
inline constexpr int32_t kEfStemUp = 0x00000001;

// Entry.Xef.
inline constexpr int16_t kXefStaffExpressions = 0x0001;
inline constexpr int16_t kXefInTuplet = 0x0008;
inline constexpr int16_t kXefEntryShapes = 0x0020;
inline constexpr int16_t kXefImported = 0x0080; // set by import on every entry
inline constexpr int16_t kXefGraceSlash = 0x0100;
inline constexpr int16_t kXefCue = 0x0400;       // from host 2002 on
inline constexpr int16_t kXefNoSpacing = 0x0800; // from host 2002 on

// Note.Flag.
inline constexpr int32_t kNoteValid = static_cast<int32_t>(0x80000000u); // start value of import
inline constexpr int32_t kNoteTieStart = 0x40000000;
inline constexpr int32_t kNoteTieEnd = 0x20000000;
inline constexpr int32_t kNoteCrossStaff = 0x10000000;
inline constexpr int32_t kNoteSplitStemUp = 0x02000000;
inline constexpr int32_t kNoteAccidentalShown = 0x01000000;
inline constexpr int32_t kNoteAccidentalParentheses = 0x00800000;
inline constexpr int32_t kNoteCue = 0x00400000;       // from host 2002 on
inline constexpr int32_t kNoteNoSpacing = 0x00200000; // from host 2002 on

} // namespace ostin
