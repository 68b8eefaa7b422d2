#pragma once
// Shape and line records. Field lists in the order of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

#define OSTIN_SHAPE_MeasureShape(F)                                                                \
  F(I16, ShapeNum, 1)                                                                              \
  F(I16, CenterShapeNum, 1)

#define OSTIN_SHAPE_EntryShape(F) F(I16, ShapeNum, 1)

#define OSTIN_SHAPE_LyricShape(F) OSTIN_SHAPE_EntryShape(F)

#define OSTIN_SHAPE_CenterShape(F)                                                                 \
  F(I16, BreakAdj1X, 1)                                                                            \
  F(I16, BreakAdj1Y, 1)                                                                            \
  F(I16, BreakAdj1Flag, 1)                                                                         \
  F(I16, BreakAdj2X, 1)                                                                            \
  F(I16, BreakAdj2Y, 1)                                                                            \
  F(I16, BreakAdj2Flag, 1)                                                                         \
  F(I16, CtlPtAdjX_1, 1)                                                                           \
  F(I16, CtlPtAdjY_1, 1)                                                                           \
  F(I16, CtlPtAdjX_2, 1)                                                                           \
  F(I16, CtlPtAdjY_2, 1)                                                                           \
  F(I16, CtlPtAdjFlag, 1)

#define OSTIN_SHAPE_CustomLineDefinition(F)                                                        \
  F(I16, LineType, 1)                                                                              \
  F(I16, Linetypeinfo, 1)                                                                          \
  F(I16, FontIDLength, 1)                                                                          \
  F(I16, FontsizeSpace, 1)                                                                         \
  F(I16, Efx, 1)                                                                                   \
  F(I16, BaselineadjustHi, 1)                                                                      \
  F(I16, BaselineadjustLo, 1)                                                                      \
  F(I16, EndpointstyleStart, 1)                                                                    \
  F(I16, EndpointstyleEnd, 1)                                                                      \
  F(I16, StartarrowdataLo, 1)                                                                      \
  F(I16, StartarrowdataHi, 1)                                                                      \
  F(I16, EndarrowdataLo, 1)                                                                        \
  F(I16, EndarrowdataHi, 1)                                                                        \
  F(I16, Flag, 1)                                                                                  \
  F(I16, LeftStartTextID, 1)                                                                       \
  F(I16, LeftContTextID, 1)                                                                        \
  F(I16, RightEndTextID, 1)                                                                        \
  F(I16, CenterFullTextID, 1)                                                                      \
  F(I16, CenterAbbrTextID, 1)                                                                      \
  F(I16, LeftStartTextHoriz, 1)                                                                    \
  F(I16, LeftStartTextVert, 1)                                                                     \
  F(I16, LeftContTextHoriz, 1)                                                                     \
  F(I16, LeftContTextVert, 1)                                                                      \
  F(I16, RightEndTextHoriz, 1)                                                                     \
  F(I16, RightEndTextVert, 1)                                                                      \
  F(I16, CenterFullTextHoriz, 1)                                                                   \
  F(I16, CenterFullTextVert, 1)                                                                    \
  F(I16, CenterAbbrTextHoriz, 1)                                                                   \
  F(I16, CenterAbbrTextVert, 1)                                                                    \
  F(I16, LineadjustStartHoriz, 1)                                                                  \
  F(I16, LineadjustStartVert, 1)                                                                   \
  F(I16, LineadjustEndHoriz, 1)                                                                    \
  F(I16, LineadjustEndVert, 1)                                                                     \
  F(I16, LineadjustContinueHoriz, 1)

#define OSTIN_SHAPE_SmartShape(F)                                                                  \
  OSTIN_SHAPE_SmartShapePlain(F)                                                                   \
  F(B16, LyricNum, 2)                                                                              \
  F(B16, LyricTag, 2)

#define OSTIN_SHAPE_SmartShapePlain(F)                                                             \
  F(I16, ShapeType, 1)                                                                             \
  F(I32, Flag, 1)                                                                                  \
  F(I16, StartInst, 1)                                                                             \
  F(I16, StartMeas, 1)                                                                             \
  F(I32, StartEntryEdu, 1)                                                                         \
  F(I16, StartEndPtX, 1)                                                                           \
  F(I16, StartEndPtY, 1)                                                                           \
  F(I16, StartEndPtFlag, 1)                                                                        \
  F(I16, StartControlX_1, 1)                                                                       \
  F(I16, StartControlY_1, 1)                                                                       \
  F(I16, StartControlX_2, 1)                                                                       \
  F(I16, StartControlY_2, 1)                                                                       \
  F(I16, StartControlFlag, 1)                                                                      \
  F(I16, StartBreakX, 1)                                                                           \
  F(I16, StartBreakY, 1)                                                                           \
  F(I16, StartBreakFlag, 1)                                                                        \
  F(I16, StopInst, 1)                                                                              \
  F(I16, StopMeas, 1)                                                                              \
  F(I32, StopEntryEdu, 1)                                                                          \
  F(I16, StopEndPtX, 1)                                                                            \
  F(I16, StopEndPtY, 1)                                                                            \
  F(I16, StopEndPtFlag, 1)                                                                         \
  F(I16, StopControlX_1, 1)                                                                        \
  F(I16, StopControlY_1, 1)                                                                        \
  F(I16, StopControlX_2, 1)                                                                        \
  F(I16, StopControlY_2, 1)                                                                        \
  F(I16, StopControlFlag, 1)                                                                       \
  F(I16, StopBreakX, 1)                                                                            \
  F(I16, StopBreakY, 1)                                                                            \
  F(I16, StopBreakFlag, 1)                                                                         \
  F(I16, FullCtrlX_1, 1)                                                                           \
  F(I16, FullCtrlY_1, 1)                                                                           \
  F(I16, FullCtrlX_2, 1)                                                                           \
  F(I16, FullCtrlY_2, 1)                                                                           \
  F(I16, FullCtrlFlag, 1)                                                                          \
  F(I16, StartNote, 1)                                                                             \
  F(I16, StopNote, 1)                                                                              \
  F(I16, SsLineStyleID, 1)                                                                         \
  F(I16, Flag2, 1)

#define OSTIN_LINE_RECORDS(R)                                                                      \
  R(MeasureShape, SmartShapeMeasMark, K2, OSTIN_SHAPE_MeasureShape, CLSN)                          \
  R(EntryShape, SmartShapeEntMark, KE, OSTIN_SHAPE_EntryShape, CLS)                                \
  R(LyricShape, SmartShapeLyrMark, KE, OSTIN_SHAPE_LyricShape, CLS)                                \
  R(CenterShape, CenterShape, K2, OSTIN_SHAPE_CenterShape, CLS)                                    \
  R(CustomLineDefinition, CustomLineDefinition, K2, OSTIN_SHAPE_CustomLineDefinition, CLSN)

#define OSTIN_LINE_VARIANTS(V)                                                                     \
  V(SmartShape, SmartShape, K2, OSTIN_SHAPE_SmartShape, OSTIN_SHAPE_SmartShapePlain, 2004, CLS)

#define OSTIN_LINE_HANDMADE(H)
// clang-format on
