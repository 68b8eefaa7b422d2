#include "model/percussion.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "host/handmade_records.h"
#include "host/preference_prefs.h"
#include "host/records.h"
#include "host/text/fonts.h"
#include "host/text/noteheads.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
#include "model/xml_part.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kInitializePercussionHandler = Code(0x800406A9);

constexpr int32_t kCreatePercussionMapHandler = Code(0x800406AA);
constexpr int32_t kPercussionHandler = Code(0x80040274);

constexpr int kMidiKeys = 128;
constexpr int16_t kPercussionStaffFlags = 0x2020;

// Children of a midi-instrument that all unpitched instruments must share.
constexpr std::array<std::string_view, 4> kSharedMidiChildren{
    {"midi-channel", "midi-name", "midi-bank", "midi-program"}};

std::string ChildOrEmpty(const xml::XmlNode& element, std::string_view name) {
  return ChildText(element, std::string(name)).value_or("");
}

std::string NotesOf(const std::string& id) {
  return ".//note[instrument[@id='" + id + "']][unpitched]";
}

// Keys 0 to 127: which unpitched instrument (from 1) holds a key, and which keys pitched
// notes of the part take.
struct KeyTables {
  std::array<int, kMidiKeys> Slot{};
  std::array<bool, kMidiKeys> Used{};
  int Highest = -1;
  int Lowest = kMidiKeys;

  bool Free(int key) const { return key >= 0 && key < kMidiKeys && Slot[key] == 0; }
  bool FreeAndUnused(int key) const { return Free(key) && !Used[key]; }
  void Take(int key, int instrument, XmlPercussion& item) {
    Slot[key] = instrument;
    item.MidiIndex = static_cast<int16_t>(key);
    Highest = std::max(Highest, key);
    Lowest = std::min(Lowest, key);
  }
};

// All unpitched instruments play on one channel, bank and program, and the channel isn't 0.
bool SharedMidiSettings(const xml::XmlNodeList& instruments) {
  const xml::XmlNode first = instruments.item(0);
  const std::optional<double> channel = NumericValue(ChildOrEmpty(first, "midi-channel"));
  if (channel && *channel == 0) return false;
  for (int32_t i = 1; i < instruments.length(); ++i)
    for (std::string_view name : kSharedMidiChildren)
      if (ChildOrEmpty(instruments.item(i), name) != ChildOrEmpty(first, name)) return false;
  return true;
}

// Keys that notes of pitched instruments sound.
void MarkPitchedKeys(const xml::XmlNode& scorePart, const xml::XmlNode& part, KeyTables& keys) {
  xml::XmlNodeList pitched = scorePart.selectNodes("midi-instrument[not (midi-unpitched)]");
  for (int32_t i = 0; i < pitched.length(); ++i) {
    const std::string id = pitched.item(i).getAttribute("id");
    if (id.empty()) continue;
    xml::XmlNodeList notes = part.selectNodes(NotesOf(id));
    for (int32_t j = 0; j < notes.length(); ++j) {
      const xml::XmlNode unpitched = notes.item(j).selectSingleNode("unpitched");
      if (!unpitched.selectSingleNode("display-step")) continue;
      const int key = MidiNote(unpitched);
      if (key >= 0 && key < kMidiKeys) keys.Used[key] = true;
    }
  }
}

// The first of key, key + 1 and key - 1 that is free and unused, or -1.
int NearKey(const KeyTables& keys, int key) {
  if (keys.FreeAndUnused(key)) return key;
  if (key < kMidiKeys - 1 && keys.FreeAndUnused(key + 1)) return key + 1;
  if (key >= 1 && keys.FreeAndUnused(key - 1)) return key - 1;
  return -1;
}

// Noteheads from the first note and, for the other kind, a later note of that id.
void ReadNoteheads(const xml::XmlNode& part, const std::string& id, const xml::XmlNode& note,
                   const std::string& font, XmlPercussion& item) {
  const std::string type = ChildOrEmpty(note, "type");
  const bool open = type == "half" || type == "whole" || type == "long" || type == "breve";
  const xml::XmlNode notehead = note.selectSingleNode("notehead");
  if (!notehead) return;
  if (!open) {
    item.ClosedNotehead = GetNotehead(notehead, font, true);
    const xml::XmlNode other =
        part.selectSingleNode(NotesOf(id) + "[type[. = 'half' or . = 'whole']]/notehead");
    if (other) item.OpenNotehead = GetNotehead(other, "Tamburo", false);
  } else {
    item.OpenNotehead = GetNotehead(notehead, "Tamburo", false);
    const xml::XmlNode other =
        part.selectSingleNode(NotesOf(id) + "[type[. = 'quarter' or . = 'eighth']]/notehead");
    if (other) item.ClosedNotehead = GetNotehead(other, "Tamburo", true);
  }
}

