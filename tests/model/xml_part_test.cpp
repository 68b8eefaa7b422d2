// The part model: keys and tonics, transpositions, clefs and staff lines, style ranges, the
// time signature of a measure that is shorter or longer than the one stated, and the names
// of staff styles read from the document or made from MusicXML elements.

#include "host/records.h"
#include "host/text/fonts.h"
#include "model/staff_styles.h"
#include "model/xml_part.h"
#include "model_test.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using namespace model_test;

class XmlPartTest : public ModelTest {
protected:
  XmlPartTest() : ModelTest("sample.json") {}
};

TEST(XmlPartKeys, TonicsAndAlterationsOfKeys) {
  // Fifths, minor; then the tonic, empty beyond 14 fifths.
  // clang-format off
  const std::vector<std::tuple<int16_t, bool, std::string>> tonics = {
      {0, false, "C"}, {0, true, "A"}, {-3, false, "E"}, {-3, true, "C"}, {7, false, "C"},
      {14, true, "A"}, {-14, false, "C"}, {6, false, "F"}, {15, false, ""}, {-15, true, ""}};
  const std::vector<std::tuple<int16_t, std::string, int16_t>> alterations = {
      {8, "F", 2}, {8, "C", 1}, {1, "F", 1}, {1, "C", 0}, {0, "F", 0}, {-8, "B", -2},
      {-8, "E", -1}, {-1, "B", -1}, {-1, "E", 0}, {7, "B", 1}, {-7, "F", -1}, {14, "B", 2}};
  // clang-format on
  for (const auto& [fifths, minor, tonic] : tonics)
    EXPECT_EQ(XmlPart::GetTonic(fifths, minor), tonic) << fifths << " " << minor;
  for (const auto& [fifths, step, alter] : alterations) {
    XmlPart part;
    part.SetKey(Element("<key><fifths>" + std::to_string(fifths) + "</fifths></key>"));
    EXPECT_EQ(part.KeySignatureAlter(step), alter) << fifths << " " << step;
  }
  // A non-traditional key reads its own steps; the measure has no tone center.
  XmlPart part;
  part.Measure = 1;
  part.SetKey(Element("<key><key-step>D</key-step><key-alter>-1</key-alter>"
                      "<key-step>G</key-step><key-alter>1</key-alter></key>"));
  EXPECT_TRUE(part.NonLinear);
  EXPECT_EQ(part.Tonic, "C");
  EXPECT_EQ(
      V(part.KeySignatureAlter("D"), part.KeySignatureAlter("G"), part.KeySignatureAlter("A")),
      V(-1, 1, 0));
}

// Key-based packing: alteration in bits 0-5, interval in bits 6-11, 0x4000 simplifies.
int16_t KeyBased(int interval, int alter, bool simplify) {
  return static_cast<int16_t>((alter & 63) | ((interval & 63) << 6) | (simplify ? 0x4000 : 0));
}

TEST(XmlPartKeys, TranspositionSetsTheOctaveOfTheTonic) {
  // Packed value, the key, tonic; then the interval and octave.
  const std::vector<std::tuple<int16_t, int16_t, std::string, int16_t, int16_t>> cases = {
      {KeyBased(1, 2, false), 0, "C", 1, 5},     // B flat instrument
      {KeyBased(1, 2, true), 6, "C", 2, 5},      // six sharps plus two wraps
      {KeyBased(1, 2, true), 0, "D", 1, 4},      // D less one step stays in the octave
      {KeyBased(-5, -1, false), 0, "C", -5, 4},  // F instrument sounds lower
      {KeyBased(-9, -1, false), 0, "C", -9, 3},  // an octave further
      {KeyBased(1, 2, true), 0x4001, "C", 1, 5}, // a non-linear key is not simplified
      {static_cast<int16_t>(0x2000 | 0x0102), 0, "C", 0, 4}};
  for (const auto& [value, key, tonic, interval, octave] : cases) {
    XmlPart part;
    part.SetFinaleKey(key);
    part.Tonic = tonic;
    part.InitializeTransposition(value);
    EXPECT_EQ(V(part.TransposeKeyOptInterval, part.Octave, part.TransposeKeyOptKeySig),
              V(interval, octave, part.TransposeKeySig))
        << value;
  }
  // A transpose element packs as the staff style's value; an octave change moves it on.
  XmlPart part;
  part.Tonic = "C";
  const int16_t value = part.SetTransposeStaffStyle(
      Element("<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>"));
  EXPECT_EQ(value, static_cast<int16_t>((part.TransposeKeySig & 63) |
                                        ((part.TransposeInterval * 64) & 0xFC0)));
  EXPECT_EQ(V(part.TransposeKeyOptInterval, part.Octave), V(1, 5));
  part.SetTranspose(Element("<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic>"
                            "<octave-change>-1</octave-change></transpose>"));
  EXPECT_EQ(V(part.TransposeKeyOptInterval, part.Octave), V(8, 6));
}

