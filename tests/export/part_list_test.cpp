// Staves and groups into parts and part groups, the instruments of the parts, and the MIDI
// devices their channels name.
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
  std::string PartList() const {
    std::string list;
    xml::XmlNodeList children = Node("part-list").selectNodes("*");
    for (xml::XmlNode child = children.nextNode(); child; child = children.nextNode()) {
      std::string item = child.nodeName() == "score-part"
                             ? child.getAttribute("id")
                             : child.getAttribute("type") + " " + child.getAttribute("number");
      for (const char* name : {"part-name", "group-symbol", "group-name"})
        if (xml::XmlNode node = child.selectSingleNode(name)) item += " " + node.text();
      for (const char* name : {"part-abbreviation", "group-abbreviation"})
        if (xml::XmlNode node = child.selectSingleNode(name)) item += "/" + node.text();
      list += (list.empty() ? "" : ", ") + item;
    }
    return list;
  }
  // Opens the built score and reads its part list with the engine.
  void OpenPartList() {
    HostSim().Open(Builder.Build());
    Access.ReadPartList();
  }
  // A clarinet, strings and an oboe; the clarinet's second layer plays the strings' sound and
  // its third the oboe's.
  void ThreeSounds() {
    for (const auto& [name, program] :
         {std::pair<const char*, int16_t>{"Clarinet", 72}, {"Strings", 49}, {"Oboe", 69}})
      Builder.AddStaff(Staff(name, "", kTrebleClef, 0, Midi(name, program)));
    Builder.SetBlock("PatchList", {1, 0, 0}, "Layers", {0, 1, 2, 0});
  }

  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

// Staves under a brace become one part when they stay alike and at most one source names them.
TEST_F(PartListTest, StavesAndGroupsBecomeParts) {
  // The staves and groups of a score, and what else it holds; its part list and the staves
  // of each part.
  auto check = [&](const std::string& name, std::vector<StaffOptions> staves,
                   std::vector<GroupOptions> groups, const std::string& list,
                   const std::string& stavesOfParts, const std::function<void()>& more = {}) {
    SCOPED_TRACE(name);
    StartScore();
    for (const StaffOptions& staff : staves)
      Builder.AddStaff(staff);
    for (const GroupOptions& group : groups)
      Builder.AddGroup(group);
    if (more) more();
    AddMeasures(2);
    ExportOk();
    EXPECT_EQ(PartList(), list);
    std::string counts;
    xml::XmlNodeList parts = Score->documentElement().selectNodes("part");
    for (int32_t i = 0; i < parts.length(); ++i) {
      xml::XmlNode count = parts.item(i).selectSingleNode("measure[1]/attributes/staves");
      counts += (i ? " " : "") + (count ? count.text() : "1");
      EXPECT_EQ(parts.item(i).getAttribute("id"), "P" + std::to_string(i + 1));
    }
    EXPECT_EQ(counts, stavesOfParts);
  };
  const auto floating = [&] { SetRecord("StaffSpec", 2, 0, {{"Instflag", 0x4000}}); };
  const auto hidden = [&] {
    SetRecord("GroupSpec", 0, 1, {{"Flag", static_cast<int16_t>(0x8000)}});
  };
  const StaffOptions a = Staff("A"), b = Staff("B");
  // clang-format off
  check("piano named on the brace", {{}, {}}, {Group(1, 2, kBrace, "Piano", "Pno.")}, "P1 Piano/Pno.", "2");
  check("piano named on one staff", {Staff("Piano", "Pno."), {}}, {Group(1, 2, kBrace)}, "P1 Piano/Pno.", "2");
  check("piano named on the lower staff", {{}, Staff("Piano")}, {Group(1, 2, kBrace)}, "P1 Piano", "2");
  check("two named staves under a brace", {Staff("Violin"), Staff("Viola")}, {Group(1, 2, kBrace)},
        "start 1 brace, P1 Violin, P2 Viola, stop 1", "1 1");
  check("a named brace over a named staff", {Staff("Right"), {}}, {Group(1, 2, kBrace, "Piano")},
        "start 1 brace Piano, P1 Right, P2 MusicXML Part, stop 1", "1 1");
  check("a hidden group name is still written", {Staff("Violin"), Staff("Viola")},
        {Group(1, 2, kBrace, "Strings", "Str.")}, "start 1 brace Strings/Str., P1 Violin, P2 Viola, stop 1", "1 1", hidden);
  check("all nameless", {{}, Staff(" "), {}}, {}, "P1 MusicXML Part, P2 MusicXML Part, P3 MusicXML Part", "1 1 1");
  check("a nameless group without bracket writes nothing", {a, b}, {Group(1, 2, 0)}, "P1 A, P2 B", "1 1");
  check("a group without bracket names its nameless staff", {{}, b}, {Group(1, 1, 0, "Flute", "Fl.")}, "P1 Flute/Fl., P2 B", "1 1");
  check("a group without bracket over a named staff is written", {a, b}, {Group(1, 1, 0, "Solo")}, "start 1 Solo, P1 A, stop 1, P2 B", "1 1");
  check("a group without bracket over two staves is written", {a, b}, {Group(1, 2, 0, "Duo")}, "start 1 Duo, P1 A, P2 B, stop 1", "1 1");
  check("symbols and levels", {a, b, Staff("C"), Staff("D")},
        {Group(1, 4, kBracket, "All"), Group(1, 2, kLine), Group(3, 4, 5), Group(4, 4, 7)},
        "start 1 bracket All, start 2 line, P1 A, P2 B, stop 2, start 2 brace, P3 C, start 3 bracket, P4 D, stop 3, stop 2, stop 1", "1 1 1 1");
  check("a merged brace and its twin", {{}, {}}, {Group(1, 2, kBrace, "Piano"), Group(1, 2, kBrace, "Twin")},
        "start 1 brace Twin, P1 Piano, stop 1", "2");
  check("twin braces over named staves", {a, b}, {Group(1, 2, kBrace), Group(1, 2, kBrace, "Twin")},
        "start 1 brace, start 2 brace Twin, P1 A, P2 B, stop 2, stop 1", "1 1");
  check("a brace over floating staves", {{}, {}}, {Group(1, 2, kBrace, "Piano")},
        "start 1 brace Piano, P1 MusicXML Part, P2 MusicXML Part, stop 1", "1 1", floating);
  // clang-format on
}

