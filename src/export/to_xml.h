#pragma once
// The export engine: one pass over the open document builds a whole MusicXML
// score-partwise tree in memory, which is written to disk once at the end. The host's
// document stays as it was: the edit the run opens is always cancelled.
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "export/finale_channels.h"
#include "host/handmade_records.h"
#include "host/layer_prefs.h"
#include "host/mass_edit.h"
#include "host/records.h"
#include "model/xml_part.h"
#include "xml/xml_document.h"

namespace ostin {

class ToXml {
public:
  ToXml() = default;
  ToXml(const ToXml&) = delete;
  ToXml& operator=(const ToXml&) = delete;
  friend struct ToXmlTestAccess;

  // Set by the plug-in before Invoke.
  std::string FileName;
  int32_t FileType = 0;
  int32_t hwnd = 0;
  std::string SystemIdentifier;

  // Runs the export. Always false; failures go up as failures, a cancel ends quietly.
  bool Invoke(int32_t selectedRegion, int32_t documentRegion);

  // Puts a line break between each two adjacent tags and reloads the text.
  static void AddNewLines(xml::XmlDocument& document);
  // The document type text that a new export tree starts from.
  static std::string DocumentTypeText(bool partwise, const std::string& systemIdentifier);

private:
  void Run();
  void InitializeXml(bool partwise);
  void ReadLayerPrefs();
  void ReadDocumentDefaults();
  void LoadBeamingOptions();
  void LoadDocumentOptions();
  static std::string OnlyLyricKind();
  static int16_t EngraverFontSetOf();
  void CheckProgress(int16_t increment, int16_t instrument, int16_t measure);

  // Stages, in the order Invoke calls them.
  void InitializeHeader();
  void InitializeParts();
  void InitializeFreezeMusic();
  void InitializeMeasures();
  void InitializeMeasureItems();
  void InitializeLocales();
  void LoadPart(int16_t partIndex);
  void LoadPartMeasures(XmlPart& part);
  void PruneInstruments(XmlPart& part);
  void SaveDocument();
  void CloseEdit();

  // Identification.
  bool LoadHeader(Header& header);
  void AskForUnsavedDocument();

  // Part list and instruments.
  struct PartListState;
  void ReadSlots(PartListState& state);
  void ReadGroups(PartListState& state);
  void DecideGroup(PartListState& state, int16_t group);
  void CreateXmlParts(PartListState& state);
  void WriteScoreParts(PartListState& state);
  void WriteGroups(PartListState& state);
  void ThinDeviceNames();
  void LoadTimeSignatureAbbreviations();
  bool RangeCheck(int16_t firstSlot, int16_t lastSlot);
  void LoadScoreInstruments(xml::XmlNode scorePart, XmlPart& part);
  xml::XmlNode LoadMidiInstrument(const std::string& id, int16_t channel, int16_t bank,
                                  int16_t program, int16_t unpitched);
  XmlPart* FindXmlPart(int16_t staff);
  static std::string KnownInstrument(const std::vector<std::array<int16_t, 6>>& indices,
                                     const std::vector<std::array<std::string, 6>>& ids,
                                     int16_t staff, int source, int16_t index);
  struct MidiSetup {
    int16_t Channel = 0, Bank = 0, Program = 0;
  };
  MidiSetup WriteScoreInstrument(xml::XmlNode scorePart, const std::string& id, int16_t index);
  void WritePercussionInstruments(xml::XmlNode scorePart, XmlPart& part, const MidiSetup& midi);

  // Measure skeleton.
  struct SkeletonState;
  struct MeasureHead;
  void ReadMeasureHead(SkeletonState& state, int16_t measure, MeasureHead& head);
  void ReadEndingData(int16_t measure, MeasureHead& head);
  void FillMeasure(SkeletonState& state, const MeasureHead& head, XmlPart& part, int16_t index,
                   xml::XmlNode measure);
  void AddKeyTimeTransposeChanges(SkeletonState& state, const MeasureHead& head, XmlPart& part,
                                  int16_t index, xml::XmlNode& attributes);
  void AddFirstAttributes(SkeletonState& state, const MeasureHead& head, XmlPart& part,
                          int16_t index, xml::XmlNode& attributes);
  void AddTime(SkeletonState& state, const MeasureHead& head, XmlPart& part, int16_t index,
               xml::XmlNode& attributes, bool first);
  void AddMultipleRest(SkeletonState& state, xml::XmlNode& attributes);
  void AddBarlines(const MeasureHead& head, xml::XmlNode& left, xml::XmlNode& right);
  void ResetPartsToStart();
  void AddFinalBarlines();
  static int16_t KeyOfMeasure(const MeasureHead& head, const XmlPart& part);

