// Arithmetic that reads or builds MusicXML elements.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "../xml/xml_test_support.h"
#include "model/arithmetic.h"

namespace ostin {
namespace {

// The root element of a text, or an empty node for an empty text.
xml::XmlNode Element(const std::string& text) {
  return text.empty() ? xml::XmlNode() : xml::test_support::Loaded(text)->documentElement();
}

std::string Tuplet(const std::string& actual, const std::string& normal) {
  return "<time-modification><actual-notes>" + actual + "</actual-notes><normal-notes>" + normal +
         "</normal-notes></time-modification>";
}

TEST(ArithmeticDurationXml, ActualDurationKeepsTheWrittenTupletValue) {
  struct Case {
    int32_t Duration, Divisions;
    std::string TimeModification;
    int32_t Edus;
  };
  const std::vector<Case> cases = {{2, 6, Tuplet("3", "2"), 512},
                                   {5, 4, Tuplet("3", "2"), 1792},
                                   {1, 3, "", 341},
                                   {-1, 3, "", -341},
                                   {2, 6, Tuplet("x", "2"), 341},
                                   {2, 6, Tuplet("3", "0"), 341},
                                   {4, 3, Tuplet(" 5 ", "4"), 1706}};
  for (const Case& c : cases)
    EXPECT_EQ(GetActualDuration(c.Duration, c.Divisions, Element(c.TimeModification)), c.Edus)
        << c.Duration << "/" << c.Divisions << " " << c.TimeModification;
}

TEST(ArithmeticPitchXml, MidiKeysOfPitchedElements) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"<pitch><step>B</step><alter>-1</alter><octave>3</octave></pitch>", 58},
      {"<pitch><step>e</step><alter>1.5</alter><octave>4</octave></pitch>", 66},
      {"<pitch><step>X</step><octave>4</octave></pitch>", 60},
      {"<staff-tuning><tuning-step>F</tuning-step><tuning-alter>1</tuning-alter>"
       "<tuning-octave>2</tuning-octave></staff-tuning>",
       42},
      {"<unpitched><display-step>A</display-step><display-octave>-1</display-octave></unpitched>",
       9}};
  for (const auto& [text, key] : cases)
    EXPECT_EQ(MidiNote(Element(text)), key) << text;
}

TEST(ArithmeticKeyXml, PackedTranspositionsAndKeyMatching) {
  const std::vector<std::pair<std::string, int16_t>> transpositions = {
      {"<chromatic>-2</chromatic>", 66},
      {"<diatonic>-1</diatonic><chromatic>-2</chromatic><octave-change>-1</octave-change>", 514},
      {"<chromatic>-7</chromatic>", 257},
      {"<diatonic>1</diatonic><chromatic>2</chromatic>", 4094}};
  for (const auto& [children, packed] : transpositions)
    EXPECT_EQ(TranspositionValue(Element("<transpose>" + children + "</transpose>")), packed)
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

TEST(ArithmeticClefXml, ClefNumbersOnEachHostYear) {
  struct Case {
    std::string Children;
    std::array<int16_t, 5> ByYear; // host 2000 to 2004
  };
  const std::vector<Case> cases = {
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
      {"<sign>percussion</sign>", {4, 12, 12, 12, 12}},
      {"<sign>none</sign>", {0, 0, 0, 15, 15}},
      {"<sign>TAB</sign><line>5</line>", {5, 5, 5, 16, 16}},
      {"<sign>jianpu</sign>", {0, 0, 0, 0, 0}}};
  for (const Case& c : cases)
    for (int32_t year = 2000; year <= 2004; ++year)
      EXPECT_EQ(ClefValue(Element("<clef>" + c.Children + "</clef>"), year), c.ByYear[year - 2000])
          << c.Children << " on " << year;
}

TEST(ArithmeticDefaultsXml, DefaultYPositionByDirectionTypeAndPlacement) {
  // Element, then the tenths above, below and with no placement.
  const std::vector<std::pair<std::string, std::array<int16_t, 3>>> cases = {
      {"", {36, -180, 36}},
      {"<pedal/>", {36, -180, -180}},
      {"<eyeglasses/>", {60, -150, 60}},
      {"<dashes/>", {36, -180, -180}},
      {"<trill-mark/>", {36, -180, 36}},
      {"<octave-shift type='up'/>", {36, -180, -180}},
      {"<octave-shift type='down'/>", {36, -180, 36}},
      {"<bracket/>", {36, -180, -180}}};
  for (const auto& [element, tenths] : cases) {
    const xml::XmlNode node = Element(element);
    EXPECT_EQ((std::array<int16_t, 3>{DefaultYPosition(node, "above"),
                                      DefaultYPosition(node, "below"), DefaultYPosition(node, "")}),
              tenths)
        << element;
  }
}

TEST(ArithmeticMidiXml, ExpressionPlaybackSounds) {
  struct Case {
    int16_t Flag, Data1, Data2;
    std::string Sound, Id;
  };
  const std::string instrument = "<sound><midi-instrument>";
  const std::vector<Case> cases = {
      {1, 120, 0, R"(<sound tempo="120"/>)", "tempo-120"},
      {0x1001, 5, 512, R"(<sound tempo="2"/>)", "tempo-2"},
      {0x1001, 7, 512, R"(<sound tempo="4"/>)", "tempo-4"},
      {2, 64, 0, R"(<sound dynamics="71"/>)", "dynamics-71"},
      {5, 9, 0, instrument + "<midi-channel>10</midi-channel></midi-instrument></sound>",
       "channel-10"},
      {192, 0x0147, 2,
       instrument +
           "<midi-bank>3</midi-bank><midi-program>72</midi-program></midi-instrument></sound>",
       "bank-3-patch-72"},
      {192, 5, 2, instrument + "<midi-program>6</midi-program></midi-instrument></sound>",
       "-patch-6"},
      {0x2000 | 192, 5, 0, "", ""},
      {0x0103, 5, 0, "", ""}};
  for (const Case& c : cases) {
    auto document = xml::XmlDocument::Create();
    std::string id = "left over";
    const xml::XmlNode sound = CreateExpressionPlayback(c.Flag, c.Data1, c.Data2, *document, id);
    EXPECT_EQ(sound ? sound.xml() : std::string(), c.Sound) << std::hex << c.Flag;
    EXPECT_EQ(id, c.Id) << std::hex << c.Flag;
  }
}

} // namespace
} // namespace ostin
