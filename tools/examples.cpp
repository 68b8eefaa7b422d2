#include "tools/examples.h"

#include "tools/score_builder.h"

namespace ostin::tools {

namespace {
constexpr KeySig kCMajor{0, false};
constexpr KeySig kGMajor{1, false};
constexpr KeySig kFMajor{-1, false};
constexpr KeySig kBFlatMajor{-2, false};
constexpr KeySig kDMajor{2, false};
constexpr KeySig kAMinor{0, true};
constexpr TimeSig kFourFour{4, kQuarter};
constexpr TimeSig kThreeFour{3, kQuarter};
constexpr int16_t kGroupBrace = 3;
constexpr int16_t kGroupBracket = 2;
constexpr int16_t kBackwardRepeatTimes = 0x0800;

constexpr const char* kOwnComposer = "Ostin Light";
constexpr const char* kOwnCopyright = "© 2026 Ostin Light";

void AddMeasures(ScoreBuilder& score, int count, const MeasureOptions& options) {
  for (int i = 0; i < count; ++i)
    score.AddMeasure(options);
}

// An ending over one measure: its passes and its text.
void AddEnding(ScoreBuilder& score, int16_t measure, int16_t pass, bool more) {
  sim::RecordKey key{measure, 0, 0};
  score.Set("EndingRepeat", key, {{"NumTotalPasses", 1}, {"Nextend", more ? 1 : 0}});
  score.SetBlock("EndingRepeat", key, "Passes", {pass});
  score.SetText("EndingRepeatText", key, "Text", std::to_string(pass) + ".");
}
} // namespace

// Piano on a braced pair of staves: a second layer in the right hand, chords, ties within
// and across measures, rests, dotted notes, clef changes inside two measures of the left
// hand, a key change to G major behind a double bar and a change to 3/4.
sim::Document PianoExample() {
  ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
  score.SetHeader({"Little Piano Piece in C", kOwnComposer, kOwnCopyright, 2026, 3, 7});
  Sound piano{"Acoustic Grand Piano", 1, 1};
  int16_t right = score.AddStaff({"", "", kTrebleClef, 0, piano});
  int16_t left = score.AddStaff({"", "", kBassClef, 0, piano});
  score.AddGroup({right, left, kGroupBrace, "Piano", "Pno."});
  AddMeasures(score, 3, {kCMajor, kFourFour, {}, kNormalBarline});
  score.AddMeasure({kCMajor, kFourFour, {}, kDoubleBarline});
  score.AddMeasure({kGMajor, kFourFour, {}, kNormalBarline});
  AddMeasures(score, 3, {kGMajor, kThreeFour, {}, kNormalBarline});

  score.SetLayer(right, 1, 0,
                 {Notes(kQuarter, "E5"), Notes(kQuarter, "D5"), Notes(kHalf, "C5 E5")});
  score.SetLayer(right, 1, 1, {Notes(kHalf, "G4"), Notes(kHalf, "A4")});
  score.SetLayer(left, 1, 0, {Notes(kHalf, "C3 G3"), Notes(kHalf, "F2 C3")});

  score.SetLayer(right, 2, 0,
                 {Notes(Dotted(kQuarter), "D5"), Notes(kEighth, "C5"), Notes(kQuarter, "B4"),
                  Notes(kQuarter, "C5~")});
  score.SetLayer(right, 2, 1, {Notes(kHalf, "G4"), Notes(kHalf, "E4")});
  score.SetLayer(left, 2, 0, {Notes(kHalf, "G2 D3"), Notes(kQuarter, "G2"), Rest(kQuarter)});

  score.SetLayer(right, 3, 0, {Notes(kHalf, "~C5"), Rest(kQuarter), Notes(kQuarter, "G4")});
  score.SetClefChanges(left, 3, {{0, kBassClef}, {kHalf, kTrebleClef}});
  score.SetLayer(left, 3, 0,
                 {Notes(kHalf, "C3 E3"), Notes(kQuarter, "E4 G4"), Notes(kQuarter, "F4 A4")});

  score.SetLayer(right, 4, 0, {Notes(Dotted(kHalf), "G4 B4 D5"), Rest(kQuarter)});
  score.SetClefChanges(left, 4, {{0, kTrebleClef}, {kHalf, kBassClef}});
  score.SetLayer(left, 4, 0, {Notes(kHalf, "D4 F4"), Notes(kHalf, "G2 D3")});

  score.SetLayer(right, 5, 0,
                 {Notes(kQuarter, "B4"), Notes(kQuarter, "A4"), Notes(kQuarter, "G4"),
                  Notes(kQuarter, "F#4")});
  score.SetLayer(left, 5, 0, {Notes(kWhole, "G2 D3 G3")});

  score.SetLayer(right, 6, 0, {Notes(kHalf, "G4~"), Notes(kQuarter, "~G4")});
  score.SetLayer(left, 6, 0, {Notes(kQuarter, "C3"), Notes(kQuarter, "D3"), Notes(kQuarter, "B2")});

  score.SetLayer(
      right, 7, 0,
      {Notes(kQuarter, "A4"), Notes(kEighth, "B4"), Notes(kEighth, "C5"), Notes(kQuarter, "D5")});
  score.SetLayer(left, 7, 0, {Notes(Dotted(kHalf), "D3 F#3 A3")});

  score.SetLayer(right, 8, 0, {Notes(Dotted(kHalf), "G4 B4 D5")});
  score.SetLayer(right, 8, 1, {Rest(kQuarter), Notes(kHalf, "D4")});
  score.SetLayer(left, 8, 0, {Notes(Dotted(kHalf), "G2 G3")});
  return score.Build();
}

// A flute and a clarinet in B flat under a bracket, in F major and then B flat major
// (concert pitch): the clarinet's part is written a major second higher, in G and C major.
sim::Document TransposingExample() {
  ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
  score.SetHeader({"Duet for Flute and Clarinet", kOwnComposer, kOwnCopyright, 2026, 4, 18});
  int16_t flute = score.AddStaff({"Flute", "Fl.", kTrebleClef, 0, Sound{"Flute", 74, 1}});
  int16_t clarinet = score.AddStaff(
      {"Clarinet in Bb", "Cl.", kTrebleClef, kTransposeBFlat, Sound{"Clarinet", 72, 2}});
  score.AddGroup({flute, clarinet, kGroupBracket, "Woodwinds", "Ww."});
  score.AddMeasure({kFMajor, kFourFour, {}, kNormalBarline});
  score.AddMeasure({kFMajor, kFourFour, {}, kDoubleBarline});
  AddMeasures(score, 2, {kBFlatMajor, kFourFour, {}, kNormalBarline});

  score.SetLayer(
      flute, 1, 0,
      {Notes(kQuarter, "F5"), Notes(kQuarter, "A5"), Notes(kQuarter, "C6"), Notes(kQuarter, "A5")});
  score.SetLayer(clarinet, 1, 0, {Notes(kHalf, "A4"), Notes(kHalf, "C5")});
  score.SetLayer(flute, 2, 0, {Notes(Dotted(kHalf), "Bb5"), Notes(kQuarter, "E5")});
  score.SetLayer(clarinet, 2, 0, {Notes(kHalf, "Bb4"), Notes(kHalf, "G4")});
  score.SetLayer(
      flute, 3, 0,
      {Notes(kQuarter, "D5"), Notes(kEighth, "Eb5"), Notes(kEighth, "F5"), Notes(kHalf, "Bb5~")});
  score.SetLayer(clarinet, 3, 0, {Notes(kHalf, "F4"), Notes(kHalf, "D4")});
  score.SetLayer(flute, 4, 0, {Notes(kHalf, "~Bb5"), Rest(kHalf)});
  score.SetLayer(clarinet, 4, 0, {Notes(kHalf, "D4 F4"), Rest(kHalf)});
  return score.Build();
}

// A drum set on a percussion staff with a drum map: hi-hat in the upper layer, bass and
// snare drum in the lower one, a crash cymbal at the end.
sim::Document PercussionExample() {
  ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
  score.SetHeader({"Basic Rock Beat", "Traditional", "", 2026, 5, 2});
  int16_t drums =
      score.AddStaff({"Drum Set", "Dr.", kPercussionClef, 0, Sound{"Standard Drum Kit", 1, 10}});
  constexpr int16_t kXHead = 120; // x notehead of the percussion font
  score.MakePercussionStaff(drums, "Drum Set",
                            {{36, 3, 207, 250, "Bass Drum"},
                             {38, 7, 207, 250, "Snare Drum"},
                             {42, 11, kXHead, kXHead, "Closed Hi-Hat"},
                             {49, 12, kXHead, kXHead, "Crash Cymbal"}});
  AddMeasures(score, 4, {kCMajor, kFourFour, {}, kNormalBarline});
  // The notes stand on the MIDI keys of their drums: C2 36, D2 38, F#2 42, C#3 49.
  std::vector<EntrySpec> hiHat(8, Notes(kEighth, "F#2"));
  std::vector<EntrySpec> beat = {Notes(kQuarter, "C2"), Notes(kQuarter, "D2"),
                                 Notes(kQuarter, "C2"), Notes(kQuarter, "D2")};
  for (int16_t measure = 1; measure <= 3; ++measure) {
    score.SetLayer(drums, measure, 0, hiHat);
    score.SetLayer(drums, measure, 1, beat);
  }
  score.SetLayer(drums, 3, 1,
                 {Notes(kQuarter, "C2"), Notes(kQuarter, "D2"), Notes(kEighth, "C2"),
                  Notes(kEighth, "C2"), Notes(kQuarter, "D2")});
  score.SetLayer(drums, 4, 0, {Notes(kHalf, "C#3"), Rest(kHalf)});
  score.SetLayer(drums, 4, 1, {Notes(kHalf, "C2"), Rest(kHalf)});
  return score.Build();
}

// A melody with a repeat from the start, first and second endings, a multimeasure rest of
// three measures and a closing repeat played three times.
sim::Document RepeatsExample() {
  ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
  score.SetHeader({"Fiddle Tune in D", kOwnComposer, kOwnCopyright, 2026, 10, 9});
  int16_t violin = score.AddStaff({"Violin", "Vln.", kTrebleClef, 0, Sound{"Violin", 41, 1}});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline | kForwardRepeat});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline | kBackwardRepeat | kEndingAttached});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline | kEndingAttached});
  AddMeasures(score, 3, {kDMajor, kFourFour, {}, kNormalBarline});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline | kForwardRepeat});
  score.AddMeasure({kDMajor, kFourFour, {}, kNormalBarline | kBackwardRepeat});

  AddEnding(score, 3, 1, true);
  score.Set("BackwardRepeat", {3, 0, 0}, {{"Target", 1}, {"Actuate", 1}});
  AddEnding(score, 4, 2, false);
  score.Set("MultimeasureRest", {5, 0, 0},
            {{"MeasureWidth", 432},
             {"StopBefore", 8},
             {"SymbolMeasures", 8},
             {"SpaceBetween", 48},
             {"StartNumbering", 2},
             {"VertNumberAdjust", -24}});
  score.Set("BackwardRepeat", {9, 0, 0},
            {{"Target", 8}, {"Actuate", 3}, {"Flag", kBackwardRepeatTimes}});

  score.SetLayer(violin, 1, 0,
                 {Notes(kQuarter, "D5"), Notes(kQuarter, "F#5"), Notes(kQuarter, "A5"),
                  Notes(kQuarter, "F#5")});
  score.SetLayer(violin, 2, 0,
                 {Notes(Dotted(kQuarter), "G5"), Notes(kEighth, "F#5"), Notes(kHalf, "E5")});
  score.SetLayer(violin, 3, 0, {Notes(kHalf, "C#5"), Notes(kHalf, "A4")});
  score.SetLayer(violin, 4, 0, {Notes(kHalf, "E5"), Notes(kHalf, "D5")});
  score.SetLayer(violin, 8, 0,
                 {Notes(kEighth, "A4"), Notes(kEighth, "B4"), Notes(kEighth, "C#5"),
                  Notes(kEighth, "D5"), Notes(kHalf, "E5")});
  score.SetLayer(violin, 9, 0, {Notes(kWhole, "D5")});
  return score.Build();
}

