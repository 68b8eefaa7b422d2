#pragma once
// What the export tests share: a door into the stages of the export engine, and a fixture
// that builds a score in the host stand-in, exports it, validates the written file and reads
// it back.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/dtd_validation.h"
#include "export/to_xml.h"
#include "platform/language.h"
#include "tools/score_builder.h"

namespace ostin {

// Drives single stages and element makers of an engine, with the run state they read.
struct ToXmlTestAccess {
  ToXml& Engine;

  // The empty document and the options the element makers read, as at the start of a run.
  void StartDocument(int32_t finaleVersion = 2004) {
    Engine.FinaleVersion = finaleVersion;
    Engine.InitializeXml(true);
    Engine.root_ = Engine.document_->documentElement();
  }
  // The run state up to the part list, read from the open document.
  void ReadPartList() {
    StartDocument(FtxFinaleVersion());
    Engine.NumberOfStaves = FtxCountInstruments(0, -1);
    Engine.NumberOfMeasures = static_cast<int16_t>(FtxCountItems(1));
    Engine.FinaleChannels_.Initialize();
    Engine.InitializeParts();
  }
  xml::XmlNode Root() const { return Engine.root_; }

  bool& KeyCancelOutgoing() { return Engine.KeyCancelOutgoing; }
  bool& KeyModeChange() { return Engine.KeyModeChange; }
  bool& AbbreviateCommon() { return Engine.AbbreviateCommon; }
  bool& AbbreviateCut() { return Engine.AbbreviateCut; }
  std::vector<std::string>& OpenMeasureStyle() { return Engine.OpenMeasureStyle; }
  const std::vector<int32_t>& FontLocales() const { return Engine.FontLocales; }
  const std::vector<std::string>& FontLanguages() const { return Engine.FontLanguages; }
  int16_t NumberOfParts() const { return Engine.NumberOfParts; }
  XmlPart& Part(int16_t number) { return *Engine.XmlParts.at(number); }

  void InitializeLocales() { Engine.InitializeLocales(); }
  bool RangeCheck(int16_t first, int16_t last) { return Engine.RangeCheck(first, last); }
  XmlPart* FindXmlPart(int16_t staff) { return Engine.FindXmlPart(staff); }
  void PruneInstruments(XmlPart& part) { Engine.PruneInstruments(part); }
  xml::XmlNode LoadMidiInstrument(const std::string& id, int16_t channel, int16_t bank,
                                  int16_t program, int16_t unpitched) {
    return Engine.LoadMidiInstrument(id, channel, bank, program, unpitched);
  }

  xml::XmlNode CreateKey(int16_t key, XmlPart& part, std::optional<int16_t> oldKey) {
    return Engine.CreateKey(key, part, oldKey ? &*oldKey : nullptr);
  }
  void ParseTimeSignature(const MeasureSpec& measure, int16_t& beats, int16_t& divBeat,
                          bool& compositeBeats, bool& compositeDiv, bool& symbol, int16_t staff) {
    Engine.ParseTimeSignature(measure, beats, divBeat, compositeBeats, compositeDiv, symbol, staff);
  }
  static void ConvertTime(int16_t beats, int16_t divBeat, int16_t& outBeats, int16_t& outBeatType) {
    ToXml::ConvertTime(beats, divBeat, outBeats, outBeatType);
  }
  xml::XmlNode CreateTime(int16_t beats, int16_t divBeat, bool compositeBeats, bool compositeDiv,
                          bool symbol) {
    return Engine.CreateTime(beats, divBeat, compositeBeats, compositeDiv, symbol);
  }
  xml::XmlNode CreateTranspose(const XmlPart& part, bool suppressZero) {
    return Engine.CreateTranspose(part, suppressZero);
  }
  xml::XmlNode CreateTransposeChromatic(int16_t interval, int16_t alteration, bool suppressZero) {
    return Engine.CreateTransposeChromatic(interval, alteration, suppressZero);
  }

  xml::XmlNode CreateClef(int16_t number) { return Engine.CreateClef(number); }
  xml::XmlNode CreateStaffDetails(const XmlPart& part, int16_t staff) {
    return Engine.CreateStaffDetails(part, staff);
  }
  xml::XmlNode CreateStaffTuning(int16_t pitch) { return Engine.CreateStaffTuning(pitch); }
  xml::XmlNode CreateMeasureStyleElement(const XmlPart& part, int16_t staff) {
    return Engine.CreateMeasureStyleElement(part, staff);
  }
  void SwitchStaffStyle(xml::XmlNode measure, XmlPart& part, int16_t staff, int32_t edu,
                        bool atStart) {
    Engine.SwitchStaffStyle(measure, part, staff, edu, atStart);
  }
  xml::XmlNode Element(const std::string& name) { return Engine.Element(name); }
};

namespace testing {

// An element with its attributes and descendants on one line, without the line breaks of
// the written file: <key><cancel>2</cancel><fifths>-1</fifths></key>.
inline std::string Flat(const xml::XmlNode& node) {
  if (!node) return "(none)";
  std::string text = node.xml(), flat;
  for (char c : text)
    if (c != '\r' && c != '\n') flat += c;
  return flat;
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
  std::vector<std::string> Texts(const std::string& xpath) const {
    std::vector<std::string> texts;
    xml::XmlNodeList nodes = Score->documentElement().selectNodes(xpath);
    for (int32_t i = 0; i < nodes.length(); ++i)
      texts.push_back(nodes.item(i).text());
    return texts;
  }
  // The names of the child elements of the first node found.
  std::vector<std::string> Children(const std::string& xpath) const {
    std::vector<std::string> names;
    xml::XmlNodeList nodes = Node(xpath).selectNodes("*");
    for (int32_t i = 0; i < nodes.length(); ++i)
      names.push_back(nodes.item(i).nodeName());
    return names;
  }
  std::string FlatNode(const std::string& xpath) const { return Flat(Node(xpath)); }

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

} // namespace testing
} // namespace ostin