TEST_F(PartListTest, MergedStavesHaveNumberedClefs) {
  Builder.AddStaff(Staff("Piano", "", kTrebleClef));
  Builder.AddStaff(Staff("", "", kBassClef));
  Builder.AddGroup(Group(1, 2, kBrace));
  AddMeasures(1);
  ExportOk();
  EXPECT_EQ(FlatNode("part/measure/attributes"),
            "<attributes><divisions>1</divisions><key><fifths>0</fifths><mode>major</mode>"
            "</key><time><beats>4</beats><beat-type>4</beat-type></time><staves>2</staves>"
            "<clef number=\"1\"><sign>G</sign><line>2</line></clef><clef number=\"2\">"
            "<sign>F</sign><line>4</line></clef></attributes>");
}

// A staff that changes its transposition by a staff style cannot share a part.
TEST_F(PartListTest, RangeCheckFollowsStaffStyles) {
  // Two staves under a brace: whether they make one part, and whether staff 1 passes alone.
  auto check = [&](const std::string& name, bool together, bool alone,
                   const std::function<void()>& arrange) {
    SCOPED_TRACE(name);
    StartScore(2, 5);
    Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
    arrange();
    HostSim().Open(Builder.Build());
    ToXml engine;
    ToXmlTestAccess access{engine};
    access.ReadPartList();
    EXPECT_EQ(access.RangeCheck(1, 2), together);
    EXPECT_EQ(access.NumberOfParts(), together ? 1 : 2);
    EXPECT_FALSE(access.RangeCheck(2, 1)) << "an empty range";
    EXPECT_EQ(access.RangeCheck(1, 1), alone);
  };
  auto spec = [&](int16_t staff, std::initializer_list<std::pair<const char*, int32_t>> fields) {
    SetRecord("StaffSpec", staff, 0, fields);
  };
  // clang-format off
  check("alike", true, true, [] {});
  check("transposition from the start", false, true, [&] { spec(2, {{"Transposition", kTransposeBFlat}}); });
  check("transposition changed by a style in measure 3", false, true, [&] { BFlatStyle(); AssignStyle(2, 0, 1, 3, 4); });
  check("the same style on both staves", true, true, [&] { BFlatStyle(); AssignStyle(1, 0, 1, 3, 4); AssignStyle(2, 0, 1, 3, 4); });
  check("the same style ending apart inside a measure", false, true,
        [&] { BFlatStyle(); AssignStyle(1, 0, 1, 3, 4); AssignStyle(2, 0, 1, 3, 4, 1023); });
  check("a style that changes only the notation", true, true,
        [&] { SetRecord("StaffStyle", 1, 0, {{"Mask2", 0x1000}, {"AltFlag", 1}}); AssignStyle(2, 0, 1, 2, 2); });
  check("floating keys", false, false, [&] { spec(1, {{"Instflag", static_cast<int16_t>(0x8000)}}); });
  check("floating time", false, true, [&] { spec(2, {{"Instflag", 0x4000}}); });
  check("a percussion staff", false, true, [&] { spec(2, {{"Flag", 0x2000}}); });
  check("two tablature staves", false, true, [&] { spec(1, {{"Flag", 0x200}, {"FretInstID", 1}}); spec(2, {{"Flag", 0x200}, {"FretInstID", 1}}); });
  check("one tablature staff", true, true, [&] { spec(2, {{"Flag", 0x200}, {"FretInstID", 1}}); });
  // clang-format on
}

