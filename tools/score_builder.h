#pragma once
// Builds documents of the host stand-in in musical terms: staves, groups, measures and the
// entries of each layer as note values and pitches. The builder writes the records and frames
// the host would hold for such a score and refuses a score that does not add up.
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "sim/document.h"

namespace ostin::tools {

// Note values in EDU.
inline constexpr int16_t kWhole = 4096;
inline constexpr int16_t kHalf = 2048;
inline constexpr int16_t kQuarter = 1024;
inline constexpr int16_t kEighth = 512;
inline constexpr int16_t kSixteenth = 256;
constexpr int16_t Dotted(int16_t value) {
  return static_cast<int16_t>(value + value / 2);
}

// Clef numbers of the host.
inline constexpr int16_t kTrebleClef = 0;
inline constexpr int16_t kAltoClef = 1;
inline constexpr int16_t kBassClef = 3;
inline constexpr int16_t kPercussionClef = 4;

// Right bar styles and repeat bits of a measure (MeasureSpec.Meflag).
inline constexpr int16_t kNormalBarline = 0x10;
inline constexpr int16_t kDoubleBarline = 0x20;
inline constexpr int16_t kForwardRepeat = 0x08;
inline constexpr int16_t kBackwardRepeat = 0x04;
inline constexpr int16_t kEndingAttached = 0x02;

// StaffSpec.Transposition of an instrument in B flat: a major second down, two sharps more.
inline constexpr int16_t kTransposeBFlat = (1 << 6) | 2;

// A score the builder cannot make: says what and where.
class BuildError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

// A key signature: fifths from -7 to 7, major or minor.
struct KeySig {
  int16_t Fifths = 0;
  bool Minor = false;
  // The host's key number: mode in the high byte, fifths in the low byte.
  int16_t Value() const;
  bool operator==(const KeySig&) const = default;
};

// A sounding pitch: step from C (0) to B (6), octave (4 holds middle C) and alteration.
struct Pitch {
  int16_t Step = 0;
  int16_t Octave = 4;
  int16_t Alter = 0;
  // "C4", "F#5", "Bb3", "Ebb2", "Gx4"; throws BuildError for anything else.
  static Pitch Parse(std::string_view text);
  bool operator==(const Pitch&) const = default;
};

// The pitch of a step of the key's scale, counted as 7 x octave + step (28 is middle C).
Pitch ScalePitch(int16_t diatonic, const KeySig& key);

struct NoteSpec {
  Pitch Sound;
  bool TieStart = false;
  bool TieEnd = false;
};

// One entry of a layer: a note, a chord, or a rest when it has no notes. Voice two of a
// layer runs right behind the voice-one entry that launches it and starts where that
// entry starts.
struct EntrySpec {
  int16_t Dura = kQuarter;
  std::vector<NoteSpec> Notes;
  bool VoiceTwo = false;
  bool LaunchesVoiceTwo = false;
};

// A note or chord: pitches separated by blanks; "~" behind a pitch starts a tie, in front of
// it ends one: Notes(kHalf, "C4 E4~"), Notes(kQuarter, "~E4").
EntrySpec Notes(int16_t dura, std::string_view pitches);
EntrySpec Rest(int16_t dura);

struct TimeSig {
  int16_t Beats = 4;
  int16_t DivBeat = kQuarter;
  int32_t Duration() const { return int32_t{Beats} * DivBeat; }
};

struct MeasureOptions {
  KeySig Key;
  TimeSig Time;
  std::optional<TimeSig> Shown; // a time shown other than the one played: pickups
  int16_t Meflag = kNormalBarline;
};

// The MIDI sound of a staff: an instrument of the document's orchestra.
struct Sound {
  std::string Name;
  int16_t Program = 1; // General MIDI, from 1
  int16_t Channel = 0; // from 1; 0 takes the next free one
};

struct StaffOptions {
  std::string FullName, AbbrvName;
  int16_t Clef = kTrebleClef;
  int16_t Transposition = 0;
  std::optional<Sound> Instrument;
};

struct GroupOptions {
  int16_t FirstStaff = 1, LastStaff = 1;
  int16_t Bracket = 0; // 3: brace, 1: line, 2 and others: bracket
  std::string FullName, AbbrvName;
};

// One drum of a percussion map: its MIDI key, its place on the staff in steps from middle
// C in treble positions, its noteheads and name.
struct DrumNote {
  int16_t MidiKey = 0;
  int16_t StaffPos = 0;
  int16_t ClosedNotehead = 207;
  int16_t OpenNotehead = 250;
  std::string Name;
};

// The header of a saved document: title, composer, copyright line and the day of its last
// change. A document that was never saved has none.
struct HeaderSpec {
  std::string Title, Composer, Copyright;
  int16_t Year = 0, Month = 0, Day = 0;
};

class ScoreBuilder {
public:
  // Keeps the fonts and preferences of the base document and drops its header, staves and
  // music.
  explicit ScoreBuilder(sim::Document base);
  // A builder over the host's default document for a new score.
  static ScoreBuilder FromDefaultDocument();