TEST(XmlPartStaff, ClefsOfStaffFormsAndLineSettings) {
  // Transposition, clefs, Instflag; then clef, ClefChange, FloatKeys, FloatTime.
  const int16_t high = static_cast<int16_t>(0x8000);
  const std::vector<std::pair<std::array<int16_t, 3>, std::vector<int>>> forms = {
      {{0, 0x0301, 0}, {1, 1, 0, 0}},
      {{high, 0x0301, high}, {3, 0, 1, 0}},
      {{0, 0x0203, 0x4000}, {3, 1, 0, 1}}};
  for (const auto& [form, expected] : forms) {
    XmlPart part;
    auto spec = std::make_shared<StaffSpec>();
    spec->Transposition = form[0], spec->Clefs = form[1], spec->Instflag = form[2];
    part.Layers[1] = 2;
    part.SetStaffSpecs(1, spec);
    EXPECT_EQ(V(part.Clefs(1), part.ClefChange, part.FloatKeys, part.FloatTime), expected)
        << form[1];
    EXPECT_EQ(part.Layers[1], 0);
  }
  // TopLines, BotLines; then the top line and count.
  const std::vector<std::array<int16_t, 4>> lines = {
      {0, 5, -3, 5},
      {0, 1, 1, 1},
      {4, 3, -3, 5},
      {1, 0b0000000000000100, -1, 1},                                      // one line at -2
      {1, 0b0000000000010101, -2, 3},                                      // lines at -4, -2, 0
      {static_cast<int16_t>(0x8001), static_cast<int16_t>(0x8001), 0, 3}}; // -15, 0 and 1
  for (const auto& c : lines) {
    int16_t top = 99, count = 99;
    XmlPart::CountLines(c[0], c[1], top, count);
    EXPECT_EQ(std::make_pair(top, count), std::make_pair(c[2], c[3])) << c[0] << " " << c[1];
  }
}

TEST(XmlPartTime, ActualTimeSignatureOfMeasuresThatDiffer) {
  // Beats, beat type, Divbeat, divisions, duration; then found, beats and Divbeat.
  // clang-format off
  const std::vector<std::pair<std::array<int32_t, 5>, std::array<int, 3>>> cases = {
      {{6, 8, 1536, 2, 6}, {0, 0, 0}},      // the stated length
      {{6, 8, 1536, 2, 4}, {1, 4, 512}},    // two quarters stay in eighths
      {{6, 8, 1536, 2, 9}, {1, 3, 1536}},   // nine eighths are three dotted quarters
      {{4, 4, 1024, 1, 3}, {1, 3, 1024}},   // three quarters in 4/4
      {{4, 4, 1024, 2, 3}, {1, 3, 512}},    // an eighth more: the beat halves
      {{4, 4, 1024, 1, 0}, {1, 0, 1024}},
      {{2, 2, 2048, 3, 1}, {0, 0, 0}}};     // no beat type of these divisions fits
  // clang-format on
  for (const auto& [in, expected] : cases) {
    XmlPart part;
    part.SetDivisions(in[3]);
    part.SetXmlBeats(static_cast<int16_t>(in[0]));
    part.SetXmlBeatType(static_cast<int16_t>(in[1]));
    part.FinaleDivbeat = static_cast<int16_t>(in[2]);
    int16_t beats = 0, divBeat = 0;
    bool found = expected[0] == 0;
    part.ActualTimeSignature(in[4], beats, divBeat, found);
    EXPECT_EQ((std::array<int, 3>{found, beats, divBeat}), expected) << in[0] << " " << in[4];
  }
}