TEST_F(PartListTest, FindXmlPartByStaff) {
  StartScore(2, 1);
  Builder.AddStaff(Staff("Flute"));
  Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
  OpenPartList();
  ASSERT_EQ(Access.NumberOfParts(), 2);
  const std::pair<int16_t, int16_t> cases[] = {{1, 1}, {2, 1}, {3, 2}, {4, 0}, {0, 0}};
  for (const auto& [staff, part] : cases) {
    XmlPart* found = Access.FindXmlPart(staff);
    EXPECT_EQ(found ? found->Number : 0, part) << staff;
  }
}

TEST_F(PartListTest, InstrumentsOfAPart) {
  // A piano of two staves on one sound, a flute, and a clarinet whose second layer plays
  // another sound.
  Builder.AddStaff(Staff("", "", kTrebleClef, 0, Midi("Piano", 1)));
  Builder.AddStaff(Staff("", "", kBassClef, 0, Midi("Piano", 1)));
  Builder.AddStaff(Staff("Flute", "", kTrebleClef, 0, Midi("Flute", 74)));
  Builder.AddStaff(Staff("Clarinet", "", kTrebleClef, kTransposeBFlat, Midi("Clarinet", 72)));
  Builder.AddStaff(Staff("Strings", "", kTrebleClef, 0, Midi("Strings", 49)));
  Builder.AddGroup(Group(1, 2, kBrace, "Piano"));
  Builder.SetBlock("PatchList", {4, 0, 0}, "Layers", {2, 3, 2, 2});
  AddMeasures(1);
  OpenPartList();
  xml::XmlNode list = Access.Root().selectSingleNode("part-list");
  EXPECT_EQ(Flat(list.selectSingleNode("score-part[@id='P1']")),
            "<score-part id=\"P1\"><part-name>Piano</part-name>"
            "<score-instrument id=\"P1-I1\"><instrument-name>Piano</instrument-name>"
            "</score-instrument><midi-instrument id=\"P1-I1\"><midi-channel>1</midi-channel>"
            "<midi-program>1</midi-program></midi-instrument></score-part>");
  // Instruments; those of layers 4 of staff 2, 1 and 2 of staff 1; of expressions on staves 2, 1.
  const auto instruments = [&](int16_t p, int16_t staff, int16_t layer1, int16_t layer2) {
    const XmlPart& part = Access.Part(p);
    return std::to_string(part.Instruments) + " " + part.LayerInstruments.at(staff).at(layer1) +
           " " + part.LayerInstruments.at(staff).at(layer2) + " " +
           part.ExpressionInstruments.at(staff);
  };
  EXPECT_EQ(instruments(1, 2, 3, 3), "1 P1-I1 P1-I1 P1-I1");
  EXPECT_EQ(Flat(list.selectSingleNode("score-part[@id='P3']")),
            "<score-part id=\"P3\"><part-name>Clarinet</part-name>"
            "<score-instrument id=\"P3-I3\"><instrument-name>Clarinet</instrument-name>"
            "</score-instrument><score-instrument id=\"P3-I4\"><instrument-name>Strings"
            "</instrument-name></score-instrument><midi-instrument id=\"P3-I3\">"
            "<midi-channel>3</midi-channel><midi-program>72</midi-program></midi-instrument>"
            "<midi-instrument id=\"P3-I4\"><midi-channel>4</midi-channel>"
            "<midi-program>49</midi-program></midi-instrument></score-part>");
  EXPECT_EQ(instruments(3, 1, 0, 1), "2 P3-I3 P3-I4 P3-I3");
  EXPECT_EQ(list.selectNodes(".//midi-device").length(), 0) << "one device names none";
}

