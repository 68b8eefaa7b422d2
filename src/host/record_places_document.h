#pragma once
// Failure numbers of the raising places of the document records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kMeasureSpecPlaces{
    Code(0x800402FE), Code(0x800402FF), Code(0x8004025F), Code(0x80040300),
    Code(0x80040260), Code(0x80040301), Code(0x80040261), Code(0x00000000),
    Code(0x00000000), Code(0x800403C1), Code(0x800403C2), false};
inline constexpr RecordPlaces kMeasureFloatPlaces{
    Code(0x800402EC), Code(0x800402ED), Code(0x800402EE), Code(0x8004037C),
    Code(0x800402EF), Code(0x800402F0), Code(0x800402F1), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), true};
inline constexpr RecordPlaces kTimeUpperPlaces{Code(0x800402F2), Code(0x800402F3), Code(0x800402F4),
                                               Code(0x80040480), Code(0x800402F5), Code(0x800402F7),
                                               Code(0x800402F8), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTimeLowerPlaces{Code(0x800402F9), Code(0x800402FA), Code(0x800402FB),
                                               Code(0x80040487), Code(0x800402FC), Code(0x80040302),
                                               Code(0x80040303), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kKeyFormatPlaces{Code(0x80040305), Code(0x8004030B), Code(0x8004030D),
                                               Code(0x80040416), Code(0x8004030E), Code(0x80040314),
                                               Code(0x8004031A), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kKeyMapPlaces{Code(0x8004031C), Code(0x8004031E), Code(0x80040321),
                                            Code(0x80040322), Code(0x80040323), Code(0x80040324),
                                            Code(0x80040325), Code(0x00000000), Code(0x00000000),
                                            Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kToneCenterPlaces{
    Code(0x8004032F), Code(0x80040330), Code(0x80040332), Code(0x80040424),
    Code(0x80040333), Code(0x80040334), Code(0x80040336), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kAccidentalAmountPlaces{
    Code(0x80040337), Code(0x80040338), Code(0x80040339), Code(0x8004033A),
    Code(0x8004033B), Code(0x8004033C), Code(0x8004033D), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kAccidentalOrderPlaces{
    Code(0x8004033E), Code(0x8004033F), Code(0x80040341), Code(0x80040346),
    Code(0x80040347), Code(0x80040349), Code(0x8004034A), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kClefElementPlaces{
    Code(0x8004034C), Code(0x8004034D), Code(0x80040350), Code(0x800403C8),
    Code(0x80040352), Code(0x80040354), Code(0x80040355), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kStaffStyleAssignPlaces{
    Code(0x80040356), Code(0x80040357), Code(0x80040358), Code(0x80040359),
    Code(0x8004035B), Code(0x8004035C), Code(0x8004035D), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kGroupSpecPlaces{Code(0x8004035F), Code(0x80040362), Code(0x80040363),
                                               Code(0x80040365), Code(0x80040366), Code(0x80040367),
                                               Code(0x80040369), Code(0x80040781), Code(0x8004036A),
                                               Code(0x8004036B), Code(0x8004036D), true};
inline constexpr RecordPlaces kInstrumentUsedPlaces{
    Code(0x8004036E), Code(0x8004036F), Code(0x80040371), Code(0x80040374),
    Code(0x80040372), Code(0x80040373), Code(0x80040375), Code(0x00000000),
    Code(0x00000000), Code(0x80040376), Code(0x80040377), false};
inline constexpr RecordPlaces kStaffListScorePlaces{
    Code(0x80040378), Code(0x80040379), Code(0x8004037A), Code(0x800404B4),
    Code(0x8004037B), Code(0x8004037D), Code(0x8004037E), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kStaffListPartsPlaces{
    Code(0x8004037F), Code(0x80040381), Code(0x80040382), Code(0x8004052F),
    Code(0x80040383), Code(0x80040385), Code(0x80040386), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kStaffListTextPlaces{
    Code(0x80040387), Code(0x80040389), Code(0x8004038A), Code(0x8004038B),
    Code(0x8004038D), Code(0x8004038E), Code(0x8004038F), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kMultimeasureRestPlaces{
    Code(0x80040391), Code(0x80040392), Code(0x80040393), Code(0x80040395),
    Code(0x80040396), Code(0x80040397), Code(0x80040399), Code(0x80040708),
    Code(0x8004039A), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kMeasNumberRegionPlaces{
    Code(0x8004039B), Code(0x8004039D), Code(0x8004039E), Code(0x8004039F),
    Code(0x800403A0), Code(0x800403A1), Code(0x800403A2), Code(0x80040635),
    Code(0x800403A3), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPageTextPlaces{Code(0x800403A5), Code(0x800403A6), Code(0x800403A7),
                                              Code(0x800403A8), Code(0x800403AA), Code(0x800403AB),
                                              Code(0x800403AC), Code(0x00000000), Code(0x00000000),
                                              Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kMeasureTextPlaces{
    Code(0x800403AD), Code(0x800403AF), Code(0x800403B0), Code(0x800404D4),
    Code(0x800403B1), Code(0x800403B2), Code(0x800403B3), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), true};
inline constexpr RecordPlaces kFreezeMusicPlaces{
    Code(0x800403B4), Code(0x800403B5), Code(0x800403B6), Code(0x800403B7),
    Code(0x800403B8), Code(0x800403B9), Code(0x800403BA), Code(0x8004059C),
    Code(0x800403BB), Code(0x800403BC), Code(0x800403BD), false};
inline constexpr RecordPlaces kStaffSpecPlaces{Code(0x800403BF), Code(0x800403C3), Code(0x800403C4),
                                               Code(0x80040304), Code(0x800403C5), Code(0x800403C6),
                                               Code(0x800403C7), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false,
                                               Code(0x80040673), Code(0x00000000)};
inline constexpr RecordPlaces kStaffStylePlaces{
    Code(0x800403C9), Code(0x800403CB), Code(0x800403CC), Code(0x800403CD),
    Code(0x800403CF), Code(0x800403D0), Code(0x800403D1), Code(0x80040749),
    Code(0x800403D2), Code(0x00000000), Code(0x00000000), false,
    Code(0x800403CD), Code(0x80040762)};

} // namespace ostin
