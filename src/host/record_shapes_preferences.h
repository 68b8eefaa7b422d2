#pragma once
// Preference records, each the document's single record under -2, 0 (FieldInfo by row). Field lists
// in the order of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

#define OSTIN_SHAPE_Settings09(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)                                                                              \
  F(I16, Carried5, 1)                                                                              \
  F(I16, FinalBarline, 1)

#define OSTIN_SHAPE_Settings12(F)                                                                  \
  F(I16, DisplayTransposed, 1)                                                                     \
  F(I16, KeysigCancelOutgoing, 1)                                                                  \
  F(I16, KeysigNaturalsInC, 1)                                                                     \
  F(I16, KeysigModeChange, 1)                                                                      \
  F(I16, CrossStaffInOriginal, 1)                                                                  \
  F(I16, Symbol8va, 1)

#define OSTIN_SHAPE_Settings13(F)                                                                  \
  F(I16, TextTabChars, 1)                                                                          \
  F(I16, MetronomeBeat, 1)                                                                         \
  F(I16, ClefPercent, 1)                                                                           \
  F(I16, ClefOffset, 1)                                                                            \
  F(I16, UseFirstPageTop, 1)                                                                       \
  F(I16, UseFirstSysMargin, 1)

#define OSTIN_SHAPE_Settings19(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, AbbrCommon, 1)                                                                            \
  F(I16, AbbrCut, 1)                                                                               \
  F(I16, SymCommon, 1)                                                                             \
  F(I16, SymCut, 1)

#define OSTIN_SHAPE_Settings25(F)                                                                  \
  F(I16, MeasureWidth, 1)                                                                          \
  F(I16, VertNumberAdjust, 1)                                                                      \
  F(I16, Shape, 1)                                                                                 \
  F(I16, StartNumbering, 1)                                                                        \
  F(I16, SymbolMeasures, 1)                                                                        \
  F(I16, SpaceBetween, 1)                                                                          \
  F(I16, HorizNumberAdjust, 1)                                                                     \
  F(I16, AdjustStartPoint, 1)                                                                      \
  F(I16, AdjustEndPoint, 1)                                                                        \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_Settings27(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, EnclosureWidth, 1)                                                                        \
  F(I16, Carried4, 1)                                                                              \
  F(I16, Carried5, 1)

#define OSTIN_SHAPE_Settings39(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, MetronomeSpeed, 1)                                                                        \
  F(I16, Carried4, 1)                                                                              \
  F(I16, Carried5, 1)

#define OSTIN_SHAPE_Settings41(F)                                                                  \
  F(I16, BeamStyle, 1)                                                                             \
  F(I16, BeamFlags, 1)                                                                             \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)

#define OSTIN_SHAPE_Settings44(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)                                                                              \
  F(I16, GraceAlwaysSlash, 1)                                                                      \
  F(I16, Carried5, 1)

#define OSTIN_SHAPE_Settings51(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)                                                                              \
  F(I16, Carried5, 1)                                                                              \
  F(I16, EngraverSlur, 1)

#define OSTIN_SHAPE_Settings56(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Carried4, 1)                                                                              \
  F(I16, Carried5, 1)                                                                              \
  OSTIN_SHAPE_TupletLook(F)                                                                        \
  F(I16, Carried6, 1)                                                                              \
  F(I16, Carried7, 1)                                                                              \
  F(I16, Carried8, 1)

#define OSTIN_SHAPE_Settings72(F)                                                                  \
  F(I16, FrontHookLength, 1)                                                                       \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)                                                                              \
  F(I16, Textpos, 1)                                                                               \
  F(I16, Textline, 1)

#define OSTIN_SHAPE_Settings92(F)                                                                  \
  F(I16, CustomLineStyle, 1)                                                                       \
  F(I16, GlissandoStyle, 1)                                                                        \
  F(I16, TabSlideStyle, 1)                                                                         \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, Carried3, 1)

#define OSTIN_SHAPE_Settings93(F)                                                                  \
  F(I16, Carried1, 1)                                                                              \
  F(I16, Carried2, 1)                                                                              \
  F(I16, StaffScore, 1)                                                                            \
  F(I16, Carried3, 1)                                                                              \
  F(I16, StaffParts, 1)                                                                            \
  F(I16, Carried4, 1)

#define OSTIN_SHAPE_FieldInfo(F)                                                                   \
  F(I16, Field1, 1)                                                                                \
  F(I16, Field2, 1)                                                                                \
  F(I16, Field3, 1)                                                                                \
  F(I16, Field4, 1)                                                                                \
  F(I16, Field5, 1)                                                                                \
  F(I16, Field6, 1)

#define OSTIN_PREFERENCES_RECORDS(R)                                                               \
  R(Settings09, Settings09, K2, OSTIN_SHAPE_Settings09, CLS)                                       \
  R(Settings12, Settings12, K2, OSTIN_SHAPE_Settings12, CLS)                                       \
  R(Settings13, Settings13, K2, OSTIN_SHAPE_Settings13, CLS)                                       \
  R(Settings19, Settings19, K2, OSTIN_SHAPE_Settings19, CLS)                                       \
  R(Settings25, Settings25, K2, OSTIN_SHAPE_Settings25, CLS)                                       \
  R(Settings27, Settings27, K2, OSTIN_SHAPE_Settings27, CLS)                                       \
  R(Settings39, Settings39, K2, OSTIN_SHAPE_Settings39, CLS)                                       \
  R(Settings41, Settings41, K2, OSTIN_SHAPE_Settings41, CLS)                                       \
  R(Settings44, Settings44, K2, OSTIN_SHAPE_Settings44, CLS)                                       \
  R(Settings51, Settings51, K2, OSTIN_SHAPE_Settings51, CLS)                                       \
  R(Settings56, Settings56, K2, OSTIN_SHAPE_Settings56, CLS)                                       \
  R(Settings72, Settings72, K2, OSTIN_SHAPE_Settings72, CLS)                                       \
  R(Settings92, Settings92, K2, OSTIN_SHAPE_Settings92, CLS)                                       \
  R(Settings93, Settings93, K2, OSTIN_SHAPE_Settings93, CLS)                                       \
  R(FieldInfo, FieldInfo, K2, OSTIN_SHAPE_FieldInfo, CLS)

#define OSTIN_PREFERENCES_VARIANTS(V)

// Read-only preferences under a number of their own: the default fonts of the document's
// kinds of text, and the default look of tuplets.
#define OSTIN_SHAPE_DefaultFontPrefs(F) F(I16, Font, 1) F(I16, Size, 1) F(I16, Efx, 1)
#define OSTIN_SHAPE_TupletPrefs(F) OSTIN_SHAPE_Tuplet(F)

#define OSTIN_PREFERENCES_HANDMADE(H)                                                              \
  H(DefaultFontPrefs, K2, OSTIN_SHAPE_DefaultFontPrefs)                                            \
  H(TupletPrefs, K2, OSTIN_SHAPE_TupletPrefs)
// clang-format on
