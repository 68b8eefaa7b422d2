// The document defaults and non-traditional keys read from the host's records, and the
// failures of the arithmetic as the handlers pass them on.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/records.h"
#include "model/arithmetic.h"

namespace ostin {
namespace {

using testing::HostTest;
using xml::test_support::Loaded;
using xml::test_support::Raised;
using Fault = sim::Host::Fault;

constexpr int16_t kPreferences = -2;

class ArithmeticRecordsTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("default-document.json");
  }

  static void SetMetronome(int16_t beat, int16_t speed) {
    Settings13 metronome;
    ASSERT_TRUE(metronome.Load(kPreferences, 0));
    metronome.MetronomeBeat = beat;
    metronome.Save();
    Settings39 tempo;
    ASSERT_TRUE(tempo.Load(kPreferences, 0));
    tempo.MetronomeSpeed = speed;
    tempo.Save();
  }
};

// A host with an empty document: no preference record at all.
class ArithmeticEmptyDocumentTest : public HostTest {};

TEST_F(ArithmeticRecordsTest, DefaultsOfTheDocument) {
  int16_t percent = 0, offset = 1, x = 0, y = 0;
  DefaultClefChange(percent, offset);
  DefaultEndingTextOffsets(x, y);
  EXPECT_EQ((std::array<int16_t, 7>{DefaultTempo(), DefaultWedgeSpread(),
                                    DefaultEnclosureLineWidth(), percent, offset, x, y}),
            (std::array<int16_t, 7>{120, 36, 4, 75, 0, 12, -24}));
}

TEST_F(ArithmeticRecordsTest, TempoTurnsBeatsIntoQuartersRoundingHalvesToEven) {
  struct Case {
    int16_t Beat, Speed, Tempo;
  };
  const std::vector<Case> cases = {{1536, 80, 120}, {512, 5, 2}, {512, 7, 4}, {768, 3, 2}};
  for (const Case& c : cases) {
    SetMetronome(c.Beat, c.Speed);
    EXPECT_EQ(DefaultTempo(), c.Tempo) << c.Beat << " at " << c.Speed;
  }
}

TEST_F(ArithmeticRecordsTest, AbbreviationsOnlyForTheValueOne) {
  // AbbrCommon, AbbrCut; then common and cut shown as symbols.
  const std::vector<std::array<int16_t, 4>> cases = {{1, 1, 1, 1}, {2, 1, 0, 1}, {-1, 0, 0, 0}};
  for (const auto& c : cases) {
    Settings19 times;
    ASSERT_TRUE(times.Load(kPreferences, 0));
    times.AbbrCommon = c[0];
    times.AbbrCut = c[1];
    times.Save();
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
  EXPECT_EQ(Log(), "") << "own failures pass the handlers unlogged";
}

TEST_F(ArithmeticEmptyDocumentTest, NonLinearKeysAsKeyElements) {
  struct Case {
    bool HasFormat;
    int16_t Chromatic, Diatonic;
    std::vector<int16_t> Amounts, Order;
    std::string Key; // empty: no element
  };
  const std::string fSharpBFlat = "<key><key-step>F</key-step><key-alter>1</key-alter>"
                                  "<key-step>B</key-step><key-alter>-1</key-alter></key>";
  const std::vector<Case> cases = {
      {true, 12, 7, {1, -1}, {3, 6}, fSharpBFlat},
      {false, 0, 0, {2}, {0}, "<key><key-step>C</key-step><key-alter>2</key-alter></key>"},
      {true,
       12,
       7,
       {1, 0, 1},
       {3, 4, 5},
       "<key><key-step>F</key-step><key-alter>1</key-alter></key>"},
      {true, 12, 7, {}, {}, ""},
      {true, 31, 18, {1}, {3}, ""},
      {true, 12, 6, {1}, {3}, ""}};
  int16_t keyNumber = 16384;
  for (const Case& c : cases) {
    if (c.HasFormat) {
      KeyFormat format;
      format.Create(keyNumber, 0);
      format.Chromatic = c.Chromatic;
      format.Diatonic = c.Diatonic;
      format.Save();
    }
    AccidentalAmount amounts;
    amounts.Create(keyNumber, 0);
    AccidentalOrder order;
    order.Create(keyNumber, 0);
    for (size_t i = 0; i < c.Amounts.size(); ++i) {
      amounts.Units.Set(static_cast<int>(i + 1), c.Amounts[i]);
      order.Units.Set(static_cast<int>(i + 1), c.Order[i]);
    }
    amounts.Save();
    order.Save();
    auto document = xml::XmlDocument::Create();
    const xml::XmlNode key = CreateKeyNonLinear(keyNumber, *document);
    EXPECT_EQ(key ? key.xml() : std::string(), c.Key) << keyNumber;
    ++keyNumber;
  }
  auto document = xml::XmlDocument::Create();
  EXPECT_EQ(Raised([&] { CreateKeyNonLinear(keyNumber, *document); }).Number,
            AccidentalAmount::Places().Load)
      << "an absent KeyFormat passes, the accidentals are needed";
}

TEST_F(ArithmeticEmptyDocumentTest, MissingDivisionsIsLoggedAndRaisedAsItsOwnNumber) {
  const Failure failure = Raised([] { GetActualDuration(4, 0); });
  EXPECT_EQ(failure.Number, kDivisionsMissing);
  EXPECT_EQ(failure.Description, kInternalError);
  EXPECT_NE(Log().find("MusicXML divisions value not passed to GetActualDuration"),
            std::string::npos);
}

TEST_F(ArithmeticEmptyDocumentTest, ForeignFailuresBecomeEachFunctionsOwnNumber) {
  struct Case {
    std::string Function;
    std::function<void()> Body;
    uint32_t Number;
  };
  const auto tuplet = Loaded("<time-modification><actual-notes>1024</actual-notes>"
                             "<normal-notes>1</normal-notes></time-modification>");
  const auto noOctave = Loaded("<pitch><step>C</step></pitch>");
  const auto highPitch = Loaded("<pitch><step>C</step><octave>21</octave></pitch>");
  const auto noChromatic = Loaded("<transpose><diatonic>1</diatonic></transpose>");
  const auto noSign = Loaded("<clef><line>2</line></clef>");
  const std::vector<Case> cases = {
      {"GetActualDuration", [] { GetActualDuration(2097152, 1); }, 0x800406EC},
      {"GetActualDuration", [&] { GetActualDuration(2048, 1, tuplet->documentElement()); },
       0x800406EC},
      {"MidiNote", [&] { MidiNote(noOctave->documentElement()); }, 0x800406EE},
      {"MidiNote", [&] { MidiNote(highPitch->documentElement()); }, 0x800406EE},
      {"TranspositionValue", [&] { TranspositionValue(noChromatic->documentElement()); },
       0x800406F1},
      {"ClefValue", [&] { ClefValue(noSign->documentElement(), 2004); }, 0x800406FD}};
  for (const Case& c : cases) {
    const std::string before = Log();
    const Failure failure = Raised(c.Body);
    EXPECT_EQ(static_cast<uint32_t>(failure.Number), c.Number) << c.Function;
    EXPECT_EQ(failure.Description, kInternalError) << c.Function;
    EXPECT_NE(Log().find(c.Function + " error ", before.size()), std::string::npos) << c.Function;
  }
}

TEST_F(ArithmeticEmptyDocumentTest, UnknownBeatTypeIsNotLogged) {
  EXPECT_EQ(Raised([] { EdusPerBeatType(12); }).Number, kUnknownBeatType);
  EXPECT_EQ(Log(), "");
}

} // namespace
} // namespace ostin