// Keys for active instruments that found none near their own: above the highest key taken,
// below the lowest, the first free and unused key, the first free key.
void PlaceRemaining(std::vector<XmlPercussion>& items, std::vector<bool>& keyed, KeyTables& keys) {
  const int n = static_cast<int>(items.size());
  auto left = [&](int i) { return items[i].Active && !keyed[i]; };
  auto take = [&](int i, int key) {
    keys.Take(key, i + 1, items[i]);
    keyed[i] = true;
  };
  int done = 0;
  for (int i = 0; i < n; ++i) {
    if (left(i)) {
      int key = keys.Highest + 1;
      while (key < kMidiKeys && !keys.Free(key))
        ++key;
      if (key >= kMidiKeys) {
        key = keys.Lowest - 1;
        while (key >= 0 && !keys.Free(key))
          --key;
      }
      if (key >= 0 && key < kMidiKeys) take(i, key);
    }
    if (!left(i)) ++done;
  }
  if (done < n) {
    for (int i = 0; i < n; ++i) {
      if (!left(i)) continue;
      int key = 0;
      while (key < kMidiKeys && !keys.FreeAndUnused(key))
        ++key;
      if (key >= kMidiKeys) {
        key = 0;
        while (key < kMidiKeys && !keys.Free(key))
          ++key;
      }
      if (key < kMidiKeys) take(i, key);
      if (!left(i)) ++done;
    }
  }
  if (done < n) {
    for (int i = 0; i < n; ++i) {
      if (!left(i)) continue;
      int key = 0;
      while (key < kMidiKeys && !keys.Free(key))
        ++key;
      if (key < kMidiKeys) take(i, key);
    }
  }
}

void SaveDefinition(int16_t map, int key, int16_t midiNote, int16_t staffPos, int16_t closed,
                    int16_t open) {
  PercussionNoteDef definition;
  definition.Create(map, static_cast<int16_t>(key));
  definition.MidiNote = midiNote;
  definition.StaffPos = staffPos;
  definition.ClosedNotehead = closed;
  definition.OpenNotehead = open;
  definition.Save();
}

struct FontRow {
  std::string_view MusicFont;
  std::string_view PercussionFont;
};
constexpr std::array<FontRow, 4> kPercussionFonts{{
    {"Maestro", "Maestro Percussion"},
    {"Maestro Wide", "Maestro Percussion"},
    {"Jazz", "JazzPerc"},
    {"EngraverFontSet", "EngraverFontExtra"},
}};
constexpr std::string_view kOtherPercussionFont = "Tamburo";

} // namespace

std::string PercussionFont(const std::string& musicFont) {
  for (const FontRow& row : kPercussionFonts)
    if (row.MusicFont == musicFont) return std::string(row.PercussionFont);
  return std::string(kOtherPercussionFont);
}

void XmlPart::InitializePercussion(const std::string& instrumentPrefix) {
  Guarded("XmlPart InitializePercussion error ", kInitializePercussionHandler, [&] {
    PercussionMap.RemoveAll();
    DrumStaff drumStaff;
    const bool hasDrumStaff =
        StaffSpecs(1) && drumStaff.Load(StaffSpecs(1)->DrumStaffCmper, 0, kDrumStaffTag);
    const int16_t percMap = hasDrumStaff ? drumStaff.PercMap : int16_t{0};
    int played = 0;
    for (int k = 0; k < kMidiKeys; ++k) {
      XmlPercussion item;
      item.MidiIndex = static_cast<int16_t>(k + 1);
      const std::string index = std::to_string(item.MidiIndex);
      PercussionNoteDef definition;
      if (!hasDrumStaff || !drumStaff.PlayMap(k) ||
          !definition.Load(percMap, static_cast<int16_t>(k))) {
        // A key that the map does not draw plays as itself.
        item.InstrumentName = "MIDI " + index;
        item.MidiNote = item.MidiIndex;
        item.InstrumentID = instrumentPrefix + "-M" + index;
      } else {
        ++played;
        PercussionNoteName name;
        item.InstrumentName = name.Load(percMap, static_cast<int16_t>(k))
                                  ? name.Text
                                  : "MusicXML Note " + std::to_string(k + 1);
        item.StaffStep = definition.StaffPos;
        item.MidiNote = static_cast<int16_t>(definition.MidiNote + 1);
        item.ClosedNotehead = definition.ClosedNotehead;
        item.OpenNotehead = definition.OpenNotehead;
        item.InstrumentID = instrumentPrefix + "-X" + std::to_string(played);
        item.Active = true;
      }
      PercussionMap.Add(item, index);
    }
    Counter += kMidiKeys;
  });
}