// A new staff style record with those masks, flags, transposition and name, as stored.
StaffStyle Saved(int16_t mask1, int16_t mask2, int16_t mask3, int16_t altFlag,
                 int16_t transposition, const std::string& styleName = "") {
  StaffStyle record;
  record.FinaleVersion = 2004;
  record.Create(-1, 0);
  record.Mask1 = mask1, record.Mask2 = mask2, record.Mask3 = mask3;
  record.AltFlag = altFlag, record.Transposition = transposition;
  record.StyleName = styleName;
  record.Save();
  EXPECT_TRUE(record.Load(record.Cmper(), 0));
  return record;
}

TEST_F(XmlPartTest, NextStyleChangeFollowsAssignedStyles) {
  const int16_t style = Saved(0x0100, 0, 0, 0, -2).Cmper();
  // Start measure and EDU, end measure and EDU.
  for (const auto& a :
       std::vector<std::array<int32_t, 4>>{{3, 0, 4, 0x7FFFFFFF}, {6, 1024, 6, 2047}}) {
    Make<StaffStyleAssign>(1, -1, [&](auto& s) {
      s.Style = style, s.StartMeas = static_cast<int16_t>(a[0]), s.StartEdu = a[1];
      s.EndMeas = static_cast<int16_t>(a[2]), s.EndEdu = a[3];
    });
  }
  XmlPart part;
  part.SetStaves(2);
  auto spec = std::make_shared<StaffSpec>();
  spec->FinaleVersion = 2004;
  ASSERT_TRUE(spec->Load(1, 0));
  part.SetStaffSpecs(1, spec);
  // Measure; then the measure and EDU of the next change.
  for (const auto& c : std::vector<std::array<int32_t, 3>>{
           {1, 3, 0}, {3, 5, 0}, {4, 5, 0}, {5, 6, 1024}, {6, 1, 0}, {7, 1, 0}}) {
    part.Measure = static_cast<int16_t>(c[0]);
    part.NextStyleChange(1);
    EXPECT_EQ((std::array<int32_t, 2>{part.StyleChangeMeasure[1], part.StyleChangeEdu[1]}),
              (std::array<int32_t, 2>{c[1], c[2]}))
        << c[0];
  }
  part.NextStyleChange(2);
  EXPECT_EQ(part.StyleChangeMeasure[2], 1) << "no staff loaded";
  EXPECT_EQ(Raised([&] { part.NextStyleChange(3); }).Number, Code(0x8004078E));
}

TEST_F(XmlPartTest, StaffStyleSetsLayersFontsAndLines) {
  FontName ownFont;
  ASSERT_TRUE(ownFont.Load(5, 0));
  // Flag, AltFlag, BotLines, Instflag; then layers visible, lines, line offset, own
  // notehead font and no time. The last case brings the default font back.
  const std::vector<std::pair<std::array<int16_t, 4>, std::vector<int>>> cases = {
      {{0, 0, 5, 0}, {1, 0, 0, 0, 5, 0, 0, 0}},
      {{0x0020, 0x0215, 1, 0x0010}, {1, 0, 1, 1, 1, -8, 1, 1}},
      {{0, 0x0010, 3, 0}, {0, 1, 0, 0, 3, -4, 0, 1}}};
  XmlPart part;
  part.FinaleVersion = 2004;
  auto spec = std::make_shared<StaffSpec>();
  spec->Clefs = 0;
  part.SetStaffSpecs(1, spec);
  for (const auto& [in, expected] : cases) {
    spec->Flag = in[0], spec->AltFlag = in[1], spec->TopLines = 0, spec->BotLines = in[2];
    spec->Mfont = 5;
    if (in[3]) spec->Instflag = in[3];
    part.InitializeFromStaffStyle(1);
    std::vector<int> got(part.LayerVisible[1].begin(), part.LayerVisible[1].end());
    got.insert(got.end(), {part.StaffLines[1], part.LineOffset[1],
                           part.NoteheadFont[1] == ownFont.Text, part.NoTime});
    EXPECT_EQ(got, expected) << in[1];
  }
  EXPECT_EQ(Raised([&] { part.InitializeFromStaffStyle(2); }).Number, Code(0x8004078D));
}

using StaffStyleTest = ModelTest;

