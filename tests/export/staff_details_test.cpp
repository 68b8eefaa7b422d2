#include <gtest/gtest.h>

#include "export_test_support.h"

namespace ostin {
namespace {

using testing::ElementTest;
using testing::ExportTest;
using testing::Flat;
using namespace tools;

constexpr int16_t kSlash = 1;
constexpr int16_t kRhythmic = 2;
constexpr int16_t kOneBarRepeat = 3;
constexpr int16_t kTwoBarRepeat = 4;
constexpr int16_t kUseDots = 0x1000;

class StaffDetailsTest : public ElementTest {
protected:
  // A part of the given staves with plain staff records.
  static XmlPart PartOf(int16_t staves) {
    XmlPart part;
    part.SetStaves(staves);
    for (int16_t staff = 1; staff <= staves; ++staff)
      part.SetStaffSpecs(staff, std::make_shared<StaffSpec>());
    return part;
  }
};

TEST_F(StaffDetailsTest, Clefs) {
  const std::pair<int16_t, std::string> cases[] = {
      {0, "<clef><sign>G</sign><line>2</line></clef>"},
      {1, "<clef><sign>C</sign><line>3</line></clef>"},
      {2, "<clef><sign>C</sign><line>4</line></clef>"},
      {3, "<clef><sign>F</sign><line>4</line></clef>"},
      {4, "<clef><sign>Percussion</sign></clef>"},
      {5, "<clef><sign>G</sign><line>2</line><clef-octave-change>-1</clef-octave-change></clef>"},
      {6, "<clef><sign>F</sign><line>4</line><clef-octave-change>-1</clef-octave-change></clef>"},
      {7, "<clef><sign>F</sign><line>3</line></clef>"},
      {8, "<clef><sign>G</sign><line>1</line></clef>"},
      {9, "<clef><sign>C</sign><line>5</line></clef>"},
      {10, "<clef><sign>C</sign><line>2</line></clef>"},
      {11, "<clef><sign>C</sign><line>1</line></clef>"},
      {12, "<clef><sign>Percussion</sign></clef>"},
      {13, "<clef><sign>G</sign><line>2</line><clef-octave-change>+1</clef-octave-change></clef>"},
      {14, "<clef><sign>F</sign><line>4</line><clef-octave-change>+1</clef-octave-change></clef>"},
      {15, "<clef><sign>none</sign></clef>"},
      {16, "<clef><sign>TAB</sign><line>5</line></clef>"},
      {17, "<clef><sign>TAB</sign><line>5</line></clef>"},
      {18, "<clef><sign>G</sign><line>2</line></clef>"},
      {-1, "<clef><sign>G</sign><line>2</line></clef>"},
      {255, "<clef><sign>G</sign><line>2</line></clef>"},
  };
  for (const auto& [number, expected] : cases)
    EXPECT_EQ(Flat(Access.CreateClef(number)), expected) << number;
}

TEST_F(StaffDetailsTest, Tunings) {
  const std::pair<int16_t, std::string> cases[] = {
      {40, "<staff-tuning><tuning-step>E</tuning-step><tuning-octave>2</tuning-octave>"
           "</staff-tuning>"},
      {61, "<staff-tuning><tuning-step>C</tuning-step><tuning-alter>1</tuning-alter>"
           "<tuning-octave>4</tuning-octave></staff-tuning>"},
      {70, "<staff-tuning><tuning-step>A</tuning-step><tuning-alter>1</tuning-alter>"
           "<tuning-octave>4</tuning-octave></staff-tuning>"},
      {0, "<staff-tuning><tuning-step>C</tuning-step><tuning-octave>-1</tuning-octave>"
          "</staff-tuning>"},
      {127, "<staff-tuning><tuning-step>G</tuning-step><tuning-octave>9</tuning-octave>"
            "</staff-tuning>"},
  };
  for (const auto& [pitch, expected] : cases)
    EXPECT_EQ(Flat(Access.CreateStaffTuning(pitch)), expected) << pitch;
}

TEST_F(StaffDetailsTest, StaffLines) {
  XmlPart one = PartOf(1);
  one.StaffLines.at(1) = 1;
  EXPECT_EQ(Flat(Access.CreateStaffDetails(one, 1)),
            "<staff-details><staff-lines>1</staff-lines></staff-details>");
  XmlPart two = PartOf(2);
  two.StaffLines.at(2) = 3;
  EXPECT_EQ(Flat(Access.CreateStaffDetails(two, 2)),
            "<staff-details number=\"2\"><staff-lines>3</staff-lines></staff-details>");
}

TEST_F(StaffDetailsTest, MeasureStyleElements) {
  struct Case {
    int16_t Notation, AltFlag;
    std::string Expected;
  } cases[] = {
      {kSlash, 0, "<slash use-stems=\"no\" type=\"start\"/>"},
      {kSlash, kUseDots, "<slash use-stems=\"no\" use-dots=\"yes\" type=\"start\"/>"},
      {kRhythmic, kUseDots, "<slash use-stems=\"yes\" type=\"start\"/>"},
      {kOneBarRepeat, 0, "<measure-repeat type=\"start\">1</measure-repeat>"},
      {kTwoBarRepeat, 0, "<measure-repeat slashes=\"2\" type=\"start\">2</measure-repeat>"},
      {0, 0, "(none)"},
      {5, 0, "(none)"},
      {6, 0, "(none)"},
  };
  for (const Case& c : cases) {
    XmlPart part = PartOf(1);
    part.AlternateNotation.at(1) = c.Notation;
    part.StaffSpecs(1)->AltFlag = static_cast<int16_t>(c.AltFlag | c.Notation);
    EXPECT_EQ(Flat(Access.CreateMeasureStyleElement(part, 1)), c.Expected) << c.Notation;
  }
}

// Staff styles met by the measure loop, as the measure content calls them.
class StaffStyleSwitchTest : public ExportTest {
protected:
  void AssignStyle(int16_t staff, int16_t inci, int16_t style, int16_t from, int16_t to) {
    SetRecord("StaffStyleAssign", staff, inci,
              {{"Style", style},
               {"StartMeas", from},
               {"StartEdu", 0},
               {"EndMeas", to},
               {"EndEdu", 0x7FFFFFFF}});
  }
  void NotationStyle(int16_t style, int16_t altFlag) {
    SetRecord("StaffStyle", style, 0, {{"Mask2", 0x1000}, {"AltFlag", altFlag}});
  }
  // Opens the score and reads its part list.
  void Open() {
    HostSim().Open(Builder.Build());
    Access.ReadPartList();
    Access.OpenMeasureStyle().assign(Access.Part(1).Staves() + 1, std::string());
  }
  // The attributes of a new measure after switching at its start; measure 1 starts with
  // the attributes of the skeleton.
  std::string Switch(int16_t measureNumber, int16_t staff, int32_t edu = 0) {
    XmlPart& part = Access.Part(1);
    part.Measure = measureNumber;
    xml::XmlNode measure = Access.Element("measure");
    bool atStart = measureNumber == 1 && edu == 0;
    if (atStart) {
      xml::XmlNode attributes = measure.appendChild(Access.Element("attributes"));
      for (const char* name : {"divisions", "clef", "transpose"})
        attributes.appendChild(Access.Element(name));
    }
    Access.SwitchStaffStyle(measure, part, staff, edu, atStart);
    return Flat(measure.selectSingleNode("attributes"));
  }

  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

TEST_F(StaffStyleSwitchTest, SlashesOnThenRepeatsThenOff) {
  Builder.AddStaff({});
  AddMeasures(6);
  NotationStyle(1, kSlash);
  NotationStyle(2, kOneBarRepeat);
  AssignStyle(1, 0, 1, 2, 3);
  AssignStyle(1, 1, 2, 4, 4);
  Open();
  const std::string plainStart = "<attributes><divisions/><clef/><transpose/></attributes>";
  EXPECT_EQ(Switch(1, 1), plainStart) << "a five-line staff without a style adds nothing";
  EXPECT_EQ(Switch(2, 1), "<attributes><measure-style><slash use-stems=\"no\" type=\"start\"/>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Switch(3, 1), "(none)");
  EXPECT_EQ(Switch(4, 1), "<attributes><measure-style><slash type=\"stop\"/></measure-style>"
                          "<measure-style><measure-repeat type=\"start\">1</measure-repeat>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Switch(5, 1), "<attributes><measure-style><measure-repeat type=\"stop\"/>"
                          "</measure-style></attributes>");
  EXPECT_EQ(Access.OpenMeasureStyle().at(1), "");
}

TEST_F(StaffStyleSwitchTest, StylesOfAPartOfTwoStavesAreNumbered) {
  Builder.AddStaff({});
  Builder.AddStaff({});
  Builder.AddGroup(testing::Group(1, 2, 3, "Piano"));
  AddMeasures(3);
  NotationStyle(1, kRhythmic);
  AssignStyle(2, 0, 1, 1, 2);
  Open();
  ASSERT_EQ(Access.Part(1).Staves(), 2);
  EXPECT_EQ(Switch(1, 2), "<attributes><divisions/><clef/><transpose/><measure-style number=\"2\">"
                          "<slash use-stems=\"yes\" type=\"start\"/></measure-style></attributes>");
  EXPECT_EQ(Switch(3, 2), "<attributes><measure-style number=\"2\"><slash type=\"stop\"/>"
                          "</measure-style></attributes>");
}

TEST_F(StaffStyleSwitchTest, StaffOfOneLine) {
  Builder.AddStaff({});
  AddMeasures(1);
  SetRecord("StaffSpec", 1, 0, {{"TopLines", 0}, {"BotLines", 1}});
  Open();
  EXPECT_EQ(Switch(1, 1), "<attributes><divisions/><clef/><staff-details><staff-lines>1"
                          "</staff-lines></staff-details><transpose/></attributes>");
}

TEST_F(StaffStyleSwitchTest, TablatureStaffWithItsTuning) {
  Builder.AddStaff(testing::Staff("Guitar"));
  AddMeasures(1);
  SetRecord("StaffSpec", 1, 0, {{"Flag", 0x200}, {"FretInstID", 1}, {"CapoLowFret", 2}});
  SetRecord("FretInstrument", 1, 0, {{"NoOfStrings", 6}, {"NoOfFrets", 24}});
  // String 1 is the highest.
  Builder.SetBlock("FretInstrument", {1, 0, 0}, "StringTuning", {64, 59, 55, 50, 45, 40});
  Open();
  ASSERT_EQ(Access.Part(1).TabStaff, 1);
  std::string tunings;
  const char* lines[] = {"E2", "A2", "D3", "G3", "B3", "E4"};
  for (int line = 1; line <= 6; ++line) {
    std::string name = lines[line - 1];
    tunings += "<staff-tuning line=\"" + std::to_string(line) + "\"><tuning-step>" +
               name.substr(0, 1) + "</tuning-step><tuning-octave>" + name.substr(1) +
               "</tuning-octave></staff-tuning>";
  }
  EXPECT_EQ(Switch(1, 1), "<attributes><divisions/><clef/><staff-details><staff-lines>6"
                          "</staff-lines>" +
                              tunings + "<capo>2</capo></staff-details><transpose/></attributes>");
}

} // namespace
} // namespace ostin
