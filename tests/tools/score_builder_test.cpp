#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

#include "../support/host_test.h"
#include "host/handmade_records.h"
#include "score_check.h"
#include "tools/score_builder.h"
#include "tools/score_generator.h"

namespace ostin {
namespace {

using testing::HostTest;
using namespace tools;

class ScoreBuilderTest : public HostTest {
protected:
  // A score of one staff and one 4/4 measure in the given key, holding these entries.
  static sim::Document OneMeasure(KeySig key, std::vector<EntrySpec> entries) {
    ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
    score.AddStaff({});
    score.AddMeasure({key, {4, kQuarter}, {}, kNormalBarline});
    score.SetLayer(1, 1, 0, std::move(entries));
    return score.Build();
  }

  // Runs a command in the test's folder; its exit status.
  int MakeScore(const std::string& arguments) {
    std::string command = "cd '" + Root.string() + "' && '" + std::string(OSTIN_BIN_DIR) +
                          "/ostin-make-score' " + arguments + " >out.txt 2>err.txt";
    int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
};

TEST_F(ScoreBuilderTest, PitchesParse) {
  struct Case {
    const char* Text;
    Pitch Expected;
  } cases[] = {{"C4", {0, 4, 0}},    {"F#5", {3, 5, 1}}, {"Bb3", {6, 3, -1}},
               {"Ebb2", {2, 2, -2}}, {"Gx4", {4, 4, 2}}, {"A0", {5, 0, 0}}};
  for (const Case& c : cases)
    EXPECT_EQ(Pitch::Parse(c.Text), c.Expected) << c.Text;
  for (const char* bad : {"", "H4", "c4", "C", "C44", "C#x4", "Cbbb4", "C4~"})
    EXPECT_THROW(Pitch::Parse(bad), BuildError) << bad;
}

// Notes are kept as steps from the key's tonic in octave 4 and an alteration from the key.
TEST_F(ScoreBuilderTest, NotesAreStoredAgainstTheKey) {
  struct Case {
    KeySig Key;
    const char* Pitch;
    int16_t Tcd, Alteration;
    bool Accidental;
  } cases[] = {
      {{0, false}, "C4", 0, 0, false},    {{0, false}, "B3", -1, 0, false},
      {{2, false}, "D4", 0, 0, false},    {{2, false}, "F#4", 2, 0, false},
      {{2, false}, "F4", 2, -1, true},    {{2, false}, "C#5", 6, 0, false},
      {{0, true}, "A4", 0, 0, false},     {{0, true}, "G#4", -1, 1, true},
      {{-3, false}, "Bb3", -3, 0, false}, {{-3, false}, "B3", -3, 1, true},
      {{7, false}, "B#4", 6, 0, false},
  };
  for (const Case& c : cases) {
    sim::Document doc = OneMeasure(c.Key, {Notes(kWhole, c.Pitch)});
    const sim::StoredNote& note = doc.Frames.Frames.at(1).at(0).Notes.at(0);
    EXPECT_EQ(note.Tcd, c.Tcd) << c.Pitch;
    EXPECT_EQ(note.Alteration, c.Alteration) << c.Pitch;
    EXPECT_EQ((note.Flag & kNoteAccidentalShown) != 0, c.Accidental) << c.Pitch;
  }
  sim::Document tied = OneMeasure({}, {Notes(kHalf, "C4 E4~"), Notes(kHalf, "~E4")});
  const sim::StoredFrame& frame = tied.Frames.Frames.at(1);
  EXPECT_EQ(frame[0].Notes[0].Flag, kNoteValid);
  EXPECT_EQ(frame[0].Notes[1].Flag, kNoteValid | kNoteTieStart);
  EXPECT_EQ(frame[1].Notes[0].Flag, kNoteValid | kNoteTieEnd);
  EXPECT_EQ(frame[1].Ef, kEfValid | kEfNote);
}

TEST_F(ScoreBuilderTest, RefusesScoresThatDoNotAddUp) {
  struct Case {
    const char* Name;
    std::function<void(ScoreBuilder&)> Do;
    std::string Says;
  } cases[] = {
      {"short layer", [](ScoreBuilder& s) { s.SetLayer(1, 1, 0, {Notes(kHalf, "C4")}); },
       "staff 1, measure 1, layer 0: the entries last 2048 EDU, the measure 4096"},
      {"long layer",
       [](ScoreBuilder& s) { s.SetLayer(1, 1, 2, std::vector<EntrySpec>(5, Rest(kQuarter))); },
       "staff 1, measure 1, layer 2: the entries last 5120 EDU"},
      {"layer 4", [](ScoreBuilder& s) { s.SetLayer(1, 1, 4, {}); }, "layers are 0 to 3"},
      {"no staff 2", [](ScoreBuilder& s) { s.SetLayer(2, 1, 0, {}); }, "no such staff"},
      {"no measure 2",
       [](ScoreBuilder& s) {
         s.SetClefChanges(1, 2, {{0, 0}});
       },
       "no such staff or measure"},
      {"clefs from 0",
       [](ScoreBuilder& s) {
         s.SetClefChanges(1, 1, {{1024, 3}});
       },
       "the clefs of a measure start at 0"},
      {"eight sharps",
       [](ScoreBuilder& s) {
         s.AddMeasure({{8, false}, {}, {}, 0});
       },
       "measure 2: a key has from 7 flats to 7 sharps"},
      {"group",
       [](ScoreBuilder& s) {
         s.AddGroup({1, 3, 3, "", ""});
       },
       "not staves of the score"},
      {"thirteen notes",
       [](ScoreBuilder& s) {
         s.SetLayer(1, 1, 0, {Notes(kWhole, "C4 D4 E4 F4 G4 A4 B4 C5 D5 E5 F5 G5 A5")});
       },
       "at most 12 notes"},
      {"voice two alone",
       [](ScoreBuilder& s) {
         EntrySpec two = Rest(kHalf);
         two.VoiceTwo = true;
         s.SetLayer(1, 1, 0, {Rest(kHalf), two, Rest(kHalf)});
       },
       "voice two must follow the entry that launches it"},
      {"voice two too long",
       [](ScoreBuilder& s) {
         EntrySpec launch = Rest(kHalf), two = Rest(kHalf);
         launch.LaunchesVoiceTwo = two.VoiceTwo = true;
         s.SetLayer(1, 1, 0, {Rest(kHalf), launch, two, two});
       },
       "voice two runs past the end of the measure"},
      {"February 29 of 2026",
       [](ScoreBuilder& s) {
         s.SetHeader({"T", "C", "", 2026, 2, 29});
       },
       "header date 2026-2-29: not a day"},
      {"month 13",
       [](ScoreBuilder& s) {
         s.SetHeader({"T", "C", "", 2026, 13, 1});
       },
       "header date 2026-13-1"},
      {"year 0",
       [](ScoreBuilder& s) {
         s.SetHeader({"T", "C", "", 0, 1, 1});
       },
       "header date 0-1-1"},
      {"unknown field",
       [](ScoreBuilder& s) {
         s.Set("MeasureSpec", {1, 0, 0}, {{"Nope", 1}});
       },
       "record MeasureSpec has no field \"Nope\""},
  };
  for (const Case& c : cases) {
    ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
    score.AddStaff({});
    score.AddMeasure({});
    try {
      c.Do(score);
      score.Build();
      ADD_FAILURE() << c.Name << ": built";
    } catch (const BuildError& e) {
      EXPECT_NE(std::string(e.what()).find(c.Says), std::string::npos)
          << c.Name << ": " << e.what();
    }
  }
}

// The header reads back through the bridge as saved, non-ASCII text included; a built score
// without one has none, even over a base document that had one.
TEST_F(ScoreBuilderTest, HeaderReadsBackAsSaved) {
  ScoreBuilder score(sim::Document::LoadFile(DataFile("sample.json")));
  score.AddStaff({});
  score.AddMeasure({});
  HostSim().Open(score.Build());
  EXPECT_FALSE(Header().Load()) << "the base document's header is kept";

  score.SetHeader({"Étude", "Traditional", "© 2024 Somebody", 2024, 2, 29});
  HostSim().Open(score.Build());
  Header header;
  ASSERT_TRUE(header.Load());
  EXPECT_EQ(header.Title, "Étude");
  EXPECT_EQ(header.Composer, "Traditional");
  EXPECT_EQ(header.UserCopyright, "© 2024 Somebody");
  EXPECT_EQ(header.ModifiedYear * 10000 + header.ModifiedMonth * 100 + header.ModifiedDay,
            20240229);

  Header generated;
  HostSim().Open(GenerateScore({3, 5, 1}));
  ASSERT_TRUE(generated.Load());
  EXPECT_EQ(generated.Title, "Generated score 3 x 5");
  EXPECT_EQ(generated.UserCopyright, "");
}

TEST_F(ScoreBuilderTest, GeneratedScoresAddUpAndHoldTheirMusic) {
  struct Case {
    ScoreSize Size;
  } cases[] = {{{1, 1, 1}}, {{5, 60, 1}}, {{9, 30, 77}}};
  for (const Case& c : cases) {
    sim::Document doc = GenerateScore(c.Size);
    int ties = 0, chords = 0, rests = 0, voiceTwo = 0;
    for (const auto& [number, frame] : doc.Frames.Frames)
      for (const sim::StoredEntry& entry : frame) {
        rests += entry.Notes.empty();
        chords += entry.Notes.size() > 1;
        voiceTwo += (entry.Ef & kEfVoiceTwo) != 0;
        for (const sim::StoredNote& note : entry.Notes)
          ties += (note.Flag & kNoteTieEnd) != 0;
      }
    HostSim().Open(std::move(doc));
    testing::ScoreShape shape = testing::CheckOpenScore();
    EXPECT_TRUE(shape.Problems.empty()) << shape.Problems.front();
    EXPECT_EQ(shape.Staves, c.Size.Staves);
    EXPECT_EQ(shape.Measures, c.Size.Measures);
    // One layer on each staff, a second on every third.
    EXPECT_EQ(shape.Frames, c.Size.Measures * (c.Size.Staves + (c.Size.Staves + 2) / 3));
    if (c.Size.Measures >= 30) {
      EXPECT_GT(ties, 0);
      EXPECT_GT(chords, 0);
      EXPECT_GT(rests, 0);
      EXPECT_GT(voiceTwo, 0);
      EXPECT_NE(HostSim().Doc().ToJson().dump().find("\"Beats\":3"), std::string::npos);
    }
  }
  EXPECT_THROW(GenerateScore({0, 4, 1}), BuildError);
  EXPECT_THROW(GenerateScore({300, 150, 1}), BuildError);
}

TEST_F(ScoreBuilderTest, SameArgumentsGiveTheSameBytes) {
  EXPECT_EQ(GenerateScore({6, 40, 3}).ToJson().dump(), GenerateScore({6, 40, 3}).ToJson().dump());
  EXPECT_NE(GenerateScore({6, 40, 3}).ToJson().dump(), GenerateScore({6, 40, 4}).ToJson().dump());

  ASSERT_EQ(MakeScore("--staves 4 --measures 30 --seed 5 -o a.json"), 0);
  ASSERT_EQ(MakeScore("--seed 5 --measures 30 --staves 4 -o b.json"), 0);
  EXPECT_EQ(Read(Path("a.json")), Read(Path("b.json")));
  EXPECT_EQ(sim::Document::LoadFile(Path("a.json")).ToJson(), GenerateScore({4, 30, 5}).ToJson());
  for (const char* bad : {"--staves 0 -o c.json", "--staves 4", "--colour red -o c.json"})
    EXPECT_EQ(MakeScore(bad), 2) << bad;
  EXPECT_EQ(MakeScore("--staves 400 --measures 400 -o c.json"), 1);
  EXPECT_NE(Read(Path("err.txt")).find("more frames than the host can number"), std::string::npos);
}

} // namespace
} // namespace ostin
