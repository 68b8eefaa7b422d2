// The percussion map read from a drum staff or made from a part's unpitched instruments,
// and the percussion font of a music font.

#include "host/handmade_records.h"
#include "host/records.h"
#include "model/percussion.h"
#include "model/xml_part.h"
#include "model_test.h"

namespace ostin {
namespace {

using namespace model_test;

constexpr int16_t kStaff = 1;

// A part whose first staff is the staff record kStaff, as the drum staff's own.
std::unique_ptr<XmlPart> PartOnStaff(int16_t staves = 1) {
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

// Entries of the map as "key id name midi step closed open active", "none" when absent.
std::vector<std::string> Entries(const XmlPercussions& map, const std::vector<std::string>& keys) {
  std::vector<std::string> entries;
  for (const std::string& key : keys) {
    const XmlPercussion* i = map.Item(key);
    entries.push_back(!i ? "none"
                         : std::to_string(i->MidiIndex) + " " + i->InstrumentID + " " +
                               i->InstrumentName + " " + std::to_string(i->MidiNote) + " " +
                               std::to_string(i->StaffStep) + " " +
                               std::to_string(i->ClosedNotehead) + " " +
                               std::to_string(i->OpenNotehead) + " " + std::to_string(i->Active));
  }
  return entries;
}

using PercussionTest = ModelTest;

TEST_F(PercussionTest, PlayedKeysWithDefinitionsAreNumberedInKeyOrder) {
  // Without a drum staff every key plays as itself; the counter goes on.
  auto part = PartOnStaff();
  part->PercussionMap.Add(XmlPercussion{}, "stale");
  part->Counter = 7;
  part->InitializePercussion("P1");
  EXPECT_EQ(V(part->PercussionMap.Count(), part->Counter), V(128, 135));
  EXPECT_EQ(Entries(part->PercussionMap, {"stale", "0", "1", "36", "128", "129"}),
            (std::vector<std::string>{"none", "none", "1 P1-M1 MIDI 1 1 0 207 250 0",
                                      "36 P1-M36 MIDI 36 36 0 207 250 0",
                                      "128 P1-M128 MIDI 128 128 0 207 250 0", "none"}));
  constexpr int16_t kMap = 5;
  DrumStaff drumStaff;
  drumStaff.Create(kStaff, 0, kDrumStaffTag);
  drumStaff.PercMap = kMap;
  for (int key : {35, 38, 42, 60})
    drumStaff.SetPlayMap(key, true);
  drumStaff.Save();
  // Key, MIDI note, staff position and name of each drawn key; 50 is not played.
  for (const auto& [key, midiNote, staffPos, name] :
       std::vector<std::tuple<int16_t, int16_t, int16_t, std::string>>{
           {38, 37, 4, "Snare"}, {42, 41, -3, ""}, {50, 49, 2, "Unplayed"}, {60, 59, 0, "Bongo"}}) {
    Make<PercussionNoteDef>(kMap, key, [&](auto& d) {
      d.MidiNote = midiNote, d.StaffPos = staffPos, d.ClosedNotehead = 101, d.OpenNotehead = 102;
    });
    if (!name.empty()) Make<PercussionNoteName>(kMap, key, [&](auto& n) { n.Text = name; });
  }
  part = PartOnStaff();
  part->InitializePercussion("P2");
  EXPECT_EQ(V(part->PercussionMap.Count(), part->Counter), V(128, 128));
  EXPECT_EQ(Entries(part->PercussionMap, {"36", "39", "43", "51", "61"}),
            (std::vector<std::string>{
                "36 P2-M36 MIDI 36 36 0 207 250 0", "39 P2-X1 Snare 38 4 101 102 1",
                "43 P2-X2 MusicXML Note 43 42 -3 101 102 1", "51 P2-M51 MIDI 51 51 0 207 250 0",
                "61 P2-X3 Bongo 60 0 101 102 1"}));
}

// A score-part of unpitched instruments (id, midi-unpitched), and a part with a note for
// each (id, display step and octave, type).
struct MapCase {
  std::string Name;
  int16_t Staves;
  std::vector<std::pair<std::string, std::string>> Instruments;
  std::vector<std::array<std::string, 4>> Notes;
  bool Made;
  std::vector<std::pair<std::string, int>> Keys; // id and key taken, -1 for inactive
  std::string Pitched = "";                      // id of a pitched instrument, if any
};

std::shared_ptr<xml::XmlDocument> Score(const MapCase& c) {
  std::string scorePart = "<part-name>Drums</part-name>", measure = "<measure number='1'>";
  for (const auto& [id, midi] : c.Instruments)
    scorePart += "<score-instrument id='" + id + "'><instrument-name>" + id +
                 "</instrument-name></score-instrument>";
  for (const auto& [id, midi] : c.Instruments)
    scorePart += "<midi-instrument id='" + id +
                 "'><midi-channel>10</midi-channel><midi-unpitched>" + midi +
                 "</midi-unpitched></midi-instrument>";
  if (!c.Pitched.empty())
    scorePart += "<score-instrument id='" + c.Pitched + "'/><midi-instrument id='" + c.Pitched +
                 "'><midi-channel>10</midi-channel></midi-instrument>";
  for (const auto& n : c.Notes)
    measure += "<note><unpitched><display-step>" + n[1] + "</display-step><display-octave>" + n[2] +
               "</display-octave></unpitched><duration>1</duration><instrument id='" + n[0] +
               "'/><type>" + n[3] + "</type></note>";
  return OnePart(scorePart, measure + "</measure>");
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
      {"no instruments: every key is defined as itself", 1, {}, {}, true, {}}};
  // clang-format on
  for (const MapCase& c : cases) {
    Reopen();
    const auto score = Score(c);
    auto part = PartOnStaff(c.Staves);
    part->SetPart(score->documentElement().selectSingleNode("part"));
    part->CreatePercussionMap();
    const XmlPercussions& map = part->PercussionMap;
    DrumStaff drumStaff;
    ASSERT_EQ(V(part->PercussionStaff, map.Count(), drumStaff.Load(kStaff, 0, kDrumStaffTag)),
              V(c.Made, c.Keys.size(), c.Made))
        << c.Name;
    int played = 0, active = 0;
    for (int key = 0; c.Made && key < 128; ++key)
      played += drumStaff.PlayMap(key);
    for (const auto& [id, key] : c.Keys) {
      const XmlPercussion* item = map.Item(id);
      ASSERT_NE(item, nullptr) << c.Name << " " << id;
      EXPECT_EQ(item->Active, key >= 0) << c.Name << " " << id;
      if (key < 0) continue;
      ++active;
      PercussionNoteDef definition;
      ASSERT_TRUE(definition.Load(drumStaff.PercMap, static_cast<int16_t>(key))) << c.Name;
      EXPECT_EQ(V(item->MidiIndex, drumStaff.PlayMap(key), definition.MidiNote),
                V(key, true, item->MidiNote - 1))
          << c.Name << " " << id;
    }
    EXPECT_EQ(played, active) << c.Name;
    if (!c.Made || !c.Instruments.empty()) continue;
    for (int key : {0, 36, 127}) {
      PercussionNoteDef definition;
      ASSERT_TRUE(definition.Load(drumStaff.PercMap, static_cast<int16_t>(key)));
      EXPECT_EQ(V(definition.MidiNote, definition.StaffPos, definition.ClosedNotehead,
                  definition.OpenNotehead),
                V(key, 0, 207, 250));
    }
    StaffSpec staff;
    ASSERT_TRUE(staff.Load(kStaff, 0));
    EXPECT_EQ(V(staff.DrumStaffCmper, staff.DrumStaffTag, staff.Flag & 0x2020),
              V(kStaff, kDrumStaffTag, 0x2020));
  }
}

TEST(PercussionFontTest, MusicFontsChooseTheirPercussionFont) {
  // Only known names, by prefix and case, have their own; the rest take Tamburo.
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Maestro Wide", "Maestro Percussion"},
      {"Jazz", "JazzPerc"},
      {"EngraverFontSet", "EngraverFontExtra"},
      {"maestro", "Tamburo"},
      {"", "Tamburo"}};
  for (const auto& [music, percussion] : cases)
    EXPECT_EQ(PercussionFont(music), percussion);
}

} // namespace
} // namespace ostin
