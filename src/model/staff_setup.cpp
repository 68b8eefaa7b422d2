// The staves of a MusicXML part on import: neutral records, clef, names, lines and flags,
// fretted instruments, the percussion map and the group of the part's staves.
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "host/bridge.h"
#include "host/handmade_records.h"
#include "host/preference_prefs.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
#include "model/xml_part.h"
#include "shell/failure.h"

namespace ostin {
namespace {

constexpr int32_t kClearStaffSpecFailed = Code(0x800406e2);
constexpr int32_t kEditStaffSpecFailed = Code(0x800406e3);
constexpr int32_t kComputeStavesFailed = Code(0x800406e5);
constexpr int32_t kInitializeGroupSpecFailed = Code(0x800406e6);
constexpr int32_t kTransposeStaffSpecFailed = Code(0x800406e7);
constexpr int32_t kInitializeStaffSpecsFailed = Code(0x80040272);
constexpr int32_t kFindFretInstFailed = Code(0x80040273);

constexpr int16_t kNoteheadFontPref = 24;
constexpr int16_t kAccidentalFontPref = 19;
constexpr int16_t kTablatureFontPref = 28;
constexpr int kTuningBlock = 24; // strings a fretted instrument's tuning block holds

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
  return node && node.selectSingleNode(xpath);
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

// The tuning of staff-tuning elements by line from 1 to n, as MIDI keys; a line that is not
// numeric or not from 1 to n leaves its place 0.
std::vector<int16_t> TuningOf(const xml::XmlNodeList& tuningList) {
  const int32_t n = tuningList.length();
  std::vector<int16_t> tuning(static_cast<std::size_t>(n) + 1, 0);
  for (int32_t k = 0; k < n; ++k) {
    const xml::XmlNode staffTuning = tuningList.item(k);
    const std::optional<double> line = NumericValue(staffTuning.getAttribute("line"));
    if (!line || *line < 1 || *line > n || *line != static_cast<int32_t>(*line)) continue;
    tuning[static_cast<std::size_t>(*line)] = MidiNote(staffTuning);
  }
  return tuning;
}

// The instrument holds that tuning, highest string first, and no diatonic frets.
bool HoldsTuning(const FretInstrument& instrument, const std::vector<int16_t>& tuning) {
  const int n = static_cast<int>(tuning.size()) - 1;
  if (instrument.NoOfStrings != n || instrument.DiatonicStepsHi != 0 ||
      instrument.DiatonicStepsLo != 0)
    return false;
  for (int j = 1; j <= n; ++j)
    if (instrument.Tuning(j) != tuning[n - j + 1]) return false;
  return true;
}

// A part without pitches whose every clef is a percussion clef, or that has none, is played
// on drums.
bool UnpitchedOnly(const xml::XmlNode& part) {
  if (!part || Has(part, ".//pitch")) return false;
  const xml::XmlNodeList signs = part.selectNodes(".//sign");
  for (int32_t k = 0; k < signs.length(); ++k)
    if (TrimmedLower(signs.item(k).text()) != "percussion") return false;
  return true;
}

std::string FontNameOf(const DefaultFontPrefs& prefs, bool loaded) {
  return loaded ? prefs.FontName : std::string();
}

} // namespace

void XmlPart::InitializeStaffSpecs() {
  Guarded("XmlPart InitializeStaffSpecs error ", kInitializeStaffSpecsFailed, [&] {
    if (!StavesComputed) ComputeStaves();
    DefaultFontPrefs noteheadPrefs, accidentalPrefs;
    const std::string noteheadFont =
        FontNameOf(noteheadPrefs, noteheadPrefs.Load(kNoteheadFontPref));
    const std::string accidentalFont =
        FontNameOf(accidentalPrefs, accidentalPrefs.Load(kAccidentalFontPref));

    NoTime = !Has(Part(), ".//beats");
    if (NoTime) {
      SetXmlBeats(4);
      SetXmlBeatType(4);
      FinaleBeats = 4;
      FinaleDivbeat = 1024;
      UseDisplayTimeSig = false;
      AbbreviateTime = false;
    }

    const xml::XmlNode transpose =
        Part() ? Part().selectSingleNode("measure[1]/attributes/transpose") : xml::XmlNode();
    for (int16_t i = 1; i <= Staves(); ++i) {
      if (!StaffSpecs(i)) {
        auto spec = std::make_shared<StaffSpec>();
        spec->FinaleVersion = FinaleVersion;
        SetStaffSpecs(i, std::move(spec));
      }
      StaffSpec& staff = *StaffSpecs(i);
      const int16_t inst = FxSlotToInst(static_cast<int16_t>(StartSlot + i - 1), 0);
      if (inst != 0) {
        if (!staff.LoadCurrent(inst, 1, 0)) staff.Create(0, 0);
      } else {
        ClearStaffSpec(staff);
        staff.Create(0, 0);
      }
      if (i == 1) StartStaff = staff.Cmper();
      EditStaffSpec(i);
      if (transpose) TransposeStaffSpec(i, transpose);
      NoteheadFont.at(i) = noteheadFont;
      AccidentalFont.at(i) = accidentalFont;
    }

    if (Staves() == 1 && (Has(ScorePart(), ".//midi-unpitched") || UnpitchedOnly(Part())))
      CreatePercussionMap();
    InitializeGroupSpec();
  });
}

void XmlPart::ClearStaffSpec(StaffSpec& spec) {
  Guarded("XmlPart ClearStaffSpec error ", kClearStaffSpecFailed, [&] {
    spec.AltFlag = static_cast<int16_t>(spec.AltFlag & ~15);
    spec.Mfont = 0;
    spec.Flag = static_cast<int16_t>(spec.Flag & ~0x22A0);
    spec.Clefs = 0;
    spec.Transposition = 0;
    spec.Instflag = static_cast<int16_t>(spec.Instflag & 0x3FC7);
  });
}

void XmlPart::ComputeStaves() {
  Guarded("XmlPart ComputeStaves error ", kComputeStavesFailed, [&] {
    int16_t staves = 1;
    if (Part()) {
      xml::XmlNodeList list = Part().selectNodes(".//staves");
      for (int32_t k = 0; k < list.length(); ++k)
        staves = std::max(staves, Numeric16(list.item(k).text()).value_or(staves));
    }
    // Resizing also resets the style changes and the voice count.
    SetStaves(staves);
    StavesComputed = true;
  });
}

void XmlPart::EditStaffSpec(int16_t index) {
  Guarded("XmlPart EditStaffSpec error ", kEditStaffSpecFailed, [&] {
    StaffSpec& staff = *StaffSpecs(index);
    const xml::XmlNode& xmlPart = Part();
    const bool single = Staves() == 1;
    const std::string numbered = "[@number='" + std::to_string(index) + "']";

    const xml::XmlNode clef =
        xmlPart.selectSingleNode("measure[1]/attributes/clef" + (single ? "" : numbered));
    if (clef) {
      staff.Clefs = ClefValue(clef, FinaleVersion);
      SetClefs(index, staff.Clefs);
    }

    std::string fullName, abbrvName;
    if (single) {
      fullName = ChildTextOrEmpty(ScorePart(), "part-name");
      if (fullName == "MusicXML Part") fullName.clear();
      abbrvName = ChildTextOrEmpty(ScorePart(), "part-abbreviation");
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
      if (TabStaff == 0) {
        const int32_t tunings = detail.selectNodes("staff-tuning").length();
        const std::optional<int16_t> number = Numeric16(detail.getAttribute("number"));
        tuned = tunings == n && (single || (number && *number == index));
        if (tuned && FinaleVersion >= 2003) {
          TabStaff = index;
          tablature = true;
        }
      }
      if (tablature && staff.Clefs != 15 && staff.Clefs != 16 && staff.Clefs != 17) {
        // Without the tablature clef the staff is a plain one of its lines.
        TabStaff = 0;
        tablature = false;
        tuned = false;
      }
      if (tablature) {
        staff.Flag = static_cast<int16_t>(staff.Flag | 0x0200);
        staff.TopLines = 0;
        staff.BotLines = n;
        int16_t id = 0;
        FindFretInst(detail.selectNodes("staff-tuning"), id);
        staff.FretInstID = id;
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
        LineOffset.at(index) = layout.Offset;
        PitchAndOctave(StaffStepPitch.at(index), StaffStepOctave.at(index), LineOffset.at(index),
                       StaffLinePitch.at(index), StaffLineOctave.at(index));
      }
    }

    if (tablature) {
      staff.MoreFlags = static_cast<int16_t>((staff.MoreFlags | 0x1181) & ~6);
      staff.Instflag = static_cast<int16_t>(staff.Instflag | 48);
    }
    staff.MoreFlags = ContentFlags(xmlPart, staff.MoreFlags);
    if (NoTime) staff.Instflag = static_cast<int16_t>(staff.Instflag | 16);
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

void XmlPart::FindFretInst(const xml::XmlNodeList& tuningList, int16_t& id) {
  Guarded("XmlPart FindFretInst error ", kFindFretInstFailed, [&] {
    const std::vector<int16_t> tuning = TuningOf(tuningList);
    const int n = static_cast<int>(tuning.size()) - 1;
    FretInstrument instrument;
    for (int16_t k = 1; instrument.Load(k, 0); ++k) {
      if (HoldsTuning(instrument, tuning)) {
        id = k;
        return;
      }
    }
    instrument.Create(-1, 0);
    instrument.NoOfStrings = static_cast<int16_t>(n);
    instrument.Name = "MusicXML " + Id();
    instrument.NoOfFrets = 30;
    instrument.SpeedyClef = 5;
    // The tuning goes into the host's own block, which the save keeps.
    for (int j = 1; j <= std::min(n, kTuningBlock); ++j)
      instrument.StringTuning[j - 1] = tuning[n - j + 1];
    instrument.Save();
    id = instrument.Cmper();
  });
}

void XmlPart::InitializeGroupSpec() {
  Guarded("XmlPart InitializeGroupSpec error ", kInitializeGroupSpecFailed, [&] {
    if (Staves() <= 1) return;
    GroupSpec group;
    group.FinaleVersion = FinaleVersion;
    group.Create(0, -1);
    group.StartInst = StartStaff;
    group.EndInst = static_cast<int16_t>(StartStaff + Staves() - 1);
    group.BracketID = 3;
    group.BracketBracpos = -12;
    group.Flag = 1024;
    if (FinaleVersion >= 2003) group.Auxflag = 2048;
    const std::string fullName = ChildTextOrEmpty(ScorePart(), "part-name");
    if (!fullName.empty() && fullName != "MusicXML Part") {
      group.SetFullNameText(fullName);
      group.FullNameXadj = -48;
    }
    const std::string abbrvName = ChildTextOrEmpty(ScorePart(), "part-abbreviation");
    if (!abbrvName.empty()) {
      group.SetAbrvNameText(abbrvName);
      group.AbrvNameXadj = -48;
    }
    group.Save();
  });
}

void XmlPart::TransposeStaffSpec(int16_t index, const xml::XmlNode& transpose) {
  Guarded("XmlPart TransposeStaffSpec error ", kTransposeStaffSpecFailed, [&] {
    if (!Part() || !transpose) return;
    StaffSpec& staff = *StaffSpecs(index);
    staff.Transposition = TransposeValue(transpose);
    staff.Save();
  });
}

} // namespace ostin
