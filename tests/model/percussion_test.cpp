// The percussion map read from a drum staff, and the notehead font of a music font.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/handmade_records.h"
#include "host/records.h"
#include "model/percussion.h"
#include "model/xml_part.h"

namespace ostin {
namespace {

using testing::HostTest;

constexpr int16_t kStaff = 1;

class PercussionTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("default-document.json");
  }

  // A part whose first staff is the staff record kStaff, as the drum staff's own.
  static std::unique_ptr<XmlPart> PartOnStaff(int16_t staves = 1) {
    auto part = std::make_unique<XmlPart>();
    part->SetStaves(staves);
    auto staff = std::make_shared<StaffSpec>();
    EXPECT_TRUE(staff->Load(kStaff, 0));
    staff->DrumStaffCmper = kStaff;
    part->SetStaffSpecs(1, staff);
    part->StaffStepPitch.at(1) = "E";
    part->StaffStepOctave.at(1) = 4;
    return part;
  }

  // A map with a drawn key: its definition and, when not empty, its name.
  static void Define(int16_t map, int16_t key, int16_t midiNote, int16_t staffPos,
                     const std::string& name) {
    PercussionNoteDef definition;
    definition.Create(map, key);
    definition.MidiNote = midiNote;
    definition.StaffPos = staffPos;
    definition.ClosedNotehead = 101;
    definition.OpenNotehead = 102;
    definition.Save();
    if (name.empty()) return;
    PercussionNoteName noteName;
    noteName.Create(map, key);
    noteName.Text = name;
    noteName.Save();
  }
};

// A score of one part from its score-part and part elements.
std::shared_ptr<xml::XmlDocument> Score(const std::string& scorePart, const std::string& part) {
  return xml::test_support::Loaded("<score-partwise><part-list>" + scorePart + "</part-list>" +
                                   part + "</score-partwise>");
}

struct Expected {
  std::string Key, Id, Name;
  int16_t MidiNote, StaffStep, Closed, Open;
  bool Active;
};

void ExpectEntries(const XmlPercussions& map, const std::vector<Expected>& entries) {
  for (const Expected& e : entries) {
    const XmlPercussion* item = map.Item(e.Key);
    ASSERT_NE(item, nullptr) << e.Key;
    EXPECT_EQ(item->MidiIndex, std::stoi(e.Key));
    EXPECT_EQ(item->InstrumentID, e.Id) << e.Key;
    EXPECT_EQ(item->InstrumentName, e.Name) << e.Key;
    EXPECT_EQ((std::vector<int>{item->MidiNote, item->StaffStep, item->ClosedNotehead,
                                item->OpenNotehead, item->Active}),
              (std::vector<int>{e.MidiNote, e.StaffStep, e.Closed, e.Open, e.Active}))
        << e.Key;
  }
}

TEST_F(PercussionTest, WithoutDrumStaffEveryKeyPlaysAsItself) {
  auto part = PartOnStaff();
  XmlPercussions& map = part->PercussionMap;
  map.Add(XmlPercussion{}, "stale");
  part->Counter = 7;
  part->InitializePercussion("P1");
  const int32_t counter = part->Counter;
  EXPECT_EQ(map.Count(), 128);
  EXPECT_EQ(counter, 135);
  EXPECT_EQ(map.Item("stale"), nullptr);
  EXPECT_EQ(map.Item("0"), nullptr);
  EXPECT_EQ(map.Item("129"), nullptr);
  ExpectEntries(map, {{"1", "P1-M1", "MIDI 1", 1, 0, 207, 250, false},
                      {"36", "P1-M36", "MIDI 36", 36, 0, 207, 250, false},
                      {"128", "P1-M128", "MIDI 128", 128, 0, 207, 250, false}});
}

