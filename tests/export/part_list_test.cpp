#include <gtest/gtest.h>

#include "export_test_support.h"
#include "host/bridge.h"

namespace ostin {
namespace {

using testing::ExportTest;
using testing::Flat;
using testing::Group;
using testing::Midi;
using testing::Staff;
using namespace tools;

constexpr int16_t kBracket = 2;
constexpr int16_t kLine = 1;
constexpr int16_t kBrace = 3;

class PartListTest : public ExportTest {
protected:
  // The part list in short: "P1 Piano/Pno." for a score-part with its names, and
  // "start 1 brace Name/Abbr" or "stop 1" for a part-group.
  std::vector<std::string> PartList() const {
    std::vector<std::string> list;
    xml::XmlNodeList children = Node("part-list").selectNodes("*");
    for (int32_t i = 0; i < children.length(); ++i) {
      xml::XmlNode child = children.item(i);
      if (child.nodeName() == "score-part") {
        std::string item =
            child.getAttribute("id") + " " + child.selectSingleNode("part-name").text();
        if (xml::XmlNode abbreviation = child.selectSingleNode("part-abbreviation"))
          item += "/" + abbreviation.text();
        list.push_back(item);
        continue;
      }
      std::string item = child.getAttribute("type") + " " + child.getAttribute("number");
      if (xml::XmlNode symbol = child.selectSingleNode("group-symbol")) item += " " + symbol.text();
      if (xml::XmlNode name = child.selectSingleNode("group-name")) item += " " + name.text();
      if (xml::XmlNode abbreviation = child.selectSingleNode("group-abbreviation"))
        item += "/" + abbreviation.text();
      list.push_back(item);
    }
    return list;
  }
  void Staves(std::initializer_list<StaffOptions> staves) {
    for (const StaffOptions& staff : staves)
      Builder.AddStaff(staff);
  }
  // A style from measure `from` to the end of measure `to` on a staff.
  void AssignStyle(int16_t staff, int16_t inci, int16_t style, int16_t from, int16_t to) {
    SetRecord("StaffStyleAssign", staff, inci,
              {{"Style", style},
               {"StartMeas", from},
               {"StartEdu", 0},
               {"EndMeas", to},
               {"EndEdu", 0x7FFFFFFF}});
  }
};

// Staves under a brace become one part when they stay alike and at most one source names them.
TEST_F(PartListTest, StavesAndGroupsBecomeParts) {
  struct Case {
    std::string Name;
    std::vector<StaffOptions> Staves;
    std::vector<GroupOptions> Groups;
    std::vector<std::string> Expected;
    std::vector<int> StavesOfParts;
  } cases[] = {
      {"piano named on the brace",
       {{}, {}},
       {Group(1, 2, kBrace, "Piano", "Pno.")},
       {"P1 Piano/Pno."},
       {2}},
      {"piano named on one staff",
       {Staff("Piano", "Pno."), {}},
       {Group(1, 2, kBrace)},
       {"P1 Piano/Pno."},
       {2}},
      {"piano named on the lower staff",
       {{}, Staff("Piano")},
       {Group(1, 2, kBrace)},
       {"P1 Piano"},
       {2}},
      {"two named staves under a brace",
       {Staff("Violin"), Staff("Viola")},
       {Group(1, 2, kBrace)},
       {"start 1 brace", "P1 Violin", "P2 Viola", "stop 1"},
       {1, 1}},
      {"a named brace over a named staff",
       {Staff("Right"), {}},
       {Group(1, 2, kBrace, "Piano")},
       {"start 1 brace Piano", "P1 Right", "P2 MusicXML Part", "stop 1"},
       {1, 1}},
      {"a hidden group name is still written",
       {Staff("Violin"), Staff("Viola")},
       {Group(1, 2, kBrace, "Strings", "Str.")},
       {"start 1 brace Strings/Str.", "P1 Violin", "P2 Viola", "stop 1"},
       {1, 1}},
      {"all nameless",
       {{}, Staff(" "), {}},
       {},
       {"P1 MusicXML Part", "P2 MusicXML Part", "P3 MusicXML Part"},
       {1, 1, 1}},
      {"a nameless group without bracket writes nothing",
       {Staff("A"), Staff("B")},
       {Group(1, 2, 0)},
       {"P1 A", "P2 B"},
       {1, 1}},
      {"a group without bracket names its nameless staff",
       {{}, Staff("B")},
       {Group(1, 1, 0, "Flute", "Fl.")},
       {"P1 Flute/Fl.", "P2 B"},
       {1, 1}},
      {"a group without bracket over a named staff is written",
       {Staff("A"), Staff("B")},
       {Group(1, 1, 0, "Solo")},
       {"start 1 Solo", "P1 A", "stop 1", "P2 B"},
       {1, 1}},
      {"a group without bracket over two staves is written",
       {Staff("A"), Staff("B")},
       {Group(1, 2, 0, "Duo")},
       {"start 1 Duo", "P1 A", "P2 B", "stop 1"},
       {1, 1}},
      {"symbols and levels",
       {Staff("A"), Staff("B"), Staff("C"), Staff("D")},
       {Group(1, 4, kBracket, "All"), Group(1, 2, kLine), Group(3, 4, 5), Group(4, 4, 7)},
       {"start 1 bracket All", "start 2 line", "P1 A", "P2 B", "stop 2", "start 2 brace", "P3 C",
        "start 3 bracket", "P4 D", "stop 3", "stop 2", "stop 1"},
       {1, 1, 1, 1}},
      {"a merged brace and its twin",
       {{}, {}},
       {Group(1, 2, kBrace, "Piano"), Group(1, 2, kBrace, "Twin")},
       {"start 1 brace Twin", "P1 Piano", "stop 1"},
       {2}},
      {"twin braces over named staves",
       {Staff("A"), Staff("B")},
       {Group(1, 2, kBrace), Group(1, 2, kBrace, "Twin")},
       {"start 1 brace", "start 2 brace Twin", "P1 A", "P2 B", "stop 2", "stop 1"},
       {1, 1}},
      {"a brace over floating staves",
       {{}, {}},
       {Group(1, 2, kBrace, "Piano")},
       {"start 1 brace Piano", "P1 MusicXML Part", "P2 MusicXML Part", "stop 1"},
       {1, 1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    for (const StaffOptions& staff : c.Staves)
      Builder.AddStaff(staff);
    for (const GroupOptions& group : c.Groups)
      Builder.AddGroup(group);
    if (c.Name == "a hidden group name is still written")
      SetRecord("GroupSpec", 0, 1,
                {{"StartInst", 1},
                 {"EndInst", 2},
                 {"BracketID", kBrace},
                 {"Flag", static_cast<int16_t>(0x8000)}});
    if (c.Name == "a brace over floating staves")
      SetRecord("StaffSpec", 2, 0, {{"Instflag", 0x4000}});
    AddMeasures(2);
    ExportOk();
    EXPECT_EQ(PartList(), c.Expected);
    std::vector<int> staves;
    xml::XmlNodeList parts = Score->documentElement().selectNodes("part");
    for (int32_t i = 0; i < parts.length(); ++i) {
      xml::XmlNode count = parts.item(i).selectSingleNode("measure[1]/attributes/staves");
      staves.push_back(count ? std::stoi(count.text()) : 1);
      EXPECT_EQ(parts.item(i).getAttribute("id"), "P" + std::to_string(i + 1));
    }
    EXPECT_EQ(staves, c.StavesOfParts);
  }
}

TEST_F(PartListTest, MergedStavesHaveNumberedClefs) {
  Staves({Staff("Piano", "", kTrebleClef), Staff("", "", kBassClef)});
  Builder.AddGroup(Group(1, 2, kBrace));
  AddMeasures(1);
  ExportOk();
  EXPECT_EQ(Children("part/measure/attributes"),
            (std::vector<std::string>{"divisions", "key", "time", "staves", "clef", "clef"}));
  EXPECT_EQ(FlatNode("part/measure/attributes/clef[1]"),
            "<clef number=\"1\"><sign>G</sign><line>2</line></clef>");
  EXPECT_EQ(FlatNode("part/measure/attributes/clef[2]"),
            "<clef number=\"2\"><sign>F</sign><line>4</line></clef>");
}

// A staff that changes its transposition by a staff style cannot share a part.
TEST_F(PartListTest, RangeCheckFollowsStaffStyles) {
  struct Case {
    std::string Name;
    std::function<void()> Arrange;
    bool Expected;
  } cases[] = {
      {"alike", [] {}, true},
      {"transposition from the start",
       [&] {
         SetRecord("StaffSpec", 2, 0, {{"Transposition", kTransposeBFlat}});
       },
       false},
      {"transposition changed by a style in measure 3",
       [&] {
         SetRecord("StaffStyle", 1, 0, {{"Mask1", 0x100}, {"Transposition", kTransposeBFlat}});
         AssignStyle(2, 0, 1, 3, 4);
       },
       false},
      {"the same style on both staves",
       [&] {
         SetRecord("StaffStyle", 1, 0, {{"Mask1", 0x100}, {"Transposition", kTransposeBFlat}});
         AssignStyle(1, 0, 1, 3, 4);
         AssignStyle(2, 0, 1, 3, 4);
       },
       true},
      {"the same style ending apart inside a measure",
       [&] {
         SetRecord("StaffStyle", 1, 0, {{"Mask1", 0x100}, {"Transposition", kTransposeBFlat}});
         AssignStyle(1, 0, 1, 3, 4);
         SetRecord(
             "StaffStyleAssign", 2, 0,
             {{"Style", 1}, {"StartMeas", 3}, {"StartEdu", 0}, {"EndMeas", 4}, {"EndEdu", 1023}});
       },
       false},
      {"a style that changes only the notation",
       [&] {
         SetRecord("StaffStyle", 1, 0, {{"Mask2", 0x1000}, {"AltFlag", 1}});
         AssignStyle(2, 0, 1, 2, 2);
       },
       true},
      {"floating keys",
       [&] {
         SetRecord("StaffSpec", 1, 0, {{"Instflag", static_cast<int16_t>(0x8000)}});
       },
       false},
      {"floating time",
       [&] {
         SetRecord("StaffSpec", 2, 0, {{"Instflag", 0x4000}});
       },
       false},
      {"a percussion staff",
       [&] {
         SetRecord("StaffSpec", 2, 0, {{"Flag", 0x2000}});
       },
       false},
      {"two tablature staves",
       [&] {
         SetRecord("StaffSpec", 1, 0, {{"Flag", 0x200}, {"FretInstID", 1}});
         SetRecord("StaffSpec", 2, 0, {{"Flag", 0x200}, {"FretInstID", 1}});
       },
       false},
      {"one tablature staff",
       [&] {
         SetRecord("StaffSpec", 2, 0, {{"Flag", 0x200}, {"FretInstID", 1}});
       },
       true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    Staves({{}, {}});
    Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
    AddMeasures(5);
    c.Arrange();
    HostSim().Open(Builder.Build());
    ToXml engine;
    ToXmlTestAccess access{engine};
    access.ReadPartList();
    EXPECT_EQ(access.RangeCheck(1, 2), c.Expected);
    EXPECT_EQ(access.NumberOfParts(), c.Expected ? 1 : 2);
    EXPECT_FALSE(access.RangeCheck(2, 1)) << "an empty range";
    EXPECT_EQ(access.RangeCheck(1, 1), c.Name != "floating keys");
  }
}

TEST_F(PartListTest, FindXmlPartByStaff) {
  Staves({{}, {}, Staff("Flute")});
  Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
  AddMeasures(1);
  HostSim().Open(Builder.Build());
  ToXml engine;
  ToXmlTestAccess access{engine};
  access.ReadPartList();
  ASSERT_EQ(access.NumberOfParts(), 2);
  const std::pair<int16_t, int16_t> cases[] = {{1, 1}, {2, 1}, {3, 2}, {4, 0}, {0, 0}};
  for (const auto& [staff, part] : cases) {
    XmlPart* found = access.FindXmlPart(staff);
    EXPECT_EQ(found ? found->Number : 0, part) << staff;
  }
}

TEST_F(PartListTest, InstrumentsOfAPart) {
  // A piano of two staves on one sound, a flute, and a clarinet whose second layer plays
  // another sound.
  Staves({Staff("", "", kTrebleClef, 0, Midi("Piano", 1)),
          Staff("", "", kBassClef, 0, Midi("Piano", 1)),
          Staff("Flute", "", kTrebleClef, 0, Midi("Flute", 74)),
          Staff("Clarinet", "", kTrebleClef, kTransposeBFlat, Midi("Clarinet", 72)),
          Staff("Strings", "", kTrebleClef, 0, Midi("Strings", 49))});
  Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
  Builder.SetBlock("PatchList", {4, 0, 0}, "Layers", {2, 3, 2, 2});
  AddMeasures(1);
  HostSim().Open(Builder.Build());
  ToXml engine;
  ToXmlTestAccess access{engine};
  access.ReadPartList();
  xml::XmlNode list = access.Root().selectSingleNode("part-list");
  EXPECT_EQ(Flat(list.selectSingleNode("score-part[@id='P1']")),
            "<score-part id=\"P1\"><part-name>Piano</part-name>"
            "<score-instrument id=\"P1-I1\"><instrument-name>Piano</instrument-name>"
            "</score-instrument><midi-instrument id=\"P1-I1\"><midi-channel>1</midi-channel>"
            "<midi-program>1</midi-program></midi-instrument></score-part>");
  EXPECT_EQ(access.Part(1).Instruments, 1);
  EXPECT_EQ(access.Part(1).LayerInstruments.at(2).at(3), "P1-I1");
  EXPECT_EQ(access.Part(1).ExpressionInstruments.at(2), "P1-I1");
  EXPECT_EQ(Flat(list.selectSingleNode("score-part[@id='P3']")),
            "<score-part id=\"P3\"><part-name>Clarinet</part-name>"
            "<score-instrument id=\"P3-I3\"><instrument-name>Clarinet</instrument-name>"
            "</score-instrument><score-instrument id=\"P3-I4\"><instrument-name>Strings"
            "</instrument-name></score-instrument><midi-instrument id=\"P3-I3\">"
            "<midi-channel>3</midi-channel><midi-program>72</midi-program></midi-instrument>"
            "<midi-instrument id=\"P3-I4\"><midi-channel>4</midi-channel>"
            "<midi-program>49</midi-program></midi-instrument></score-part>");
  EXPECT_EQ(access.Part(3).Instruments, 2);
  EXPECT_EQ(access.Part(3).LayerInstruments.at(1).at(0), "P3-I3");
  EXPECT_EQ(access.Part(3).LayerInstruments.at(1).at(1), "P3-I4");
  EXPECT_EQ(access.Part(3).ExpressionInstruments.at(1), "P3-I3");
  EXPECT_EQ(list.selectNodes(".//midi-device").length(), 0) << "one device names none";
}

// A part whose notes use one of its instruments keeps that one only, and loses its
// instruments element.
TEST_F(PartListTest, PruningLeavesTheInstrumentsInUse) {
  Staves({Staff("Clarinet", "", kTrebleClef, 0, Midi("Clarinet", 72)),
          Staff("Strings", "", kTrebleClef, 0, Midi("Strings", 49)),
          Staff("Oboe", "", kTrebleClef, 0, Midi("Oboe", 69))});
  Builder.SetBlock("PatchList", {1, 0, 0}, "Layers", {0, 1, 2, 0});
  AddMeasures(2);
  ExportOk();
  EXPECT_EQ(Count("part-list/score-part[@id='P1']/score-instrument"), 1);
  EXPECT_EQ(Count("part-list/score-part[@id='P1']/midi-instrument"), 1);
  EXPECT_EQ(Text("part-list/score-part[@id='P1']/score-instrument/@id"), "P1-I1");
  EXPECT_EQ(Count("part[@id='P1']//instruments"), 0);
  EXPECT_EQ(FlatNode("part-list/score-part/midi-instrument"),
            "<midi-instrument id=\"P1-I1\"><midi-channel>1</midi-channel>"
            "<midi-program>72</midi-program></midi-instrument>");
}

TEST_F(PartListTest, PruningByTheInstrumentsNamed) {
  struct Case {
    std::string Name;
    std::vector<std::string> Used; // ids named by instrument elements of the part
    std::string Count;             // the instruments element, "" for none
    std::vector<std::string> Kept;
    std::string CountAfter;
  } cases[] = {
      {"none named keeps the first", {}, "3", {"P1-I1"}, ""},
      {"one named", {"P1-I2"}, "3", {"P1-I2"}, ""},
      {"two named", {"P1-I1", "P1-I3"}, "3", {"P1-I1", "P1-I3"}, "2"},
      {"all named", {"P1-I1", "P1-I2", "P1-I3"}, "3", {"P1-I1", "P1-I2", "P1-I3"}, "3"},
      {"no count", {"P1-I3"}, "", {"P1-I3"}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    Staves({Staff("Clarinet", "", kTrebleClef, 0, Midi("Clarinet", 72)),
            Staff("Strings", "", kTrebleClef, 0, Midi("Strings", 49)),
            Staff("Oboe", "", kTrebleClef, 0, Midi("Oboe", 69))});
    Builder.SetBlock("PatchList", {1, 0, 0}, "Layers", {0, 1, 2, 0});
    AddMeasures(1);
    HostSim().Open(Builder.Build());
    ToXml engine;
    ToXmlTestAccess access{engine};
    access.ReadPartList();
    XmlPart& part = access.Part(1);
    ASSERT_EQ(part.Instruments, 3);
    xml::XmlNode measure = part.Part().appendChild(access.Element("measure"));
    xml::XmlNode attributes = measure.appendChild(access.Element("attributes"));
    if (!c.Count.empty()) attributes.appendChild(access.Element("instruments")).text(c.Count);
    for (const std::string& id : c.Used) {
      xml::XmlNode note = measure.appendChild(access.Element("note"));
      note.appendChild(access.Element("instrument")).setAttribute("id", id);
    }
    access.PruneInstruments(part);
    std::vector<std::string> kept;
    xml::XmlNodeList instruments = part.ScorePart().selectNodes("score-instrument");
    for (int32_t i = 0; i < instruments.length(); ++i)
      kept.push_back(instruments.item(i).getAttribute("id"));
    EXPECT_EQ(kept, c.Kept);
    EXPECT_EQ(part.ScorePart().selectNodes("midi-instrument").length(),
              static_cast<int32_t>(c.Kept.size()));
    xml::XmlNode count = part.Part().selectSingleNode(".//instruments");
    EXPECT_EQ(count ? count.text() : "", c.CountAfter);
  }
}

TEST_F(PartListTest, DevicesAreNamedOnlyWhenThereAreSeveral) {
  struct Case {
    std::string Name;
    std::string Ini;
    std::vector<int16_t> Channels; // of the three staves
    std::vector<std::string> Devices;
  } cases[] = {
      {"no device list", "", {1, 2, 17}, {}},
      {"one device", "[MMEDRVR]\nOutName1=Synth A\nOutBase1=1\n", {1, 2, 17}, {}},
      {"two devices in use",
       "[MMEDRVR]\nOutName1=Synth A\nOutBase1=1\nOutName2=Synth B\nOutBase2=17\n",
       {1, 2, 17},
       {"P1 1 Synth A", "P2 1 Synth A", "P3 2 Synth B"}},
      {"two devices, one in use",
       "[MMEDRVR]\nOutName1=Synth A\nOutBase1=1\nOutName2=Synth B\nOutBase2=17\n",
       {1, 2, 3},
       {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    std::filesystem::remove(Path("config/ostinlight/FinMidi.ini"));
    if (!c.Ini.empty()) Write(Path("config/ostinlight/FinMidi.ini"), c.Ini);
    for (size_t i = 0; i < c.Channels.size(); ++i)
      Builder.AddStaff({"S" + std::to_string(i + 1), "", kTrebleClef, 0,
                        Sound{"Sound " + std::to_string(i + 1), 1, c.Channels[i]}});
    AddMeasures(1);
    ExportOk();
    std::vector<std::string> devices;
    xml::XmlNodeList found = Score->documentElement().selectNodes("part-list//midi-device");
    for (int32_t i = 0; i < found.length(); ++i)
      devices.push_back(found.item(i).parentNode().getAttribute("id") + " " +
                        found.item(i).getAttribute("port") + " " + found.item(i).text());
    EXPECT_EQ(devices, c.Devices);
  }
}

class FinaleChannelsTest : public testing::HostTest {
protected:
  // The channel map of a device list; "name port channel" of each index asked for.
  std::vector<std::string> Map(const std::string& ini, std::initializer_list<int16_t> indices,
                               bool& multiDevice) {
    std::filesystem::remove(Path("config/ostinlight/FinMidi.ini"));
    if (!ini.empty()) Write(Path("config/ostinlight/FinMidi.ini"), "[MMEDRVR]\n" + ini);
    FinaleChannels channels;
    channels.Initialize();
    multiDevice = channels.MultiDevice;
    std::vector<std::string> map;
    for (int16_t index : indices) {
      EXPECT_TRUE(channels.Assigned(index));
      map.push_back(channels.DeviceName(index) + " " + std::to_string(channels.Port(index)) + " " +
                    std::to_string(channels.Channel(index)));
    }
    return map;
  }
};

TEST_F(FinaleChannelsTest, DevicesFromTheList) {
  struct Case {
    std::string Name, Ini;
    bool MultiDevice;
    std::vector<std::string> Map; // of channels 1, 16, 17, 33, 60 and 64
  } cases[] = {
      {"no list", "", false, {" 0 1", " 0 16", " 1 1", " 2 1", " 3 12", " 3 16"}},
      {"one device",
       "OutName1=Synth\nOutBase1=1\n",
       false,
       {"Synth 1 1", "Synth 1 16", " 1 1", " 2 1", " 3 12", " 3 16"}},
      {"two devices",
       "OutName1=Alpha\nOutBase1=1\nOutName2=Beta\nOutBase2=17\n",
       true,
       {"Alpha 1 1", "Alpha 1 16", "Beta 2 1", " 2 1", " 3 12", " 3 16"}},
      {"a device near the end",
       "OutName1=Late\nOutBase1=60\n",
       false,
       {" 0 1", " 0 16", " 1 1", " 2 1", "Late 1 1", "Late 1 5"}},
      {"overlapping devices keep the first",
       "OutName1=Alpha\nOutBase1=1\nOutName2=Beta\nOutBase2=9\n",
       true,
       {"Alpha 1 1", "Alpha 1 16", "Beta 2 9", " 2 1", " 3 12", " 3 16"}},
      {"skipped devices are not counted",
       "OutName1=(none)\nOutBase1=1\nOutName2=X\nOutBase2=1\nOutName3=C\nOutBase3=0\n"
       "OutName4=D\nOutBase4=65\nOutName5=E\nOutBase5=x\nOutName6=Foxtrot\nOutBase6=17\n",
       false,
       {" 0 1", " 0 16", "Foxtrot 1 1", " 2 1", " 3 12", " 3 16"}},
      {"a missing name ends the list",
       "OutName1=Alpha\nOutBase1=1\nOutName3=Gamma\nOutBase3=17\n",
       false,
       {"Alpha 1 1", "Alpha 1 16", " 1 1", " 2 1", " 3 12", " 3 16"}},
  };
  for (const Case& c : cases) {
    bool multiDevice = false;
    EXPECT_EQ(Map(c.Ini, {1, 16, 17, 33, 60, 64}, multiDevice), c.Map) << c.Name;
    EXPECT_EQ(multiDevice, c.MultiDevice) << c.Name;
  }
}

TEST_F(FinaleChannelsTest, FirstChannelOfADevice) {
  Write(Path("config/ostinlight/FinMidi.ini"),
        "[MMEDRVR]\nOutName1=Alpha\nOutBase1=5\nOutName2=Beta\nOutBase2=33\n");
  FinaleChannels channels;
  channels.Initialize();
  EXPECT_EQ(channels.First("Beta", 0), 33);
  EXPECT_EQ(channels.First("Alpha", 2), 5);
  EXPECT_EQ(channels.First("", 2), 33);
  EXPECT_EQ(channels.First("Unknown", 1), 5);
  EXPECT_EQ(channels.First("", 0), 1);
  EXPECT_EQ(channels.First("", 9), 1);
}

TEST_F(FinaleChannelsTest, IndexOutOfRangeIsAnInternalFailure) {
  FinaleChannels channels;
  channels.Initialize();
  for (int16_t index : {0, 65, -1}) {
    try {
      (void)channels.Port(index);
      ADD_FAILURE() << index;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number, Code(0x80040617));
      EXPECT_EQ(failure.Description, "MusicXML internal error");
    }
  }
  EXPECT_NE(Log().find("FinaleChannels Get Port subscript must be between 1 and 64, not 65"),
            std::string::npos)
      << Log();
}

} // namespace
} // namespace ostin
