#pragma once
// Document, measure and staff records. Field lists in the order of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

#define OSTIN_SHAPE_MeasureSpec(F)                                                                 \
  F(I16, Measpace, 1)                                                                              \
  F(I16, Key, 1)                                                                                   \
  F(I16, Beats, 1)                                                                                 \
  F(I16, DivBeat, 1)                                                                               \
  F(I16, Auxflag, 1)                                                                               \
  F(I16, Meflag, 1)                                                                                \
  F(I16, DispBeats, 1)                                                                             \
  F(I16, DispDivbeat, 1)                                                                           \
  F(I16, Newflag, 1)                                                                               \
  F(I16, Custombarshape, 1)                                                                        \
  F(I16, Customleftbarshape, 1)

#define OSTIN_SHAPE_MeasureFloat(F)                                                                \
  F(I16, Key, 1)                                                                                   \
  F(I16, Bts, 1)                                                                                   \
  F(I16, Div, 1)                                                                                   \
  F(I16, Flag, 1)                                                                                  \
  F(I16, DispBeats, 1)                                                                             \
  F(I16, DispDivbeat, 1)

#define OSTIN_SHAPE_TimeUpper(F)                                                                   \
  F(I16, Main_1, 1)                                                                                \
  F(I16, Fract_1, 1)                                                                               \
  F(I16, Flag_1, 1)                                                                                \
  F(I16, Main_2, 1)                                                                                \
  F(I16, Fract_2, 1)                                                                               \
  F(I16, Flag_2, 1)

#define OSTIN_SHAPE_TimeLower(F)                                                                   \
  F(I16, Main_1, 1)                                                                                \
  F(I16, Flag_1, 1)                                                                                \
  F(I16, Main_2, 1)                                                                                \
  F(I16, Flag_2, 1)                                                                                \
  F(I16, Main_3, 1)                                                                                \
  F(I16, Flag_3, 1)

#define OSTIN_SHAPE_KeyFormat(F)                                                                   \
  F(I16, Chromatic, 1)                                                                             \
  F(I16, Diatonic, 1)

#define OSTIN_SHAPE_KeyMap(F) F(B32, Steps, 12)

#define OSTIN_SHAPE_ToneCenter(F) F(B16, Units, 7)

#define OSTIN_SHAPE_AccidentalAmount(F) OSTIN_SHAPE_ToneCenter(F)

#define OSTIN_SHAPE_AccidentalOrder(F) OSTIN_SHAPE_ToneCenter(F)

#define OSTIN_SHAPE_ClefElement(F)                                                                 \
  F(I16, Clef, 1)                                                                                  \
  F(I16, ClefEdu, 1)                                                                               \
  F(I16, Percent, 1)                                                                               \
  F(I16, Offset, 1)

#define OSTIN_SHAPE_StaffStyleAssign(F)                                                            \
  F(I16, Style, 1)                                                                                 \
  F(I16, StartMeas, 1)                                                                             \
  F(I32, StartEdu, 1)                                                                              \
  F(I16, EndMeas, 1)                                                                               \
  F(I32, EndEdu, 1)

#define OSTIN_SHAPE_GroupSpec(F)                                                                   \
  F(I16, StartInst, 1)                                                                             \
  F(I16, EndInst, 1)                                                                               \
  F(I16, FullNameID, 1)                                                                            \
  F(I16, FullNameXadj, 1)                                                                          \
  F(I16, FullNameYadj, 1)                                                                          \
  F(I16, BracketID, 1)                                                                             \
  F(I16, BracketBracpos, 1)                                                                        \
  F(I16, BracketBractop, 1)                                                                        \
  F(I16, BracketBracbot, 1)                                                                        \
  F(I16, BracketFlag, 1)                                                                           \
  F(I16, Flag, 1)                                                                                  \
  F(I16, AbrvNameID, 1)                                                                            \
  F(I16, AbrvNameXadj, 1)                                                                          \
  F(I16, AbrvNameYadj, 1)                                                                          \
  F(I16, Auxflag, 1)

#define OSTIN_SHAPE_InstrumentUsed(F)                                                              \
  F(I16, Inst, 1)                                                                                  \
  F(I32, Separ, 1)                                                                                 \
  F(I16, Measstart_meas, 1)                                                                        \
  F(I32, Measstart_edu, 1)                                                                         \
  F(I16, Measend_meas, 1)                                                                          \
  F(I32, Measend_edu, 1)

