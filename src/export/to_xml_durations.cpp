// Durations from EDU to the part's divisions, and the passes that finish the tree.
#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <string_view>

#include "export/to_xml.h"
#include "model/arithmetic_duration.h"
#include "model/arithmetic_numbers.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kConvertDurationsHandler = Code(0x800402DE);
constexpr int32_t kCleanupInitialTempoHandler = Code(0x800402D9);
constexpr int32_t kParseDurationHandler = Code(0x800402B2);
constexpr int32_t kRemoveDuplicateWavyLineHandler = Code(0x800402B3);

constexpr int32_t kQuarter = 1024;
// Below this unit, directions with offsets keep the resolution of a 32nd note.
constexpr int32_t kOffsetUnit = 128;
constexpr int kMaxDots = 4;

struct NoteType {
  int32_t Base;
  std::string_view Type;
};
constexpr std::array<NoteType, 11> kNoteTypes{{{16, "256th"},
                                               {32, "128th"},
                                               {64, "64th"},
                                               {128, "32nd"},
                                               {256, "16th"},
                                               {512, "eighth"},
                                               {1024, "quarter"},
                                               {2048, "half"},
                                               {4096, "whole"},
                                               {8192, "breve"},
                                               {16384, "long"}}};

// The number of a child's text; nothing when the child is missing or not a number.
std::optional<double> ChildNumber(const xml::XmlNode& element, const std::string& name) {
  const auto text = ChildText(element, name);
  return text ? NumericValue(*text) : std::nullopt;
}

int32_t DotsOf(const xml::XmlNode& note) {
  return note.selectNodes("dot").length();
}

// The elements a part's durations are read from and written to, found in one walk of the
// part. In a part, note elements stand only in measures and divisions elements only in their
// attributes, so no path is needed.
struct DurationElements {
  std::vector<xml::XmlNode> Notes, Divisions, Durations, Sounds, Offsets;

  explicit DurationElements(const xml::XmlNode& part) {
    auto lists = part.getElementsByTagNames({"note", "divisions", "duration", "sound", "offset"});
    Notes = Nodes(lists[0]);
    Divisions = Nodes(lists[1]);
    Durations = Nodes(lists[2]);
    for (const xml::XmlNode& sound : Nodes(lists[3]))
      if (sound.getAttributeNode("divisions")) Sounds.push_back(sound);
    for (const xml::XmlNode& offset : Nodes(lists[4]))
      if (offset.parentNode().nodeName() == "direction") Offsets.push_back(offset);
  }

  static std::vector<xml::XmlNode> Nodes(xml::XmlNodeList& list) {
    std::vector<xml::XmlNode> nodes;
    nodes.reserve(static_cast<std::size_t>(list.length()));
    for (xml::XmlNode node = list.nextNode(); node; node = list.nextNode())
      nodes.push_back(node);
    return nodes;
  }
};

// The written length of a tuplet note: its type with dots, else its duration; 0 for neither.
std::optional<int32_t> WrittenLength(const xml::XmlNode& note) {
  if (const auto type = ChildText(note, "type")) return GetSymbolicDuration(*type, DotsOf(note));
  if (const auto duration = ChildNumber(note, "duration")) return static_cast<int32_t>(*duration);
  return std::nullopt;
}

int32_t WithoutTwos(int32_t value) {
  while (value != 0 && value % 2 == 0)
    value /= 2;
  return value;
}

// The unit a part is rewritten in: the smallest length counted and the tuplet factor.
struct DurationUnit {
  int32_t Smallest = kQuarter;
  int32_t Factor = 1;

  void Find(const std::vector<xml::XmlNode>& notes) {
    for (const xml::XmlNode& note : notes) {
      const xml::XmlNode modification = ChildElement(note, "time-modification");
      if (!modification) {
        if (const auto duration = ChildNumber(note, "duration"))
          Smallest = std::min(Smallest, static_cast<int32_t>(*duration));
        continue;
      }
      if (const auto written = WrittenLength(note)) Smallest = std::min(Smallest, *written);
      const auto actual = ChildNumber(modification, "actual-notes");
      if (actual && static_cast<int32_t>(*actual) != 0)
        Factor = std::lcm(Factor, static_cast<int32_t>(*actual));
      const auto normal = ChildNumber(modification, "normal-notes");
      if (normal && WithoutTwos(static_cast<int32_t>(*normal)) != 0)
        Factor = std::lcm(Factor, WithoutTwos(static_cast<int32_t>(*normal)));
    }
  }
  // EDU are kept when the unit would not divide them exactly.
  bool Usable() const { return Smallest % 2 == 0 && Smallest % 5 != 0 && Factor < Smallest; }
  int32_t Value(double edu) const {
    return RoundHalfEven(edu / Smallest * static_cast<double>(Factor));
  }
};

