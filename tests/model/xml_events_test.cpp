// Planning of MusicXML measures on import: staff, layer, start and length of each element,
// the entry counts, the two planners, fillers, and the failures and warnings of planning.

#include "model/xml_events.h"
#include "model/xml_part.h"
#include "model_test.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using namespace model_test;

// One event as "tag staff/display/layer start+duration flags"; E new entry, N new note,
// X no output, "-" none; a filler without element shows as "filler".
std::string Describe(const XmlEvent& e) {
  std::string flags =
      std::string(e.NewEntry ? "E" : "") + (e.NewNote ? "N" : "") + (e.NoOutput ? "X" : "");
  return (e.Element ? e.Element.tagName() : std::string("filler")) + " " + std::to_string(e.Staff) +
         "/" + std::to_string(e.DisplayStaff) + "/" + std::to_string(e.Layer) + " " +
         std::to_string(e.Start) + "+" + std::to_string(e.Duration) + " " +
         (flags.empty() ? "-" : flags);
}

class XmlEventsTest : public ModelTest {
protected:
  XmlEventsTest() : ModelTest("sample.json") {}

  // Measure building blocks: a note of a duration and type, with optional extra children.
  static std::string Note(int duration, const std::string& type, const std::string& more = "") {
    return "<note><pitch><step>C</step><octave>4</octave></pitch>" + Dur(duration) + more +
           "<type>" + type + "</type></note>";
  }
  static std::string Dur(int n) { return "<duration>" + std::to_string(n) + "</duration>"; }
  static std::string Voice(int n) { return "<voice>" + std::to_string(n) + "</voice>"; }
  static std::string Staff(int n) { return "<staff>" + std::to_string(n) + "</staff>"; }
  static std::string Backup(int n) { return "<backup>" + Dur(n) + "</backup>"; }
  static std::string Forward(int n, const std::string& more = "") {
    return "<forward>" + Dur(n) + more + "</forward>";
  }
  static std::string Rest(int n, const std::string& more = "") {
    return "<note><rest/>" + Dur(n) + more + "</note>";
  }

  // A part of that many staves over the measures given, its voices assigned.
  void Inline(const std::string& measures, int16_t staves = 1, int32_t divisions = 1) {
    Use(OnePart("", measures), staves, divisions);
  }
  void Use(std::shared_ptr<xml::XmlDocument> doc, int16_t staves, int32_t divisions) {
    doc_ = std::move(doc);
    part_ = std::make_unique<XmlPart>();
    part_->SetPart(doc_->documentElement().selectSingleNode("part"));
    part_->SetStaves(staves);
    part_->StartSlot = 3;
    part_->SetDivisions(divisions);
    part_->AssignVoices();
  }
  xml::XmlNode MeasureAt(int index) const {
    return part_->Part().selectNodes("measure").item(index - 1);
  }
  // Plans a measure as the importer does, its events joined by ", ": divisions of the
  // measure take effect afterwards.
  std::string PlanOf(int index) {
    const xml::XmlNode measure = MeasureAt(index);
    part_->MeasureNumber = measure.getAttribute("number");
    events_.Assign(measure, *part_);
    std::string plan;
    for (const XmlEvent& event : events_)
      plan += (plan.empty() ? "" : ", ") + Describe(event);
    if (xml::XmlNode divisions = measure.selectSingleNode("attributes/divisions"))
      part_->SetDivisions(std::stoi(divisions.text()));
    return plan;
  }
  // Entries of staff 1 and 2 in layers 0 to 3, then the visible ones: "1100 0000/1100 0000".
  std::string Counts() const {
    std::string counts;
    for (int visible = 0; visible < 2; ++visible)
      for (int16_t staff = 1; staff <= 2; ++staff) {
        counts += visible && staff == 1 ? "/" : staff == 2 ? " " : "";
        for (int16_t layer = 0; layer <= 3; ++layer) {
          const int n =
              visible ? events_.VisibleEntries(staff, layer) : events_.Entries(staff, layer);
          counts += n < 10 ? std::to_string(n) : "(" + std::to_string(n) + ")";
        }
      }
    return counts;
  }

