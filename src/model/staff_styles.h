#pragma once
// The staff styles that MusicXML can express: slash notation, measure repeats and a
// transposition, named so that a document style and an imported one meet under one name.
#include <cstdint>
#include <map>
#include <string>

#include "host/records.h"
#include "xml/xml_document.h"

namespace ostin {

class XmlStaffStyle {
public:
  // Names a document style; leaves Name empty when the style is none of the known kinds.
  void Create(const StaffStyle& thisStyle);
  // Makes and saves a style from a measure-repeat, beat-repeat, slash or transpose element;
  // a transposeValue of 0 reads the value from the element. Other tags make nothing.
  void FromXml(const xml::XmlNode& thisElement, int16_t transposeValue = 0);

  int16_t Number = 0;
  std::string Name;
  int32_t FinaleVersion = 2000;
};

// The styles of a run by name.
class XmlStaffStyles {
public:
  // Keeps the first style of a name.
  void Add(const XmlStaffStyle& style) { items_.emplace(style.Name, style); }
  int32_t Count() const { return static_cast<int32_t>(items_.size()); }
  // The style of that name, or nullptr.
  const XmlStaffStyle* Item(const std::string& name) const {
    const auto found = items_.find(name);
    return found == items_.end() ? nullptr : &found->second;
  }
  void Remove(const std::string& name) { items_.erase(name); }

private:
  std::map<std::string, XmlStaffStyle> items_;
};

} // namespace ostin
