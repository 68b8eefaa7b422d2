#pragma once
// The shapes of the host's records, written once. Each shape lists the fields of one
// bridge call in call order; from it come the bridge declarations, the stand-in's
// storage and the record classes. A field is F(kind, name, count):
//   I16, I32  one 16- or 32-bit signed value (count 1)
//   TXT       one text, bytes in the host's code page on the wire
//   B16, B32  a fixed block of `count` values, one pointer per element on the wire
//   P16       a block of 16-bit values passed as one pointer; its size is the host's
// Carried words are I16 fields named CarriedN: held only to be written back.
//
// Records are listed below as R(Class, BridgeName, KeyForm, SHAPE, OPS), or, for a
// record with a longer call from a host year on, V(Class, BridgeName, KeyForm, SHAPE,
// PLAIN_SHAPE, Year, OPS): SHAPE is the field list of the year's call, PLAIN_SHAPE that
// of the call made below it. OPS are the calls the host offers: CLS Create, Load, Save;
// N adds Next, D adds Delete.
// Key forms: K2 two 16-bit keys (Cmper, Inci or Cmper1, Cmper2); KE a 32-bit entry
// number and a 16-bit incidence.

#define OSTIN_SHAPE_FreezeMusic(F) F(I16, NextMeas, 1) F(I16, Flag, 1)

#define OSTIN_SHAPE_ClefElement(F)                                                                 \
  F(I16, Clef, 1) F(I16, ClefEdu, 1) F(I16, Percent, 1) F(I16, Offset, 1)

#define OSTIN_SHAPE_Settings12(F)                                                                  \
  F(I16, DisplayTransposed, 1)                                                                     \
  F(I16, KeysigCancelOutgoing, 1)                                                                  \
  F(I16, KeysigNaturalsInC, 1)                                                                     \
  F(I16, KeysigModeChange, 1) F(I16, CrossStaffInOriginal, 1) F(I16, Symbol8va, 1)

#define OSTIN_SHAPE_Settings13(F)                                                                  \
  F(I16, TextTabChars, 1)                                                                          \
  F(I16, MetronomeBeat, 1)                                                                         \
  F(I16, ClefPercent, 1)                                                                           \
  F(I16, ClefOffset, 1) F(I16, UseFirstPageTop, 1) F(I16, UseFirstSysMargin, 1)

#define OSTIN_SHAPE_Settings39(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1) F(I16, MetronomeSpeed, 1) F(I16, Carried4, 1) F(I16, Carried5, 1)

#define OSTIN_SHAPE_Settings41(F)                                                                  \
  F(I16, BeamStyle, 1)                                                                             \
  F(I16, BeamFlags, 1)                                                                             \
  F(I16, Carried1, 1) F(I16, Carried2, 1) F(I16, Carried3, 1) F(I16, Carried4, 1)

#define OSTIN_SHAPE_Settings44(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1) F(I16, Carried4, 1) F(I16, GraceAlwaysSlash, 1) F(I16, Carried5, 1)

#define OSTIN_SHAPE_MeasureSpec(F)                                                                 \
  F(I16, Measpace, 1)                                                                              \
  F(I16, Key, 1)                                                                                   \
  F(I16, Beats, 1)                                                                                 \
  F(I16, DivBeat, 1)                                                                               \
  F(I16, Auxflag, 1)                                                                               \
  F(I16, Meflag, 1)                                                                                \
  F(I16, DispBeats, 1)                                                                             \
  F(I16, DispDivbeat, 1)                                                                           \
  F(I16, Newflag, 1) F(I16, Custombarshape, 1) F(I16, Customleftbarshape, 1)

#define OSTIN_SHAPE_InstrumentUsed(F)                                                              \
  F(I16, Inst, 1)                                                                                  \
  F(I32, Separ, 1)                                                                                 \
  F(I16, Measstart_meas, 1)                                                                        \
  F(I32, Measstart_edu, 1) F(I16, Measend_meas, 1) F(I32, Measend_edu, 1)

#define OSTIN_SHAPE_FieldInfo(F)                                                                   \
  F(I16, Field1, 1)                                                                                \
  F(I16, Field2, 1) F(I16, Field3, 1) F(I16, Field4, 1) F(I16, Field5, 1) F(I16, Field6, 1)

// The frame holder: the plain call passes the four frames one by one, the 2004 call
// passes ClefPercent, one more word and the whole block of frames.
#define OSTIN_SHAPE_Gfhold(F)                                                                      \
  F(I16, Clef, 1) F(I16, Flag, 1) F(I16, ClefPercent, 1) F(I16, Carried1, 1) F(P16, Frame, 4)
#define OSTIN_SHAPE_GfholdPlain(F) F(I16, Clef, 1) F(I16, Flag, 1) F(B16, Frame, 4)

#define OSTIN_SHAPE_LayerPrefs(F) F(I16, Restoffset, 1) F(I16, Flag, 1)

// Records with one call list.
#define OSTIN_PLAIN_RECORDS(R)                                                                     \
  R(MeasureSpec, MeasureSpec, K2, OSTIN_SHAPE_MeasureSpec, CLSD)                                   \
  R(InstrumentUsed, InstrumentUsed, K2, OSTIN_SHAPE_InstrumentUsed, CLSD)                          \
  R(FreezeMusic, FreezeMeasures, K2, OSTIN_SHAPE_FreezeMusic, CLSND)                               \
  R(ClefElement, ClefElement, K2, OSTIN_SHAPE_ClefElement, CLS)                                    \
  R(Settings12, Settings12, K2, OSTIN_SHAPE_Settings12, CLS)                                       \
  R(Settings13, Settings13, K2, OSTIN_SHAPE_Settings13, CLS)                                       \
  R(Settings39, Settings39, K2, OSTIN_SHAPE_Settings39, CLS)                                       \
  R(Settings41, Settings41, K2, OSTIN_SHAPE_Settings41, CLS)                                       \
  R(Settings44, Settings44, K2, OSTIN_SHAPE_Settings44, CLS)                                       \
  R(FieldInfo, FieldInfo, K2, OSTIN_SHAPE_FieldInfo, CLS)

// Records whose host from `Year` on offers a longer call, named with the year.
#define OSTIN_VARIANT_RECORDS(V)                                                                   \
  V(Gfhold, Gfhold, K2, OSTIN_SHAPE_Gfhold, OSTIN_SHAPE_GfholdPlain, 2004, CLSND)

// Records the stand-in stores whose calls do not follow the pattern: H(Class, KeyForm, SHAPE).
#define OSTIN_HANDMADE_RECORDS(H) H(LayerPrefs, K2, OSTIN_SHAPE_LayerPrefs)
