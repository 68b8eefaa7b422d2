// The staves of a MusicXML part on import: neutral records, clef, names, lines and flags.
#include "model/staff_setup.h"

#include <algorithm>
#include <optional>
#include <string>

#include "host/preference_prefs.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
#include "shell/failure.h"

namespace ostin {
namespace {

constexpr int32_t kClearStaffSpecFailed = Code(0x800406e2);
constexpr int32_t kEditStaffSpecFailed = Code(0x800406e3);
constexpr int32_t kComputeStavesFailed = Code(0x800406e5);
constexpr int32_t kInitializeGroupSpecFailed = Code(0x800406e6);
constexpr int32_t kTransposeStaffSpecFailed = Code(0x800406e7);

constexpr int16_t kNoteheadFontPref = 24;
constexpr int16_t kTablatureFontPref = 28;

// The line settings of a staff of n lines other than 5.
struct LineLayout {
  int16_t TopLines, BotLines, Offset;
};

LineLayout LinesFor(int16_t n) {
  switch (n) {
  case 1:
    return {1, 4, -4};
  case 2:
    return {1, 10, -6};
  case 3:
    return {1, 14, -4};
  default:
    return {0, n, static_cast<int16_t>((n - 5) * 2)};
  }
}

std::optional<int16_t> Numeric16(const std::string& text) {
  if (!NumericValue(text)) return std::nullopt;
  return Integer16(text);
}

std::string ChildTextOrEmpty(const xml::XmlNode& element, const std::string& name) {
  if (!element) return {};
  return ChildText(element, name).value_or("");
}

bool Has(const xml::XmlNode& node, const std::string& xpath) {
  return static_cast<bool>(node.selectSingleNode(xpath));
}

// Stems, beams, ties and tuplets that the part's notes use decide what the staff shows.
int16_t ContentFlags(const xml::XmlNode& part, int16_t moreFlags) {
  int flags = static_cast<uint16_t>(moreFlags);
  if (Has(part, ".//stem")) {
    flags |= Has(part, ".//beam") ? 0x0418 : 24;
    const bool down = Has(part, ".//stem[. = 'down']");
    const bool up = Has(part, ".//stem[. = 'up']");
    if (down && !up) flags |= 32;
    if (up && !down) flags |= 64;
  } else {
    flags &= ~0x0418;
  }
  if (Has(part, ".//tie")) {
    if (Has(part, ".//tied"))
      flags |= 4;
    else
      flags &= ~4;
  }
  if (Has(part, ".//tuplet[@type='start']")) {
    if (Has(part, ".//tuplet[@type='start'][(not (@bracket='no')) and "
                  "(not (@show-number='none'))]"))
      flags |= 0x2000;
    else
      flags &= ~0x2000;
  }
  return static_cast<int16_t>(flags);
}

} // namespace

void ClearStaffSpec(StaffSpec& staff) {
  Guarded("XmlPart ClearStaffSpec error ", kClearStaffSpecFailed, [&] {
    staff.AltFlag = static_cast<int16_t>(staff.AltFlag & ~15);
    staff.Mfont = 0;
    staff.Flag = static_cast<int16_t>(staff.Flag & ~0x22A0);
    staff.Clefs = 0;
    staff.Transposition = 0;
    staff.Instflag = static_cast<int16_t>(staff.Instflag & 0x3FC7);
  });
}

void ComputeStaves(XmlPart& part) {
  Guarded("XmlPart ComputeStaves error ", kComputeStavesFailed, [&] {
    int16_t staves = 1;
    if (part.Part()) {
      xml::XmlNodeList list = part.Part().selectNodes(".//staves");
      for (int32_t k = 0; k < list.length(); ++k)
        staves = std::max(staves, Numeric16(list.item(k).text()).value_or(staves));
    }
    // Resizing also resets the style changes and the voice count.
    part.SetStaves(staves);
  });
}

void EditStaffSpec(XmlPart& part, int16_t index) {
  Guarded("XmlPart EditStaffSpec error ", kEditStaffSpecFailed, [&] {
    StaffSpec& staff = *part.StaffSpecs(index);
    const xml::XmlNode& xmlPart = part.Part();
    const bool single = part.Staves() == 1;
    const std::string numbered = "[@number='" + std::to_string(index) + "']";

    const xml::XmlNode clef =
        xmlPart.selectSingleNode("measure[1]/attributes/clef" + (single ? "" : numbered));
    if (clef) {
      staff.Clefs = ClefValue(clef, part.FinaleVersion);
      part.SetClefs(index, staff.Clefs);
    }

    std::string fullName, abbrvName;
    if (single) {
      fullName = ChildTextOrEmpty(part.ScorePart(), "part-name");
      if (fullName == "MusicXML Part") fullName.clear();
      abbrvName = ChildTextOrEmpty(part.ScorePart(), "part-abbreviation");
    }
    staff.SetFullNameText(fullName);
    staff.SetAbbrvNameText(abbrvName);

    bool tablature = false;
    const xml::XmlNodeList details =
        xmlPart.selectNodes("measure[1]/attributes/staff-details" + (single ? "" : numbered));
    if (details.length() == 1) {
      const xml::XmlNode detail = details.item(0);
      const int16_t n =
          Numeric16(ChildTextOrEmpty(detail, "staff-lines")).value_or(static_cast<int16_t>(0));
      bool tuned = false;
      if (part.TabStaff == 0) {
        const int32_t tunings = detail.selectNodes("staff-tuning").length();
        const std::optional<int16_t> number = Numeric16(detail.getAttribute("number"));
        tuned = tunings == n && (single || (number && *number == index));
        if (tuned && part.FinaleVersion >= 2003) {
          part.TabStaff = index;
          tablature = true;
        }
      }
      if (tablature && staff.Clefs != 15 && staff.Clefs != 16 && staff.Clefs != 17) {
        // Without the tablature clef the staff is a plain one of its lines.
        part.TabStaff = 0;
        tablature = false;
        tuned = false;
      }
      if (tablature) {
        staff.Flag = static_cast<int16_t>(staff.Flag | 0x0200);
        staff.TopLines = 0;
        staff.BotLines = n;
        if (const auto capo = Numeric16(ChildTextOrEmpty(detail, "capo")))
          staff.CapoLowFret = *capo;
      } else if (!tuned && n > 0 && n != 5) {
        const LineLayout layout = LinesFor(n);
        staff.TopLines = layout.TopLines;
        staff.BotLines = layout.BotLines;
        if (n == 1) {
          staff.TopBarlineOffset = 48;
          staff.BotBarlineOffset = -48;
          staff.Dw_wRest = -1285;
        }
        part.LineOffset.at(index) = layout.Offset;
        PitchAndOctave(part.StaffStepPitch.at(index), part.StaffStepOctave.at(index),
                       part.LineOffset.at(index), part.StaffLinePitch.at(index),
                       part.StaffLineOctave.at(index));
      }
    }

    if (tablature) {
      staff.MoreFlags = static_cast<int16_t>((staff.MoreFlags | 0x1181) & ~6);
      staff.Instflag = static_cast<int16_t>(staff.Instflag | 48);
    }
    staff.MoreFlags = ContentFlags(xmlPart, staff.MoreFlags);
    if (part.NoTime) staff.Instflag = static_cast<int16_t>(staff.Instflag | 16);
    staff.AltFlag = 0x0700;

    DefaultFontPrefs font;
    if (font.Load(tablature ? kTablatureFontPref : kNoteheadFontPref)) {
      staff.Mfont = font.Font;
      staff.Sizeefx = static_cast<int16_t>(font.Size * 256 + font.Efx);
    }
    if (tablature) {
      staff.RepeatDotsOff = -519;
      staff.LineSpace = 2304;
      staff.VertTabNumOff = -1024;
      staff.HorzStemOffUp = 0;
      staff.HorzStemOffDown = 0;
      staff.VertStemStartOffUp = 1600;
      staff.VertStemStartOffDown = -1600;
      staff.VertStemEndOffUp = 7360;
      staff.VertStemEndOffDown = -7360;
    }
    if (index > 1) staff.Instflag = static_cast<int16_t>(staff.Instflag | 0x0600);
    staff.Save();
  });
}

void InitializeGroupSpec(XmlPart& part) {
  Guarded("XmlPart InitializeGroupSpec error ", kInitializeGroupSpecFailed, [&] {
    if (part.Staves() <= 1) return;
    GroupSpec group;
    group.FinaleVersion = part.FinaleVersion;
    group.Create(0, -1);
    group.StartInst = part.StartStaff;
    group.EndInst = static_cast<int16_t>(part.StartStaff + part.Staves() - 1);
    group.BracketID = 3;
    group.BracketBracpos = -12;
    group.Flag = 1024;
    if (part.FinaleVersion >= 2003) group.Auxflag = 2048;
    const std::string fullName = ChildTextOrEmpty(part.ScorePart(), "part-name");
    if (!fullName.empty() && fullName != "MusicXML Part") {
      group.SetFullNameText(fullName);
      group.FullNameXadj = -48;
    }
    const std::string abbrvName = ChildTextOrEmpty(part.ScorePart(), "part-abbreviation");
    if (!abbrvName.empty()) {
      group.SetAbrvNameText(abbrvName);
      group.AbrvNameXadj = -48;
    }
    group.Save();
  });
}

void TransposeStaffSpec(XmlPart& part, int16_t index, const xml::XmlNode& transpose) {
  Guarded("XmlPart TransposeStaffSpec error ", kTransposeStaffSpecFailed, [&] {
    if (!part.Part() || !transpose) return;
    StaffSpec& staff = *part.StaffSpecs(index);
    staff.Transposition = part.TransposeValue(transpose);
    staff.Save();
  });
}

} // namespace ostin