// A song in A minor and 3/4 that starts with a one-beat pickup, numbered from the first
// full measure, and ends on a two-beat measure that completes it.
sim::Document PickupExample() {
  ScoreBuilder score = ScoreBuilder::FromDefaultDocument();
  score.SetHeader({"Song in A Minor", kOwnComposer, kOwnCopyright, 2026, 11, 21});
  int16_t voice = score.AddStaff({"Oboe", "Ob.", kTrebleClef, 0, Sound{"Oboe", 69, 1}});
  score.AddMeasure({kAMinor, {1, kQuarter}, kThreeFour, kNormalBarline});
  AddMeasures(score, 3, {kAMinor, kThreeFour, {}, kNormalBarline});
  score.AddMeasure({kAMinor, {2, kQuarter}, kThreeFour, kNormalBarline});
  // Numbers start at the first full measure: the pickup is measure 0.
  score.Set("MeasNumberRegion", {1, 0, 0},
            {{"Font", 2},
             {"Size", 12},
             {"StartMeas", 2},
             {"EndMeas", 5},
             {"Incidence", 1},
             {"Base", 10},
             {"Offset", 0},
             {"StartWith", 1}});

  score.SetLayer(voice, 1, 0, {Notes(kQuarter, "E4")});
  score.SetLayer(voice, 2, 0,
                 {Notes(kQuarter, "A4"), Notes(kQuarter, "B4"), Notes(kQuarter, "C5")});
  score.SetLayer(voice, 3, 0,
                 {Notes(Dotted(kQuarter), "D5"), Notes(kEighth, "C5"), Notes(kQuarter, "B4")});
  score.SetLayer(voice, 4, 0, {Notes(kHalf, "G#4"), Notes(kQuarter, "E4")});
  score.SetLayer(voice, 5, 0, {Notes(kHalf, "A4")});
  return score.Build();
}

const std::vector<Example>& Examples() {
  static const std::vector<Example> examples = {
      {"piano.json", "piano on two braced staves", PianoExample},
      {"transposing.json", "flute and clarinet in B flat", TransposingExample},
      {"percussion.json", "drum set on a percussion staff", PercussionExample},
      {"repeats.json", "repeats, endings and a multimeasure rest", RepeatsExample},
      {"pickup.json", "a pickup measure", PickupExample},
  };
  return examples;
}

} // namespace ostin::tools