TEST_F(PercussionTest, PlayedKeysWithDefinitionsAreNumberedInKeyOrder) {
  constexpr int16_t kMap = 5;
  DrumStaff drumStaff;
  drumStaff.Create(kStaff, 0, kDrumStaffTag);
  drumStaff.PercMap = kMap;
  for (int key : {35, 38, 42, 60})
    drumStaff.SetPlayMap(key, true);
  drumStaff.Save();
  Define(kMap, 38, 37, 4, "Snare");
  Define(kMap, 42, 41, -3, "");
  Define(kMap, 50, 49, 2, "Unplayed");
  Define(kMap, 60, 59, 0, "Bongo");

  auto part = PartOnStaff();
  const XmlPercussions& map = part->PercussionMap;
  part->InitializePercussion("P2");
  const int32_t counter = part->Counter;
  EXPECT_EQ(map.Count(), 128);
  EXPECT_EQ(counter, 128);
  ExpectEntries(map, {{"36", "P2-M36", "MIDI 36", 36, 0, 207, 250, false},
                      {"39", "P2-X1", "Snare", 38, 4, 101, 102, true},
                      {"43", "P2-X2", "MusicXML Note 43", 42, -3, 101, 102, true},
                      {"51", "P2-M51", "MIDI 51", 51, 0, 207, 250, false},
                      {"61", "P2-X3", "Bongo", 60, 0, 101, 102, true}});
}

// A score-part of unpitched instruments (id, midi-unpitched) and a part with a note for
// each (id, display step and octave, type).
struct MapCase {
  std::string Name;
  int16_t Staves;
  std::vector<std::pair<std::string, std::string>> Instruments;
  std::vector<std::vector<std::string>> Notes;
  bool Made;
  std::vector<std::pair<std::string, int>> Keys; // id and key taken, -1 for inactive
  std::string Pitched = "";                      // id of a pitched instrument, if any
};

std::string ScorePartXml(const MapCase& c) {
  std::string xml = "<score-part id='P1'><part-name>Drums</part-name>";
  for (const auto& [id, midi] : c.Instruments)
    xml += "<score-instrument id='" + id + "'><instrument-name>" + id +
           "</instrument-name></score-instrument>";
  for (const auto& [id, midi] : c.Instruments)
    xml += "<midi-instrument id='" + id + "'><midi-channel>10</midi-channel><midi-unpitched>" +
           midi + "</midi-unpitched></midi-instrument>";
  if (!c.Pitched.empty())
    xml += "<score-instrument id='" + c.Pitched + "'/><midi-instrument id='" + c.Pitched +
           "'><midi-channel>10</midi-channel></midi-instrument>";
  return xml + "</score-part>";
}

std::string PartXml(const MapCase& c) {
  std::string xml = "<part id='P1'><measure number='1'>";
  for (const std::vector<std::string>& n : c.Notes)
    xml += "<note><unpitched><display-step>" + n[1] + "</display-step><display-octave>" + n[2] +
           "</display-octave></unpitched><duration>1</duration><instrument id='" + n[0] +
           "'/><type>" + n[3] + "</type></note>";
  return xml + "</measure></part>";
}

