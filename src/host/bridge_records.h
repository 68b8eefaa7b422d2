#pragma once
// Record calls of the bridge, one set per record shape: CreateX, LoadX, SaveX, NextX,
// DeleteX as the record offers them, and the year's variant for records that have one.
#include <cstdint>
#include <string>

#include "host/record_macros.h"
#include "host/record_shapes.h"

#define OSTIN_DECL_CREATE(C, B, K, S) int16_t Create##B(OSTIN_KEYP_##K);
#define OSTIN_DECL_LOAD(C, B, K, S) int16_t Load##B(OSTIN_KEYV_##K S(OSTIN_PTR_PARAM));
#define OSTIN_DECL_SAVE(C, B, K, S) int16_t Save##B(OSTIN_KEYV_##K S(OSTIN_VAL_PARAM));
#define OSTIN_DECL_NEXT(C, B, K, S) int16_t Next##B(OSTIN_KEYP_##K S(OSTIN_PTR_PARAM));
#define OSTIN_DECL_DELETE(C, B, K, S) int16_t Delete##B(OSTIN_KEYV_##K);
#define OSTIN_DECL(op, C, B, K, S) OSTIN_DECL_##op(C, B, K, S)

#define OSTIN_DECLARE_PLAIN(C, B, K, S, ops) OSTIN_OPS(ops, OSTIN_DECL, C, B, K, S)
#define OSTIN_DECLARE_VARIANT(C, B, K, S, P, Y, ops)                                               \
  OSTIN_OPS(ops, OSTIN_DECL, C, B, K, P) OSTIN_OPS(ops, OSTIN_DECL, C, OSTIN_CAT(B, Y), K, S)

OSTIN_PLAIN_RECORDS(OSTIN_DECLARE_PLAIN)
OSTIN_VARIANT_RECORDS(OSTIN_DECLARE_VARIANT)

// Read-only preferences by number: layers, default fonts, tuplets.
int16_t LoadDefaultFontPrefs(int16_t number OSTIN_SHAPE_DefaultFontPrefs(OSTIN_PTR_PARAM));
int16_t LoadTupletPrefs(int16_t number OSTIN_SHAPE_TupletPrefs(OSTIN_PTR_PARAM));
// Layer preferences: one read-only record per layer.
int16_t LoadLayerPrefs(int16_t number, int16_t* Restoffset, int16_t* Flag);

// Records whose calls do not follow the pattern.

// The document header: no key.
int16_t LoadHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_PTR_PARAM)));
int16_t SaveHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_VAL_PARAM)));

// Endings and text repeat styles: the load fills the count and the first pass number, the
// array call all of them.
int16_t CreateEndingRepeat(int16_t* cmper, int16_t* inci);
int16_t LoadEndingRepeat(int16_t cmper, int16_t inci OSTIN_SHAPE_EndingRepeat(OSTIN_PTR_PARAM));
int16_t LoadEndingRepeatArray(int16_t cmper, int16_t inci, int16_t* Passes);
int16_t SaveEndingRepeat(int16_t cmper, int16_t inci OSTIN_SHAPE_EndingRepeat(OSTIN_VAL_PARAM));
int16_t CreateTextRepeatStyle(int16_t* cmper, int16_t* inci);
int16_t LoadTextRepeatStyle(int16_t cmper,
                            int16_t inci OSTIN_SHAPE_TextRepeatStyle(OSTIN_PTR_PARAM));
int16_t LoadTextRepeatStyleArray(int16_t cmper, int16_t inci, int16_t* Passes);
int16_t SaveTextRepeatStyle(int16_t cmper,
                            int16_t inci OSTIN_SHAPE_TextRepeatStyle(OSTIN_VAL_PARAM));

// Text expressions: the create call takes a third value, the plain and the 2004 calls
// pass different fields.
int16_t CreateTextExpression(int16_t* cmper, int16_t* inci, int16_t value);
int16_t CreateTextExpression2004(int16_t* cmper, int16_t* inci, int16_t value);
int16_t LoadTextExpression(int16_t cmper,
                           int16_t inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_PTR_PARAM));
