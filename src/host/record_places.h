#pragma once
// The failure numbers of every record class's raising places. Numbers that callers test
// for absence are the host's known ones; the rest are this program's own, each used once.
#include "host/record.h"
#include "host/record_places_document.h"
#include "host/record_places_entry.h"
#include "host/record_places_expression.h"
#include "host/record_places_handmade.h"
#include "host/record_places_line.h"
#include "host/record_places_midi.h"
#include "host/record_places_preferences.h"
#include "host/record_places_text.h"

namespace ostin {

// Create, CreateLoad, CreateHandler, Load, LoadHandler, Save, SaveHandler, Next,
// NextHandler, Delete, DeleteHandler, TwoPartKey.
inline constexpr RecordPlaces kGfholdPlaces{Code(0x800402C1), Code(0x800402C2), Code(0x800402C3),
                                            Code(0x80040348), Code(0x800402C4), Code(0x800402C5),
                                            Code(0x800402C6), Code(0x8004045C), Code(0x800402C8),
                                            Code(0x800402CB), Code(0x800402CC), true};

} // namespace ostin
