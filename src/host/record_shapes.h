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
// number and a 16-bit incidence; K3 three 16-bit keys (Cmper1, Cmper2, Inci).
// Records whose calls do not follow the pattern are listed as H(Class, KeyForm, SHAPE):
// the stand-in stores them from their shape, and their calls are written by hand.

#include "host/record_shapes_document.h"
#include "host/record_shapes_entry.h"
#include "host/record_shapes_expression.h"
#include "host/record_shapes_line.h"
#include "host/record_shapes_midi.h"
#include "host/record_shapes_preferences.h"
#include "host/record_shapes_text.h"

// The frame holder: the plain call passes the four frames one by one, the 2004 call
// passes ClefPercent, one more word and the whole block of frames.
#define OSTIN_SHAPE_Gfhold(F)                                                                      \
  F(I16, Clef, 1) F(I16, Flag, 1) F(I16, ClefPercent, 1) F(I16, Carried1, 1) F(P16, Frame, 4)
#define OSTIN_SHAPE_GfholdPlain(F) F(I16, Clef, 1) F(I16, Flag, 1) F(B16, Frame, 4)

#define OSTIN_SHAPE_LayerPrefs(F) F(I16, Restoffset, 1) F(I16, Flag, 1)

#define OSTIN_PLAIN_RECORDS(R)                                                                     \
  OSTIN_DOCUMENT_RECORDS(R)                                                                        \
  OSTIN_ENTRY_RECORDS(R)                                                                           \
  OSTIN_EXPRESSION_RECORDS(R)                                                                      \
  OSTIN_LINE_RECORDS(R)                                                                            \
  OSTIN_MIDI_RECORDS(R) OSTIN_PREFERENCES_RECORDS(R) OSTIN_TEXT_RECORDS(R)

// Records with a variant whose classes are made from their shapes.
#define OSTIN_FAMILY_VARIANTS(V)                                                                   \
  OSTIN_DOCUMENT_VARIANTS(V) OSTIN_EXPRESSION_VARIANTS(V) OSTIN_LINE_VARIANTS(V)

#define OSTIN_VARIANT_RECORDS(V)                                                                   \
  V(Gfhold, Gfhold, K2, OSTIN_SHAPE_Gfhold, OSTIN_SHAPE_GfholdPlain, 2004, CLSND)                  \
  OSTIN_FAMILY_VARIANTS(V) OSTIN_TEXT_VARIANTS(V)

#define OSTIN_HANDMADE_RECORDS(H)                                                                  \
  H(LayerPrefs, K2, OSTIN_SHAPE_LayerPrefs)                                                        \
  OSTIN_DOCUMENT_HANDMADE(H)                                                                       \
  OSTIN_ENTRY_HANDMADE(H)                                                                          \
  OSTIN_EXPRESSION_HANDMADE(H)                                                                     \
  OSTIN_LINE_HANDMADE(H) OSTIN_MIDI_HANDMADE(H) OSTIN_PREFERENCES_HANDMADE(H) OSTIN_TEXT_HANDMADE(H)
