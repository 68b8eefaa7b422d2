#pragma once
// MIDI and instrument records. Field lists in the order of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

#define OSTIN_SHAPE_Tempo(F)                                                                       \
  F(I32, Eldur, 1)                                                                                 \
  F(I32, Ratio, 1)                                                                                 \
  F(I16, Step, 1)                                                                                  \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_MidiEvent(F)                                                                   \
  F(I32, Start, 1)                                                                                 \
  F(I16, Message, 1)                                                                               \
  F(I16, Data1, 1)                                                                                 \
  F(I16, Data2, 1)

#define OSTIN_SHAPE_MidiPatch(F)                                                                   \
  F(I16, PatchAndPatchType_1, 1)                                                                   \
  F(I16, BankData_1, 1)                                                                            \
  F(I16, PatchAndPatchType_2, 1)                                                                   \
  F(I16, BankData_2, 1)                                                                            \
  F(I16, PatchAndPatchType_3, 1)                                                                   \
  F(I16, BankData_3, 1)

#define OSTIN_SHAPE_PatchList(F)                                                                   \
  F(B16, Layers, 4)                                                                                \
  F(I16, Chords, 1)                                                                                \
  F(I16, Expressions, 1)                                                                           \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_Orchestra(F) F(I16, PatchInfo, 1)

#define OSTIN_SHAPE_OrchestraText(F) OSTIN_SHAPE_OneText(F)

#define OSTIN_SHAPE_PercussionMapTitle(F) OSTIN_SHAPE_OneText(F)

#define OSTIN_SHAPE_PercussionNoteDef(F)                                                           \
  F(I16, MidiNote, 1)                                                                              \
  F(I16, StaffPos, 1)                                                                              \
  F(I16, ClosedNotehead, 1)                                                                        \
  F(I16, OpenNotehead, 1)

#define OSTIN_SHAPE_PercussionNoteName(F) OSTIN_SHAPE_OneText(F)

#define OSTIN_MIDI_RECORDS(R)                                                                      \
  R(Tempo, Tempo, K2, OSTIN_SHAPE_Tempo, CLS)                                                      \
  R(MidiEvent, MidiExpression, K2, OSTIN_SHAPE_MidiEvent, CLS)                                     \
  R(MidiPatch, MidiPatch, K2, OSTIN_SHAPE_MidiPatch, CLS)                                          \
  R(PatchList, PatchList, K2, OSTIN_SHAPE_PatchList, CLS)                                          \
  R(Orchestra, Orchestra, K2, OSTIN_SHAPE_Orchestra, CLS)                                          \
  R(OrchestraText, OrchestraText, K2, OSTIN_SHAPE_OrchestraText, CLS)                              \
  R(PercussionMapTitle, PercussionMapTitle, K2, OSTIN_SHAPE_PercussionMapTitle, CLS)               \
  R(PercussionNoteDef, PercussionNoteDef, K2, OSTIN_SHAPE_PercussionNoteDef, CLS)                  \
  R(PercussionNoteName, PercussionNoteName, K2, OSTIN_SHAPE_PercussionNoteName, CLS)

#define OSTIN_MIDI_VARIANTS(V)

// A percussion staff's assignment: the tag goes by value as a third key, the play map of
// 128 keys travels packed in 8 words.
#define OSTIN_SHAPE_DrumStaff(F) F(I32, Tag, 1) F(I16, PercMap, 1) F(P16, PlayMap, 8)
// A fretted instrument: the tuning block goes as one pointer on load and not at all on save.
#define OSTIN_SHAPE_FretInstrument(F)                                                              \
  F(I16, DiatonicStepsLo, 1)                                                                       \
  F(I16, DiatonicStepsHi, 1)                                                                       \
  F(I16, NoOfFrets, 1)                                                                             \
  F(I16, NoOfStrings, 1)                                                                           \
  F(I16, SpeedyClef, 1)                                                                            \
  F(TXT, Name, 1)                                                                                  \
  F(P16, StringTuning, 24)
#define OSTIN_SHAPE_FretInstrumentSave(F)                                                          \
  F(I16, DiatonicStepsLo, 1)                                                                       \
  F(I16, DiatonicStepsHi, 1)                                                                       \
  F(I16, NoOfFrets, 1)                                                                             \
  F(I16, NoOfStrings, 1)                                                                           \
  F(I16, SpeedyClef, 1)                                                                            \
  F(TXT, Name, 1)
#define OSTIN_MIDI_HANDMADE(H)                                                                     \
  H(DrumStaff, K2, OSTIN_SHAPE_DrumStaff)                                                          \
  H(FretInstrument, K2, OSTIN_SHAPE_FretInstrument)
// clang-format on
