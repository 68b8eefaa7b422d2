#pragma once
// Entry-attached records: their key is an entry number and an incidence. Field lists in the order
// of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

// How a tuplet is drawn: shared by tuplets and the document's tuplet defaults.
#define OSTIN_SHAPE_TupletLook(F)                                                                  \
  F(I16, TupOffX, 1)                                                                               \
  F(I16, TupOffY, 1)                                                                               \
  F(I16, BrackOffX, 1)                                                                             \
  F(I16, BrackOffY, 1)                                                                             \
  F(I16, Flag, 1)                                                                                  \
  F(I16, LeftHookLen, 1)                                                                           \
  F(I16, LeftHookExt, 1)                                                                           \
  F(I16, RightHookLen, 1)                                                                          \
  F(I16, RightHookExt, 1)                                                                          \
  F(I16, Slope, 1)
#define OSTIN_SHAPE_Tuplet(F)                                                                      \
  F(I16, Tupnum, 1)                                                                                \
  F(I16, Tupsymdur, 1)                                                                             \
  F(I16, Refnum, 1)                                                                                \
  F(I16, Refdur, 1)                                                                                \
  F(I16, EndEnt, 1)                                                                                \
  OSTIN_SHAPE_TupletLook(F)

#define OSTIN_SHAPE_Articulation(F)                                                                \
  F(I16, Imrkdef, 1)                                                                               \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Posadder, 1)                                                                              \
  F(I16, Noteadd, 1)                                                                               \
  F(I16, Lonoadd, 1)

#define OSTIN_SHAPE_Chord(F)                                                                       \
  F(I16, Reg, 1)                                                                                   \
  F(I16, Altbass, 1)                                                                               \
  F(I16, Suffix, 1)                                                                                \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Lineadd, 1)                                                                               \
  F(I16, Fbposadd, 1)                                                                              \
  F(I16, Fblineadd, 1)                                                                             \
  F(I16, FbStyleID, 1)                                                                             \
  F(I16, FbData, 1)                                                                                \
  F(I16, CapoData, 1)

#define OSTIN_SHAPE_LearnedChord(F) OSTIN_SHAPE_Chord(F)

#define OSTIN_SHAPE_ChordPlayback(F) F(B16, Keys, 6)

#define OSTIN_SHAPE_CrossStaff(F)                                                                  \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Instrument, 1)

#define OSTIN_SHAPE_NoteheadMods(F)                                                                \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Percent, 1)                                                                               \
  F(I16, Nxdisp, 1)                                                                                \
  F(I16, Axdisp, 1)                                                                                \
  F(I16, Altnhead, 1)

#define OSTIN_SHAPE_NoteAlterations(F)                                                             \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Percent, 1)                                                                               \
  F(I16, Nxdisp, 1)                                                                                \
  F(I16, Altnhead, 1)                                                                              \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Font, 1)                                                                                  \
  F(I16, Size, 1)                                                                                  \
  F(I16, Efx, 1)                                                                                   \
  F(I16, Nydisp, 1)

#define OSTIN_SHAPE_NoteMods(F)                                                                    \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Percent, 1)                                                                               \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)

#define OSTIN_SHAPE_AcciAlterations(F)                                                             \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Percent, 1)                                                                               \
  F(I16, Axdisp, 1)                                                                                \
  F(I16, Aydisp, 1)                                                                                \
  F(I16, Altacc, 1)                                                                                \
  F(I16, Font, 1)                                                                                  \
  F(I16, Size, 1)                                                                                  \
  F(I16, Efx, 1)                                                                                   \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_TieAlteration(F)                                                               \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_TablatureMods(F)                                                               \
  F(I16, NoteID, 1)                                                                                \
  F(I16, StringNumber, 1)

#define OSTIN_SHAPE_SecondaryBeamBreakMods(F) F(P16, Breaks, 9)

#define OSTIN_SHAPE_PerformanceData(F)                                                             \
  F(I16, NoteID, 1)                                                                                \
  F(I16, Stadd, 1)                                                                                 \
  F(I16, Enadd, 1)                                                                                 \
  F(I16, Keyadd, 1)                                                                                \
  F(I16, Velocity, 1)

#define OSTIN_ENTRY_RECORDS(R)                                                                     \
  R(Tuplet, Tuplet, KE, OSTIN_SHAPE_Tuplet, CLS)                                                   \
  R(Articulation, Articulation, KE, OSTIN_SHAPE_Articulation, CLS)                                 \
  R(Chord, Chord, KE, OSTIN_SHAPE_Chord, CLS)                                                      \
  R(LearnedChord, LearnedChord, K3, OSTIN_SHAPE_LearnedChord, CLS)                                 \
  R(ChordPlayback, ChordPlayback, K2, OSTIN_SHAPE_ChordPlayback, CLSN)                             \
  R(CrossStaff, CrossStaff, KE, OSTIN_SHAPE_CrossStaff, CLS)                                       \
  R(NoteheadMods, NoteheadMods, KE, OSTIN_SHAPE_NoteheadMods, CLS)                                 \
  R(NoteAlterations, NoteheadMods2002, KE, OSTIN_SHAPE_NoteAlterations, CLS)                       \
  R(NoteMods, Alter, KE, OSTIN_SHAPE_NoteMods, CLS)                                                \
  R(AcciAlterations, AccidentalMods, KE, OSTIN_SHAPE_AcciAlterations, CLS)                         \
  R(TieAlteration, TieMods, KE, OSTIN_SHAPE_TieAlteration, CLS)                                    \
  R(TablatureMods, TablatureMods, KE, OSTIN_SHAPE_TablatureMods, CLS)                              \
  R(SecondaryBeamBreakMods, SecondaryBeamBreakMods, KE, OSTIN_SHAPE_SecondaryBeamBreakMods, CLS)   \
  R(PerformanceData, PerformanceData, KE, OSTIN_SHAPE_PerformanceData, CLS)

#define OSTIN_ENTRY_VARIANTS(V)

// Lyric syllables on entries, and the baselines of verses, choruses and sections (keys
// Number, Cmper1, Cmper2).
#define OSTIN_SHAPE_Lyric(F)                                                                       \
  F(I16, RawTextNum, 1)                                                                            \
  F(I16, Syll, 1)                                                                                  \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Lineadd, 1)                                                                               \
  F(I16, Wext, 1)
#define OSTIN_SHAPE_Baseline(F) F(I32, Offset, 1)
// Raw lyric texts under their id, which lyric records name as RawTextNum.
#define OSTIN_SHAPE_LyricText(F) OSTIN_SHAPE_OneText(F)
#define OSTIN_ENTRY_HANDMADE(H)                                                                    \
  H(VerseLyric, KE, OSTIN_SHAPE_Lyric)                                                             \
  H(ChorusLyric, KE, OSTIN_SHAPE_Lyric)                                                            \
  H(SectionLyric, KE, OSTIN_SHAPE_Lyric)                                                           \
  H(VerseLyricText, K2, OSTIN_SHAPE_LyricText)                                                     \
  H(ChorusLyricText, K2, OSTIN_SHAPE_LyricText)                                                    \
  H(SectionLyricText, K2, OSTIN_SHAPE_LyricText)                                                   \
  H(VerseBaseline, K3, OSTIN_SHAPE_Baseline)                                                       \
  H(ChorusBaseline, K3, OSTIN_SHAPE_Baseline)                                                      \
  H(SectionBaseline, K3, OSTIN_SHAPE_Baseline)
// clang-format on