int16_t LoadTextExpression2004(int16_t cmper,
                               int16_t inci OSTIN_SHAPE_TextExpression2004(OSTIN_PTR_PARAM));
int16_t SaveTextExpression(int16_t cmper,
                           int16_t inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_VAL_PARAM));
int16_t SaveTextExpression2004(int16_t cmper,
                               int16_t inci OSTIN_SHAPE_TextExpression2004(OSTIN_VAL_PARAM));
int16_t NextTextExpression(int16_t* cmper,
                           int16_t* inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_PTR_PARAM));
int16_t NextTextExpression2004(int16_t* cmper,
                               int16_t* inci OSTIN_SHAPE_TextExpression2004(OSTIN_PTR_PARAM));

// Percussion staves: the tag is a third key by value.
int16_t CreateDrumStaff(int16_t* cmper, int16_t* inci, int32_t Tag);
int16_t LoadDrumStaff(int16_t cmper, int16_t inci, int32_t Tag, int16_t* PercMap, int16_t* PlayMap);
int16_t SaveDrumStaff(int16_t cmper, int16_t inci, int32_t Tag, int16_t PercMap,
                      const int16_t* PlayMap);

// Fretted instruments: no tuning on save.
int16_t CreateFretInstrument(int16_t* cmper, int16_t* inci);
int16_t LoadFretInstrument(int16_t cmper, int16_t inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_PARAM));
int16_t SaveFretInstrument(int16_t cmper,
                           int16_t inci OSTIN_SHAPE_FretInstrumentSave(OSTIN_VAL_PARAM));
int16_t NextFretInstrument(int16_t* cmper,
                           int16_t* inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_PARAM));

// A staff at a point of the score, with the staff styles assigned there applied.
int16_t LoadCurrentStaffSpec2003(int16_t staff, int16_t measure,
                                 int32_t edu OSTIN_SHAPE_StaffSpec(OSTIN_PTR_PARAM));
int16_t LoadCurrentStaffSpec(int16_t staff, int16_t measure,
                             int32_t edu OSTIN_SHAPE_StaffSpecPlain(OSTIN_PTR_PARAM));

// Lyrics: syllables on entries, raw lyric texts, and the baselines of each kind.
#define OSTIN_DECLARE_LYRIC_CALLS(Kind)                                                            \
  int16_t Create##Kind##Lyric(int32_t* entnum, int16_t* inci);                                     \
  int16_t Load##Kind##Lyric(int32_t entnum, int16_t inci OSTIN_SHAPE_Lyric(OSTIN_PTR_PARAM));      \
  int16_t Save##Kind##Lyric(int32_t entnum, int16_t inci OSTIN_SHAPE_Lyric(OSTIN_VAL_PARAM));      \
  int16_t Kind##LyricSyllableInfo(int16_t rawTextNum, int16_t syll, std::string* text,             \
                                  int32_t* unused1, int16_t* Font, int16_t* Size, int16_t* Efx,    \
                                  int16_t* IsHyphen, int32_t* unused2);                            \
  int16_t Create##Kind##LyricText(int16_t* id, const std::string& text);                           \
  int16_t Any##Kind##Lyric();                                                                      \
  int16_t Create##Kind##Baseline(int16_t number, int16_t* cmper1, int16_t* cmper2);                \
  int16_t Load##Kind##Baseline(int16_t number, int16_t cmper1, int16_t cmper2, int32_t* Offset);   \
  int16_t Save##Kind##Baseline(int16_t number, int16_t cmper1, int16_t cmper2, int32_t Offset);
OSTIN_DECLARE_LYRIC_CALLS(Verse)
OSTIN_DECLARE_LYRIC_CALLS(Chorus)
OSTIN_DECLARE_LYRIC_CALLS(Section)
#undef OSTIN_DECLARE_LYRIC_CALLS