  std::shared_ptr<xml::XmlDocument> doc_;
  std::unique_ptr<XmlPart> part_;
  XmlEvents events_;
};

TEST_F(XmlEventsTest, InlineMeasuresPlanByBackupsOrByVoices) {
  const std::string half = Note(2, "half"), whole = Note(4, "whole"), quarter = Note(1, "quarter");
  const struct {
    std::string What, Measure;
    int Divisions, MaxVoices, ByVoice;
    std::string Plan, Counts;
    int MaxDivisions;
  } cases[] = {
      // clang-format off
      {"a full backup opens layer 1 at the start", whole + Backup(4) + whole, 1, 0, false,
       "note 1/1/0 0+4096 EN, backup 1/1/0 4096+0 -, note 1/1/1 0+4096 EN",
       "1100 0000/1100 0000", 4},
      {"a backup answered by an equal forward is no move at all",
       quarter + quarter + Backup(2) + Forward(2) + quarter + quarter, 1, 0, false,
       "note 1/1/0 0+1024 EN, note 1/1/0 1024+1024 EN, backup 1/1/0 2048+0 X, "
       "forward 1/1/0 2048+0 X, note 1/1/0 2048+1024 EN, note 1/1/0 3072+1024 EN",
       "4000 0000/4000 0000", 4},
      {"a backup to where no layer stands becomes a filler in a new layer",
       whole + Backup(2) + half, 1, 0, false,
       "note 1/1/0 0+4096 EN, backup 1/1/1 4096+2048 E, note 1/1/1 0+2048 EN",
       "1200 0000/1100 0000", 4},
      {"a shorter forward after a backup shortens it",
       whole + Backup(4) + Forward(1) + Note(3, "half", "<dot/>"), 1, 0, false,
       "note 1/1/0 0+4096 EN, backup 1/1/1 4096+1024 E, forward 1/1/1 0+0 X, "
       "note 1/1/1 0+3072 EN", "1200 0000/1100 0000", 4},
      {"a backup to a used layer's end continues that layer",
       half + Backup(2) + whole + Backup(2) + half, 1, 0, false,
       "note 1/1/0 0+2048 EN, backup 1/1/0 2048+0 -, note 1/1/1 0+4096 EN, "
       "backup 1/1/1 4096+0 -, note 1/1/0 2048+2048 EN", "2100 0000/2100 0000", 4},
      {"with all layers in use, a backup fills the fullest layer short of its target",
       Note(8, "whole") + Backup(8) + Note(2, "quarter") + Backup(2) + Note(2, "quarter") +
       Backup(2) + Note(4, "half") + Backup(1) + Note(1, "eighth"), 2, 0, false,
       "note 1/1/0 0+4096 EN, backup 1/1/0 4096+0 -, note 1/1/1 0+1024 EN, "
       "backup 1/1/1 1024+0 -, note 1/1/2 0+1024 EN, backup 1/1/2 1024+0 -, "
       "note 1/1/3 0+2048 EN, backup 1/1/1 2048+512 E, note 1/1/1 1024+512 EN",
       "1311 0000/1211 0000", 8},
      {"a forward with a staff child doesn't answer the backup before it",
       whole + Backup(4) + Forward(2, Staff(1)) + half, 1, 0, false,
       "note 1/1/0 0+4096 EN, backup 1/1/0 4096+0 -, forward 1/1/1 0+2048 E, "
       "note 1/1/1 2048+2048 EN", "1200 0000/1100 0000", 4},
      {"hidden notes and rests count as entries but not as visible ones",
       quarter + "<note print-object='no'><rest/><duration>1</duration><type>quarter</type>"
       "</note>" + Rest(2), 1, 0, false,
       "note 1/1/0 0+1024 EN, note 1/1/0 1024+1024 E, note 1/1/0 2048+2048 E",
       "3000 0000/2000 0000", 4},
      {"a voiced forward is a hidden entry",
       Note(2, "half", Voice(1)) + Backup(2) + Forward(1, Voice(2)) + Note(1, "quarter", Voice(2)),
       1, 2, true, "note 1/1/0 0+2048 EN, backup 1/1/0 2048+0 X, forward 1/1/1 0+1024 E, "
       "note 1/1/1 1024+1024 EN", "1200 0000/1100 0000", 2},
      {"a chord member keeps staff and layer of its entry",
       Note(2, "half", Voice(1)) + Note(2, "half", "<chord/>" + Voice(1)) + "<harmony/>" +
       Note(2, "half", Voice(1)), 1, 1, true,
       "note 1/1/0 0+2048 EN, note 1/1/0 0+0 N, harmony 1/1/0 2048+0 -, note 1/1/0 2048+2048 EN",
       "2000 0000/2000 0000", 4},
      // Voice 1 is filled to 2 and the backup goes to 0: voice 1 can't go on there.
      {"a voice running ahead of the cursor falls back to backups",
       Note(2, "half", Voice(1)) + Backup(2) + Note(1, "quarter", Voice(1)), 1, 1, false,
       "note 1/1/0 0+2048 EN, backup 1/1/0 2048+0 -, note 1/1/1 0+1024 EN",
       "1100 0000/1100 0000", 2},
      // clang-format on
  };
  for (const auto& c : cases) {
    Inline("<measure number='1'>" + c.Measure + "</measure>", 1, c.Divisions);
    EXPECT_EQ(V(part_->MaxVoices, part_->VoicesAssigned), V(c.MaxVoices, c.MaxVoices > 0))
        << c.What;
    EXPECT_EQ(PlanOf(1), c.Plan) << c.What;
    EXPECT_EQ(V(events_.ByVoice(), events_.MaxDivisions()), V(c.ByVoice, c.MaxDivisions)) << c.What;
    EXPECT_EQ(Counts(), c.Counts) << c.What;
  }
}

