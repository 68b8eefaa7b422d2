// The voice state of a part: the import map of voices on staves and layers, and the
// renumbering of the voices that export wrote.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "model/arithmetic_numbers.h"
#include "model/xml_part.h"
#include "shell/failure.h"

namespace ostin {

namespace {

constexpr int32_t kAssignVoicesFailed = Code(0x80040502);
constexpr int32_t kOptimizeVoicesFailed = Code(0x80040499);
constexpr int32_t kNoPartForVoices = Code(0x80040503);
constexpr int32_t kNoStavesForVoices = Code(0x80040504);

// Voices of a staff take the layers 0 to 3; a fifth one doesn't fit.
constexpr int16_t kTopLayer = 3;
// A voice must keep this share of its notes, in percent, on one staff to be mapped.
constexpr int32_t kStaffSharePercent = 85;

// The value at a voice number inside 1 to the highest voice, else the fallback.
template <class Value>
Value Read(const std::vector<Value>& table, int16_t index, int16_t maxVoices, Value fallback) {
  if (index < 1 || index > maxVoices || static_cast<std::size_t>(index) >= table.size())
    return fallback;
  return table[static_cast<std::size_t>(index)];
}

// Writes at a voice number inside 1 to the highest voice, growing the table to it; ignores
// any other number.
template <class Value>
void Write(std::vector<Value>& table, int16_t index, int16_t maxVoices, Value value) {
  if (index < 1 || index > maxVoices) return;
  if (static_cast<std::size_t>(index) >= table.size())
    table.resize(static_cast<std::size_t>(maxVoices) + 1);
  table[static_cast<std::size_t>(index)] = value;
}

int32_t CountOf(const xml::XmlNode& part, const std::string& xpath) {
  return part.selectNodes(xpath).length();
}

// The notes and forwards of a voice, on one staff when staff is at least 1.
int32_t VoiceCount(const xml::XmlNode& part, int16_t voice, int16_t staff) {
  std::string filter = "[voice='" + std::to_string(voice) + "']";
  if (staff >= 1) filter += "[staff='" + std::to_string(staff) + "']";
  return CountOf(part, "measure/note" + filter + " | measure/forward" + filter);
}

} // namespace

bool XmlPart::GetVoicesUsed(int16_t index) const {
  return Read<int16_t>(VoicesUsed, index, MaxVoices, 0) != 0;
}

void XmlPart::SetVoicesUsed(int16_t index, bool value) {
  Write<int16_t>(VoicesUsed, index, MaxVoices, value ? 1 : 0);
}

int16_t XmlPart::GetVoiceStaff(int16_t index) const {
  return Read<int16_t>(VoiceStaff, index, MaxVoices, 0);
}

void XmlPart::SetVoiceStaff(int16_t index, int16_t staff) {
  Write(VoiceStaff, index, MaxVoices, staff);
}

int16_t XmlPart::GetVoiceLayer(int16_t index) const {
  return Read<int16_t>(VoiceLayer, index, MaxVoices, 0);
}

void XmlPart::SetVoiceLayer(int16_t index, int16_t layer) {
  Write(VoiceLayer, index, MaxVoices, layer);
}

void XmlPart::AssignVoices() {
  Guarded("XmlPart AssignVoices error ", kAssignVoicesFailed, [&] {
    VoicesAssigned = false;
    if (!part_) RaiseLogged("No XML part to use to assign voices", kNoPartForVoices);
    if (staves_ < 1) RaiseLogged("No XML staves to use to assign voices", kNoStavesForVoices);
    const int32_t notes = CountOf(part_, "measure/note");
    const int32_t unvoiced = CountOf(part_, "measure/note[not(voice)]");
    if (notes == unvoiced) {
      MaxVoices = 0;
      return;
    }
    if (unvoiced > 0) return;

    // Each staff hands out its layers in rising order of the voice numbers.
    std::vector<int16_t> lastLayer(static_cast<std::size_t>(staves_) + 1, -1);
    bool abandoned = false;
    int32_t total = 0;
    int16_t visited = 0;
    for (int16_t v = 1; v <= MaxVoices && !abandoned && total < notes; ++v) {
      visited = v;
      const int32_t count = VoiceCount(part_, v, 0);
      if (count == 0) {
        SetVoiceStaff(v, 0);
        SetVoiceLayer(v, -1);
        SetVoicesUsed(v, false);
        continue;
      }
      int16_t staff = 1;
      if (staves_ > 1) {
        int32_t largest = -1;
        for (int16_t s = 1; s <= staves_; ++s) {
          const int32_t onStaff = VoiceCount(part_, v, s);
          if (onStaff > largest) {
            largest = onStaff;
            staff = s;
          }
        }
        abandoned = RoundHalfEven(largest * 100.0 / count) < kStaffSharePercent;
      }
      if (!abandoned) abandoned = ++lastLayer[static_cast<std::size_t>(staff)] > kTopLayer;
      if (!abandoned) {
        SetVoiceStaff(v, staff);
        SetVoiceLayer(v, lastLayer[static_cast<std::size_t>(staff)]);
        SetVoicesUsed(v, true);
      }
      total += count;
    }
    if (visited < MaxVoices) {
      MaxVoices = visited;
      const auto size = static_cast<std::size_t>(MaxVoices) + 1;
      VoicesUsed.resize(std::min(VoicesUsed.size(), size));
      VoiceStaff.resize(std::min(VoiceStaff.size(), size));
      VoiceLayer.resize(std::min(VoiceLayer.size(), size));
    }
    VoicesAssigned = !abandoned && total >= notes;
  });
}

void XmlPart::OptimizeVoices() {
  Guarded("XmlPart OptimizeVoices error ", kOptimizeVoicesFailed, [&] {
    if (!part_ || Voices < 1) return;
    // New numbers of the used voices, counted without gaps; taken before any is changed, so
    // that a voice renumbered to a later number isn't met again.
    std::map<std::string, std::string> renumbered;
    int16_t counter = 0;
    for (int16_t v = 1; v <= MaxVoices; ++v)
      if (GetVoicesUsed(v)) renumbered[std::to_string(v)] = std::to_string(++counter);
    xml::XmlNodeList voices = part_.getElementsByTagName("voice");
    for (xml::XmlNode voice = voices.nextNode(); voice; voice = voices.nextNode()) {
      auto found = renumbered.find(voice.text());
      // A voice that keeps its number stays as it is.
      if (found == renumbered.end() || found->first == found->second) continue;
      xml::XmlNode copy = voice.cloneNode(false);
      copy.text(found->second);
      voice.parentNode().replaceChild(copy, voice);
    }
  });
}

} // namespace ostin
