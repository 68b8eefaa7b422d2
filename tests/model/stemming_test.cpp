// Default stem directions of entries and beam groups, middle lines of clefs, and the
// placement of notations by stem side.

#include "host/records.h"
#include "model/stemming.h"
#include "model_test.h"

namespace ostin {
namespace {

constexpr int32_t N = kEfValid | kEfNote;
constexpr int16_t E8 = 512, Q = 1024;

struct Made {
  int16_t Dura;
  int32_t Ef;
  std::vector<int16_t> Tcds;
};

// Frame 1 of the sample (staff 1, measure 1, layer 0) filled by each case. The part is in C
// with treble clef: Tcd 6 is B4 on the middle line, 0 is C4 six steps below, 12 is A5.
class StemmingTest : public testing::HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json").Frames = sim::FrameStore{};
    Part.Tonic = "C";
    Part.SetClefs(1, 0); // treble: C4 at the reference step
  }
  void TearDown() override {
    if (Frame.Loaded()) Frame.Free();
    HostTest::TearDown();
  }
  Tgf& Open(const std::vector<Made>& entries) {
    if (Frame.Loaded()) Frame.Free();
    sim::FrameStore& store = HostSim().Doc().Frames;
    store.Frames[1].clear();
    for (const Made& m : entries) {
      store.Frames[1].push_back({store.TakeEntnum(), m.Dura, 0, m.Ef, 0, {}});
      for (int16_t tcd : m.Tcds)
        store.Frames[1].back().Notes.push_back({tcd, 0, 1, kNoteValid});
    }
    Frame.Load(0, 1, 1, 0, true);
    Holder.SetFinaleVersion(2004);
    EXPECT_TRUE(Holder.Load(1, 1));
    return Frame;
  }
  // Clef and EDU position pairs into the holder of staff 1, measure 1.
  static void ClefList(const std::vector<std::pair<int16_t, int16_t>>& clefs) {
    int16_t inci = 0;
    for (const auto& [clef, edu] : clefs)
      model_test::Make<ClefElement>(9, inci++, [&](auto& e) { e.Clef = clef, e.ClefEdu = edu; });
    model_test::Rewrite<Gfhold>(1, 1, [](auto& h) { h.Clef = 9, h.Flag = Gfhold::kClefListBit; });
  }
  int16_t HowMany = -1;
  XmlPart Part;
  Tgf Frame;
  Gfhold Holder;
  Stemming Stems;
};

TEST(StemmingTables, MiddleLinesOfClefsAndSidesOfPlacements) {
  const std::pair<int16_t, std::string> lines[] = {
      {0, "B4"},  {1, "C4"},  {2, "A3"},  {3, "D3"},  {4, "B4"},  {5, "B3"},
      {6, "D2"},  {7, "F3"},  {8, "D5"},  {9, "F3"},  {10, "E4"}, {11, "G4"},
      {12, "B4"}, {13, "B5"}, {14, "D4"}, {15, "B4"}, {-1, "B4"}};
  for (const auto& [clef, pitch] : lines) {
    const int16_t octave = static_cast<int16_t>(pitch[1] - '0');
    EXPECT_EQ(Stemming::ForXml(pitch.substr(0, 1), octave, clef), 0) << clef;
  }
  XmlPart part;
  part.Tonic = "D";
  part.Octave = 3;
  EXPECT_EQ(Stemming::ForFinale(-3, 3, part), -3) << "A2 under D3 in the bass clef";

  // clang-format off
  const std::tuple<int32_t, std::string, std::string, std::string> sides[] = {
      {2, "", "above", "below"}, {3, "up", "below", "above"}, {1, "up", "above", "below"},
      {1, "down", "below", "above"}, {0, "up", "below", "above"}, {0, "down", "above", "below"},
      {0, "", "", ""}, {1, "double", "", ""}, {4, "up", "", ""}};
  // clang-format on
  for (const auto& [placement, stem, side, reversed] : sides) {
    EXPECT_EQ(Stemming::ConvertPlacement(placement, false, stem), side) << placement << stem;
    EXPECT_EQ(Stemming::ConvertPlacement(placement, true, stem), reversed) << placement << stem;
  }
}