void XmlPart::CreatePercussionMap() {
  Guarded("XmlPart CreatePercussionMap error ", kCreatePercussionMapHandler, [&] {
    if (Staves() > 1 || !StaffSpecs(1)) return;
    const xml::XmlNode& scorePart = ScorePart();
    const xml::XmlNode& part = Part();
    xml::XmlNodeList instruments = scorePart.selectNodes("midi-instrument[midi-unpitched]");
    const bool withInstruments =
        scorePart.selectSingleNode("score-instrument") && instruments.length() > 0;
    if (withInstruments && !SharedMidiSettings(instruments)) return;

    DefaultFontPrefs fontPrefs;
    const std::string font = PercussionFont(fontPrefs.Load(0) ? fontPrefs.FontName : "");
    const int n = withInstruments ? instruments.length() : 0;
    std::vector<XmlPercussion> items(n);
    std::vector<bool> keyed(n, false);
    KeyTables keys;
    if (withInstruments) MarkPitchedKeys(scorePart, part, keys);

    for (int i = 0; i < n; ++i) {
      const xml::XmlNode instrument = instruments.item(i);
      XmlPercussion& item = items[i];
      item.InstrumentID = instrument.getAttribute("id");
      const xml::XmlNode scoreInstrument =
          scorePart.selectSingleNode("score-instrument[@id = '" + item.InstrumentID + "']");
      if (!scoreInstrument) return;
      item.InstrumentName = ChildText(scoreInstrument, "instrument-name")
                                .value_or("MusicXML Percussion " + std::to_string(i + 1));
      const std::optional<double> midi = NumericValue(ChildOrEmpty(instrument, "midi-unpitched"));
      if (!midi || *midi < 1 || *midi > kMidiKeys) return;
      item.MidiNote = static_cast<int16_t>(RoundHalfEven(*midi));
      const xml::XmlNode note = part.selectSingleNode(NotesOf(item.InstrumentID));
      if (!note) continue;
      item.Active = true;
      const xml::XmlNode unpitched = note.selectSingleNode("unpitched");
      item.StaffStep = WholeSteps(StaffStepPitch.at(1), StaffStepOctave.at(1),
                                  ChildOrEmpty(unpitched, "display-step"),
                                  Integer16(ChildOrEmpty(unpitched, "display-octave")));
      const int key = MidiNote(unpitched);
      if (key >= 0 && key < kMidiKeys) {
        const int near = NearKey(keys, key);
        if (near >= 0) {
          keys.Take(near, i + 1, item);
          keyed[i] = true;
        }
      }
      ReadNoteheads(part, item.InstrumentID, note, font, item);
    }
    PlaceRemaining(items, keyed, keys);

    StaffSpec& staff = *StaffSpecs(1);
    const int16_t staffCmper = staff.Cmper();
    PercussionMapTitle title;
    title.Create(-1, 0);
    title.Text = ChildOrEmpty(scorePart, "part-name");
    title.Save();
    const int16_t map = title.Cmper();
    if (withInstruments) {
      for (int key = 0; key < kMidiKeys; ++key) {
        if (keys.Slot[key] == 0) continue;
        const XmlPercussion& item = items[keys.Slot[key] - 1];
        SaveDefinition(map, key, static_cast<int16_t>(item.MidiNote - 1), item.StaffStep,
                       item.ClosedNotehead, item.OpenNotehead);
        if (item.InstrumentName.empty()) continue;
        PercussionNoteName name;
        name.Create(map, static_cast<int16_t>(key));
        name.Text = item.InstrumentName;
        name.Save();
      }
    } else {
      for (int key = 0; key < kMidiKeys; ++key)
        SaveDefinition(map, key, static_cast<int16_t>(key), 0, kDefaultClosedNotehead,
                       kDefaultOpenNotehead);
    }

    DrumStaff drumStaff;
    if (!drumStaff.Load(staffCmper, 0, kDrumStaffTag))
      drumStaff.Create(staffCmper, 0, kDrumStaffTag);
    drumStaff.PercMap = map;
    for (int key = 0; key < kMidiKeys; ++key)
      drumStaff.SetPlayMap(key, keys.Slot[key] != 0);
    drumStaff.Save();

    staff.DrumStaffCmper = staffCmper;
    staff.DrumStaffTag = static_cast<int16_t>(kDrumStaffTag);
    staff.Flag = static_cast<int16_t>(staff.Flag | kPercussionStaffFlags);
    staff.Mfont = FontNumberOf(font);
    staff.Save();
    for (const XmlPercussion& item : items)
      PercussionMap.Add(item, item.InstrumentID);
    PercussionStaff = true;
  });
}

const XmlPercussion* XmlPart::Percussion(const std::string& key) const {
  return Guarded("XmlPart Percussion error ", kPercussionHandler,
                 [&] { return PercussionMap.Item(key); });
}

} // namespace ostin