  int16_t AddStaff(const StaffOptions& options);
  // Makes a staff a drum staff of a new percussion map with these drums.
  void MakePercussionStaff(int16_t staff, const std::string& title,
                           const std::vector<DrumNote>& drums);
  void AddGroup(const GroupOptions& options);
  // Writes the document's header, as saving it would; throws BuildError for a date that is
  // no day of a year from 1 to 9999.
  void SetHeader(const HeaderSpec& header);
  int16_t AddMeasure(const MeasureOptions& options);

  // The entries of a layer (0 to 3) of a staff in a measure; pitches are sounding pitches.
  void SetLayer(int16_t staff, int16_t measure, int16_t layer, std::vector<EntrySpec> entries);
  // The entries given so far, for a caller that ties into the next measure; nullptr if none.
  std::vector<EntrySpec>* Layer(int16_t staff, int16_t measure, int16_t layer);
  // Clefs inside a measure, by position in EDU; the last stays in force behind it.
  void SetClefChanges(int16_t staff, int16_t measure,
                      std::vector<std::pair<int32_t, int16_t>> clefs);

  // Any record by field name, made when missing: repeats, endings, number regions and the
  // like. Unknown records or fields throw BuildError.
  void Set(std::string_view className, sim::RecordKey key,
           std::initializer_list<std::pair<const char*, int32_t>> fields);
  void SetBlock(std::string_view className, sim::RecordKey key, const char* field,
                std::vector<int32_t> values);
  // The text in UTF-8; the record keeps it in the host's code page.
  void SetText(std::string_view className, sim::RecordKey key, const char* field,
               const std::string& text);
  // A text block of a name; its number.
  int16_t AddNameText(const std::string& text);

  int16_t Staves() const { return staves_; }
  int16_t Measures() const { return measures_; }

  // Writes the frames and frame holders and gives the document. Throws BuildError for a
  // layer whose entries do not fill its measure, or a frame count beyond the host's.
  sim::Document Build();

private:
  sim::StoredRecord& Row(std::string_view className, sim::RecordKey key);
  int FieldOf(std::string_view className, const char* field) const;
  int32_t Field(std::string_view className, sim::RecordKey key, const char* field);
  KeySig KeyOf(int16_t measure);
  int32_t DurationOf(int16_t measure);
  void AddSound(int16_t staff, const Sound& sound);
  void CheckPlace(int16_t staff, int16_t measure, const char* what) const;
  void WriteHolders();
  sim::StoredEntry MakeEntry(const EntrySpec& spec, const KeySig& key);
  void CheckLayer(int16_t staff, int16_t measure, int16_t layer,
                  const std::vector<EntrySpec>& entries);

  sim::Document doc_;
  int16_t staves_ = 0;
  int16_t measures_ = 0;
  int16_t groups_ = 0;
  int16_t orchestra_ = 0;
  int16_t channel_ = 0;
  int16_t clefLists_ = 0;
  std::map<int16_t, int16_t> staffClef_;
  std::map<std::tuple<int16_t, int16_t, int16_t>, std::vector<EntrySpec>> layers_;
  std::map<std::pair<int16_t, int16_t>, std::vector<std::pair<int32_t, int16_t>>> clefChanges_;
};

} // namespace ostin::tools
