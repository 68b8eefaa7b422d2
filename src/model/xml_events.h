#pragma once
// The import plan of one MusicXML measure: for each child element the staff, layer, position
// and length it lands on, and the entry and layer counts that the frames are sized from.
#include <array>
#include <cstdint>
#include <vector>

#include "model/xml_part.h"
#include "xml/xml_node.h"

namespace ostin {

// Failures of planning that the importer tells apart.
inline constexpr int32_t kTooManyLayers = Code(0x800404fd);
inline constexpr int32_t kAssignFailed = Code(0x800404f5);
inline constexpr int32_t kAssignByVoiceFailed = Code(0x800404f6);

// One element of a measure and where it lands; a filler has no element.
class XmlEvent {
public:
  xml::XmlNode Element;
  int16_t Staff = 0;
  int16_t Slot = 0;
  int16_t DisplayStaff = 0;
  int16_t Layer = 0;
  int32_t Start = 0;
  int16_t Duration = 0;
  int32_t XmlDuration = 0;
  bool NewEntry = false;
  bool NewNote = false;
  bool NoOutput = false;
};

// Whether each staff of the part has music in the measure, indexed from 1.
void CheckForNotes(const xml::XmlNode& measure, int16_t staves, std::vector<bool>& hasNotes);

class XmlEvents {
public:
  // Plans the measure for the part, replacing what the collection held. The part's divisions
  // come back as they went in.
  void Assign(const xml::XmlNode& measure, XmlPart& part);

  void Add(const XmlEvent& event) { events_.push_back(event); }
  // From 1.
  XmlEvent& Item(int32_t index) { return events_.at(static_cast<std::size_t>(index - 1)); }
  const XmlEvent& Item(int32_t index) const {
    return events_.at(static_cast<std::size_t>(index - 1));
  }
  void Remove(int32_t index) {
    Item(index);
    events_.erase(events_.begin() + (index - 1));
  }
  int32_t Count() const { return static_cast<int32_t>(events_.size()); }
  std::vector<XmlEvent>::const_iterator begin() const { return events_.begin(); }
  std::vector<XmlEvent>::const_iterator end() const { return events_.end(); }

  bool ByVoice() const { return byVoice_; }
  int16_t Staves() const { return staves_; }
  // Counts by staff 1 to Staves and layer 0 to 3; 0 outside.
  int16_t Entries(int16_t staff, int16_t layer) const;
  int16_t VisibleEntries(int16_t staff, int16_t layer) const;
  int16_t Layers(int16_t index) const;
  int16_t VisibleLayers(int16_t index) const;
  int32_t MaxDivisions() const { return maxDivisions_; }

private:
  using LayerCounts = std::array<int16_t, 4>;
  struct Pass;

  void Clear();
  // Sizes the counts for the part's staves, empties the part's layers, finds the music.
  void Prepare(const XmlPart& part);
  void AddEntryCount(int16_t staff, int16_t layer, bool visible);
  void AssignByNote(const xml::XmlNode& measure, XmlPart& part);
  void AssignByVoice(const xml::XmlNode& measure, XmlPart& part, bool& ok);
  // The length of a forward that directly answers a backup, as far as it fits in it.
  void MatchingForward(const xml::XmlNode& backup, int32_t backupDuration, const XmlEvent& event,
                       const XmlPart& part, int32_t& result);

  std::vector<XmlEvent> events_;
  bool byVoice_ = false;
  int16_t staves_ = 0;
  std::vector<LayerCounts> entries_, visibleEntries_;
  std::vector<int16_t> layers_, visibleLayers_;
  int32_t maxDivisions_ = 0;
  // Working tables of one pass, by staff from 1.
  std::vector<bool> hasNotes_;
  std::vector<std::array<int32_t, 4>> layerPosition_;
};

} // namespace ostin