TEST_F(XmlEventsTest, ElementsOtherThanNotesAreLoadedOrSkippedByTag) {
  Inline("<measure number='1'><attributes><divisions>2</divisions></attributes>"
         "<direction><sound dacapo='yes'/></direction><direction><sound tempo='90'/></direction>"
         "<harmony/><sound/><print/><barline/><figured-bass/>" +
         Note(8, "whole") + "</measure>");
  events_.Assign(MeasureAt(1), *part_);
  EXPECT_EQ(part_->Divisions(), 1) << "planning leaves no trace of the measure's divisions";
  EXPECT_EQ(PlanOf(1), "attributes 1/1/0 0+0 -, direction 1/1/0 0+0 X, direction 1/1/0 0+0 -, "
                       "harmony 1/1/0 0+0 -, sound 1/1/0 0+0 -, print 1/1/0 0+0 X, "
                       "barline 1/1/0 0+0 X, figured-bass 1/1/0 0+0 X, note 1/1/0 0+4096 EN");
}

TEST_F(XmlEventsTest, RunsAndChordsKeepTheirStaffAcrossStaffChanges) {
  // Two staves without voices: a note run stays on the staff where it started.
  Inline("<measure number='1'>" + Note(2, "half", Staff(1)) + Note(2, "half", Staff(2)) +
             Backup(4) + Note(4, "whole", Staff(2)) + Note(4, "whole", "<chord/>" + Staff(1)) +
             "<direction>" + Staff(2) + "</direction></measure>",
         2);
  EXPECT_EQ(part_->MaxVoices, 0);
  EXPECT_EQ(PlanOf(1), "note 1/1/0 0+2048 EN, note 1/2/0 2048+2048 EN, backup 1/1/0 4096+0 -, "
                       "note 2/2/0 0+4096 EN, note 2/1/0 4096+0 N, direction 2/2/0 4096+0 -");
  EXPECT_EQ(Counts(), "2000 1000/2000 1000");
  EXPECT_EQ(V(events_.Layers(1), events_.Layers(2), events_.Layers(3), events_.Staves()),
            V(1, 1, 0, 2))
      << "layer 3 is out of range";
  EXPECT_EQ(
      V(events_.Item(1).Slot, events_.Item(2).Slot, events_.Item(4).Slot, events_.Item(5).Slot),
      V(3, 3, 4, 4))
      << "slots follow the planned staff";
}