  // Key, time and transposition elements.
  xml::XmlNode CreateKey(int16_t key, XmlPart& part, const int16_t* oldKey);
  void ParseTimeSignature(const MeasureSpec& measure, int16_t& beats, int16_t& divBeat,
                          bool& compositeBeats, bool& compositeDiv, bool& symbol, int16_t staff);
  static void ConvertTime(int16_t beats, int16_t divBeat, int16_t& outBeats, int16_t& outBeatType);
  xml::XmlNode CreateTime(int16_t beats, int16_t divBeat, bool compositeBeats, bool compositeDiv,
                          bool symbol);
  xml::XmlNode CreateCompositeTimeSignature(int16_t beats, int16_t divBeat, bool compositeBeats,
                                            bool compositeDiv);
  static std::vector<std::string> CreateTimeUpper(int16_t record);
  static std::vector<std::string> CreateTimeLower(int16_t record);
  xml::XmlNode CreateTranspose(const XmlPart& part, bool suppressZero);
  xml::XmlNode CreateTransposeChromatic(int16_t interval, int16_t alteration, bool suppressZero);
  xml::XmlNode TransposeElement(int16_t diatonic, int16_t chromatic, int16_t octave, bool zero);

  // Clefs, staff details and staff styles.
  xml::XmlNode CreateClef(int16_t number);
  xml::XmlNode CreateStaffDetails(const XmlPart& part, int16_t staff);
  xml::XmlNode CreateStaffTuning(int16_t pitch);
  xml::XmlNode CreateMeasureStyleElement(const XmlPart& part, int16_t staff);
  void SwitchStaffStyle(xml::XmlNode measure, XmlPart& part, int16_t staff, int32_t edu,
                        bool atStart);
  void SwitchMeasureStyle(xml::XmlNode attributes, XmlPart& part, int16_t staff);
  xml::XmlNode Element(const std::string& name, const std::string& text = {});

  // Measure content, entries and durations.
  // Per-staff working tables and display flags of the part about to be loaded.
  void InitializePartTables(XmlPart& part);
  void LoadMeasure(XmlPart& part);
  void ConvertDurations(XmlPart& part);
  void CleanupInitialTempo();

public:
  // Language of a text by its letters: "de", "fr", "es" or empty.
  static std::string LanguageCheckWestern(const std::string& text);

private:
  // Run state.
  std::shared_ptr<xml::XmlDocument> document_;
  xml::XmlNode root_;
  int32_t FinaleVersion = 0;
  int16_t NumberOfStaves = 0;
  int16_t NumberOfMeasures = 0;
  int16_t NumberOfParts = 0;
  std::vector<std::unique_ptr<XmlPart>> XmlParts; // 1..NumberOfParts, index 0 unused
  std::vector<bool> SystemBreaks;                 // 1..NumberOfMeasures, index 0 unused
  std::vector<int32_t> FontLocales;               // from font 0
  std::vector<std::string> FontLanguages;
  std::array<LayerPrefs, 4> LayerPrefs_{};
  std::array<bool, 4> LayerCue{};
  std::array<bool, 4> LayerNoSpacing{};
  int16_t WedgeSpread = 0;
  int16_t InitialTempo = 0;
  std::string OnlyLyricType;
  int16_t EngraverFontSet = 0;
  bool ExtractedPart = false;
  bool BeamOption = false;
  bool KeyCancelOutgoing = false;
  bool KeyModeChange = false;
  bool DisplayTransposed = false;
  bool GraceAlwaysSlash = false;
  bool StemmingUseMetrics = false;
  bool AbbreviateCommon = false;
  bool AbbreviateCut = false;
  std::array<int16_t, 3> WarningFlags{};
  // Per staff of the part being loaded, from 1: the open measure-style element's name.
  std::vector<std::string> OpenMeasureStyle;
  // The measure loop's position, for the message that names part and measure.
  int16_t Measure = 0;
  std::string MeasureNumber;
  MassEdit MassEdit_;
  FinaleChannels FinaleChannels_;
  bool editOpen_ = false;
};

} // namespace ostin