#define OSTIN_SHAPE_StaffListScore(F) F(B16, Staffs, 6)

#define OSTIN_SHAPE_StaffListParts(F) OSTIN_SHAPE_StaffListScore(F)

// A record that holds one text.
#define OSTIN_SHAPE_OneText(F) F(TXT, Text, 1)
#define OSTIN_SHAPE_StaffListText(F) OSTIN_SHAPE_OneText(F)

#define OSTIN_SHAPE_MultimeasureRest(F)                                                            \
  F(I16, MeasureWidth, 1)                                                                          \
  F(I16, StopBefore, 1)                                                                            \
  F(I16, VertNumberAdjust, 1)                                                                      \
  F(I16, Shape, 1)                                                                                 \
  F(I16, StartNumbering, 1)                                                                        \
  F(I16, SymbolMeasures, 1)                                                                        \
  F(I16, SpaceBetween, 1)                                                                          \
  F(I16, HorizNumberAdjust, 1)                                                                     \
  F(I16, AdjustStartPoint, 1)                                                                      \
  F(I16, AdjustEndPoint, 1)                                                                        \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_MeasNumberRegion(F)                                                            \
  F(I16, Font, 1)                                                                                  \
  F(I16, Size, 1)                                                                                  \
  F(I16, Efx, 1)                                                                                   \
  F(I16, StartMeas, 1)                                                                             \
  F(I16, EndMeas, 1)                                                                               \
  F(I16, Incidence, 1)                                                                             \
  F(I16, Startchar, 1)                                                                             \
  F(I16, Base, 1)                                                                                  \
  F(I16, Offset, 1)                                                                                \
  F(I16, Xdisp, 1)                                                                                 \
  F(I16, Ydisp, 1)                                                                                 \
  F(TXT, Prefix, 1)                                                                                \
  F(TXT, Suffix, 1)                                                                                \
  F(I16, DefEnclosureXAdd, 1)                                                                      \
  F(I16, DefEnclosureYAdd, 1)                                                                      \
  F(I16, DefEnclosureXMargin, 1)                                                                   \
  F(I16, DefEnclosureYMargin, 1)                                                                   \
  F(I16, DefEnclosureLineWidth, 1)                                                                 \
  F(I16, DefEnclosureFlag, 1)                                                                      \
  F(I16, Flag, 1)                                                                                  \
  F(I16, StartWith, 1)                                                                             \
  F(I16, Region, 1)

#define OSTIN_SHAPE_PageText(F)                                                                    \
  F(I16, Block, 1)                                                                                 \
  F(I16, Xdisp, 1)                                                                                 \
  F(I16, Ydisp, 1)                                                                                 \
  F(I16, StartPage, 1)                                                                             \
  F(I16, EndPage, 1)                                                                               \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Rightpgxdisp, 1)                                                                          \
  F(I16, Rightpgydisp, 1)

#define OSTIN_SHAPE_MeasureText(F)                                                                 \
  F(I16, Block, 1)                                                                                 \
  F(I16, Xdisp, 1)                                                                                 \
  F(I16, Ydisp, 1)                                                                                 \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_FreezeMusic(F)                                                                 \
  F(I16, NextMeas, 1)                                                                              \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_StaffCommon(F)                                                                 \
  F(I16, BotBarlineOffset, 1)                                                                      \
  F(I16, CapoLowFret, 1)                                                                           \
  F(I16, AltFlag, 1)                                                                               \
  F(I16, Mfont, 1)                                                                                 \
  F(I16, Sizeefx, 1)                                                                               \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Clefs, 1)                                                                                 \
  F(I16, TopLines, 1)                                                                              \
  F(I16, BotLines, 1)                                                                              \
  F(I16, TopBarlineOffset, 1)                                                                      \
  F(I16, Transposition, 1)                                                                         \
  F(I16, Instflag, 1)                                                                              \
  F(I16, Dw_wRest, 1)                                                                              \
  F(I16, H_otherRest, 1)                                                                           \
  F(I16, StemReversal, 1)                                                                          \
  F(I16, FullName, 1)                                                                              \
  F(I16, AbbrvName, 1)