TEST_F(XmlEventsTest, RestsWithoutTypeLeaveAStaffEmpty) {
  // Staff 1 falls back on every staff's notes with a pitch or type.
  const std::vector<std::tuple<std::string, int16_t, std::vector<bool>>> cases = {
      // clang-format off
      {Rest(4), 1, {false, false}}, {Rest(4, "<type>whole</type>"), 1, {false, true}},
      {Rest(2) + Rest(2), 1, {false, true}}, {Forward(4), 1, {false, true}},
      {Rest(4, Staff(1)) + Note(4, "whole", Staff(2)), 2, {false, true, true}},
      {Rest(4, Staff(2)) + Note(4, "whole", Staff(1)), 2, {false, true, false}},
      {Rest(4) + Note(4, "whole", Staff(2)), 2, {false, true, true}},
      {Rest(4) + Rest(4, Staff(2)), 2, {false, false, false}}};
  // clang-format on
  for (const auto& [measure, staves, expected] : cases) {
    std::vector<bool> hasNotes;
    CheckForNotes(Element("<measure>" + measure + "</measure>"), staves, hasNotes);
    EXPECT_EQ(hasNotes, expected) << measure;
  }
  // An empty staff loads no entry for its rest.
  Inline("<measure number='1'>" + Rest(4) + "</measure>");
  EXPECT_EQ(PlanOf(1), "note 1/1/0 0+0 -");
  EXPECT_EQ(events_.Layers(1), 0);
}

TEST_F(XmlEventsTest, VoicesMapOnStavesAndLayersByTheirShareOfNotes) {
  const auto notes = [](int voice, int staff, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += Note(1, "quarter", Voice(voice) + Staff(staff));
    return text;
  };
  const struct {
    std::string What, Music;
    int Staves, Assigned, MaxVoices;
    std::vector<int> StaffAndLayer; // voice 1 staff, layer, voice 2 staff, layer, ...
  } cases[] = {
      // clang-format off
      {"no voices at all", Note(1, "quarter"), 1, false, 0, {}},
      {"some notes without voice", Note(1, "quarter") + Note(1, "quarter", Voice(1)), 1, false, 8,
       {}},
      {"two voices on one staff", notes(2, 1, 2) + notes(1, 1, 2), 1, true, 2, {1, 0, 1, 1}},
      {"a gap in the numbers", notes(1, 1, 1) + notes(3, 1, 1), 1, true, 3, {1, 0, 0, -1, 1, 1}},
      {"85 percent on staff 2", notes(1, 2, 17) + notes(1, 1, 3), 2, true, 1, {2, 0}},
      {"84 percent on staff 2", notes(1, 2, 21) + notes(1, 1, 4), 2, false, 1, {}},
      {"half on each staff", notes(1, 2, 1) + notes(1, 1, 1), 2, false, 1, {}},
      {"voices of two staves", notes(1, 1, 1) + notes(5, 2, 1) + notes(2, 1, 1), 2, true, 5,
       {1, 0, 1, 1, 0, -1, 0, -1, 2, 0}},
      {"five voices on a staff", notes(1, 1, 1) + notes(2, 1, 1) + notes(3, 1, 1) +
       notes(4, 1, 1) + notes(5, 1, 1), 1, false, 5, {}},
      // clang-format on
  };
  for (const auto& c : cases) {
    Inline("<measure number='1'>" + c.Music + "</measure>", c.Staves);
    EXPECT_EQ(part_->VoicesAssigned, c.Assigned) << c.What;
    EXPECT_EQ(part_->MaxVoices, c.MaxVoices) << c.What;
    if (!c.Assigned) continue;
    std::vector<int> map;
    for (int16_t v = 1; v <= part_->MaxVoices; ++v) {
      map.push_back(part_->GetVoiceStaff(v));
      map.push_back(part_->GetVoiceLayer(v));
      EXPECT_EQ(part_->GetVoicesUsed(v), part_->GetVoiceStaff(v) > 0) << c.What;
    }
    EXPECT_EQ(map, c.StaffAndLayer) << c.What;
  }
  // The tables read as empty outside 1 to MaxVoices and ignore writes there.
  part_->SetVoiceStaff(0, 2);
  part_->SetVoicesUsed(part_->MaxVoices + 1, true);
  EXPECT_EQ(V(part_->GetVoiceStaff(0), part_->GetVoicesUsed(part_->MaxVoices + 1)), V(0, 0));
}