TEST_F(PercussionTest, ImportedMapsGiveEachInstrumentAKey) {
  // clang-format off
  const std::vector<MapCase> cases = {
      {"one key twice", 1, {{"A", "39"}, {"B", "40"}},
       {{"A", "E", "4", "quarter"}, {"B", "E", "4", "half"}}, true, {{"A", 64}, {"B", 65}}},
      {"top key twice", 1, {{"A", "39"}, {"B", "40"}},
       {{"A", "G", "9", "quarter"}, {"B", "G", "9", "whole"}}, true, {{"A", 127}, {"B", 126}}},
      {"crowded key", 1, {{"A", "39"}, {"B", "40"}, {"C", "41"}, {"D", "42"}},
       {{"A", "E", "4", "quarter"}, {"B", "E", "4", "quarter"}, {"C", "E", "4", "eighth"},
        {"D", "E", "4", "quarter"}}, true, {{"A", 64}, {"B", 65}, {"C", 63}, {"D", 66}}},
      {"pitched key", 1, {{"A", "39"}}, {{"P", "E", "4", "quarter"}, {"A", "E", "4", "quarter"}},
       true, {{"A", 65}}, "P"},
      {"no note", 1, {{"A", "39"}, {"B", "40"}}, {{"A", "C", "5", "quarter"}}, true,
       {{"A", 72}, {"B", -1}}},
      {"midi 0", 1, {{"A", "0"}}, {{"A", "C", "5", "quarter"}}, false, {}},
      {"midi 129", 1, {{"A", "129"}}, {{"A", "C", "5", "quarter"}}, false, {}},
      {"midi 128", 1, {{"A", "128"}}, {{"A", "C", "5", "quarter"}}, true, {{"A", 72}}},
      {"two staves", 2, {{"A", "39"}}, {{"A", "C", "5", "quarter"}}, false, {}},
  };
  // clang-format on
  for (const MapCase& c : cases) {
    HostSim().Reset();
    OpenData("default-document.json");
    const auto score = Score(ScorePartXml(c), PartXml(c));
    auto part = PartOnStaff(c.Staves);
    part->SetPart(score->documentElement().selectSingleNode("part"));
    part->CreatePercussionMap();
    const XmlPercussions& map = part->PercussionMap;
    EXPECT_EQ(part->PercussionStaff, c.Made) << c.Name;
    EXPECT_EQ(map.Count(), static_cast<int32_t>(c.Keys.size())) << c.Name;
    DrumStaff drumStaff;
    const bool hasDrumStaff = drumStaff.Load(kStaff, 0, kDrumStaffTag);
    EXPECT_EQ(hasDrumStaff, c.Made) << c.Name;
    int played = 0;
    for (int key = 0; hasDrumStaff && key < 128; ++key)
      played += drumStaff.PlayMap(key);
    int active = 0;
    for (const auto& [id, key] : c.Keys) {
      const XmlPercussion* item = map.Item(id);
      ASSERT_NE(item, nullptr) << c.Name << " " << id;
      EXPECT_EQ(item->Active, key >= 0) << c.Name << " " << id;
      if (key < 0) continue;
      ++active;
      EXPECT_EQ(item->MidiIndex, key) << c.Name << " " << id;
      EXPECT_TRUE(drumStaff.PlayMap(key)) << c.Name << " " << id;
      PercussionNoteDef definition;
      ASSERT_TRUE(definition.Load(drumStaff.PercMap, static_cast<int16_t>(key))) << c.Name;
      EXPECT_EQ(definition.MidiNote, item->MidiNote - 1) << c.Name;
    }
    EXPECT_EQ(played, active) << c.Name;
  }
}

TEST_F(PercussionTest, WithoutInstrumentsEveryKeyIsDefinedAsItself) {
  const auto score =
      Score("<score-part id='P1'><part-name>Kit</part-name></score-part>", "<part id='P1'/>");
  auto part = PartOnStaff();
  part->SetPart(score->documentElement().selectSingleNode("part"));
  part->CreatePercussionMap();
  ASSERT_TRUE(part->PercussionStaff);
  EXPECT_EQ(part->PercussionMap.Count(), 0);
  DrumStaff drumStaff;
  ASSERT_TRUE(drumStaff.Load(kStaff, 0, kDrumStaffTag));
  for (int key : {0, 36, 127}) {
    PercussionNoteDef definition;
    ASSERT_TRUE(definition.Load(drumStaff.PercMap, static_cast<int16_t>(key)));
    EXPECT_EQ((std::vector<int>{definition.MidiNote, definition.StaffPos, definition.ClosedNotehead,
                                definition.OpenNotehead}),
              (std::vector<int>{key, 0, 207, 250}));
  }
  StaffSpec staff;
  ASSERT_TRUE(staff.Load(kStaff, 0));
  EXPECT_EQ(staff.DrumStaffCmper, kStaff);
  EXPECT_EQ(staff.DrumStaffTag, kDrumStaffTag);
  EXPECT_EQ(staff.Flag & 0x2020, 0x2020);
}

TEST(PercussionFontTest, MusicFontsChooseTheirPercussionFont) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Maestro", "Maestro Percussion"},
      {"Maestro Wide", "Maestro Percussion"},
      {"Jazz", "JazzPerc"},
      {"EngraverFontSet", "EngraverFontExtra"},
      {"Petrucci", "Tamburo"},
      {"maestro", "Tamburo"},
      {"", "Tamburo"}};
  for (const auto& [music, percussion] : cases)
    EXPECT_EQ(PercussionFont(music), percussion);
}

} // namespace
} // namespace ostin
