#pragma once
// Failure numbers of the raising places of the entry records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kTupletPlaces{Code(0x800403D3), Code(0x800403D4), Code(0x800403D5),
                                            Code(0x80040384), Code(0x800403D6), Code(0x800403D8),
                                            Code(0x800403D9), Code(0x00000000), Code(0x00000000),
                                            Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kArticulationPlaces{
    Code(0x800403DA), Code(0x800403DB), Code(0x800403DC), Code(0x80040364),
    Code(0x800403DD), Code(0x800403DE), Code(0x800403E0), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kChordPlaces{Code(0x800403E2), Code(0x800403E4), Code(0x800403E5),
                                           Code(0x8004035A), Code(0x800403E6), Code(0x800403E7),
                                           Code(0x800403E8), Code(0x00000000), Code(0x00000000),
                                           Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kLearnedChordPlaces{
    Code(0x800403EA), Code(0x800403F4), Code(0x800403F5), Code(0x800403F6),
    Code(0x800403F7), Code(0x800403F8), Code(0x800403F9), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), true};
inline constexpr RecordPlaces kChordPlaybackPlaces{
    Code(0x800403FB), Code(0x80040403), Code(0x80040404), Code(0x8004035E),
    Code(0x80040405), Code(0x80040406), Code(0x80040407), Code(0x80040644),
    Code(0x80040408), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kCrossStaffPlaces{
    Code(0x80040409), Code(0x8004040A), Code(0x8004040B), Code(0x8004040C),
    Code(0x8004040D), Code(0x8004040E), Code(0x8004040F), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kNoteheadModsPlaces{
    Code(0x80040410), Code(0x80040411), Code(0x80040412), Code(0x80040380),
    Code(0x80040413), Code(0x80040414), Code(0x80040415), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kNoteAlterationsPlaces{
    Code(0x80040417), Code(0x80040418), Code(0x80040419), Code(0x800405A3),
    Code(0x8004041A), Code(0x8004041B), Code(0x8004041C), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kNoteModsPlaces{Code(0x8004041D), Code(0x8004041F), Code(0x80040420),
                                              Code(0x800405AA), Code(0x80040421), Code(0x80040422),
                                              Code(0x80040423), Code(0x00000000), Code(0x00000000),
                                              Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kAcciAlterationsPlaces{
    Code(0x80040425), Code(0x80040426), Code(0x80040428), Code(0x8004072D),
    Code(0x80040429), Code(0x8004042A), Code(0x8004042B), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTieAlterationPlaces{
    Code(0x8004042C), Code(0x8004042D), Code(0x8004042E), Code(0x8004051C),
    Code(0x8004042F), Code(0x80040432), Code(0x80040433), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTablatureModsPlaces{
    Code(0x80040434), Code(0x80040435), Code(0x80040436), Code(0x8004066B),
    Code(0x80040437), Code(0x8004043A), Code(0x8004043B), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSecondaryBeamBreakModsPlaces{
    Code(0x8004043C), Code(0x8004043D), Code(0x8004043E), Code(0x80040536),
    Code(0x8004043F), Code(0x80040440), Code(0x80040441), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kPerformanceDataPlaces{
    Code(0x80040443), Code(0x80040444), Code(0x80040445), Code(0x8004058E),
    Code(0x80040446), Code(0x80040447), Code(0x80040448), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};

} // namespace ostin
