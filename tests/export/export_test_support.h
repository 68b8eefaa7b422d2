#pragma once
// What the export tests share: a door into the private stages of the export engine; a fixture
// that builds a score, exports it, validates the file and reads it back; one for the element
// makers; and one that fills the frames of the sample document for the measure stages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/dtd_validation.h"
#include "export/to_xml.h"
#include "host/frames/frame_bits.h"
#include "host/records.h"
#include "platform/language.h"
#include "tools/score_builder.h"

namespace ostin {

// Drives single stages and element makers of an engine, with the run state they read.
struct ToXmlTestAccess {
  ToXml& x;

  // The empty document of a host of that year, as at the start of a run.
  void StartDocument(int32_t finaleVersion = 2004) {
    x.FinaleVersion = finaleVersion;
    x.InitializeXml(true);
    x.root_ = x.document_->documentElement();
  }
  // The run state up to the part list, read from the open document.
  void ReadPartList() {
    StartDocument(FtxFinaleVersion());
    x.NumberOfStaves = FtxCountInstruments(0, -1);
    x.NumberOfMeasures = static_cast<int16_t>(FtxCountItems(1));
    x.FinaleChannels_.Initialize();
    x.InitializeParts();
  }
  // An empty document without parts, with the document's layer preferences; no layer is cue
  // or unspaced unless a test says so.
  void Start(int32_t finaleVersion) {
    StartDocument(finaleVersion);
    x.ReadLayerPrefs();
    x.LayerCue = {};
    x.LayerNoSpacing = {};
    x.NumberOfParts = 0;
    x.XmlParts.clear();
    x.XmlParts.emplace_back();
  }
  // A part of that many staves from the slot, in C with the given clefs, with empty measures
  // as the skeleton leaves them.
  XmlPart& AddPart(int16_t staves, int16_t startSlot, int16_t measures,
                   std::initializer_list<int16_t> clefs = {0, 3}) {
    auto part = std::make_unique<XmlPart>();
    part->FinaleVersion = x.FinaleVersion;
    part->SetStaves(staves);
    part->StartSlot = part->StartStaff = startSlot;
    xml::XmlNode element = x.Element("part");
    element.setAttribute("id", "P" + std::to_string(x.NumberOfParts + 1));
    for (int16_t m = 1; m <= measures; ++m)
      element.appendChild(x.Element("measure")).setAttribute("number", std::to_string(m));
    part->SetPart(x.root_.appendChild(element));
    xml::XmlNode key = x.Element("key");
    key.appendChild(x.Element("fifths", "0"));
    part->SetKey(key);
    part->Octave = 4;
    auto clef = clefs.begin();
    for (int16_t staff = 1; staff <= staves && clef != clefs.end(); ++staff, ++clef)
      part->SetClefs(staff, *clef);
    x.XmlParts.push_back(std::move(part));
    ++x.NumberOfParts;
    x.InitializePartTables(*x.XmlParts.back());
    return *x.XmlParts.back();
  }
  // A part made of the given part element text, as the engine's next part.
  XmlPart& AddPartFrom(const std::string& text) {
    XmlPart& part = AddPart(1, 1, 0);
    x.root_.removeChild(part.Part());
    part.SetPart(Parse(text));
    return part;
  }
  // Loads measures first to last of the part, as the driver does.
  void LoadMeasures(XmlPart& part, int16_t first, int16_t last) {
    for (int16_t m = first; m <= last; ++m) {
      part.Measure = m;
      part.MeasureNumber = std::to_string(m);
      x.LoadMeasure(part);
    }
  }
  // An element parsed into the engine's document, under the root.
  xml::XmlNode Parse(const std::string& text) {
    auto doc = xml::XmlDocument::Create();
    doc->loadXML(text);
    return x.root_.appendChild(doc->documentElement());
  }
  xml::XmlNode Element(const std::string& name, const std::string& text = {}) {
    return x.Element(name, text);
  }
  // Items of a staff slot, with the cursor on the first.
  void SetItems(int16_t slot, const MeasureItems& items) {
    x.MeasureItems_.resize(std::max<size_t>(x.MeasureItems_.size(), slot + 1));
    x.MeasureItemCursor.resize(x.MeasureItems_.size(), 0);
    x.MeasureItems_[slot] = items;
    x.MeasureItemCursor[slot] = items.Count() > 0 ? 1 : 0;
  }
  int16_t NumberOfParts() const { return x.NumberOfParts; }
  XmlPart& Part(int16_t number) { return *x.XmlParts.at(number); }
  xml::XmlNode Root() const { return x.root_; }
  void KeyOptions(bool cancel, bool mode) { x.KeyCancelOutgoing = cancel, x.KeyModeChange = mode; }
  void Abbreviate(bool common, bool cut) { x.AbbreviateCommon = common, x.AbbreviateCut = cut; }
  xml::XmlNode CreateKey(int16_t key, XmlPart& part, std::optional<int16_t> oldKey) {
    return x.CreateKey(key, part, oldKey ? &*oldKey : nullptr);
  }
  std::vector<std::string>& OpenMeasureStyle() { return x.OpenMeasureStyle; }
  bool& TempoWritten() { return x.TempoWritten; }
  int32_t ItemCursor(int16_t slot) const { return x.MeasureItemCursor.at(slot); }
  void SetShowTies(int16_t staff, bool value) { x.ShowTies.at(staff) = value; }
  void SetShowBeams(int16_t staff, bool value) { x.ShowBeams.at(staff) = value; }
  void SetShowDots(int16_t staff, bool value) { x.ShowDots.at(staff) = value; }
  void SetOctaveShift(int16_t staff, int16_t octaves) { x.OctaveShift.at(staff) = octaves; }
  void SetWavyLineOpen(int16_t staff, bool open) { x.WavyLineOpen.at(staff) = open; }
  bool& LayerCue(int layer) { return x.LayerCue.at(layer); }
  bool& GraceAlwaysSlash() { return x.GraceAlwaysSlash; }
  void SetFinaleVersion(int32_t version) { x.FinaleVersion = version; }
  const std::vector<int32_t>& FontLocales() const { return x.FontLocales; }
  const std::vector<std::string>& FontLanguages() const { return x.FontLanguages; }
  // The display flags of a staff: stems, beams, tuplets, dots, rests, ties, up, down.
  std::vector<bool> DisplayFlags(int16_t staff) const {
    return {x.ShowStems.at(staff),    x.ShowBeams.at(staff),     x.ShowTuplets.at(staff),
            x.ShowDots.at(staff),     x.ShowRests.at(staff),     x.ShowTies.at(staff),
            x.StaffStemsUp.at(staff), x.StaffStemsDown.at(staff)};
  }
  // The engine's own operations under their own names.
  // clang-format off
#define OSTIN_FORWARD(Name) template <class... A> auto Name(A&&... a) { return x.Name(a...); }
#define OSTIN_STATIC(Name) template <class... A> static auto Name(A&&... a) { return ToXml::Name(a...); }
  OSTIN_FORWARD(RangeCheck) OSTIN_FORWARD(FindXmlPart) OSTIN_FORWARD(PruneInstruments)
  OSTIN_FORWARD(ParseTimeSignature) OSTIN_FORWARD(CreateTime) OSTIN_FORWARD(CreateTranspose)
  OSTIN_FORWARD(CreateTransposeChromatic) OSTIN_FORWARD(CreateClef) OSTIN_FORWARD(CreateStaffDetails)
  OSTIN_FORWARD(CreateStaffTuning) OSTIN_FORWARD(CreateMeasureStyleElement)
  OSTIN_FORWARD(SwitchStaffStyle) OSTIN_FORWARD(ConvertDurations) OSTIN_FORWARD(CleanupInitialTempo)
  OSTIN_FORWARD(RemoveDuplicateWavyLine) OSTIN_FORWARD(InitializePartTables) OSTIN_FORWARD(AddClef)
  OSTIN_FORWARD(AddBeams) OSTIN_FORWARD(StartOfTie) OSTIN_FORWARD(CreatePitch)
  OSTIN_FORWARD(CreateAccidental) OSTIN_FORWARD(FindPrintObject) OSTIN_FORWARD(InitializeLocales)
  OSTIN_STATIC(ConvertTime) OSTIN_STATIC(ParseDuration) OSTIN_STATIC(ItemOffset) OSTIN_STATIC(ItemDue)
#undef OSTIN_FORWARD
#undef OSTIN_STATIC
  // clang-format on
};

namespace testing {

// Text without the line breaks of the written file.
inline std::string Unbroken(const std::string& text) {
  std::string flat;
  for (char c : text)
    if (c != '\r' && c != '\n') flat += c;
  return flat;
}
// An element with its attributes and descendants on one line:
// <key><cancel>2</cancel><fifths>-1</fifths></key>.
inline std::string Flat(const xml::XmlNode& node) {
  return node ? Unbroken(node.xml()) : "(none)";
}
// An element of text children as the file writes it: Compose("key", {"cancel", "fifths"},
// "- 2") is <key><fifths>2</fifths></key>. Values are taken in order; "-" or a missing value
// leaves its child out; no values at all stand for no element, "(none)".
inline std::string Compose(const std::string& name, const std::vector<std::string>& children,
                           const std::string& values) {
  if (values.empty()) return "(none)";
  std::istringstream in(values);
  std::string text = "<" + name + ">", value;
  for (const std::string& child : children)
    if (in >> value && value != "-") text += "<" + child + ">" + value + "</" + child + ">";
  return text + "</" + name + ">";
}
// The texts of the nodes that the path selects.
inline std::vector<std::string> Texts(const xml::XmlNode& node, const std::string& path) {
  std::vector<std::string> texts;
  xml::XmlNodeList list = node.selectNodes(path);
  for (xml::XmlNode item = list.nextNode(); item; item = list.nextNode())
    texts.push_back(item.text());
  return texts;
}
// The same texts joined by ", ", in document order also for a union of paths; "(none)" when
// the path selects nothing.
inline std::string Joined(const xml::XmlNode& node, const std::string& path) {
  const std::vector<std::string> texts = Texts(node, path);
  std::string joined = texts.empty() ? "(none)" : texts[0];
  for (size_t i = 1; i < texts.size(); ++i)
    joined += ", " + texts[i];
  return joined;
}

// A failure in short: its number, source and description.
inline std::string Said(int32_t number, std::string_view description,
                        std::string_view source = kPlugInSource) {
  return std::to_string(number) + " " + std::string(source) + ": " + std::string(description);
}
// The failure that the body raises, in short; "none" when it raises none.
inline std::string Raised(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return Said(failure.Number, failure.Description, failure.Source);
  }
  return "none";
}

// The builder's options by position, every field given.
inline tools::StaffOptions Staff(std::string full = "", std::string abbrev = "",
                                 int16_t clef = tools::kTrebleClef, int16_t transposition = 0,
                                 std::optional<tools::Sound> sound = std::nullopt) {
  return {std::move(full), std::move(abbrev), clef, transposition, std::move(sound)};
}
inline tools::GroupOptions Group(int16_t first, int16_t last, int16_t bracket,
                                 std::string full = "", std::string abbrev = "") {
  return {first, last, bracket, std::move(full), std::move(abbrev)};
}
inline tools::Sound Midi(std::string name, int16_t program, int16_t channel = 0) {
  return {std::move(name), program, channel};
}
inline tools::MeasureOptions InKey(int16_t fifths) {
  tools::MeasureOptions options;
  options.Key.Fifths = fifths;
  return options;
}

// A score built in the stand-in's terms, exported by a whole run of the engine.
class ExportTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    SetLanguage(kLanguageMain);
    StartScore();
  }
  // A new score: a saved document without staves and measures, and with no tempo, so that
  // the first measure carries no sound.
  void StartScore() {
    Builder = tools::ScoreBuilder::FromDefaultDocument();
    Builder.Set("Header", {0, 0, 0},
                {{"ModifiedYear", 2026}, {"ModifiedMonth", 11}, {"ModifiedDay", 22}});
    Builder.Set("Settings39", {-2, 0, 0}, {{"MetronomeSpeed", 0}});
    Saved = true;
    Written.clear();
    Score.reset();
  }
  // A new score of that many plain staves and measures of 4/4 in C.
  void StartScore(int staves, int measures) {
    StartScore();
    for (int i = 0; i < staves; ++i)
      Builder.AddStaff({});
    AddMeasures(measures);
  }
  // Measures of 4/4 in C with a normal barline, or as given.
  void AddMeasures(int count, const tools::MeasureOptions& options = {}) {
    for (int i = 0; i < count; ++i)
      Builder.AddMeasure(options);
  }
  // Sets fields of a record that the builder made, or makes it.
  void SetRecord(std::string_view className, int32_t cmper, int16_t inci,
                 std::initializer_list<std::pair<const char*, int32_t>> fields) {
    Builder.Set(className, sim::RecordKey{cmper, inci, 0}, fields);
  }
  // A staff style from the start of measure `from` to the end of measure `to` on a staff.
  void AssignStyle(int16_t staff, int16_t inci, int16_t style, int16_t from, int16_t to,
                   int32_t endEdu = 0x7FFFFFFF) {
    SetRecord("StaffStyleAssign", staff, inci,
              {{"Style", style},
               {"StartMeas", from},
               {"StartEdu", 0},
               {"EndMeas", to},
               {"EndEdu", endEdu}});
  }
  // Staff style 1 puts the staff in B flat.
  void BFlatStyle() {
    SetRecord("StaffStyle", 1, 0, {{"Mask1", 0x100}, {"Transposition", tools::kTransposeBFlat}});
  }

  // Opens the built score and exports it; the failure that goes up, if any. The written
  // file must be valid, and is read back into Score.
  std::optional<Failure> Export() {
    sim::Document document = Builder.Build();
    if (!Saved) document.Records.erase("Header");
    sim::Host::Instance().Open(std::move(document));
    ToXml engine;
    engine.FileName = Path("out.xml");
    try {
      EXPECT_FALSE(engine.Invoke(0, 0));
    } catch (const Failure& failure) {
      return failure;
    }
    if (!std::filesystem::exists(engine.FileName)) return std::nullopt;
    Written = Read(engine.FileName);
    EXPECT_TRUE(xml::test_support::ValidScore(Written));
    Score = xml::XmlDocument::Create();
    Score->preserveWhiteSpace = false;
    Score->validateOnParse = false;
    Score->resolveExternals = false;
    EXPECT_TRUE(Score->loadXML(Written));
    return std::nullopt;
  }
  // Export that must succeed and write the file.
  void ExportOk() {
    std::optional<Failure> failure = Export();
    ASSERT_FALSE(failure) << failure->Description;
    ASSERT_TRUE(Score) << "no file written";
  }

  xml::XmlNode Node(const std::string& xpath) const {
    return Score->documentElement().selectSingleNode(xpath);
  }
  int Count(const std::string& xpath) const {
    return Score->documentElement().selectNodes(xpath).length();
  }
  // The text of the first node found, "(none)" when there is none.
  std::string Text(const std::string& xpath) const {
    xml::XmlNode node = Node(xpath);
    return node ? node.text() : "(none)";
  }
  // The names of the child elements of the first node found.
  std::vector<std::string> Children(const std::string& xpath) const {
    std::vector<std::string> names;
    xml::XmlNodeList nodes = Node(xpath).selectNodes("*");
    for (xml::XmlNode node = nodes.nextNode(); node; node = nodes.nextNode())
      names.push_back(node.nodeName());
    return names;
  }
  std::string FlatNode(const std::string& xpath) const { return Flat(Node(xpath)); }
  // The path of measure m of part p.
  static std::string Measure(int part, int measure) {
    return "part[" + std::to_string(part) + "]/measure[" + std::to_string(measure) + "]";
  }

  tools::ScoreBuilder Builder = tools::ScoreBuilder::FromDefaultDocument();
  bool Saved = true; // false: the document has no header for the program
  std::string Written;
  std::shared_ptr<xml::XmlDocument> Score;
};

