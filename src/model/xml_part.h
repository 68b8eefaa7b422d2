#pragma once
// The running state of one MusicXML part while a measure loop walks it, on export and import.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/records.h"
#include "model/percussion.h"
#include "xml/xml_node.h"

namespace ostin {

class XmlPart {
public:
  XmlPart();

  // Staff setup, percussion and stems.
  // Makes the StaffSpec records of the part's staves, its percussion map and its group.
  void InitializeStaffSpecs();
  // Sets Staves from the part's staves elements, at least 1.
  void ComputeStaves();
  // Takes a staff record back to a neutral staff: no alternate notation, font, clef or
  // transposition, and the layout flags the import sets itself cleared.
  void ClearStaffSpec(StaffSpec& spec);
  // Fills StaffSpecs(index) from the first measure and the part's content, and saves it.
  void EditStaffSpec(int16_t index);
  // The fretted instrument of a tuning (staff-tuning elements), found or made.
  void FindFretInst(const xml::XmlNodeList& tuningList, int16_t& id);
  // Makes the bracketed group of a part of several staves, named after the part.
  void InitializeGroupSpec();
  // Writes the transposition of a transpose element into staff index and saves it.
  void TransposeStaffSpec(int16_t index, const xml::XmlNode& transpose);
  // Fills PercussionMap from the drum staff of the first staff, keyed by MIDI key + 1.
  void InitializePercussion(const std::string& instrumentPrefix);
  // Makes a percussion map on import from the score-part and the notes, and makes the first
  // staff a percussion staff with it; silent and without a map when it gives up.
  void CreatePercussionMap();
  // The percussion entry of a key; nullptr when there is none.
  const XmlPercussion* Percussion(const std::string& key) const;

  // Identity and place.
  int16_t Number = 0;
  const xml::XmlNode& Part() const { return part_; }
  const xml::XmlNode& ScorePart() const { return scorePart_; }
  // Each finds the other element by the id, which is kept.
  void SetPart(const xml::XmlNode& part);
  void SetScorePart(const xml::XmlNode& scorePart);
  const std::string& Id() const { return id_; }
  int16_t StartStaff = 0;
  int16_t StartSlot = 0;
  int16_t Staves() const { return staves_; }
  // Resizes every per-staff array keeping what it holds, and resets the style changes.
  void SetStaves(int16_t staves);
  int16_t Instruments = 0;
  int16_t Measure = 0;
  std::string MeasureNumber;
  int32_t Counter = 0;
  int32_t FinaleVersion = 2000;

  // Time.
  int32_t Divisions() const { return divisions_; }
  int16_t XmlBeats() const { return xmlBeats_; }
  int16_t XmlBeatType() const { return xmlBeatType_; }
  void SetDivisions(int32_t divisions);
  void SetXmlBeats(int16_t beats);
  void SetXmlBeatType(int16_t beatType);
  int32_t DivisionsPerBar() const { return divisionsPerBar_; }
  int16_t FinaleBeats = 0;
  int16_t FinaleDivbeat = 0;
  bool AbbreviateTime = false;
  bool UseDisplayTimeSig = false;
  bool NoTime = false;

  // Key and transposition.
  int16_t FinaleKey() const { return finaleKey_; }
  void SetFinaleKey(int16_t key);
  const xml::XmlNode& Key() const { return key_; }
  void SetKey(const xml::XmlNode& key);
  int16_t Fifths = 0;
  bool NonLinear = false;
  std::string Tonic;
  int16_t Octave = 4;
  bool IgnoreKey = false;
  bool FloatKeys = false;
  bool FloatTime = false;
  const xml::XmlNode& Transpose() const { return transpose_; }
  void SetTranspose(const xml::XmlNode& transpose);
  int16_t TransposeInterval = 0;
  int16_t TransposeKeySig = 0;
  int16_t TransposeKeyOptInterval = 0;
  int16_t TransposeKeyOptKeySig = 0;
  bool TransposeKeyOpt = false;
  bool TransposeChromatic = false;
  int16_t TransposeChromaticInterval = 0;
  int16_t TransposeChromaticAlter = 0;
  int16_t TransposeChromaticSteps = 0;

  // Per staff, from 1 to Staves.
  const std::shared_ptr<StaffSpec>& StaffSpecs(int16_t index) const {
    return staffSpecs_.at(index);
  }
  // Empties the staff's layer count and takes its clef; the first staff also gives the floats.
  void SetStaffSpecs(int16_t index, std::shared_ptr<StaffSpec> spec);
  int16_t Clefs(int16_t index) const { return clefs_.at(index); }
  void SetClefs(int16_t index, int16_t clef);
  bool ClefChange = true;
  std::vector<int16_t> StaffLines;
  std::vector<std::string> StaffStepPitch;
  std::vector<int16_t> StaffStepOctave;
  std::vector<std::string> StaffLinePitch;
  std::vector<int16_t> StaffLineOctave;
  std::vector<int16_t> LineOffset;
  std::vector<int16_t> AlternateNotation;
  std::vector<int16_t> AlternateLayer;
  std::vector<int16_t> Layers;
  std::vector<std::vector<bool>> LayerVisible; // [staff][layer 0 to 3]
  std::vector<std::string> NoteheadFont;
  std::vector<std::string> AccidentalFont;
  std::vector<std::string> ExpressionInstruments;
  std::vector<std::vector<std::string>> LayerInstruments; // [staff][layer 0 to 3]
  std::vector<int16_t> StyleChangeMeasure;
  std::vector<int32_t> StyleChangeEdu;

