#pragma once
// Failure numbers of the raising places of the midi records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kTempoPlaces{Code(0x80040512), Code(0x80040513), Code(0x80040514),
                                           Code(0x80040515), Code(0x80040516), Code(0x80040517),
                                           Code(0x80040518), Code(0x00000000), Code(0x00000000),
                                           Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kMidiEventPlaces{Code(0x80040519), Code(0x8004051A), Code(0x8004051B),
                                               Code(0x8004051D), Code(0x8004051E), Code(0x8004051F),
                                               Code(0x80040520), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kMidiPatchPlaces{Code(0x80040523), Code(0x80040524), Code(0x80040529),
                                               Code(0x800405EA), Code(0x8004052A), Code(0x8004052B),
                                               Code(0x8004052C), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPatchListPlaces{Code(0x8004052D), Code(0x8004052E), Code(0x80040530),
                                               Code(0x80040609), Code(0x80040531), Code(0x80040532),
                                               Code(0x80040533), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kOrchestraPlaces{Code(0x80040534), Code(0x80040535), Code(0x80040537),
                                               Code(0x800405F1), Code(0x80040538), Code(0x80040539),
                                               Code(0x8004053A), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kOrchestraTextPlaces{
    Code(0x8004053D), Code(0x8004053E), Code(0x80040540), Code(0x80040541),
    Code(0x80040542), Code(0x80040543), Code(0x80040544), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPercussionMapTitlePlaces{
    Code(0x80040545), Code(0x80040546), Code(0x80040547), Code(0x80040548),
    Code(0x80040549), Code(0x8004054A), Code(0x8004054D), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPercussionNoteDefPlaces{
    Code(0x8004054E), Code(0x8004054F), Code(0x80040550), Code(0x800406C5),
    Code(0x80040551), Code(0x80040552), Code(0x80040553), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPercussionNoteNamePlaces{
    Code(0x80040554), Code(0x80040557), Code(0x80040558), Code(0x800406B7),
    Code(0x80040559), Code(0x8004055A), Code(0x8004055B), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};

} // namespace ostin
