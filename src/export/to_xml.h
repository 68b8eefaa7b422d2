#pragma once
// The export engine: one pass over the open document builds a whole MusicXML
// score-partwise tree in memory, which is written to disk once at the end. The host's
// document stays as it was: the edit the run opens is always cancelled.
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/layer_prefs.h"
#include "host/mass_edit.h"
#include "xml/xml_document.h"

namespace ostin {

class ToXml {
public:
  ToXml() = default;
  ToXml(const ToXml&) = delete;
  ToXml& operator=(const ToXml&) = delete;

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
  void LoadPartMeasures(int16_t partIndex);
  void LoadMeasure(int16_t partIndex);
  void ConvertDurations(int16_t partIndex);
  void PruneInstruments(int16_t partIndex);
  void CleanupInitialTempo();
  void SaveDocument();
  void CloseEdit();

  // Run state.
  std::shared_ptr<xml::XmlDocument> document_;
  xml::XmlNode root_;
  int32_t FinaleVersion = 0;
  int16_t NumberOfStaves = 0;
  int16_t NumberOfMeasures = 0;
  int16_t NumberOfParts = 0;
  std::vector<bool> SystemBreaks; // 1..NumberOfMeasures, index 0 unused
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
  std::array<int16_t, 3> WarningFlags{};
  // The measure loop's position, for the message that names part and measure.
  int16_t Measure = 0;
  std::string MeasureNumber;
  MassEdit MassEdit_;
  bool editOpen_ = false;
  // The staves each part of the run owns.
  struct PartRun {
    int16_t StartSlot = 1;
    int16_t StartStaff = 0;
    int16_t Staves = 1;
  };
  std::vector<PartRun> parts_;
};

} // namespace ostin
