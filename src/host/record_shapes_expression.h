#pragma once
// Expression, repeat and definition records. Field lists in the order of their bridge calls.
// One field a line: clang-format would run the tables together.
// clang-format off

#define OSTIN_SHAPE_ScoreExpression(F)                                                             \
  F(I16, Dynumber, 1)                                                                              \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Lineadd, 1)                                                                               \
  F(I16, IndivPos, 1)                                                                              \
  F(I16, Current, 1)                                                                               \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_StaffExpression(F)                                                             \
  F(I16, Dynumber, 1)                                                                              \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Lineadd, 1)                                                                               \
  F(I16, Current, 1)                                                                               \
  F(I16, Flag, 1)

// The placement of a score item on one staff of its own.
#define OSTIN_SHAPE_SeparatePlacement(F)                                                           \
  F(I16, Instno, 1)                                                                                \
  F(I16, Measure, 1)                                                                               \
  F(I16, X1add, 1)                                                                                 \
  F(I16, Y1add, 1)                                                                                 \
  F(I16, X2add, 1)                                                                                 \
  F(I16, Y2add, 1)
#define OSTIN_SHAPE_SepScoreExpressionPlac(F) OSTIN_SHAPE_SeparatePlacement(F)

#define OSTIN_SHAPE_SepBackwardRepeatPlac(F) OSTIN_SHAPE_SeparatePlacement(F)

#define OSTIN_SHAPE_SepEndingRepeatPlac(F) OSTIN_SHAPE_SeparatePlacement(F)

#define OSTIN_SHAPE_SepEndingRepeatTextPlac(F) OSTIN_SHAPE_SeparatePlacement(F)

#define OSTIN_SHAPE_SepTextRepeatPlac(F) OSTIN_SHAPE_SeparatePlacement(F)

// The enclosure drawn around a text.
#define OSTIN_SHAPE_Enclosure(F)                                                                   \
  F(I16, XAdd, 1)                                                                                  \
  F(I16, YAdd, 1)                                                                                  \
  F(I16, XMargin, 1)                                                                               \
  F(I16, YMargin, 1)                                                                               \
  F(I16, LineWidth, 1)                                                                             \
  F(I16, Flag, 1)
#define OSTIN_SHAPE_TextExpEnclosure(F) OSTIN_SHAPE_Enclosure(F)

#define OSTIN_SHAPE_RepeatEnclosure(F) OSTIN_SHAPE_Enclosure(F)

#define OSTIN_SHAPE_ArticulationDefinition(F)                                                      \
  F(I16, EfxsymbolMain, 1)                                                                         \
  F(I16, SizefontMain, 1)                                                                          \
  F(I16, Hhock, 1)                                                                                 \
  F(I16, Flag, 1)                                                                                  \
  F(I16, EfxsymbolFlipped, 1)                                                                      \
  F(I16, SizefontFlipped, 1)                                                                       \
  F(I16, Xoffset, 1)                                                                               \
  F(I16, Yoffset, 1)                                                                               \
  F(I16, DefVertPos, 1)                                                                            \
  F(I16, Flag2, 1)                                                                                 \
  F(I16, X2offset, 1)                                                                              \
  F(I16, Y2offset, 1)                                                                              \
  F(I16, MainShape, 1)                                                                             \
  F(I16, FlipShape, 1)                                                                             \
  F(I16, StartTopNote, 1)                                                                          \
  F(I16, StartBotNote, 1)                                                                          \
  F(I16, DurTopNote, 1)                                                                            \
  F(I16, DurBotNote, 1)                                                                            \
  F(I16, AmpTopNote, 1)                                                                            \
  F(I16, AmpBotNote, 1)

#define OSTIN_SHAPE_BackwardRepeat(F)                                                              \
  F(I16, Current, 1)                                                                               \
  F(I16, Actuate, 1)                                                                               \
  F(I16, Target, 1)                                                                                \
  F(I16, Pos1, 1)                                                                                  \
  F(I16, Line1, 1)                                                                                 \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Pos2, 1)                                                                                  \
  F(I16, Line2, 1)

#define OSTIN_SHAPE_EndingRepeatText(F) OSTIN_SHAPE_OneText(F)

#define OSTIN_SHAPE_TextRepeat(F)                                                                  \
  F(I16, Current, 1)                                                                               \
  F(I16, Actuate, 1)                                                                               \
  F(I16, Target, 1)                                                                                \
  F(I16, Repnum, 1)                                                                                \
  F(I16, Flag, 1)

#define OSTIN_SHAPE_TextRepeatStyleText(F) OSTIN_SHAPE_OneText(F)

// How an expression stands against its measure and its note, and how it plays.
#define OSTIN_SHAPE_ExpressionPlacement(F)                                                         \
  F(I16, Auxdata1, 1)                                                                              \
  F(I16, PlayPass, 1)                                                                              \
  F(I16, Flag, 1)                                                                                  \
  F(I16, MeasAlign, 1)                                                                             \
  F(I16, MeasExprAlign, 1)                                                                         \
  F(I16, MeasXadjust, 1)                                                                           \
  F(I16, NoteAlign, 1)                                                                             \
  F(I16, NoteExprAlign, 1)                                                                         \
  F(I16, NoteXadjust, 1)                                                                           \
  F(I16, VertMeasAlign, 1)                                                                         \
  F(I16, MeasYadjust, 1)                                                                           \
  F(I16, VertNoteAlign, 1)                                                                         \
  F(I16, NoteYadjustBaseline, 1)                                                                   \
  F(I16, NoteYadjustEntry, 1)