// The fields that only the calls of 2003 and later pass.
#define OSTIN_SHAPE_Staff2003(F)                                                                   \
  F(I16, RepeatDotsOff, 1)                                                                         \
  F(I32, LineSpace, 1)                                                                             \
  F(I32, VertTabNumOff, 1)                                                                         \
  F(I16, MoreFlags, 1)                                                                             \
  F(I16, FretInstID, 1)                                                                            \
  F(I32, HorzStemOffUp, 1)                                                                         \
  F(I32, HorzStemOffDown, 1)                                                                       \
  F(I32, VertStemStartOffUp, 1)                                                                    \
  F(I32, VertStemStartOffDown, 1)                                                                  \
  F(I32, VertStemEndOffUp, 1)                                                                      \
  F(I32, VertStemEndOffDown, 1)

#define OSTIN_SHAPE_StaffSpecTail(F)                                                               \
  F(I16, StaffID, 1)                                                                               \
  F(I16, ShapeNoteTag, 1)                                                                          \
  F(I16, ShapeNoteCmper, 1)                                                                        \
  F(I16, DrumStaffTag, 1)                                                                          \
  F(I16, DrumStaffCmper, 1)                                                                        \
  F(I16, FullNamePosTag, 1)                                                                        \
  F(I16, FullNamePosCmper, 1)                                                                      \
  F(I16, AbbrvNamePosTag, 1)                                                                       \
  F(I16, AbbrvNamePosCmper, 1)                                                                     \
  F(I16, RangeStartMeas, 1)                                                                        \
  F(I32, RangeStartEdu, 1)                                                                         \
  F(I16, RangeEndMeas, 1)                                                                          \
  F(I32, RangeEndEdu, 1)

#define OSTIN_SHAPE_StaffSpec(F)                                                                   \
  OSTIN_SHAPE_StaffCommon(F)                                                                       \
  OSTIN_SHAPE_Staff2003(F)                                                                         \
  OSTIN_SHAPE_StaffSpecTail(F)
#define OSTIN_SHAPE_StaffSpecPlain(F) OSTIN_SHAPE_StaffCommon(F) OSTIN_SHAPE_StaffSpecTail(F)
#define OSTIN_SHAPE_StaffStyle(F)                                                                  \
  OSTIN_SHAPE_StaffCommon(F)                                                                       \
  OSTIN_SHAPE_Staff2003(F)                                                                         \
  F(I16, Mask1, 1)                                                                                 \
  F(I16, Mask2, 1)                                                                                 \
  F(I16, Mask3, 1)                                                                                 \
  F(I16, Sfflag, 1)                                                                                \
  F(TXT, StyleName, 1)
#define OSTIN_SHAPE_StaffStylePlain(F)                                                             \
  OSTIN_SHAPE_StaffCommon(F)                                                                       \
  F(I16, Mask1, 1)                                                                                 \
  F(I16, Mask2, 1)                                                                                 \
  F(I16, Sfflag, 1)                                                                                \
  F(TXT, StyleName, 1)