TEST_F(XmlEventsTest, CrossStaffNoteKeepsTheStaffOfItsVoice) {
  std::string first;
  for (int i = 0; i < 6; ++i)
    first += Note(1, "quarter", Voice(1) + Staff(1));
  Inline("<measure number='1'>" + first + Note(1, "quarter", Voice(2) + Staff(2)) +
             "</measure><measure number='2'>" + Note(1, "quarter", Voice(1) + Staff(2)) +
             Note(1, "quarter", Voice(1) + Staff(1)) + Backup(2) +
             Note(2, "half", Voice(2) + Staff(2)) + "</measure>",
         2);
  ASSERT_TRUE(part_->VoicesAssigned);
  PlanOf(1);
  EXPECT_EQ(PlanOf(2), "note 1/2/0 0+1024 EN, note 1/1/0 1024+1024 EN, backup 1/1/0 2048+0 X, "
                       "note 2/2/0 0+2048 EN");
}

TEST_F(XmlEventsTest, FiveVoicesOrLayersDropTheFifthWithTheLayerWarning) {
  for (bool voiced : {true, false}) {
    std::string music;
    for (int v = 1; v <= 5; ++v)
      music += (v > 1 ? Backup(4) : "") + Note(4, "whole", voiced ? Voice(v) : "");
    Inline("<measure number='7'>" + music + "</measure>");
    EXPECT_FALSE(part_->VoicesAssigned);
    const Failure failure = Raised([&] { PlanOf(1); });
    EXPECT_EQ(failure.Number, kTooManyLayers);
    EXPECT_EQ(failure.Source, "FinalePlugIn");
    EXPECT_EQ(failure.Description, FormatResString(186, {"7", "1"}) + "\r\n" + MessageText(187) +
                                       "\r\n" + MessageText(188));
    // The plan stands as it was made: the fifth voice or layer is neither entry nor note.
    ASSERT_EQ(events_.Count(), 9);
    EXPECT_EQ(Describe(events_.Item(9)), voiced ? "note 1/1/4 0+0 X" : "note 1/1/4 0+0 -");
    EXPECT_EQ(V(events_.Layers(1), events_.Entries(1, 3)), V(4, 1));
  }
}

TEST_F(XmlEventsTest, DivisionsChangeBeforeABackupWarnsOncePerPass) {
  Inline("<measure number='1'><attributes><divisions>1</divisions></attributes>" +
             Note(1, "quarter") + "<attributes><divisions>2</divisions></attributes>" +
             Note(2, "quarter") + Backup(4) + Note(4, "half") + Backup(4) + Note(4, "half") +
             "</measure>",
         1, 4);
  events_.Assign(MeasureAt(1), *part_);
  ASSERT_EQ(User.Messages.size(), 1u);
  EXPECT_EQ(User.Messages[0].Text, MessageText(189));
  EXPECT_EQ(part_->Divisions(), 4);
  events_.Assign(MeasureAt(1), *part_);
  EXPECT_EQ(User.Messages.size(), 2u) << "a new pass warns again";
  // Without a backup after it, a change goes by in silence.
  Inline("<measure number='1'>" + Note(1, "quarter") +
         "<attributes><divisions>2</divisions></attributes>" + Note(2, "quarter") + "</measure>");
  PlanOf(1);
  EXPECT_EQ(User.Messages.size(), 2u);
}