// A duration in the part's unit; tuplet notes from their written value, exactly.
int32_t NewDuration(const DurationUnit& unit, const xml::XmlNode& duration) {
  const xml::XmlNode note = duration.parentNode();
  const xml::XmlNode modification = ChildElement(note, "time-modification");
  const auto type = ChildText(note, "type");
  if (!modification || !type) return unit.Value(NumericValue(duration.text()).value_or(0));
  const double normal = ChildNumber(modification, "normal-notes").value_or(1);
  const double actual = ChildNumber(modification, "actual-notes").value_or(1);
  const int32_t written = unit.Value(GetSymbolicDuration(*type, DotsOf(note)));
  return RoundHalfEven(actual == 0 ? written : written * normal / actual);
}
} // namespace

void ToXml::ParseDuration(int32_t duration, std::string& type, int16_t& dots) {
  Guarded("ToXml ParseDuration error ", kParseDurationHandler, [&] {
    for (const NoteType& row : kNoteTypes)
      for (int d = 0; d <= kMaxDots; ++d)
        if (duration == row.Base * 2 - (row.Base >> d)) {
          type = row.Type;
          dots = static_cast<int16_t>(d);
          return;
        }
  });
}

void ToXml::ConvertDurations(XmlPart& part) {
  Guarded("ToXml ConvertDurations error ", kConvertDurationsHandler, [&] {
    const xml::XmlNode partElement = part.Part();
    if (!partElement) return;
    const DurationElements elements(partElement);
    DurationUnit unit;
    unit.Find(elements.Notes);
    if (!unit.Usable()) return;
    if (unit.Smallest > kOffsetUnit && unit.Factor < 8 && !elements.Offsets.empty())
      unit.Smallest = kOffsetUnit;
    // Values are changed in their own nodes.
    const std::string divisions = std::to_string(unit.Value(kQuarter));
    for (const xml::XmlNode& node : elements.Divisions)
      node.text(divisions);
    for (const xml::XmlNode& node : elements.Sounds)
      node.setAttribute("divisions", divisions);
    for (const xml::XmlNode& node : elements.Durations)
      node.text(std::to_string(NewDuration(unit, node)));
    for (const xml::XmlNode& node : elements.Offsets) {
      const auto edu = NumericValue(node.text());
      if (!edu) continue;
      const int32_t value = unit.Value(*edu);
      if (value == 0) {
        node.parentNode().removeChild(node);
      } else {
        node.text(std::to_string(value));
      }
    }
  });
}

void ToXml::RemoveDuplicateWavyLine(xml::XmlNode element) {
  Guarded("ToXml RemoveDuplicateWavyLine error ", kRemoveDuplicateWavyLineHandler, [&] {
    xml::XmlNodeList lines = element.selectNodes(".//wavy-line");
    int32_t left = lines.length();
    for (xml::XmlNode line = lines.nextNode(); line && left > 1; line = lines.nextNode()) {
      if (line.getAttribute("type") != "continue") continue;
      const xml::XmlNode parent = line.parentNode();
      parent.removeChild(line);
      --left;
      if (parent.hasChildNodes()) continue;
      const xml::XmlNode grandParent = parent.parentNode();
      grandParent.removeChild(parent);
      if (!grandParent.hasChildNodes()) grandParent.parentNode().removeChild(grandParent);
    }
  });
}

void ToXml::CleanupInitialTempo() {
  Guarded("ToXml CleanupInitialTempo error ", kCleanupInitialTempoHandler, [&] {
    for (int16_t index = 1; index <= NumberOfParts; ++index) {
      const xml::XmlNode partElement = XmlParts.at(index)->Part();
      if (!partElement) continue;
      const xml::XmlNode holder = partElement.selectSingleNode("measure[1]/sound[@xtempo]");
      if (!holder) continue;
      // The default tempo stands only where no tempo mark of the score has done its job.
      if (TempoWritten) {
        holder.parentNode().removeChild(holder);
        continue;
      }
      xml::XmlNode sound = Element("sound");
      sound.setAttribute("tempo", holder.getAttribute("xtempo"));
      holder.parentNode().replaceChild(sound, holder);
    }
  });
}

} // namespace ostin
