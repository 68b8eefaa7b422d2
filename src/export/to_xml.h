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
#include "model/measure_items.h"
#include "model/percussion.h"
#include "model/stemming.h"
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
  [[noreturn]] static void RaiseAtPosition(int16_t partIndex, const std::string& measureNumber,
                                           int32_t foreignNumber);
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
  struct MeasureState;
  struct BeamChain;
  // Per-staff working tables and display flags of the part about to be loaded.
  void InitializePartTables(XmlPart& part);
  void LoadMeasure(XmlPart& part);
  xml::XmlNode MeasureElementOf(const XmlPart& part) const;
  void CheckLayerFits(const MeasureState& state, const XmlPart& part, int16_t staff);
  void LoadStaff(MeasureState& state, XmlPart& part, int16_t staff);
  void ReadHolderClefs(MeasureState& state, XmlPart& part, int16_t staff);
  void CountFrameLayers(MeasureState& state, int16_t measure);
  void LoadLayer(MeasureState& state, XmlPart& part, int16_t staff, int16_t layer);
  void LoadLayerEntry(MeasureState& state, XmlPart& part, int16_t staff, int16_t index);
  void SwitchVoice(MeasureState& state, XmlPart& part, int16_t staff, bool voiceTwo);
  void PlaceEntryStem(MeasureState& state, const XmlPart& part, int16_t staff, int16_t index);
  void LinkBeams(MeasureState& state, Entry& entry, int16_t staff);
  void WritePendingClef(MeasureState& state, XmlPart& part, int16_t staff);
  void TakeNextClef(MeasureState& state);
  void WriteClefsLeftOver(MeasureState& state, XmlPart& part, int16_t staff);
  void TestStyleChange(MeasureState& state, XmlPart& part, int16_t staff);
  void LoadStaffWithoutFrames(MeasureState& state, XmlPart& part, int16_t staff, bool hasHolder);
  void LoadItemsAt(MeasureState& state, XmlPart& part, int32_t position, bool allRemaining);
  void WriteItems(MeasureState& state);
  void FinishStaff(MeasureState& state, XmlPart& part, xml::XmlNode target);
  void CloseBeamChain(BeamChain& chain, int16_t staff);
  xml::XmlNode StaffClef(int16_t clef, int16_t staffNumber);
  xml::XmlNode CursorMove(const char* name, int32_t duration);
  void NoteVoice(XmlPart& part, int16_t voice);
  void LoadMeasureItems(int16_t measure, int32_t position, XmlPart& part, int16_t slot,
                        int16_t staffNumber, std::vector<xml::XmlNode>& hereElements,
                        xml::XmlNode& pendingNotations, std::vector<xml::XmlNode>& firstElements,
                        bool allRemaining);
  xml::XmlNode LoadMeasureItem(const MeasureItem& item, XmlPart& part, int16_t slot,
                               bool& placeFirst, int16_t staffNumber);
  // The offset of a direction item against the cursor; 0 within 47 EDU either way.
  static int32_t ItemOffset(bool placeFirst, int32_t itemEdu, int32_t position);
  // An item is due when the cursor has come within 48 EDU of it.
  static bool ItemDue(int32_t itemEdu, int32_t position) { return position >= itemEdu - 48; }
  xml::XmlNode LoadEmptyMeasure(xml::XmlNode measure, XmlPart& part, int16_t staff,
                                int32_t& duration);
  void AddClef(xml::XmlNode measure, xml::XmlNode clef, int16_t number);
  void AddBeams(xml::XmlNode element, int16_t previous, int16_t thisLevels, int16_t next);
  // Puts notations into a note before its first lyric, or at its end.
  static void AddNotations(xml::XmlNode note, xml::XmlNode notations);
  // Inserts child before the first child that the path selects, or at the end.
  static void InsertBeforeFirstOf(xml::XmlNode parent, xml::XmlNode child,
                                  const std::string& following);

  // Entries and notes.
  struct EntryContext;
  xml::XmlNode LoadEntry(Entry& entry, Tgf& tgf, xml::XmlNode measure, XmlPart& part, int16_t staff,
                         int16_t entryIndex);
  xml::XmlNode LoadForward(EntryContext& context);
  xml::XmlNode LoadNotes(EntryContext& context);
  xml::XmlNode LoadOneNote(EntryContext& context, Note& note, int16_t index);
  xml::XmlNode LoadRest(EntryContext& context);
  xml::XmlNode NotePitch(EntryContext& context, Note& note, int16_t& key);
  void AddNoteType(EntryContext& context, Note& note, xml::XmlNode element, bool grace, bool cue,
                   xml::XmlNode& notehead);
  void AddNoteNotations(EntryContext& context, Note& note, xml::XmlNode element, int16_t index,
                        bool tieStart, bool tieEnd);
  int16_t NoteStaff(EntryContext& context, Note& note);
  void AddInstrument(xml::XmlNode element, const std::string& id);
  xml::XmlNode CreatePitch(int16_t displacement, int16_t alteration, XmlPart& part);
  xml::XmlNode CreateUnpitched(int16_t key, int16_t displacement, int16_t staff, XmlPart& part);
  xml::XmlNode CreateAccidental(int16_t alter, int32_t entnum, int16_t noteID,
                                const std::string& font, bool& isQuarterTone);
  xml::XmlNode CreateNotehead(int16_t character, const std::string& font, int32_t dura,
                              bool option);
  xml::XmlNode CreatePercussionInstrument(int16_t key, XmlPart& part);
  xml::XmlNode StartOfTie(xml::XmlNode note);
  int16_t CheckAppoggiatura(Tgf& tgf, int16_t entryIndex);
  std::string FindPrintObject(int16_t layer, int16_t staff, const XmlPart& part);
  xml::XmlNode LoadNoteheadDetails(int32_t entnum, int16_t noteID, const std::string& font,
                                   int32_t dura, bool option, int16_t& percent);
  std::string LoadTieAlteration(Entry& entry, Note& note);
  // The percussion instrument of a MIDI key + 1 in the part's map; nullptr when it has none.
  static const XmlPercussion* PercussionOf(const XmlPart& part, int16_t key);

  // Durations and finishing passes.
  // Note type and dots of a length in EDU; an unknown length leaves both untouched.
  static void ParseDuration(int32_t duration, std::string& type, int16_t& dots);
  void ConvertDurations(XmlPart& part);
  void RemoveDuplicateWavyLine(xml::XmlNode element);
  void CleanupInitialTempo();

  // State of the measure loop, shared by measure content, entries and the marks they carry.
  // Display flags by staff of the part being loaded, from 1.
  std::vector<bool> ShowStems, ShowBeams, ShowTuplets, ShowDots, ShowRests, ShowTies;
  std::vector<bool> StaffStemsUp, StaffStemsDown;
  // Octave lines and wavy lines open on each staff; set by the shapes that draw them.
  std::vector<int16_t> OctaveShift;
  std::vector<bool> WavyLineOpen;
  // The stem of the current layer and entry, and of the beam group running in each voice.
  std::string LayerStem, XmlStem, FinaleStem;
  bool BeamStart = false;
  std::array<std::string, 2> LastBeamOnStem;
  Stemming Stemming_;
  // The items of each staff slot from 1, and the 1-based index of the next; 0 when done.
  std::vector<ostin::MeasureItems> MeasureItems_;
  std::vector<int32_t> MeasureItemCursor;
  // A tempo mark of the score has written a sound with a tempo.
  bool TempoWritten = false;

private:
  // Run state.
  std::shared_ptr<xml::XmlDocument> document_;
  xml::XmlNode root_;
  int32_t FinaleVersion = 0;
  int16_t NumberOfStaves = 0;
  int16_t NumberOfMeasures = 0;
  int16_t NumberOfParts = 0;
  std::vector<std::unique_ptr<XmlPart>> XmlParts;         // 1..NumberOfParts, index 0 unused
  std::vector<std::vector<xml::XmlNode>> MeasureElements; // by part and measure, from 1
  std::vector<bool> SystemBreaks;                         // 1..NumberOfMeasures, index 0 unused
  std::vector<int32_t> FontLocales;                       // from font 0
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
