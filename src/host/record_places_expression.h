#pragma once
// Failure numbers of the raising places of the expression records.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kScoreExpressionPlaces{
    Code(0x80040449), Code(0x8004044C), Code(0x8004044D), Code(0x80040390),
    Code(0x8004044E), Code(0x80040453), Code(0x80040454), Code(0x80040455),
    Code(0x80040458), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kStaffExpressionPlaces{
    Code(0x80040459), Code(0x8004045A), Code(0x8004045B), Code(0x80040398),
    Code(0x8004045D), Code(0x80040461), Code(0x80040462), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSepScoreExpressionPlacPlaces{
    Code(0x80040463), Code(0x80040464), Code(0x80040465), Code(0x800403BE),
    Code(0x80040467), Code(0x80040468), Code(0x8004046A), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSepBackwardRepeatPlacPlaces{
    Code(0x8004046B), Code(0x8004046D), Code(0x8004046E), Code(0x8004046F),
    Code(0x80040470), Code(0x80040471), Code(0x80040472), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSepEndingRepeatPlacPlaces{
    Code(0x80040473), Code(0x80040474), Code(0x80040476), Code(0x80040477),
    Code(0x80040478), Code(0x80040479), Code(0x8004047A), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSepEndingRepeatTextPlacPlaces{
    Code(0x8004047B), Code(0x8004047C), Code(0x8004047D), Code(0x8004047E),
    Code(0x8004047F), Code(0x80040481), Code(0x80040482), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSepTextRepeatPlacPlaces{
    Code(0x80040483), Code(0x80040484), Code(0x80040485), Code(0x80040486),
    Code(0x80040488), Code(0x80040489), Code(0x8004048A), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTextExpEnclosurePlaces{
    Code(0x8004048B), Code(0x8004048C), Code(0x8004048D), Code(0x800405D4),
    Code(0x8004048E), Code(0x8004048F), Code(0x80040491), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kRepeatEnclosurePlaces{
    Code(0x80040492), Code(0x80040493), Code(0x80040497), Code(0x800405E3),
    Code(0x80040498), Code(0x8004049A), Code(0x8004049B), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kArticulationDefinitionPlaces{
    Code(0x8004049C), Code(0x8004049F), Code(0x800404A0), Code(0x80040368),
    Code(0x800404A1), Code(0x800404A2), Code(0x800404A3), Code(0x800403FC),
    Code(0x800404A5), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kBackwardRepeatPlaces{
    Code(0x800404A6), Code(0x800404A9), Code(0x800404AD), Code(0x80040340),
    Code(0x800404B2), Code(0x800404B3), Code(0x800404B5), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kEndingRepeatTextPlaces{
    Code(0x800404B6), Code(0x800404B7), Code(0x800404B8), Code(0x80040335),
    Code(0x800404B9), Code(0x800404BA), Code(0x800404BB), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTextRepeatPlaces{
    Code(0x800404BC), Code(0x800404BD), Code(0x800404BE), Code(0x800403A4),
    Code(0x800404BF), Code(0x800404C0), Code(0x800404C1), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTextRepeatStyleTextPlaces{
    Code(0x800404C2), Code(0x800404C3), Code(0x800404C4), Code(0x800403AE),
    Code(0x800404C5), Code(0x800404C6), Code(0x800404C7), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kShapeExpressionPlaces{
    Code(0x800404C9), Code(0x800404CB), Code(0x800404CC), Code(0x80040394),
    Code(0x800404CD), Code(0x800404CE), Code(0x800404CF), Code(0x800404D0),
    Code(0x800404D1), Code(0x00000000), Code(0x00000000), false,
    Code(0x800407A5), Code(0x800404D0)};

} // namespace ostin