#define OSTIN_DOCUMENT_RECORDS(R)                                                                  \
  R(MeasureSpec, MeasureSpec, K2, OSTIN_SHAPE_MeasureSpec, CLSD)                                   \
  R(MeasureFloat, MeasureFloatX, K2, OSTIN_SHAPE_MeasureFloat, CLS)                                \
  R(TimeUpper, CompositeTimeUpper, K2, OSTIN_SHAPE_TimeUpper, CLS)                                 \
  R(TimeLower, CompositeTimeLower, K2, OSTIN_SHAPE_TimeLower, CLS)                                 \
  R(KeyFormat, KeyFormat, K2, OSTIN_SHAPE_KeyFormat, CLS)                                          \
  R(KeyMap, KeyMap, K2, OSTIN_SHAPE_KeyMap, CLS)                                                   \
  R(ToneCenter, ToneCenter, K2, OSTIN_SHAPE_ToneCenter, CLS)                                       \
  R(AccidentalAmount, AccidentalAmount, K2, OSTIN_SHAPE_AccidentalAmount, CLS)                     \
  R(AccidentalOrder, AccidentalOrder, K2, OSTIN_SHAPE_AccidentalOrder, CLS)                        \
  R(ClefElement, ClefElement, K2, OSTIN_SHAPE_ClefElement, CLS)                                    \
  R(StaffStyleAssign, StaffStyleAssign, K2, OSTIN_SHAPE_StaffStyleAssign, CLS)                     \
  R(GroupSpec, GroupSpec, K2, OSTIN_SHAPE_GroupSpec, CLSND)                                        \
  R(InstrumentUsed, InstrumentUsed, K2, OSTIN_SHAPE_InstrumentUsed, CLSD)                          \
  R(StaffListScore, StaffListScore, K2, OSTIN_SHAPE_StaffListScore, CLS)                           \
  R(StaffListParts, StaffListParts, K2, OSTIN_SHAPE_StaffListParts, CLS)                           \
  R(StaffListText, StaffListText, K2, OSTIN_SHAPE_StaffListText, CLS)                              \
  R(MultimeasureRest, MultimeasureRest, K2, OSTIN_SHAPE_MultimeasureRest, CLSN)                    \
  R(MeasNumberRegion, MeasNumberRegion, K2, OSTIN_SHAPE_MeasNumberRegion, CLSN)                    \
  R(PageText, PageText, K2, OSTIN_SHAPE_PageText, CLS)                                             \
  R(MeasureText, MeasureText, K3, OSTIN_SHAPE_MeasureText, CLS)                                    \
  R(FreezeMusic, FreezeMeasures, K2, OSTIN_SHAPE_FreezeMusic, CLSND)

#define OSTIN_DOCUMENT_VARIANTS(V)                                                                 \
  V(StaffSpec, StaffSpec, K2, OSTIN_SHAPE_StaffSpec, OSTIN_SHAPE_StaffSpecPlain, 2003, CLS)        \
  V(StaffStyle, StaffStyle, K2, OSTIN_SHAPE_StaffStyle, OSTIN_SHAPE_StaffStylePlain, 2003, CLSN)

// The document header has no key: one per document, kept under 0, 0.
#define OSTIN_SHAPE_Header(F)                                                                      \
  F(TXT, HeaderType, 1)                                                                            \
  F(TXT, Copyright, 1)                                                                             \
  F(B16, Status, 4)                                                                                \
  F(I16, CreatedYear, 1)                                                                           \
  F(I16, CreatedMonth, 1)                                                                          \
  F(I16, CreatedDay, 1)                                                                            \
  F(TXT, CreatedModifiedBy, 1)                                                                     \
  F(I32, CreatedEnigmaVersion, 1)                                                                  \
  F(TXT, CreatedApplication, 1)                                                                    \
  F(TXT, CreatedPlatform, 1)                                                                       \
  F(I32, CreatedAppVersion, 1)                                                                     \
  F(I32, CreatedFileVersion, 1)                                                                    \
  F(I16, ModifiedYear, 1)                                                                          \
  F(I16, ModifiedMonth, 1)                                                                         \
  F(I16, ModifiedDay, 1)                                                                           \
  F(TXT, ModifiedModifiedBy, 1)                                                                    \
  F(I32, ModifiedEnigmaVersion, 1)                                                                 \
  F(TXT, ModifiedApplication, 1)                                                                   \
  F(TXT, ModifiedPlatform, 1)                                                                      \
  F(I32, ModifiedAppVersion, 1)                                                                    \
  F(I32, ModifiedFileVersion, 1)                                                                   \
  F(I16, PrintedYear, 1)                                                                           \
  F(I16, PrintedMonth, 1)                                                                          \
  F(I16, PrintedDay, 1)                                                                            \
  F(TXT, PrintedModifiedBy, 1)                                                                     \
  F(I32, PrintedEnigmaVersion, 1)                                                                  \
  F(TXT, PrintedApplication, 1)                                                                    \
  F(TXT, PrintedPlatform, 1)                                                                       \
  F(I32, PrintedAppVersion, 1)                                                                     \
  F(I32, PrintedFileVersion, 1)                                                                    \
  F(TXT, Title, 1)                                                                                 \
  F(TXT, Composer, 1)                                                                              \
  F(TXT, UserCopyright, 1)
#define OSTIN_DOCUMENT_HANDMADE(H) H(Header, K2, OSTIN_SHAPE_Header)
// clang-format on