#define OSTIN_SHAPE_ShapeExpression(F)                                                             \
  F(I16, Shapedef, 1)                                                                              \
  F(I16, Value, 1)                                                                                 \
  OSTIN_SHAPE_ExpressionPlacement(F)

#define OSTIN_SHAPE_ShapeExpressionPlain(F)                                                        \
  F(I16, Shapedef, 1)                                                                              \
  F(I16, Value, 1)                                                                                 \
  F(I16, Auxdata1, 1)                                                                              \
  F(I16, PlayPass, 1)                                                                              \
  F(I16, Flag, 1)

#define OSTIN_EXPRESSION_RECORDS(R)                                                                \
  R(ScoreExpression, ScoreExpression, K2, OSTIN_SHAPE_ScoreExpression, CLSN)                       \
  R(StaffExpression, StaffExpression, KE, OSTIN_SHAPE_StaffExpression, CLS)                        \
  R(SepScoreExpressionPlac, SeparateScoreExpressionPlacement, K2,                                       OSTIN_SHAPE_SepScoreExpressionPlac, CLS)\
  R(SepBackwardRepeatPlac, SeparateBackwardRepeatPlacement, K2, OSTIN_SHAPE_SepBackwardRepeatPlac,      CLS)\
  R(SepEndingRepeatPlac, SeparateEndingRepeatPlacement, K2, OSTIN_SHAPE_SepEndingRepeatPlac, CLS)  \
  R(SepEndingRepeatTextPlac, SeparateEndingRepeatTextPlacement, K2,                                     OSTIN_SHAPE_SepEndingRepeatTextPlac, CLS)\
  R(SepTextRepeatPlac, SeparateTextRepeatPlacement, K2, OSTIN_SHAPE_SepTextRepeatPlac, CLS)        \
  R(TextExpEnclosure, TextExpEnclosure, K2, OSTIN_SHAPE_TextExpEnclosure, CLS)                     \
  R(RepeatEnclosure, RepeatEnclosure, K2, OSTIN_SHAPE_RepeatEnclosure, CLS)                        \
  R(ArticulationDefinition, ArticulationDefinition, K2, OSTIN_SHAPE_ArticulationDefinition, CLSN)  \
  R(BackwardRepeat, BackwardRepeat, K2, OSTIN_SHAPE_BackwardRepeat, CLS)                           \
  R(EndingRepeatText, EndingRepeatText, K2, OSTIN_SHAPE_EndingRepeatText, CLS)                     \
  R(TextRepeat, TextRepeat, K2, OSTIN_SHAPE_TextRepeat, CLS)                                       \
  R(TextRepeatStyleText, TextRepeatStyleText, K2, OSTIN_SHAPE_TextRepeatStyleText, CLS)

#define OSTIN_EXPRESSION_VARIANTS(V)                                                               \
  V(ShapeExpression, ShapeExpression, K2, OSTIN_SHAPE_ShapeExpression,                                  OSTIN_SHAPE_ShapeExpressionPlain, 2004, CLSN)

// Endings and text repeat styles keep a block of pass numbers as long as NumTotalPasses.
#define OSTIN_SHAPE_EndingRepeat(F)                                                                \
  F(I16, Current, 1)                                                                               \
  F(I16, Nextend, 1)                                                                               \
  F(I16, Textpos, 1)                                                                               \
  F(I16, Pos, 1)                                                                                   \
  F(I16, Line, 1)                                                                                  \
  F(I16, Flag, 1)                                                                                  \
  F(I16, Endline, 1)                                                                               \
  F(I16, Textline, 1)                                                                              \
  F(I16, Pos2, 1)                                                                                  \
  F(I16, Line2, 1)                                                                                 \
  F(I16, NumTotalPasses, 1)                                                                        \
  F(P16, Passes, 1)
#define OSTIN_SHAPE_TextRepeatStyle(F)                                                             \
  F(I16, Posadd, 1)                                                                                \
  F(I16, Lineadd, 1)                                                                               \
  F(I16, Font, 1)                                                                                  \
  F(I16, Size, 1)                                                                                  \
  F(I16, Efx, 1)                                                                                   \
  F(I16, Flag, 1)                                                                                  \
  F(I16, NumTotalPasses, 1)                                                                        \
  F(P16, Passes, 1)

// A text expression of 2004 points to a text block and holds its placement; before 2004
// it holds its text with the font, and the stand-in keeps both kinds of field.
#define OSTIN_SHAPE_TextExpression(F)                                                              \
  OSTIN_SHAPE_TextExpression2004(F)                                                                \
  F(I16, Sizefont, 1)                                                                              \
  F(I16, Efx, 1)
#define OSTIN_SHAPE_TextExpressionPlain(F)                                                         \
  F(I16, Sizefont, 1)                                                                              \
  F(I16, Efx, 1)                                                                                   \
  F(I16, Value, 1)                                                                                 \
  F(I16, Auxdata1, 1)                                                                              \
  F(I16, PlayPass, 1)                                                                              \
  F(I16, Flag, 1)                                                                                  \
  F(TXT, Text, 1)
#define OSTIN_SHAPE_TextExpression2004(F)                                                          \
  F(I16, TextIDKey, 1)                                                                             \
  F(I16, Value, 1)                                                                                 \
  OSTIN_SHAPE_ExpressionPlacement(F)                                                               \
  F(TXT, Text, 1)
#define OSTIN_EXPRESSION_HANDMADE(H)                                                               \
  H(EndingRepeat, K2, OSTIN_SHAPE_EndingRepeat)                                                    \
  H(TextRepeatStyle, K2, OSTIN_SHAPE_TextRepeatStyle)                                              \
  H(TextExpression, K2, OSTIN_SHAPE_TextExpression)
// clang-format on