TEST_F(StemmingTest, SingleEntryReadsTranspositionAndPercussionMaps) {
  // Tcd 4: C4 from F3, moved 8 steps C5; the host plays G4, key 67, which finds drum "68".
  // clang-format off
  const std::tuple<bool, bool, bool, int16_t, std::string> staves[] = {
      {false, false, false, 0, "up"}, {true, false, false, 0, "down"},
      {false, true, true, 12, "down"}, {false, true, true, 2, "up"},
      {false, true, false, 12, "up"}}; // an inactive drum reads G4 from C4
  // clang-format on
  Tgf& tgf = Open({{Q, N, {4}}});
  for (const auto& [chromatic, percussion, active, step, expected] : staves) {
    XmlPart part = Part;
    part.Tonic = "F", part.Octave = 3, part.TransposeChromaticInterval = 8;
    part.TransposeChromatic = chromatic, part.PercussionStaff = percussion;
    XmlPercussion drum;
    drum.Active = active;
    drum.StaffStep = step;
    part.PercussionMap.Add(drum, "68");
    EXPECT_EQ(Stemming::SingleEntryStem(tgf, *tgf.Entries(1), 1, part, 1, 0), expected)
        << chromatic << percussion << active << step;
  }
}

TEST_F(StemmingTest, BeamGroupWalksItsVoiceUntilTheNextBeatOrBeam) {
  const int32_t frozenUp = N | kEfFrozenStem | kEfStemUp;
  // clang-format off
  const std::tuple<std::string, std::vector<Made>, bool, std::string, int16_t> groups[] = {
      {"low", {{E8, N, {0}}, {E8, N, {7}}}, true, "up", 2},
      {"quarter ends, uncounted", {{E8, N, {7}}, {Q, N, {-5}}}, true, "down", 1},
      {"new beam ends", {{E8, N, {7}}, {E8, N | kEfNewBeam, {-5}}}, true, "down", 1},
      {"other voice, grace skipped", {{E8, N, {7}}, {E8, N | kEfVoiceTwo, {-9}},
                                      {E8, N | kEfGrace, {-9}}, {E8, N, {8}}}, true, "down", 2},
      {"rest uncounted", {{E8, N, {0}}, {E8, kEfValid, {}}, {E8, N, {11}}}, true, "up", 2},
      {"first frozen decides", {{E8, N, {12}}, {E8, frozenUp, {12}},
                                {E8, N | kEfFrozenStem, {0}}}, true, "up", 3},
      {"frozen by pitch", {{E8, N, {12}}, {E8, frozenUp, {12}}}, false, "down", 2}};
  // clang-format on
  for (const auto& [name, entries, freezeOK, expected, howMany] : groups) {
    Tgf& tgf = Open(entries);
    EXPECT_EQ(Stems.DefaultStem(tgf, 1, Holder, Part, 1, freezeOK, HowMany), expected) << name;
    EXPECT_EQ(HowMany, howMany) << name;
  }
  // Treble to bass at the second eighth: E4 4 under B4, C4 6 over D3; all treble goes up.
  ClefList({{0, 0}, {3, E8}});
  Tgf& tgf = Open({{E8, N, {2}}, {E8, N, {0}}});
  EXPECT_EQ(Stems.DefaultStem(tgf, 1, Holder, Part, 1, true, HowMany), "down");
  EXPECT_EQ(Stems.DefaultStem(tgf, 2, Holder, Part, 1, true, HowMany), "down");
  Part.ClefChange = false; // the part's own clef
  EXPECT_EQ(Stems.DefaultStem(tgf, 1, Holder, Part, 1, true, HowMany), "up");
}

TEST_F(StemmingTest, StemsWithoutTonicOrClefFail) {
  auto raised = [](const std::function<void()>& act) {
    const Failure failure = model_test::Raised(act);
    return std::to_string(failure.Number - Code(0x80040000)) + " " + failure.Description;
  };
  std::string xml, finale;
  bool beam = false;
  XmlPart noTonic = Part;
  noTonic.Tonic.clear();
  Tgf& tgf = Open({{E8, N, {0}}});
  EXPECT_EQ(raised([&] { Stems.DefaultStem(tgf, 1, Holder, noTonic, 1, true, HowMany); }),
            "1319 Cannot determine default stem direction without tonic");
  EXPECT_EQ(
      raised([&] { Stems.GetEntryStem(tgf, 1, Holder, noTonic, 1, "", "", xml, finale, beam); }),
      "1318 MusicXML internal error");
  ClefList({{3, Q}, {0, 2048}}); // no clef at the start of the measure
  EXPECT_EQ(raised([&] {
              Stems.DefaultStem(Open({{E8, N, {0}}}), 1, Holder, Part, 1, true, HowMany);
            }),
            "1317 MusicXML internal error");
  EXPECT_NE(Log().find("Could not find clef while computing beam stems for inst 1, measure 1"),
            std::string::npos);
}

