#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

  int MakeScore(const std::string& arguments) {
    return testing::RunTool(Root.string(), "ostin-make-score " + arguments);
  }
};

TEST_F(ScoreBuilderTest, PitchesParse) {
  const std::pair<const char*, Pitch> cases[] = {{"C4", {0, 4, 0}},   {"F#5", {3, 5, 1}},
                                                 {"Bb3", {6, 3, -1}}, {"Ebb2", {2, 2, -2}},
                                                 {"Gx4", {4, 4, 2}},  {"A0", {5, 0, 0}}};
  for (const auto& [text, pitch] : cases)
    EXPECT_EQ(Pitch::Parse(text), pitch) << text;
  for (const char* bad : {"", "H4", "c4", "C", "C44", "C#x4", "Cbbb4", "C4~"})
    EXPECT_THROW(Pitch::Parse(bad), BuildError) << bad;
}

// Notes are kept as steps from the key's tonic in octave 4 and an alteration from the key.
TEST_F(ScoreBuilderTest, NotesAreStoredAgainstTheKey) {
  // Key, pitch; the stored steps, alteration and whether the accidental shows.
  const std::tuple<KeySig, const char*, int16_t, int16_t, bool> cases[] = {
      // clang-format off
      {{0, false}, "C4", 0, 0, false}, {{0, false}, "B3", -1, 0, false}, {{2, false}, "D4", 0, 0, false},
      {{2, false}, "F#4", 2, 0, false}, {{2, false}, "F4", 2, -1, true}, {{2, false}, "C#5", 6, 0, false},
      {{0, true}, "A4", 0, 0, false}, {{0, true}, "G#4", -1, 1, true}, {{7, false}, "B#4", 6, 0, false},
      {{-3, false}, "Bb3", -3, 0, false}, {{-3, false}, "B3", -3, 1, true},
      // clang-format on
  };
  for (const auto& [key, pitch, tcd, alteration, accidental] : cases) {
    sim::Document doc = OneMeasure(key, {Notes(kWhole, pitch)});
    const sim::StoredNote& note = doc.Frames.Frames.at(1).at(0).Notes.at(0);
    EXPECT_EQ(std::make_tuple(note.Tcd, note.Alteration, (note.Flag & kNoteAccidentalShown) != 0),
              std::make_tuple(tcd, alteration, accidental))
        << pitch;
  }
  sim::Document tied = OneMeasure({}, {Notes(kHalf, "C4 E4~"), Notes(kHalf, "~E4")});
  const sim::StoredFrame& frame = tied.Frames.Frames.at(1);
  EXPECT_EQ(std::tie(frame[0].Notes[0].Flag, frame[0].Notes[1].Flag, frame[1].Notes[0].Flag),
            std::make_tuple(kNoteValid, kNoteValid | kNoteTieStart, kNoteValid | kNoteTieEnd));
  EXPECT_EQ(frame[1].Ef, kEfValid | kEfNote);
}

TEST_F(ScoreBuilderTest, RefusesScoresThatDoNotAddUp) {
  using S = ScoreBuilder&;
  EntrySpec launch = Rest(kHalf), two = Rest(kHalf);
  launch.LaunchesVoiceTwo = two.VoiceTwo = true;
  const std::pair<std::function<void(S)>, std::string> cases[] = {
      // clang-format off
      {[](S s) { s.SetLayer(1, 1, 0, {Notes(kHalf, "C4")}); }, "staff 1, measure 1, layer 0: the entries last 2048 EDU, the measure 4096"},
      {[](S s) { s.SetLayer(1, 1, 2, std::vector<EntrySpec>(5, Rest(kQuarter))); }, "staff 1, measure 1, layer 2: the entries last 5120 EDU"},
      {[](S s) { s.SetLayer(1, 1, 4, {}); }, "layers are 0 to 3"},
      {[](S s) { s.SetLayer(2, 1, 0, {}); }, "no such staff"},
      {[](S s) { s.SetClefChanges(1, 2, {{0, 0}}); }, "no such staff or measure"},
      {[](S s) { s.SetClefChanges(1, 1, {{1024, 3}}); }, "the clefs of a measure start at 0"},
      {[](S s) { s.AddMeasure({{8, false}, {}, {}, 0}); }, "measure 2: a key has from 7 flats to 7 sharps"},
      {[](S s) { s.AddGroup({1, 3, 3, "", ""}); }, "not staves of the score"},
      {[](S s) { s.SetLayer(1, 1, 0, {Notes(kWhole, "C4 D4 E4 F4 G4 A4 B4 C5 D5 E5 F5 G5 A5")}); }, "at most 12 notes"},
      {[&](S s) { s.SetLayer(1, 1, 0, {Rest(kHalf), two, Rest(kHalf)}); }, "voice two must follow the entry that launches it"},
      {[&](S s) { s.SetLayer(1, 1, 0, {Rest(kHalf), launch, two, two}); }, "voice two runs past the end of the measure"},
      {[](S s) { s.SetHeader({"T", "C", "", 2026, 2, 29}); }, "header date 2026-2-29: not a day"},
      {[](S s) { s.SetHeader({"T", "C", "", 2026, 13, 1}); }, "header date 2026-13-1"},
      {[](S s) { s.SetHeader({"T", "C", "", 0, 1, 1}); }, "header date 0-1-1"},
      {[](S s) { s.Set("MeasureSpec", {1, 0, 0}, {{"Nope", 1}}); }, "record MeasureSpec has no field \"Nope\""},
      // clang-format on
  };
  for (const auto& [act, says] : cases) {
    ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
    score.AddStaff({});
    score.AddMeasure({});
    auto build = [&] { return act(score), score.Build(); };
    EXPECT_THAT(build, ::testing::ThrowsMessage<BuildError>(::testing::HasSubstr(says)));
  }
}

// The header reads back as saved, non-ASCII text included; without one there is none.
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
  EXPECT_EQ(std::tie(header.Title, header.Composer, header.UserCopyright, header.ModifiedYear,
                     header.ModifiedMonth, header.ModifiedDay),
            std::make_tuple("Étude", "Traditional", "© 2024 Somebody", 2024, 2, 29));
}

TEST_F(ScoreBuilderTest, GeneratedScoresAddUpAndHoldTheirMusic) {
  for (const ScoreSize size : {ScoreSize{1, 1, 1}, ScoreSize{5, 60, 1}, ScoreSize{9, 30, 77}}) {
    sim::Document doc = GenerateScore(size);
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
    Header header;
    EXPECT_TRUE(header.Load() && header.UserCopyright.empty());
    EXPECT_EQ(header.Title, "Generated score " + std::to_string(size.Staves) + " x " +
                                std::to_string(size.Measures));
    // One layer on each staff, a second on every third.
    EXPECT_EQ(std::tie(shape.Staves, shape.Measures, shape.Frames),
              std::make_tuple(size.Staves, size.Measures,
                              size.Measures * (size.Staves + (size.Staves + 2) / 3)));
    if (size.Measures >= 30) {
      EXPECT_GT(std::min({ties, chords, rests, voiceTwo}), 0)
          << ties << " " << chords << " " << rests << " " << voiceTwo;
      EXPECT_NE(HostSim().Doc().ToJson().dump().find("\"Beats\":3"), std::string::npos);
    }
  }
  EXPECT_THROW(GenerateScore({0, 4, 1}), BuildError);
  EXPECT_THROW(GenerateScore({300, 150, 1}), BuildError);
}

TEST_F(ScoreBuilderTest, SameArgumentsGiveTheSameBytes) {
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