// An engine with an empty document, for the element makers.
class ElementTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    SetLanguage(kLanguageMain);
    Access.StartDocument();
  }
  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

inline constexpr int32_t kNote = kEfValid | kEfNote;
inline constexpr int32_t kRest = kEfValid;

// The sample document with frames that each test fills: staff 1 holds frames 1 to 4 in
// measures 1 to 4, staff 2 frames 5 to 8. Measure 1 is left alone: its staff styles belong
// to another stage.
class ContentTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json").Frames = sim::FrameStore{};
    Access.Start(2004);
  }

  static sim::FrameStore& Store() { return HostSim().Doc().Frames; }
  // An entry of the given notes (Tcd and Note.Flag); no notes for a rest.
  static sim::StoredEntry Made(int16_t dura, int32_t ef, std::vector<int16_t> tcds = {},
                               int32_t noteFlag = 0) {
    sim::StoredEntry entry{Store().TakeEntnum(), dura, 0, ef, 0, {}};
    for (size_t i = 0; i < tcds.size(); ++i)
      entry.Notes.push_back({tcds[i], 0, static_cast<int16_t>(i + 1), kNoteValid | noteFlag});
    return entry;
  }
  static void Fill(int16_t frame, std::vector<sim::StoredEntry> entries) {
    Store().Frames[frame] = std::move(entries);
  }
  static void SetBeats(int16_t measure, int16_t beats) {
    MeasureSpec spec;
    ASSERT_TRUE(spec.Load(measure, 0));
    spec.Beats = beats;
    spec.Save();
  }
  // The measure's children: names, with the duration of each backup and forward.
  static std::string Shape(const xml::XmlNode& measure) {
    std::string shape;
    xml::XmlNodeList children = measure.selectNodes("*");
    for (xml::XmlNode child = children.nextNode(); child; child = children.nextNode()) {
      shape += (shape.empty() ? "" : " ") + child.nodeName();
      if (child.nodeName() == "backup" || child.nodeName() == "forward")
        shape += ":" + child.selectSingleNode("duration").text();
    }
    return shape;
  }
  static xml::XmlNode MeasureOf(const XmlPart& part, int16_t measure) {
    return part.Part().selectSingleNode("measure[" + std::to_string(measure) + "]");
  }
  // A part of one staff from slot 1 with four measures, loaded from `first` to `last`.
  XmlPart& Loaded(int16_t first, int16_t last, int16_t staves = 1) {
    XmlPart& part = Access.AddPart(staves, 1, 4);
    Access.LoadMeasures(part, first, last);
    return part;
  }

  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

} // namespace testing
} // namespace ostin