  // Tablature.
  int16_t TabStaff = 0;
  int16_t Frets = 0;
  int16_t Strings = 0;
  std::vector<int16_t> StringTuning;
  int16_t Capo = 0;
  bool DiatonicFrets = false;
  bool UseTabLetters = false;

  // Percussion and voices.
  bool PercussionStaff = false;
  XmlPercussions PercussionMap;
  bool StavesComputed = false; // ComputeStaves has run
  int16_t Voices = 0;
  bool VoicesAssigned = false;
  std::vector<int16_t> VoicesUsed;
  std::vector<int16_t> VoiceLayer;
  std::vector<int16_t> VoiceStaff;
  int16_t MaxVoices = 8;

  // The letter of the tonic of a key of that many fifths; empty outside -14 to 14.
  static std::string GetTonic(int16_t fifths, bool minor);
  // The tonic letter of the measure's non-traditional key; "C" when the host has none.
  static std::string NonLinearTonic(int16_t measure);
  // Alteration of a step in the key in force.
  int16_t KeySignatureAlter(const std::string& step) const;
  // Moves the transposition interval by an octave's worth when simplifying wraps the key.
  void SetKeySimplification();
  // The octave at which Tonic stands for Tcd 0, from the transposition.
  void SetOctave();

  // Takes a packed StaffSpec.Transposition in either of its forms.
  void InitializeTransposition(int16_t value);
  // The packed key-based transposition of a transpose element, keeping its parts.
  int16_t TransposeValue(const xml::XmlNode& transpose);
  // TransposeValue, then the octave update of SetTranspose.
  int16_t SetTransposeStaffStyle(const xml::XmlNode& transpose);
  // Takes the staff's clef, the transposed one when the staff has a clef of its own.
  void SetClef(int16_t index, bool setValue);
  // The reference pitches of the staff from its clef and line offset.
  void SetStaffStep(int16_t index);
  // The top line position and line count of a staff's line settings.
  static void CountLines(int16_t topLines, int16_t botLines, int16_t& top, int16_t& count);

  // Takes clef, key, notation, layers, fonts, lines and transposition from the staff's
  // StaffSpecs, loaded just before with the styles in force.
  void InitializeFromStaffStyle(int16_t index);
  // Frets, strings and tuning of the tablature staff's fretted instrument.
  void InitializeStringTuning();
  // Where the staff style in force on the staff at Measure ends.
  void NextStyleChange(int16_t index);
  // True when the point lies outside the range of the staff style loaded for the staff.
  bool OutOfRange(int16_t staff, int32_t edu) const;
  // Index in the part of a host staff number; 0 for a part of one staff.
  int16_t FindStaff(int16_t instrument) const;
  // True when the part has neither a transposition nor a percussion clef.
  bool NonTransposing() const;
  // A time signature that fits a measure of the given divisions, when it differs from the
  // one in force.
  void ActualTimeSignature(int32_t duration, int16_t& beats, int16_t& divBeat, bool& found) const;

  // Events and voices.
  // Maps the voice numbers of the whole part one to one on staves and layers where they allow
  // it; else lowers MaxVoices, to 0 when no note has a voice.
  void AssignVoices();
  // Renumbers the voices that export wrote so that they run from 1 without gaps.
  void OptimizeVoices();
  // The voice tables by voice number, 1 to MaxVoices: a read out of range gives false or 0, a
  // write out of range is ignored.
  bool GetVoicesUsed(int16_t index) const;
  void SetVoicesUsed(int16_t index, bool value);
  int16_t GetVoiceStaff(int16_t index) const;
  void SetVoiceStaff(int16_t index, int16_t staff);
  int16_t GetVoiceLayer(int16_t index) const;
  void SetVoiceLayer(int16_t index, int16_t layer);

private:
  void RecomputeDivisionsPerBar();
  void ApplyTransposeOctave(const xml::XmlNode& transpose);

  xml::XmlNode part_, scorePart_, key_, transpose_;
  std::string id_;
  int16_t staves_ = 0;
  int32_t divisions_ = 0;
  int16_t xmlBeats_ = 0;
  int16_t xmlBeatType_ = 0;
  int32_t divisionsPerBar_ = 0;
  int16_t finaleKey_ = 0;
  std::vector<std::shared_ptr<StaffSpec>> staffSpecs_;
  std::vector<int16_t> clefs_;
  std::string defaultNoteheadFont_, defaultAccidentalFont_;
};

} // namespace ostin