TEST_F(XmlEventsTest, PlanningFailuresNameWhatAndWhere) {
  // Measure 9 of a part of two staves in slot 3: measure, divisions; then failure and log.
  const std::string at = " in staff slot 3, measure 9";
  const std::vector<std::tuple<std::string, int32_t, uint32_t, std::string>> cases = {
      {Note(1, "quarter", Staff(0)), 1, 0x800403c0, "Cannot use staff 0 on 2 staff part" + at},
      {Note(1, "quarter", "<staff>x</staff>"), 1, 0x80040469, "Non-numeric staff value \"x\"" + at},
      {Note(1, "quarter", Staff(3)), 1, 0x800403c0, "Cannot use staff 3 on 2 staff part" + at},
      {"<note><rest/><duration>q</duration></note>", 1, 0x800404f9,
       "Non-numeric duration value \"q\" in instrument 1, measure 9"},
      {"<attributes><divisions>many</divisions></attributes>", 1, 0x800404fc,
       "Non-numeric divisions value \"many\"" + at},
      {Note(1, "quarter") + Backup(1) + "<forward><duration>z</duration></forward>", 1, 0x800404fb,
       "Non-numeric duration value \"z\" during forward element" + at},
      {Rest(1) + Note(1, "quarter"), 0, 0x80040313,
       "Divisions not set in note assignment of" + at.substr(3)}};
  for (const auto& [measure, divisions, number, logged] : cases) {
    Inline("<measure number='9'>" + measure + "</measure>", 2, divisions);
    const Failure failure = Raised([&] { PlanOf(1); });
    EXPECT_EQ(failure.Number, Code(number)) << logged;
    EXPECT_EQ(failure.Description, "MusicXML internal error") << logged;
    EXPECT_NE(Log().find(logged), std::string::npos) << logged << "\n" << Log();
  }
}

TEST_F(XmlEventsTest, VoicePlanningFailures) {
  // Voice 0 passes the voice tests but has no place in the voice tables.
  Inline("<measure number='2'>" + Note(1, "quarter", Voice(0)) + Note(1, "quarter", Voice(1)) +
         "</measure>");
  EXPECT_EQ(Raised([&] { PlanOf(1); }).Number, kAssignByVoiceFailed);
  EXPECT_NE(Log().find("XmlEvents AssignByVoice error "), std::string::npos);
  // A mapped staff beyond the part's staves.
  Inline("<measure number='2'>" + Note(1, "quarter", Voice(1)) + "</measure>");
  part_->SetVoiceStaff(1, 2);
  EXPECT_EQ(Raised([&] { PlanOf(1); }).Number, Code(0x80040505));
  EXPECT_NE(Log().find("Voice 1 has staff 2 when max staves = 1"), std::string::npos);
  // Divisions missing on the voice road, for a rest without type.
  Inline("<measure number='2'>" + Note(1, "quarter", Voice(1)) + Rest(1, Voice(1)) + "</measure>",
         1, 0);
  EXPECT_EQ(Raised([&] { PlanOf(1); }).Number, Code(0x80040313));
  EXPECT_NE(Log().find("Divisions not set in voice assignment of staff slot 3, measure 2"),
            std::string::npos);
  EXPECT_EQ(part_->Divisions(), 0) << "restored after a failure";
  // AssignVoices needs a part, and staves.
  XmlPart part;
  EXPECT_EQ(Raised([&] { part.AssignVoices(); }).Number, Code(0x80040503));
  EXPECT_NE(Log().find("No XML part to use to assign voices"), std::string::npos);
  part_->SetStaves(0);
  EXPECT_EQ(Raised([&] { part_->AssignVoices(); }).Number, Code(0x80040504));
  EXPECT_NE(Log().find("No XML staves to use to assign voices"), std::string::npos);
}

