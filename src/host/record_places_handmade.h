#pragma once
// Failure numbers of the records whose calls do not follow the pattern.
#include "host/record.h"

namespace ostin {

inline constexpr RecordPlaces kHeaderPlaces{Code(0x800405F7), Code(0x800405F8), Code(0x800405F9),
                                            Code(0x80040466), Code(0x800405FA), Code(0x800405FB),
                                            Code(0x800405FC), Code(0x00000000), Code(0x00000000),
                                            Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kEndingRepeatPlaces{
    Code(0x800405FD), Code(0x800405FE), Code(0x800405FF), Code(0x80040331),
    Code(0x80040600), Code(0x80040601), Code(0x80040602), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTextRepeatStylePlaces{
    Code(0x80040603), Code(0x80040604), Code(0x80040605), Code(0x800403A9),
    Code(0x80040606), Code(0x80040607), Code(0x80040608), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kTextExpressionPlaces{
    Code(0x8004060A), Code(0x8004060B), Code(0x8004060C), Code(0x8004039C),
    Code(0x8004060D), Code(0x8004060E), Code(0x8004060F), Code(0x8004044B),
    Code(0x80040610), Code(0x00000000), Code(0x00000000), false,
    Code(0x800407AA), Code(0x800407AC)};
inline constexpr RecordPlaces kDrumStaffPlaces{Code(0x80040611), Code(0x80040612), Code(0x80040613),
                                               Code(0x800406BE), Code(0x80040614), Code(0x80040615),
                                               Code(0x80040616), Code(0x00000000), Code(0x00000000),
                                               Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kFretInstrumentPlaces{
    Code(0x80040618), Code(0x80040619), Code(0x8004061A), Code(0x80040678),
    Code(0x8004061B), Code(0x8004061C), Code(0x8004061D), Code(0x8004061E),
    Code(0x8004061F), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kVerseLyricPlaces{
    Code(0x80040620), Code(0x80040621), Code(0x80040622), Code(0x80040388),
    Code(0x80040625), Code(0x80040626), Code(0x80040627), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kChorusLyricPlaces{
    Code(0x80040628), Code(0x80040629), Code(0x8004062A), Code(0x8004036C),
    Code(0x8004062B), Code(0x8004062D), Code(0x8004062E), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSectionLyricPlaces{
    Code(0x8004062F), Code(0x80040630), Code(0x80040631), Code(0x8004038C),
    Code(0x80040632), Code(0x80040633), Code(0x80040634), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kVerseBaselinePlaces{
    Code(0x80040636), Code(0x80040637), Code(0x80040638), Code(0x8004076B),
    Code(0x8004063C), Code(0x8004063D), Code(0x8004063E), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kChorusBaselinePlaces{
    Code(0x8004063F), Code(0x80040640), Code(0x80040645), Code(0x80040772),
    Code(0x80040647), Code(0x80040648), Code(0x80040649), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr RecordPlaces kSectionBaselinePlaces{
    Code(0x8004064A), Code(0x8004064C), Code(0x8004064D), Code(0x80040779),
    Code(0x8004064E), Code(0x8004064F), Code(0x80040650), Code(0x00000000),
    Code(0x00000000), Code(0x00000000), Code(0x00000000), false};
inline constexpr int32_t kEndingRepeatArrayNewFailed = Code(0x80040651);
inline constexpr int32_t kEndingRepeatArrayFailed = Code(0x80040652);
inline constexpr int32_t kTextRepeatStyleArrayNewFailed = Code(0x80040653);
inline constexpr int32_t kTextRepeatStyleArrayFailed = Code(0x80040654);
inline constexpr int32_t kVerseLyricTextFailed = Code(0x80040655);
inline constexpr int32_t kChorusLyricTextFailed = Code(0x80040656);
inline constexpr int32_t kSectionLyricTextFailed = Code(0x80040657);
inline constexpr int32_t kVerseSyllableFailed = Code(0x80040658);
inline constexpr int32_t kChorusSyllableFailed = Code(0x80040659);
inline constexpr int32_t kSectionSyllableFailed = Code(0x8004065A);
inline constexpr int32_t kLoadCurrentFailed = Code(0x8004065B);
inline constexpr int32_t kLoadCurrentHandlerFailed = Code(0x8004065C);
} // namespace ostin