// A whole run prunes: a part without notes keeps its first instrument, and loses its
// instruments element.
TEST_F(PartListTest, RunPrunesTheInstrumentsNotInUse) {
  ThreeSounds();
  AddMeasures(2);
  ExportOk();
  EXPECT_EQ(Children("part-list/score-part[@id='P1']"),
            (std::vector<std::string>{"part-name", "score-instrument", "midi-instrument"}));
  EXPECT_EQ(Text("part-list/score-part[@id='P1']/score-instrument/@id"), "P1-I1");
  EXPECT_EQ(Count("part[@id='P1']//instruments"), 0);
}

TEST_F(PartListTest, PruningByTheInstrumentsNamed) {
  struct Case {
    std::string Name;
    std::vector<std::string> Used; // ids named by instrument elements of the part
    std::string Count;             // the instruments element, "" for none
    std::vector<std::string> Kept;
    std::string CountAfter;
  } cases[] = {{"none named keeps the first", {}, "3", {"P1-I1"}, "(none)"},
               {"one named", {"P1-I2"}, "3", {"P1-I2"}, "(none)"},
               {"two named", {"P1-I1", "P1-I3"}, "3", {"P1-I1", "P1-I3"}, "2"},
               {"all named", {"P1-I1", "P1-I2", "P1-I3"}, "3", {"P1-I1", "P1-I2", "P1-I3"}, "3"},
               {"no count", {"P1-I3"}, "", {"P1-I3"}, "(none)"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    StartScore();
    ThreeSounds();
    AddMeasures(1);
    HostSim().Open(Builder.Build());
    ToXml engine;
    ToXmlTestAccess access{engine};
    access.ReadPartList();
    XmlPart& part = access.Part(1);
    ASSERT_EQ(part.Instruments, 3);
    xml::XmlNode measure = part.Part().appendChild(access.Element("measure"));
    xml::XmlNode attributes = measure.appendChild(access.Element("attributes"));
    if (!c.Count.empty()) attributes.appendChild(access.Element("instruments", c.Count));
    for (const std::string& id : c.Used)
      measure.appendChild(access.Element("note"))
          .appendChild(access.Element("instrument"))
          .setAttribute("id", id);
    access.PruneInstruments(part);
    EXPECT_EQ(testing::Texts(part.ScorePart(), "score-instrument/@id"), c.Kept);
    EXPECT_EQ(testing::Texts(part.ScorePart(), "midi-instrument/@id"), c.Kept);
    EXPECT_EQ(testing::Joined(part.Part(), ".//instruments"), c.CountAfter);
  }
}

TEST_F(PartListTest, DevicesAreNamedOnlyWhenThereAreSeveral) {
  const std::string two =
      "[MMEDRVR]\nOutName1=Synth A\nOutBase1=1\nOutName2=Synth B\nOutBase2=17\n";
  struct Case {
    std::string Name, Ini;
    std::vector<int16_t> Channels; // of the three staves
    std::string Devices;
  } cases[] = {{"no device list", "", {1, 2, 17}, ""},
               {"one device", "[MMEDRVR]\nOutName1=Synth A\nOutBase1=1\n", {1, 2, 17}, ""},
               {"two devices in use", two, {1, 2, 17}, "P1 1 Synth A, P2 1 Synth A, P3 2 Synth B"},
               {"two devices, one in use", two, {1, 2, 3}, ""}};
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
    std::string devices;
    xml::XmlNodeList found = Score->documentElement().selectNodes("part-list//midi-device");
    for (xml::XmlNode device = found.nextNode(); device; device = found.nextNode())
      devices += (devices.empty() ? "" : ", ") + device.parentNode().getAttribute("id") + " " +
                 device.getAttribute("port") + " " + device.text();
    EXPECT_EQ(devices, c.Devices);
  }
}