TEST_F(XmlEventsTest, SuiteMeasuresPlanAsTheirVoicesSay) {
  const struct {
    std::string File;
    int Staves, Measure;
    std::string Plan, Counts;
    int MaxDivisions;
  } cases[] = {
      // clang-format off
      {"03b-Rhythm-Backup.xml", 1, 1,
       "attributes 1/1/0 0+0 -, note 1/1/0 0+1024 EN, note 1/1/0 1024+1024 EN, "
       "backup 1/1/0 2048+0 X, filler 1/1/1 0+1024 E, note 1/1/1 1024+1024 EN, "
       "note 1/1/1 2048+1024 EN", "2300 0000/2200 0000", 6},
      {"03f-Rhythm-Forward.xml", 1, 1,
       "attributes 1/1/0 0+0 -, forward 1/1/0 0+0 X, filler 1/1/0 0+1024 E, "
       "note 1/1/0 1024+1024 EN, forward 1/1/0 2048+0 X, filler 1/1/0 2048+1024 E, "
       "note 1/1/0 3072+256 EN, forward 1/1/0 3328+0 X", "4000 0000/2000 0000", 16},
      {"03f-Rhythm-Forward.xml", 1, 2, "note 1/1/0 0+1024 EN", "1000 0000/1000 0000", 4},
      {"42a-MultiVoice-TwoVoicesOnStaff-Lyrics.xml", 1, 1,
       "attributes 1/1/0 0+0 -, note 1/1/0 0+2048 EN, direction 1/1/0 2048+0 -, "
       "note 1/1/0 2048+1024 EN, note 1/1/0 3072+1024 EN, backup 1/1/0 4096+0 X, "
       "note 1/1/1 0+2048 EN, note 1/1/1 2048+1024 EN, note 1/1/1 3072+1024 EN",
       "3300 0000/3300 0000", 32},
      // Voice 2 changes staff too often to be mapped; the plan follows it all the same.
      {"43d-MultiStaff-StaffChange.xml", 2, 1,
       "attributes 1/1/0 0+0 -, note 2/2/0 0+512 EN, note 2/1/0 512+512 EN, "
       "note 2/2/0 1024+512 EN, note 2/1/0 1536+512 EN, note 2/1/0 2048+512 EN, "
       "note 2/1/0 2560+512 EN, note 2/2/0 3072+512 EN, note 2/1/0 3584+512 EN",
       "0000 8000/0000 8000", 8},
      // clang-format on
  };
  for (const auto& c : cases) {
    OSTIN_NEED_CORPUS(doc, c.File);
    Use(doc, c.Staves, 0);
    EXPECT_EQ(part_->VoicesAssigned, c.Staves == 1) << c.File;
    std::string plan;
    for (int m = 1; m <= c.Measure; ++m)
      plan = PlanOf(m);
    EXPECT_EQ(plan, c.Plan) << c.File << " measure " << c.Measure;
    EXPECT_EQ(Counts(), c.Counts) << c.File << " measure " << c.Measure;
    EXPECT_EQ(events_.MaxDivisions(), c.MaxDivisions) << c.File << " measure " << c.Measure;
    EXPECT_TRUE(events_.ByVoice()) << c.File;
  }
}

TEST_F(XmlEventsTest, OptimizeVoicesClosesTheGapsInExportedVoices) {
  Inline("<measure number='1'><note><voice>5</voice></note><note><voice>1</voice></note>"
         "<backup/><note><voice>13</voice></note></measure>"
         "<measure number='2'><note><voice>13</voice></note><note><voice>7</voice></note>"
         "<forward><voice>5</voice></forward></measure>",
         2);
  part_->SetStaves(2);
  for (int16_t v : {1, 5, 13})
    part_->SetVoicesUsed(v, true);
  part_->Voices = 3;
  part_->OptimizeVoices();
  std::string voices;
  xml::XmlNodeList list = part_->Part().selectNodes(".//voice");
  for (int32_t i = 0; i < list.length(); ++i)
    voices += list.item(i).text() + " ";
  EXPECT_EQ(voices, "2 1 3 3 7 2 ") << "unused numbers stay as they are";
  // Nothing to do without voices written.
  part_->Voices = 0;
  part_->SetVoicesUsed(2, true);
  part_->OptimizeVoices();
  EXPECT_EQ(part_->Part().selectSingleNode(".//voice").text(), "2");
}

} // namespace
} // namespace ostin
