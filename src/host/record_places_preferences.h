#pragma once
// Failure numbers of the raising places of the preferences records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kSettings09Places{
    Code(0x8004055F), Code(0x80040564), Code(0x80040565), Code(0x80040566),
    Code(0x80040567), Code(0x80040568), Code(0x80040569), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings12Places{
    Code(0x80040577), Code(0x80040578), Code(0x80040579), Code(0x8004057A),
    Code(0x8004057C), Code(0x8004057D), Code(0x8004057E), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings13Places{
    Code(0x80040581), Code(0x80040582), Code(0x80040583), Code(0x8004050C),
    Code(0x80040584), Code(0x80040585), Code(0x80040586), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings19Places{
    Code(0x80040587), Code(0x80040588), Code(0x8004058B), Code(0x8004058C),
    Code(0x8004058D), Code(0x8004058F), Code(0x80040590), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings25Places{
    Code(0x80040591), Code(0x80040592), Code(0x80040593), Code(0x80040594),
    Code(0x80040595), Code(0x80040596), Code(0x80040597), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings27Places{
    Code(0x80040598), Code(0x80040599), Code(0x8004059A), Code(0x8004059B),
    Code(0x8004059D), Code(0x8004059E), Code(0x8004059F), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings39Places{
    Code(0x800405A1), Code(0x800405A2), Code(0x800405A4), Code(0x800406E4),
    Code(0x800405A5), Code(0x800405A6), Code(0x800405A7), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings41Places{
    Code(0x800405A8), Code(0x800405A9), Code(0x800405AB), Code(0x800405AC),
    Code(0x800405AD), Code(0x800405AE), Code(0x800405AF), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings44Places{
    Code(0x800405B2), Code(0x800405B3), Code(0x800405B4), Code(0x800405B5),
    Code(0x800405B9), Code(0x800405BA), Code(0x800405BB), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings51Places{
    Code(0x800405BC), Code(0x800405BE), Code(0x800405BF), Code(0x800405C0),
    Code(0x800405C1), Code(0x800405C2), Code(0x800405C3), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings56Places{
    Code(0x800405C4), Code(0x800405C5), Code(0x800405C6), Code(0x800405C7),
    Code(0x800405C9), Code(0x800405CA), Code(0x800405CB), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings72Places{
    Code(0x800405CC), Code(0x800405CD), Code(0x800405CE), Code(0x800405CF),
    Code(0x800405D0), Code(0x800405D1), Code(0x800405D2), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings92Places{
    Code(0x800405D3), Code(0x800405D5), Code(0x800405D6), Code(0x800405D7),
    Code(0x800405D8), Code(0x800405D9), Code(0x800405DA), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSettings93Places{
    Code(0x800405DB), Code(0x800405DC), Code(0x800405DD), Code(0x800405DE),
    Code(0x800405DF), Code(0x800405E0), Code(0x800405E1), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kFieldInfoPlaces{Code(0x800405E2), Code(0x800405E4), Code(0x800405E5),
                                               Code(0x800405C8), Code(0x800405E6), Code(0x800405E7),
                                               Code(0x800405E8), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};

} // namespace ostin
