#pragma once
// Percussion instruments by MIDI key, and the notehead font that goes with the document's
// music font. The maps themselves are made by XmlPart.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "xml/xml_document.h"

namespace ostin {

inline constexpr int32_t kDrumStaffTag = 17491; // 0x4453
inline constexpr int16_t kDefaultClosedNotehead = 207;
inline constexpr int16_t kDefaultOpenNotehead = 250;

struct XmlPercussion {
  int16_t MidiIndex = 0; // export: MIDI key + 1; import: the key 0 to 127
  std::string InstrumentID;
  std::string InstrumentName;
  int16_t MidiNote = 0; // MIDI key + 1
  int16_t StaffStep = 0;
  int16_t ClosedNotehead = kDefaultClosedNotehead;
  int16_t OpenNotehead = kDefaultOpenNotehead;
  bool Active = false;
};

// Percussion entries by key; an absent key gives nullptr.
class XmlPercussions {
public:
  // Keeps the first entry of a key.
  void Add(const XmlPercussion& item, const std::string& key) {
    if (items_.emplace(key, item).second) order_.push_back(key);
  }
  int32_t Count() const { return static_cast<int32_t>(items_.size()); }
  const XmlPercussion* Item(const std::string& key) const {
    const auto found = items_.find(key);
    return found == items_.end() ? nullptr : &found->second;
  }
  void Remove(const std::string& key) {
    items_.erase(key);
    std::erase(order_, key);
  }
  void RemoveAll() {
    items_.clear();
    order_.clear();
  }
  // The entries in the order they were added.
  std::vector<const XmlPercussion*> InOrder() const {
    std::vector<const XmlPercussion*> list;
    for (const std::string& key : order_)
      list.push_back(&items_.at(key));
    return list;
  }

private:
  std::map<std::string, XmlPercussion> items_;
  std::vector<std::string> order_;
};

// The percussion notehead font that goes with the document's default music font.
std::string PercussionFont(const std::string& musicFont);

} // namespace ostin