TEST_F(StemmingTest, EntryStemFollowsTheFirstCaseThatApplies) {
  const int32_t up = kEfStemUp, down = kEfStemDownWithUpBit, upNoBit = kEfStemUpWithoutUpBit;
  const int32_t F = kEfFrozenStem, V2 = kEfVoiceTwo, X = kEfCrossStaff;
  // Name, frame, entry, layer stem, last beam, XmlStem/FinaleStem, BeamStart.
  // clang-format off
  const std::tuple<std::string, std::vector<Made>, int16_t, std::string, std::string,
                   std::string, bool> cases[] = {
      {"rest", {{E8, kEfValid, {}}}, 1, "", "", "/", false},
      {"whole by pitch", {{4096, N, {0}}}, 1, "", "", "/up", false},
      {"frozen whole", {{4096, N | F, {0}}}, 1, "", "", "/down", false},
      {"middle line", {{Q, N, {6}}}, 1, "", "", "down/down", false},
      {"3 under, 3 over", {{Q, N, {3, 9}}}, 1, "", "", "down/down", false},
      {"4 under, 3 over", {{Q, N, {2, 9}}}, 1, "", "", "up/up", false},
      {"group start", {{E8, N, {0}}, {E8, N, {2}}}, 1, "", "", "up/up", true},
      {"lone eighth", {{E8, N, {0}}}, 1, "", "", "up/up", false},
      {"double", {{E8, N | kEfDoubleStem | up, {12}}, {E8, N, {12}}}, 1, "up", "", "double/up",
       false},
      {"split", {{Q, N | kEfSplitStem, {0}}}, 1, "", "", "down/down", false},
      {"frozen", {{E8, N | F | up | down, {0}}, {E8, N, {0}}}, 1, "", "", "down/down", true},
      {"layer down", {{Q, N | upNoBit, {12}}}, 1, "down", "", "up/up", false},
      {"layer up", {{Q, N | upNoBit, {0}}}, 1, "up", "", "up/up", false},
      {"layer ignored", {{Q, N | X, {12}}}, 1, "up", "", "down/down", false},
      {"voice two", {{E8, N | V2 | upNoBit, {12}}, {E8, N | V2, {12}}}, 1, "", "", "up/up", true},
      {"grace", {{E8, N | kEfGrace, {0}}}, 1, "", "", "down/down", false},
      {"new beam", {{E8, N, {12}}, {E8, N | kEfNewBeam, {0}}, {E8, N, {0}}}, 2, "", "down",
       "up/up", true},
      {"in a beam", {{E8, N, {12}}, {E8, N, {0}}}, 2, "", "down", "down/down", false},
      {"last beam ignored", {{E8, N, {12}}, {E8, N | X, {0}}}, 2, "", "down", "up/up", false}};
  // clang-format on
  for (const auto& [name, entries, index, layer, last, stems, beam] : cases) {
    std::string xmlStem = "x", finaleStem = "x";
    bool beamStart = true;
    Stems.GetEntryStem(Open(entries), index, Holder, Part, 1, layer, last, xmlStem, finaleStem,
                       beamStart);
    EXPECT_EQ(xmlStem + "/" + finaleStem, stems) << name;
    EXPECT_EQ(beamStart, beam) << name;
  }
  // A quarter drawn down against its pitch: the drawn stem is read only with UseMetrics.
  Tgf& tgf = Open({{Q, N, {0}}});
  HostSim().Doc().Frames.Layouts[tgf.Entries(1)->Entnum] = {{0, 100, 10, 90}, {5, 70, 6, 90}};
  std::string xml, finale;
  bool beam = false;
  for (bool useMetrics : {false, true}) {
    Stems.UseMetrics = useMetrics;
    Stems.GetEntryStem(tgf, 1, Holder, Part, 1, "", "", xml, finale, beam);
    EXPECT_EQ(xml + "/" + finale, useMetrics ? "down/up" : "up/up");
  }
}

} // namespace
} // namespace ostin
