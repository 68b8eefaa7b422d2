#include "model/staff_styles.h"

#include <array>
#include <optional>
#include <string_view>

#include "model/arithmetic_key.h"
#include "model/arithmetic_numbers.h"
#include "shell/failure.h"
#include "shell/messages.h"

namespace ostin {

namespace {

constexpr int32_t kCreateHandler = Code(0x800406A5);
constexpr int32_t kFromXmlHandler = Code(0x800406A6);

constexpr int16_t kTransposeMask = 0x0100;
constexpr int16_t kAlternateMask = 0x1000;
constexpr int16_t kDotsFlag = 0x1000;

constexpr std::string_view kSlashPrefix = "measure-style-slash-";
constexpr std::string_view kRepeatPrefix = "measure-style-measure-repeat-";
constexpr std::string_view kTransposePrefix = "transpose-";

// Alternate notation by the low four bits of AltFlag; slash 1 takes its dots from 0x1000.
struct AltNameRow {
  int16_t Kind;
  std::string_view Name;
};
constexpr std::array<AltNameRow, 4> kAltNames{{
    {1, "measure-style-slash-nodots"},
    {2, "measure-style-slash-stems"},
    {3, "measure-style-measure-repeat-1"},
    {4, "measure-style-measure-repeat-2"},
}};

enum class StyleForm { Transpose, Slash, MeasureRepeat };

// What a tag makes: the form, the bit that the slash element adds to AltFlag.
struct TagRow {
  std::string_view Tag;
  StyleForm Form;
  int16_t SlashBit;
};
constexpr std::array<TagRow, 4> kTags{{
    {"transpose", StyleForm::Transpose, 0},
    {"slash", StyleForm::Slash, 0x0100},
    {"beat-repeat", StyleForm::Slash, 0},
    {"measure-repeat", StyleForm::MeasureRepeat, 0},
}};

// Messages of the style names.
constexpr int32_t kOneBarRepeat = 216;
constexpr int32_t kTwoBarRepeat = 217;
constexpr int32_t kSlash = 218;
constexpr int32_t kSlashWithDots = 219;
constexpr int32_t kTransposition = 220;

// Six bits as a two's complement number.
int SignedSixBits(int value) {
  value &= 0x3F;
  return value >= 0x20 ? value - 0x40 : value;
}

bool ChildIsYes(const xml::XmlNode& element, const std::string& name) {
  const std::optional<std::string> text = ChildText(element, name);
  return text && *text == "yes";
}

// Bars of a measure repeat: 1 or 2; more folds to 2 when even, 1 when odd.
int RepeatBars(const xml::XmlNode& element) {
  const std::optional<double> value = NumericValue(element.text());
  const int bars = value ? RoundHalfEven(*value) : 1;
  if (bars > 2) return bars % 2 == 0 ? 2 : 1;
  return bars;
}

} // namespace

void XmlStaffStyle::Create(const StaffStyle& thisStyle) {
  Guarded("XmlStaffStyle Create error ", kCreateHandler, [&] {
    Name.clear();
    Number = 0;
    if (thisStyle.Mask2 == kAlternateMask && thisStyle.Mask1 == 0 && thisStyle.Mask3 == 0) {
      const int16_t kind = thisStyle.AltFlag & 15;
      for (const AltNameRow& row : kAltNames)
        if (row.Kind == kind) Name = row.Name;
      if (kind == 1 && (thisStyle.AltFlag & kDotsFlag) != 0)
        Name = std::string(kSlashPrefix) + "dots";
    } else if (thisStyle.Mask1 == kTransposeMask && thisStyle.Mask2 == 0 && thisStyle.Mask3 == 0) {
      Name = std::string(kTransposePrefix) + std::to_string(thisStyle.Transposition);
    }
    if (!Name.empty()) Number = thisStyle.Cmper();
  });
}

void XmlStaffStyle::FromXml(const xml::XmlNode& thisElement, int16_t transposeValue) {
  Guarded("XmlStaffStyle FromXml error ", kFromXmlHandler, [&] {
    const std::string tag = thisElement.nodeName();
    const TagRow* row = nullptr;
    for (const TagRow& candidate : kTags)
      if (candidate.Tag == tag) row = &candidate;
    if (row == nullptr) return;

    StaffStyle style;
    style.FinaleVersion = FinaleVersion;
    style.Create(-1, 0);
    switch (row->Form) {
    case StyleForm::Transpose: {
      const int16_t value = transposeValue != 0 ? transposeValue : TranspositionValue(thisElement);
      style.Mask1 = kTransposeMask;
      style.Transposition = value;
      style.AltFlag = 0x6700;
      style.Sfflag = 5;
      style.StyleName = FormatResString(kTransposition, {std::to_string(SignedSixBits(value >> 6)),
                                                         std::to_string(SignedSixBits(value))});
      Name = std::string(kTransposePrefix) + std::to_string(value);
      break;
    }
    case StyleForm::Slash: {
      const bool stems = ChildIsYes(thisElement, "use-stems");
      const bool dots = !stems && ChildIsYes(thisElement, "use-dots");
      style.Mask2 = kAlternateMask;
      style.AltFlag =
          static_cast<int16_t>((stems ? 2 : 1) + (dots ? kDotsFlag : 0) + row->SlashBit + 0x2000);
      style.Sfflag = 7;
      style.StyleName = FormatResString(dots ? kSlashWithDots : kSlash);
      Name = std::string(kSlashPrefix) + (stems ? "stems" : dots ? "dots" : "nodots");
      break;
    }
    case StyleForm::MeasureRepeat: {
      const int bars = RepeatBars(thisElement);
      style.Mask2 = kAlternateMask;
      style.AltFlag = static_cast<int16_t>(bars + 2 + 0x6000);
      style.Sfflag = 7;
      style.StyleName = FormatResString(bars == 2 ? kTwoBarRepeat : kOneBarRepeat);
      Name = std::string(kRepeatPrefix) + std::to_string(bars);
      break;
    }
    }
    style.BotLines = 5;
    style.Dw_wRest = -772;
    style.H_otherRest = -772;
    style.StemReversal = -4;
    style.Save();
    Number = style.Cmper();
  });
}

} // namespace ostin