class FinaleChannelsTest : public testing::HostTest {
protected:
  // Channels read from a device list.
  FinaleChannels From(const std::string& ini) {
    std::filesystem::remove(Path("config/ostinlight/FinMidi.ini"));
    if (!ini.empty()) Write(Path("config/ostinlight/FinMidi.ini"), "[MMEDRVR]\n" + ini);
    FinaleChannels channels;
    channels.Initialize();
    return channels;
  }
};

TEST_F(FinaleChannelsTest, DevicesFromTheList) {
  struct Case {
    std::string Name, Ini;
    bool MultiDevice;
    std::string Map; // "name port channel" of channels 1, 16, 17, 33, 60 and 64
  } cases[] = {{"no list", "", false, " 0 1| 0 16| 1 1| 2 1| 3 12| 3 16"},
               {"one device", "OutName1=Synth\nOutBase1=1\n", false,
                "Synth 1 1|Synth 1 16| 1 1| 2 1| 3 12| 3 16"},
               {"two devices", "OutName1=Alpha\nOutBase1=1\nOutName2=Beta\nOutBase2=17\n", true,
                "Alpha 1 1|Alpha 1 16|Beta 2 1| 2 1| 3 12| 3 16"},
               {"a device near the end", "OutName1=Late\nOutBase1=60\n", false,
                " 0 1| 0 16| 1 1| 2 1|Late 1 1|Late 1 5"},
               {"overlapping devices keep the first",
                "OutName1=Alpha\nOutBase1=1\nOutName2=Beta\nOutBase2=9\n", true,
                "Alpha 1 1|Alpha 1 16|Beta 2 9| 2 1| 3 12| 3 16"},
               {"skipped devices are not counted",
                "OutName1=(none)\nOutBase1=1\nOutName2=X\nOutBase2=1\nOutName3=C\nOutBase3=0\n"
                "OutName4=D\nOutBase4=65\nOutName5=E\nOutBase5=x\nOutName6=Foxtrot\nOutBase6=17\n",
                false, " 0 1| 0 16|Foxtrot 1 1| 2 1| 3 12| 3 16"},
               {"a missing name ends the list",
                "OutName1=Alpha\nOutBase1=1\nOutName3=Gamma\nOutBase3=17\n", false,
                "Alpha 1 1|Alpha 1 16| 1 1| 2 1| 3 12| 3 16"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.Name);
    FinaleChannels channels = From(c.Ini);
    std::string map;
    for (int16_t index : {1, 16, 17, 33, 60, 64}) {
      EXPECT_TRUE(channels.Assigned(index));
      map += (map.empty() ? "" : "|") + channels.DeviceName(index) + " " +
             std::to_string(channels.Port(index)) + " " + std::to_string(channels.Channel(index));
    }
    EXPECT_EQ(map, c.Map);
    EXPECT_EQ(channels.MultiDevice, c.MultiDevice);
  }
}

TEST_F(FinaleChannelsTest, IndexOutOfRangeIsAnInternalFailure) {
  FinaleChannels channels = From("");
  for (int16_t index : {0, 65, -1})
    EXPECT_EQ(testing::Raised([&] { (void)channels.Port(index); }),
              testing::Said(Code(0x80040617), "MusicXML internal error"))
        << index;
  EXPECT_THAT(Log(), ::testing::HasSubstr(
                         "FinaleChannels Get Port subscript must be between 1 and 64, not 65"));
}

} // namespace
} // namespace ostin
