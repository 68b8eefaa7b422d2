// Duration, pitch, key, clef and MIDI arithmetic, the document defaults read from records,
// and the failures of the arithmetic as its handlers pass them on.

#include "host/records.h"
#include "model/arithmetic.h"
#include "model_test.h"

namespace ostin {
namespace {

using namespace model_test;
using Fault = sim::Host::Fault;

constexpr int16_t kPreferences = -2;

std::string Tuplet(const std::string& actual, const std::string& normal) {
  return "<time-modification><actual-notes>" + actual + "</actual-notes><normal-notes>" + normal +
         "</normal-notes></time-modification>";
}

TEST(ArithmeticDuration, RoundingDurationsAndBeatTypes) {
  const std::vector<std::pair<double, int32_t>> rounded = {
      {0.5, 0}, {1.5, 2}, {2.5, 2}, {-1.5, -2}, {-2.5, -2}, {2.5001, 3}, {-2.6, -3}};
  for (const auto& [value, expected] : rounded)
    EXPECT_EQ(RoundHalfEven(value), expected) << value;
  // clang-format off
  const std::vector<std::tuple<std::string, int, int32_t>> symbolic = {
      {"long", 0, 16384}, {"breve", 0, 8192}, {"half", 3, 3840}, {"quarter", 2, 1792},
      {"whole", 1, 6144}, {"16th", 0, 256}, {"sixteenth", 0, 256}, {"256th", 5, 31},
      {"Quarter", 0, 0}};
  // Duration and divisions, time modification; then EDUs keeping the written tuplet value.
  const std::vector<std::tuple<int32_t, int32_t, std::string, int32_t>> actual = {
      {2, 6, Tuplet("3", "2"), 512}, {5, 4, Tuplet("3", "2"), 1792}, {1, 3, "", 341},
      {-1, 3, "", -341}, {2, 6, Tuplet("x", "2"), 341}, {2, 6, Tuplet("3", "0"), 341},
      {4, 3, Tuplet(" 5 ", "4"), 1706}};
  // clang-format on
  for (const auto& [type, dots, edus] : symbolic)
    EXPECT_EQ(GetSymbolicDuration(type, dots), edus) << type << " " << dots;
  for (const auto& [duration, divisions, modification, edus] : actual)
    EXPECT_EQ(GetActualDuration(duration, divisions, Element(modification)), edus)
        << duration << "/" << divisions << " " << modification;
  for (const auto& [beatType, edus] :
       std::vector<std::pair<int32_t, int32_t>>{{1, 4096}, {4, 1024}, {8, 512}, {4096, 1}})
    EXPECT_EQ(EdusPerBeatType(beatType), edus) << beatType;
  for (int32_t beatType : {0, 3, 8192, -4}) {
    Failure failure = Raised([&] { EdusPerBeatType(beatType); });
    EXPECT_EQ(failure.Number, kUnknownBeatType) << beatType;
    EXPECT_EQ(failure.Description, "Unknown time signature beat type " + std::to_string(beatType));
  }
}

TEST(ArithmeticPitch, StepsOctavesDistancesAndMidiKeys) {
  // Tonic, its octave, steps from it; then step and octave, empty for an unknown tonic.
  const std::vector<std::tuple<std::string, int16_t, int16_t, std::string>> steps = {
      {"D", 4, -2, "B3"}, {"B", 3, 8, "C5"},    {"C", 4, -7, "C3"},
      {"A", 4, 2, "C5"},  {"e", 2, -20, "F-1"}, {"H", 4, 1, "9"}};
  for (const auto& [tonic, tonicOctave, tcd, expected] : steps) {
    std::string step;
    int16_t octave = 9;
    EXPECT_EQ(PitchAndOctave(tonic, tonicOctave, tcd, step, octave), expected != "9");
    EXPECT_EQ(step + std::to_string(octave), expected) << tonic << tonicOctave << " " << tcd;
  }
  EXPECT_EQ(StepFinaleToXml(7), "");
  EXPECT_EQ(WholeSteps("b", 3, "C", 4), 1);
  EXPECT_EQ(WholeSteps("A", 4, "C", 3), -12);
  EXPECT_EQ(WholeSteps("x", 4, "C", 5), 0);
  // clang-format off
  const std::vector<std::array<int16_t, 3>> chromatic = {
      {-1, 0, -2}, {7, 1, 13}, {3, -1, 4}, {6, 0, 11}, {-6, 0, -11}, {-7, 0, -12}, {-8, 0, -14},
      {14, 0, 24}};
  // MIDI key; then steps from C4 and alteration, black keys as sharps.
  const std::vector<std::array<int16_t, 3>> fromMidi = {
      {60, 0, 0}, {61, 0, 1}, {65, 3, 0}, {66, 3, 1}, {71, 6, 0}, {72, 7, 0}, {58, -2, 1},
      {255, 113, 1}};
  const std::vector<std::pair<std::string, int>> toMidi = {
      {"<pitch><step>B</step><alter>-1</alter><octave>3</octave></pitch>", 58},
      {"<pitch><step>e</step><alter>1.5</alter><octave>4</octave></pitch>", 66},
      {"<pitch><step>X</step><octave>4</octave></pitch>", 60},
      {"<staff-tuning><tuning-step>F</tuning-step><tuning-alter>1</tuning-alter>"
       "<tuning-octave>2</tuning-octave></staff-tuning>", 42},
      {"<unpitched><display-step>A</display-step><display-octave>-1</display-octave></unpitched>",
       9}};
  // clang-format on
  for (const auto& [diatonic, alteration, semitones] : chromatic)
    EXPECT_EQ(ChromaticTranspositionSteps(diatonic, alteration), semitones) << diatonic;
  for (const auto& [key, tcd, alteration] : fromMidi) {
    int16_t gotTcd = 99, gotAlteration = 99;
    FromMidi(static_cast<uint8_t>(key), gotTcd, gotAlteration);
    EXPECT_EQ(std::make_pair(gotTcd, gotAlteration), std::make_pair(tcd, alteration)) << key;
  }
  for (const auto& [text, key] : toMidi)
    EXPECT_EQ(MidiNote(Element(text)), key) << text;
}

TEST(ArithmeticKey, TranspositionsOfKeys) {
  // The usual diatonic step of a chromatic one, from -11 to 11; 0 beyond.
  for (const auto& [chromatic, diatonic] : std::vector<std::pair<int16_t, int16_t>>{
           {-11, -6}, {-10, -6}, {-5, -3}, {-1, -1}, {0, 0}, {1, 1}, {6, 3}, {11, 6}, {12, 0}})
    EXPECT_EQ(TransposeDefaultDiatonic(chromatic), diatonic) << chromatic;
  // Chromatic, diatonic, octave change; then key alteration, adjusted alteration, steps.
  // clang-format off
  const std::vector<std::array<int16_t, 6>> rows = {
      {-2, -1, 0, 2, 2, 1},   {-2, -1, 1, 2, 2, -6}, {-3, -1, 0, -3, 9, 2},  {3, 1, 0, 3, -9, -2},
      {2, 2, 0, -2, 10, -1},  {2, 5, 0, -2, -2, -5}, {4, -4, 0, -4, 8, 5},   {5, 2, 0, 1, -11, -3},
      {-5, -2, 0, -1, 11, 3}, {8, -3, 0, 4, -8, 2},  {10, -2, 0, 2, -10, 1}, {-11, 1, 0, 5, 5, -1},
      {-11, 0, 0, -7, -7, 0}, {-6, -3, 0, 6, 6, 3},  {6, 3, 0, -6, -6, -3},  {-1, 0, 0, 7, 7, 0},
      {11, 6, 0, -5, -5, -6}, {12, 2, 1, 4, -3, -9}, {0, 0, 0, 0, 0, 0}};
  const std::vector<std::pair<std::string, int16_t>> packed = {
      {"<chromatic>-2</chromatic>", 66}, {"<chromatic>-7</chromatic>", 257},
      {"<diatonic>-1</diatonic><chromatic>-2</chromatic><octave-change>-1</octave-change>", 514},
      {"<diatonic>1</diatonic><chromatic>2</chromatic>", 4094}};
  // clang-format on
  for (const auto& c : rows) {
    int16_t keyAlter = 4, adjustedAlter = -3, steps = 99; // kept when chromatic is out of range
    TransposeKeySig(c[0], c[1], c[2], keyAlter, adjustedAlter, steps);
    EXPECT_EQ((std::array<int16_t, 3>{keyAlter, adjustedAlter, steps}),
              (std::array<int16_t, 3>{c[3], c[4], c[5]}))
        << c[0] << " " << c[1] << " " << c[2];
  }
  for (const auto& [children, value] : packed)
    EXPECT_EQ(TranspositionValue(Element("<transpose>" + children + "</transpose>")), value)
        << children;
  const std::string fSharp = "<key><key-step>F</key-step><key-alter>1</key-alter></key>";
  const std::vector<std::array<std::string, 3>> keys = {
      {fSharp, fSharp, "1"},
      {fSharp, "<key><key-step>F</key-step><key-alter>-1</key-alter></key>", "0"},
      {fSharp, "<key><key-alter>1</key-alter><key-step>F</key-step></key>", "0"},
      {fSharp, "<key><key-step>F</key-step></key>", "0"},
      {"<time><beats>2</beats></time>", "<time><beats>2</beats></time>", "0"},
      {fSharp, "", "0"}};
  for (const auto& [key1, key2, match] : keys)
    EXPECT_EQ(KeyMatch(Element(key1), Element(key2)), match == "1") << key1 << " | " << key2;
}

TEST(ArithmeticClef, ClefNumbersOnEachHostYear) {
  // Clef children; then the clef number on hosts 2000 to 2004.
  // clang-format off
  const std::vector<std::pair<std::string, std::array<int16_t, 5>>> cases = {
      {"<sign>G</sign><line>2</line><clef-octave-change>-1</clef-octave-change>", {5, 5, 5, 5, 5}},
      {"<sign>F</sign><line>3</line><clef-octave-change>-1</clef-octave-change>", {7, 7, 7, 7, 7}},
      {"<sign>G</sign><line>1</line><clef-octave-change>-1</clef-octave-change>", {5, 8, 8, 8, 8}},
      {"<sign>G</sign><clef-octave-change>1</clef-octave-change>", {0, 13, 13, 13, 13}},
      {"<sign>F</sign><line>4</line><clef-octave-change>1</clef-octave-change>",
       {3, 14, 14, 14, 14}},
      {"<sign>C</sign><line>4</line>", {2, 2, 2, 2, 2}},
      {"<sign>C</sign><line>5</line>", {1, 9, 9, 9, 9}},
      {"<sign>C</sign><line>2</line>", {1, 10, 10, 10, 10}},
      {"<sign>C</sign><line>1</line>", {1, 11, 11, 11, 11}},
      {"<sign>C</sign><line>x</line>", {1, 1, 1, 1, 1}},
      {"<sign>percussion</sign>", {4, 12, 12, 12, 12}}, {"<sign>none</sign>", {0, 0, 0, 15, 15}},
      {"<sign>TAB</sign><line>5</line>", {5, 5, 5, 16, 16}},
      {"<sign>jianpu</sign>", {0, 0, 0, 0, 0}}};
  // clang-format on
  for (const auto& [children, byYear] : cases)
    for (int32_t year = 2000; year <= 2004; ++year)
      EXPECT_EQ(ClefValue(Element("<clef>" + children + "</clef>"), year), byYear[year - 2000])
          << children << " on " << year;
}

TEST(ArithmeticMidi, PatchBanksAndExpressionPlaybackSounds) {
  // Patch and type, bank data; then program, bank.
  const std::vector<std::array<int32_t, 4>> banks = {
      {71, 500, 72, 0},          {255, 0, 256, 0},           {0x0100, 2, 1, 3},
      {0x0147, 0x0203, 72, 260}, {0x0100, 0x7F7F, 1, 16384}, {-251, 0, 6, 1}};
  for (const auto& c : banks) {
    int32_t program = -1, bank = -1;
    ConvertMidiPatchBank(static_cast<int16_t>(c[0]), static_cast<int16_t>(c[1]), program, bank);
    EXPECT_EQ(std::make_pair(program, bank), std::make_pair(c[2], c[3])) << c[0] << " " << c[1];
  }
  const std::string instrument = "<sound><midi-instrument>", end = "</midi-instrument></sound>";
  // Flag, data 1 and 2; then the sound element and its id.
  // clang-format off
  const std::vector<std::tuple<int16_t, int16_t, int16_t, std::string, std::string>> sounds = {
      {1, 120, 0, R"(<sound tempo="120"/>)", "tempo-120"},
      {0x1001, 5, 512, R"(<sound tempo="2"/>)", "tempo-2"},
      {0x1001, 7, 512, R"(<sound tempo="4"/>)", "tempo-4"},
      {2, 64, 0, R"(<sound dynamics="71"/>)", "dynamics-71"},
      {5, 9, 0, instrument + "<midi-channel>10</midi-channel>" + end, "channel-10"},
      {192, 0x0147, 2, instrument + "<midi-bank>3</midi-bank><midi-program>72</midi-program>" + end,
       "bank-3-patch-72"},
      {192, 5, 2, instrument + "<midi-program>6</midi-program>" + end, "-patch-6"},
      {0x2000 | 192, 5, 0, "", ""}, {0x0103, 5, 0, "", ""}};
  // clang-format on
  for (const auto& [flag, data1, data2, expected, expectedId] : sounds) {
    auto document = xml::XmlDocument::Create();
    std::string id = "left over";
    const xml::XmlNode sound = CreateExpressionPlayback(flag, data1, data2, *document, id);
    EXPECT_EQ(sound ? sound.xml() : std::string(), expected) << std::hex << flag;
    EXPECT_EQ(id, expectedId) << std::hex << flag;
  }
}

class ArithmeticRecordsTest : public ModelTest {};
// A host with an empty document: no preference record at all.
class ArithmeticEmptyDocumentTest : public testing::HostTest {};

TEST_F(ArithmeticRecordsTest, DefaultsOfTheDocument) {
  int16_t percent = 0, offset = 1, x = 0, y = 0;
  DefaultClefChange(percent, offset);
  DefaultEndingTextOffsets(x, y);
  EXPECT_EQ((std::array<int16_t, 7>{DefaultTempo(), DefaultWedgeSpread(),
                                    DefaultEnclosureLineWidth(), percent, offset, x, y}),
            (std::array<int16_t, 7>{120, 36, 4, 75, 0, 12, -24}));
  // Metronome beat and speed; the tempo in quarters rounds halves to even.
  for (const auto& [beat, speed, tempo] : std::vector<std::array<int16_t, 3>>{
           {1536, 80, 120}, {512, 5, 2}, {512, 7, 4}, {768, 3, 2}}) {
    Rewrite<Settings13>(kPreferences, 0, [&](auto& r) { r.MetronomeBeat = beat; });
    Rewrite<Settings39>(kPreferences, 0, [&](auto& r) { r.MetronomeSpeed = speed; });
    EXPECT_EQ(DefaultTempo(), tempo) << beat << " at " << speed;
  }
  // AbbrCommon, AbbrCut; then common and cut shown as symbols: only the value 1 counts.
  for (const auto& c :
       std::vector<std::array<int16_t, 4>>{{1, 1, 1, 1}, {2, 1, 0, 1}, {-1, 0, 0, 0}}) {
    Rewrite<Settings19>(kPreferences, 0, [&](auto& r) { r.AbbrCommon = c[0], r.AbbrCut = c[1]; });
    bool common = false, cut = false;
    TimeSignatureAbbreviations(common, cut);
    EXPECT_EQ(std::make_pair(common, cut), std::make_pair(c[2] == 1, c[3] == 1)) << c[0] << c[1];
  }
}

TEST_F(ArithmeticRecordsTest, AbsentTempoRecordsGiveZeroAndOtherFailuresPassUp) {
  for (const char* call : {"LoadSettings13", "LoadSettings39"}) {
    HostSim().Faults = {{call, Fault::Refuse}};
    EXPECT_EQ(DefaultTempo(), 0) << call;
  }
  HostSim().Faults = {{"LoadFieldInfo", Fault::Refuse}};
  EXPECT_EQ(DefaultWedgeSpread(), 0);
  HostSim().Faults = {{"LoadSettings39", Fault::Throw}};
  EXPECT_EQ(Raised([] { DefaultTempo(); }).Number, Settings39::Places().LoadHandler);
  HostSim().Faults = {{"LoadFieldInfo", Fault::Throw}};
  EXPECT_EQ(Raised([] { DefaultWedgeSpread(); }).Number, FieldInfo::Places().LoadHandler);
  HostSim().Faults.clear();
}

TEST_F(ArithmeticEmptyDocumentTest, OtherDefaultsNeedTheirRecords) {
  EXPECT_EQ(DefaultTempo(), 0);
  EXPECT_EQ(DefaultWedgeSpread(), 0);
  int16_t a = 0, b = 0;
  bool common = false, cut = false;
  EXPECT_EQ(Raised([] { DefaultEnclosureLineWidth(); }).Number, Settings27::Places().Load);
  EXPECT_EQ(Raised([&] { DefaultClefChange(a, b); }).Number, Settings13::Places().Load);
  EXPECT_EQ(Raised([&] { DefaultEndingTextOffsets(a, b); }).Number, Settings72::Places().Load);
  EXPECT_EQ(Raised([&] { TimeSignatureAbbreviations(common, cut); }).Number,
            Settings19::Places().Load);
  EXPECT_EQ(Raised([] { EdusPerBeatType(12); }).Number, kUnknownBeatType);
  EXPECT_EQ(Log(), "") << "own failures pass the handlers unlogged";
}

TEST_F(ArithmeticEmptyDocumentTest, NonLinearKeysAsKeyElements) {
  const std::string step = "<key-step>", alter = "</key-step><key-alter>", end = "</key-alter>";
  // KeyFormat (none when chromatic is 0), amounts and order of accidentals; then the key.
  // clang-format off
  const std::vector<std::tuple<int16_t, int16_t, std::vector<int16_t>, std::vector<int16_t>,
                               std::string>> cases = {
      {12, 7, {1, -1}, {3, 6},
       "<key>" + step + "F" + alter + "1" + end + step + "B" + alter + "-1" + end + "</key>"},
      {0, 0, {2}, {0}, "<key>" + step + "C" + alter + "2" + end + "</key>"},
      {12, 7, {1, 0, 1}, {3, 4, 5}, "<key>" + step + "F" + alter + "1" + end + "</key>"},
      {12, 7, {}, {}, ""}, {31, 18, {1}, {3}, ""}, {12, 6, {1}, {3}, ""}};
  // clang-format on
  const auto units = [](const std::vector<int16_t>& values) {
    return [&values](auto& record) {
      for (size_t i = 0; i < values.size(); ++i)
        record.Units.Set(static_cast<int>(i + 1), values[i]);
    };
  };
  int16_t keyNumber = 16384;
  for (const auto& [chromatic, diatonic, amounts, order, expected] : cases) {
    if (chromatic != 0)
      Make<KeyFormat>(keyNumber, 0,
                      [&](auto& r) { r.Chromatic = chromatic, r.Diatonic = diatonic; });
    Make<AccidentalAmount>(keyNumber, 0, units(amounts));
    Make<AccidentalOrder>(keyNumber, 0, units(order));
    auto document = xml::XmlDocument::Create();
    const xml::XmlNode key = CreateKeyNonLinear(keyNumber, *document);
    EXPECT_EQ(key ? key.xml() : std::string(), expected) << keyNumber;
    ++keyNumber;
  }
  auto document = xml::XmlDocument::Create();
  EXPECT_EQ(Raised([&] { CreateKeyNonLinear(keyNumber, *document); }).Number,
            AccidentalAmount::Places().Load)
      << "an absent KeyFormat passes, the accidentals are needed";
}

TEST_F(ArithmeticEmptyDocumentTest, ForeignFailuresBecomeEachFunctionsOwnNumber) {
  // Body, number; then the text logged.
  const std::vector<std::tuple<std::function<void()>, uint32_t, std::string>> cases = {
      {[] { GetActualDuration(2097152, 1); }, 0x800406EC, "GetActualDuration error "},
      {[] { GetActualDuration(2048, 1, Element(Tuplet("1024", "1"))); }, 0x800406EC,
       "GetActualDuration error "},
      {[] { MidiNote(Element("<pitch><step>C</step></pitch>")); }, 0x800406EE, "MidiNote error "},
      {[] { MidiNote(Element("<pitch><step>C</step><octave>21</octave></pitch>")); }, 0x800406EE,
       "MidiNote error "},
      {[] { TranspositionValue(Element("<transpose><diatonic>1</diatonic></transpose>")); },
       0x800406F1, "TranspositionValue error "},
      {[] { ClefValue(Element("<clef><line>2</line></clef>"), 2004); }, 0x800406FD,
       "ClefValue error "},
      {[] { GetActualDuration(4, 0); }, static_cast<uint32_t>(kDivisionsMissing),
       "MusicXML divisions value not passed to GetActualDuration"}};
  for (const auto& [body, number, logged] : cases) {
    const std::string before = Log();
    const Failure failure = Raised(body);
    EXPECT_EQ(static_cast<uint32_t>(failure.Number), number) << logged;
    EXPECT_EQ(failure.Description, kInternalError) << logged;
    EXPECT_NE(Log().find(logged, before.size()), std::string::npos) << logged;
  }
}

} // namespace
} // namespace ostin
