#pragma once
// Failure numbers of the raising places of the line records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kMeasureShapePlaces{
    Code(0x800404D2), Code(0x800404D3), Code(0x800404D5), Code(0x800403D7),
    Code(0x800404D6), Code(0x800404D7), Code(0x800404D8), Code(0x800404DC),
    Code(0x800404DD), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kEntryShapePlaces{
    Code(0x800404DE), Code(0x800404DF), Code(0x800404E0), Code(0x800403E9),
    Code(0x800404E1), Code(0x800404E2), Code(0x800404E3), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kLyricShapePlaces{
    Code(0x800404E4), Code(0x800404E5), Code(0x800404E6), Code(0x800404E7),
    Code(0x800404E8), Code(0x800404E9), Code(0x800404EB), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kCenterShapePlaces{
    Code(0x800404EC), Code(0x800404ED), Code(0x800404EE), Code(0x800404EF),
    Code(0x800404F0), Code(0x800404F1), Code(0x800404F2), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kCustomLineDefinitionPlaces{
    Code(0x800404F3), Code(0x800404F4), Code(0x800404FA), Code(0x8004067F),
    Code(0x80040500), Code(0x80040508), Code(0x80040509), Code(0x8004074B),
    Code(0x8004050A), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSmartShapePlaces{
    Code(0x8004050B), Code(0x8004050D), Code(0x8004050E), Code(0x800403DF),
    Code(0x8004050F), Code(0x80040510), Code(0x80040511), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false,
    Code(0x800407B6), Code(0x00000000)};

} // namespace ostin
