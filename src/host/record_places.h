#pragma once
// The failure numbers of every record class's raising places. Numbers that callers test
// for absence are the host's known ones; the rest are this program's own, each used once.
#include "host/record.h"

namespace ostin {

// Create, CreateLoad, CreateHandler, Load, LoadHandler, Save, SaveHandler, Next,
// NextHandler, Delete, DeleteHandler, TwoPartKey.
inline constexpr RecordPlaces kMeasureSpecPlaces{
    Code(0x800402FE), Code(0x800402FF), Code(0x8004025F), Code(0x80040300),
    Code(0x80040260), Code(0x80040301), Code(0x80040261), Code(0x80040262),
    Code(0x80040263), Code(0x800403C1), Code(0x800403C2)};
inline constexpr RecordPlaces kInstrumentUsedPlaces{
    Code(0x80040264), Code(0x80040265), Code(0x80040266), Code(0x80040374),
    Code(0x80040267), Code(0x80040268), Code(0x80040269), Code(0x8004026A),
    Code(0x8004026B), Code(0x8004026C), Code(0x8004026D)};
inline constexpr RecordPlaces kFreezeMusicPlaces{
    Code(0x8004026E), Code(0x8004026F), Code(0x80040270), Code(0x80040271),
    Code(0x80040272), Code(0x80040273), Code(0x80040274), Code(0x8004059C),
    Code(0x80040275), Code(0x80040276), Code(0x80040277)};
inline constexpr RecordPlaces kClefElementPlaces{
    Code(0x80040278), Code(0x80040279), Code(0x8004027A), Code(0x800403C8),
    Code(0x8004027B), Code(0x8004027C), Code(0x8004027D), Code(0x8004027E),
    Code(0x8004027F), Code(0x80040280), Code(0x80040281)};
inline constexpr RecordPlaces kSettings12Places{
    Code(0x80040282), Code(0x80040283), Code(0x80040284), Code(0x80040285),
    Code(0x80040286), Code(0x80040287), Code(0x80040288), Code(0x80040289),
    Code(0x8004028A), Code(0x8004028B), Code(0x8004028C)};
inline constexpr RecordPlaces kSettings13Places{
    Code(0x8004028D), Code(0x8004028E), Code(0x8004028F), Code(0x8004050C),
    Code(0x80040290), Code(0x80040291), Code(0x80040292), Code(0x80040293),
    Code(0x80040294), Code(0x80040295), Code(0x80040296)};
inline constexpr RecordPlaces kSettings39Places{
    Code(0x80040297), Code(0x80040298), Code(0x80040299), Code(0x800406E4),
    Code(0x8004029A), Code(0x8004029B), Code(0x8004029C), Code(0x8004029D),
    Code(0x8004029E), Code(0x8004029F), Code(0x800402A0)};
inline constexpr RecordPlaces kSettings41Places{
    Code(0x800402A1), Code(0x800402A2), Code(0x800402A3), Code(0x800402A4),
    Code(0x800402A5), Code(0x800402A6), Code(0x800402A7), Code(0x800402A8),
    Code(0x800402A9), Code(0x800402AA), Code(0x800402AB)};
inline constexpr RecordPlaces kSettings44Places{
    Code(0x800402AC), Code(0x800402AD), Code(0x800402AE), Code(0x800402AF),
    Code(0x800402B0), Code(0x800402B1), Code(0x800402B2), Code(0x800402B3),
    Code(0x800402B4), Code(0x800402B5), Code(0x800402B6)};
inline constexpr RecordPlaces kFieldInfoPlaces{Code(0x800402B7), Code(0x800402B8), Code(0x800402B9),
                                               Code(0x800405C8), Code(0x800402BA), Code(0x800402BB),
                                               Code(0x800402BC), Code(0x800402BD), Code(0x800402BE),
                                               Code(0x800402BF), Code(0x800402C0)};
inline constexpr RecordPlaces kGfholdPlaces{Code(0x800402C1), Code(0x800402C2), Code(0x800402C3),
                                            Code(0x80040348), Code(0x800402C4), Code(0x800402C5),
                                            Code(0x800402C6), Code(0x8004045C), Code(0x800402C8),
                                            Code(0x800402CB), Code(0x800402CC), true};

} // namespace ostin
