#pragma once
// Reaches the private stages of the export engine: a document with one part whose measures
// stand empty, as the skeleton leaves them, and the stages that fill them.
#include <algorithm>
#include <memory>
#include <string>

#include "export/to_xml.h"

namespace ostin {

class ToXmlTestAccess {
public:
  explicit ToXmlTestAccess(ToXml& engine) : x(engine) {}

  // A fresh tree for a host of that year, with the document's layer preferences; no layer
  // is cue or unspaced unless a test says so.
  void Start(int32_t finaleVersion) {
    x.FinaleVersion = finaleVersion;
    x.InitializeXml(true);
    x.root_ = x.document_->documentElement();
    x.ReadLayerPrefs();
    x.LayerCue = {};
    x.LayerNoSpacing = {};
    x.NumberOfParts = 0;
    x.XmlParts.clear();
    x.XmlParts.emplace_back();
  }

  // A part of that many staves from the slot, in C with the given clefs, with measures.
  XmlPart& AddPart(int16_t staves, int16_t startSlot, int16_t measures,
                   std::initializer_list<int16_t> clefs = {0, 3}) {
    auto part = std::make_unique<XmlPart>();
    part->FinaleVersion = x.FinaleVersion;
    part->SetStaves(staves);
    part->StartSlot = startSlot;
    part->StartStaff = startSlot;
    xml::XmlNode element = x.Element("part");
    element.setAttribute("id", "P" + std::to_string(x.NumberOfParts + 1));
    for (int16_t m = 1; m <= measures; ++m) {
      xml::XmlNode measure = x.Element("measure");
      measure.setAttribute("number", std::to_string(m));
      element.appendChild(measure);
    }
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
    XmlPart& added = *x.XmlParts.back();
    x.InitializePartTables(added);
    return added;
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

  xml::XmlNode Root() const { return x.root_; }
  xml::XmlNode Element(const std::string& name, const std::string& text = {}) {
    return x.Element(name, text);
  }
  // An element parsed into the engine's document, outside the tree.
  xml::XmlNode Parse(const std::string& text) {
    auto doc = xml::XmlDocument::Create();
    doc->loadXML(text);
    return x.root_.appendChild(doc->documentElement());
  }

  void InitializePartTables(XmlPart& part) { x.InitializePartTables(part); }
  void ConvertDurations(XmlPart& part) { x.ConvertDurations(part); }
  void CleanupInitialTempo() { x.CleanupInitialTempo(); }
  void RemoveDuplicateWavyLine(xml::XmlNode note) { x.RemoveDuplicateWavyLine(note); }
  static void ParseDuration(int32_t duration, std::string& type, int16_t& dots) {
    ToXml::ParseDuration(duration, type, dots);
  }
  void AddClef(xml::XmlNode measure, xml::XmlNode clef, int16_t number) {
    x.AddClef(measure, clef, number);
  }
  void AddBeams(xml::XmlNode note, int16_t previous, int16_t thisLevels, int16_t next) {
    x.AddBeams(note, previous, thisLevels, next);
  }
  xml::XmlNode StartOfTie(xml::XmlNode note) { return x.StartOfTie(note); }
  xml::XmlNode CreatePitch(int16_t displacement, int16_t alteration, XmlPart& part) {
    return x.CreatePitch(displacement, alteration, part);
  }
  xml::XmlNode CreateAccidental(int16_t alter, int32_t entnum, int16_t noteID,
                                const std::string& font, bool& quarterTone) {
    return x.CreateAccidental(alter, entnum, noteID, font, quarterTone);
  }
  std::string FindPrintObject(int16_t layer, int16_t staff, const XmlPart& part) {
    return x.FindPrintObject(layer, staff, part);
  }
  int16_t CheckAppoggiatura(Tgf& tgf, int16_t index) { return x.CheckAppoggiatura(tgf, index); }
  static int32_t ItemOffset(bool placeFirst, int32_t edu, int32_t position) {
    return ToXml::ItemOffset(placeFirst, edu, position);
  }
  static bool ItemDue(int32_t edu, int32_t position) { return ToXml::ItemDue(edu, position); }

  // Items of a staff slot, with the cursor on the first.
  void SetItems(int16_t slot, const MeasureItems& items) {
    x.MeasureItems_.resize(std::max<size_t>(x.MeasureItems_.size(), slot + 1));
    x.MeasureItemCursor.resize(x.MeasureItems_.size(), 0);
    x.MeasureItems_[slot] = items;
    x.MeasureItemCursor[slot] = items.Count() > 0 ? 1 : 0;
  }
  int32_t ItemCursor(int16_t slot) const { return x.MeasureItemCursor.at(slot); }

  void SetShowTies(int16_t staff, bool value) { x.ShowTies.at(staff) = value; }
  void SetShowBeams(int16_t staff, bool value) { x.ShowBeams.at(staff) = value; }
  void SetShowDots(int16_t staff, bool value) { x.ShowDots.at(staff) = value; }
  bool ShowStems(int16_t staff) const { return x.ShowStems.at(staff); }
  bool ShowBeams(int16_t staff) const { return x.ShowBeams.at(staff); }
  bool ShowDots(int16_t staff) const { return x.ShowDots.at(staff); }
  bool ShowTies(int16_t staff) const { return x.ShowTies.at(staff); }
  bool ShowTuplets(int16_t staff) const { return x.ShowTuplets.at(staff); }
  bool ShowRests(int16_t staff) const { return x.ShowRests.at(staff); }
  bool StaffStemsUp(int16_t staff) const { return x.StaffStemsUp.at(staff); }
  bool StaffStemsDown(int16_t staff) const { return x.StaffStemsDown.at(staff); }
  void SetOctaveShift(int16_t staff, int16_t octaves) { x.OctaveShift.at(staff) = octaves; }
  void SetWavyLineOpen(int16_t staff, bool open) { x.WavyLineOpen.at(staff) = open; }
  bool& LayerCue(int layer) { return x.LayerCue.at(layer); }
  bool& TempoWritten() { return x.TempoWritten; }
  bool& GraceAlwaysSlash() { return x.GraceAlwaysSlash; }
  void SetFinaleVersion(int32_t version) { x.FinaleVersion = version; }

private:
  ToXml& x;
};

} // namespace ostin