TEST_F(StaffStyleTest, DocumentStylesAreNamedByMasksAndFlags) {
  // Mask1, Mask2, Mask3, AltFlag, Transposition; then the name, empty for no style. The
  // styles made from elements read their own names back below.
  // clang-format off
  const std::vector<std::pair<std::array<int16_t, 5>, std::string>> cases = {
      {{0, 0x1000, 0, 0x0005, 0}, ""}, {{0, 0x1000, 0, 0x0000, 0}, ""},
      {{1, 0x1000, 0, 0x0001, 0}, ""}, {{0x0100, 0x1000, 0, 0x0001, 0}, ""},
      {{0, 0x1000, 4, 0x0001, 0}, ""}, {{0, 0x1001, 0, 0x0001, 0}, ""},
      {{0x0100, 0, 0, 0, -3}, "transpose--3"}, {{0x0101, 0, 0, 0, 7}, ""},
      {{0x0100, 0, 1, 0, 7}, ""}, {{0, 0x1000, 0, 0x1001, 0}, "measure-style-slash-dots"},
      {{0, 0x1000, 0, 0x2002, 0}, "measure-style-slash-stems"}};
  // clang-format on
  for (const auto& [m, name] : cases) {
    const StaffStyle record = Saved(m[0], m[1], m[2], m[3], m[4]);
    XmlStaffStyle style{99, "old", 2004};
    style.Create(record);
    EXPECT_EQ(style.Name, name) << m[0] << " " << m[1] << " " << m[2] << " " << m[3];
    EXPECT_EQ(style.Number, name.empty() ? 0 : record.Cmper()) << name;
  }
}

TEST_F(StaffStyleTest, ElementsMakeSavedStylesThatNameThemselvesTheSame) {
  struct Case {
    std::string Xml;
    int16_t TransposeValue, Mask1, AltFlag, Sfflag;
    int32_t Message;
    std::vector<std::string> Args;
    std::string Name;
  };
  const std::string dots = "<use-dots>yes</use-dots>", stems = "<use-stems>yes</use-stems>";
  const std::string slash = "measure-style-slash-", repeat = "measure-style-measure-repeat-";
  // clang-format off
  const std::vector<Case> cases = {
      {"<slash/>", 0, 0, 0x2101, 7, 218, {}, slash + "nodots"},
      {"<slash>" + dots + "</slash>", 0, 0, 0x3101, 7, 219, {}, slash + "dots"},
      {"<slash>" + dots + stems + "</slash>", 0, 0, 0x2102, 7, 218, {}, slash + "stems"},
      {"<beat-repeat>" + dots + "</beat-repeat>", 0, 0, 0x3001, 7, 219, {}, slash + "dots"},
      {"<beat-repeat><use-dots>no</use-dots></beat-repeat>", 0, 0, 0x2001, 7, 218, {},
       slash + "nodots"},
      {"<measure-repeat>1</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<measure-repeat>2</measure-repeat>", 0, 0, 0x6004, 7, 217, {}, repeat + "2"},
      {"<measure-repeat>3</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<measure-repeat>4</measure-repeat>", 0, 0, 0x6004, 7, 217, {}, repeat + "2"},
      {"<measure-repeat>x</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<transpose/>", 4094, 256, 0x6700, 5, 220, {"-1", "-2"}, "transpose-4094"},
      {"<transpose/>", 0x0105, 256, 0x6700, 5, 220, {"4", "5"}, "transpose-261"}};
  // clang-format on
  for (const Case& c : cases) {
    XmlStaffStyle style;
    style.FinaleVersion = 2004;
    style.FromXml(Element(c.Xml), c.TransposeValue);
    EXPECT_EQ(style.Name, c.Name) << c.Xml;
    StaffStyle saved;
    saved.FinaleVersion = 2004;
    ASSERT_TRUE(saved.Load(style.Number, 0)) << c.Xml;
    // Mask2 is 4096 for the measure styles, 0 for a transposition.
    EXPECT_EQ(V(saved.Mask1, saved.Mask2, saved.Mask3, saved.AltFlag, saved.Sfflag,
                saved.Transposition, saved.BotLines, saved.Dw_wRest, saved.H_otherRest,
                saved.StemReversal),
              V(c.Mask1, c.Mask1 ? 0 : 4096, 0, c.AltFlag, c.Sfflag, c.Mask1 ? c.TransposeValue : 0,
                5, -772, -772, -4))
        << c.Xml;
    // The host keeps the text in its code page.
    EXPECT_EQ(saved.StyleName, Saved(0, 0, 0, 0, 0, FormatResString(c.Message, c.Args)).StyleName)
        << c.Xml;
    XmlStaffStyle named;
    named.Create(saved);
    EXPECT_EQ(named.Name, c.Name) << c.Xml;
  }
}

} // namespace
} // namespace ostin
