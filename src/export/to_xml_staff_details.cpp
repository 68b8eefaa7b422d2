// Clefs, staff details with their tuning, and the measure styles of staff styles.
#include <array>

#include "export/to_xml.h"
#include "shell/failure.h"

namespace ostin {

namespace {
constexpr int32_t kCreateClefHandler = Code(0x8004028A);
constexpr int32_t kCreateStaffDetailsHandler = Code(0x8004028B);
constexpr int32_t kCreateStaffTuningHandler = Code(0x8004028C);
constexpr int32_t kCreateMeasureStyleElementHandler = Code(0x8004028D);
constexpr int32_t kSwitchStaffStyleHandler = Code(0x8004028E);
constexpr int16_t kUseDotsBit = 0x1000;

struct ClefShape {
  const char* sign;
  const char* line;
  const char* octaveChange;
};

// The host's clef numbers 0 to 17; any other is a treble clef.
constexpr std::array<ClefShape, 18> kClefs = {{
    {"G", "2", ""},
    {"C", "3", ""},
    {"C", "4", ""},
    {"F", "4", ""},
    {"Percussion", "", ""},
    {"G", "2", "-1"},
    {"F", "4", "-1"},
    {"F", "3", ""},
    {"G", "1", ""},
    {"C", "5", ""},
    {"C", "2", ""},
    {"C", "1", ""},
    {"Percussion", "", ""},
    {"G", "2", "+1"},
    {"F", "4", "+1"},
    {"none", "", ""},
    {"TAB", "5", ""},
    {"TAB", "5", ""},
}};

constexpr std::array<const char*, 12> kTuningSteps = {"C", "C", "D", "D", "E", "F",
                                                      "F", "G", "G", "A", "A", "B"};
constexpr std::array<bool, 12> kTuningSharp = {false, true,  false, true,  false, false,
                                               true,  false, true,  false, true,  false};
} // namespace

xml::XmlNode ToXml::CreateClef(int16_t number) {
  return Guarded("ToXml CreateClef error ", kCreateClefHandler, [&] {
    const ClefShape& shape =
        number >= 0 && number < static_cast<int16_t>(kClefs.size()) ? kClefs[number] : kClefs[0];
    xml::XmlNode clef = Element("clef");
    clef.appendChild(Element("sign", shape.sign));
    if (*shape.line) clef.appendChild(Element("line", shape.line));
    if (*shape.octaveChange) clef.appendChild(Element("clef-octave-change", shape.octaveChange));
    return clef;
  });
}

xml::XmlNode ToXml::CreateStaffDetails(const XmlPart& part, int16_t staff) {
  return Guarded("ToXml CreateStaffDetails error ", kCreateStaffDetailsHandler, [&] {
    xml::XmlNode details = Element("staff-details");
    if (part.Staves() > 1) details.setAttribute("number", std::to_string(staff));
    if (staff != part.TabStaff) {
      details.appendChild(Element("staff-lines", std::to_string(part.StaffLines.at(staff))));
      return details;
    }
    details.appendChild(Element("staff-lines", std::to_string(part.Strings)));
    // The part keeps the tuning of string I at index I - 1, as the fretted instrument does.
    for (int16_t string = part.Strings; string >= 1; --string) {
      xml::XmlNode tuning =
          details.appendChild(CreateStaffTuning(part.StringTuning.at(string - 1)));
      tuning.setAttribute("line", std::to_string(part.Strings - string + 1));
    }
    if (part.Capo >= 1) details.appendChild(Element("capo", std::to_string(part.Capo)));
    return details;
  });
}

xml::XmlNode ToXml::CreateStaffTuning(int16_t pitch) {
  return Guarded("ToXml CreateStaffTuning error ", kCreateStaffTuningHandler, [&] {
    int step = ((pitch % 12) + 12) % 12;
    xml::XmlNode tuning = Element("staff-tuning");
    tuning.appendChild(Element("tuning-step", kTuningSteps[step]));
    if (kTuningSharp[step]) tuning.appendChild(Element("tuning-alter", "1"));
    tuning.appendChild(Element("tuning-octave", std::to_string(pitch / 12 - 1)));
    return tuning;
  });
}

xml::XmlNode ToXml::CreateMeasureStyleElement(const XmlPart& part, int16_t staff) {
  return Guarded("ToXml CreateMeasureStyleElement error ", kCreateMeasureStyleElementHandler, [&] {
    xml::XmlNode element;
    switch (part.AlternateNotation.at(staff)) {
    case 1:
      element = Element("slash");
      element.setAttribute("use-stems", "no");
      if (part.StaffSpecs(staff)->AltFlag & kUseDotsBit) element.setAttribute("use-dots", "yes");
      break;
    case 2:
      element = Element("slash");
      element.setAttribute("use-stems", "yes");
      break;
    case 3:
      element = Element("measure-repeat", "1");
      break;
    case 4:
      element = Element("measure-repeat", "2");
      element.setAttribute("slashes", "2");
      break;
    default:
      return element;
    }
    element.setAttribute("type", "start");
    return element;
  });
}

void ToXml::SwitchStaffStyle(xml::XmlNode measure, XmlPart& part, int16_t staff, int32_t edu,
                             bool atStart) {
  auto where = [&] {
    return " at part " + std::to_string(part.Number) + ", measure " + std::to_string(part.Measure) +
           ": ";
  };
  GuardedAt("ToXml SwitchStaffStyle error ", kSwitchStaffStyleHandler, where, [&] {
    StaffSpec& spec = *part.StaffSpecs(staff);
    int16_t fretInstrument = spec.FretInstID;
    int16_t altFlag = spec.AltFlag;
    int16_t lines = part.StaffLines.at(staff);
    if (!spec.LoadCurrent(spec.Cmper(), part.Measure, edu)) return;
    part.InitializeFromStaffStyle(staff);
    bool detailsChanged =
        atStart ? (staff == part.TabStaff || part.StaffLines.at(staff) != 5)
                : (spec.FretInstID != fretInstrument || part.StaffLines.at(staff) != lines);
    bool styleChanged = atStart || spec.AltFlag != altFlag;
    if (!detailsChanged && !styleChanged) return;
    xml::XmlNode attributes = atStart ? measure.selectSingleNode("attributes") : xml::XmlNode();
    bool fresh = !attributes;
    if (fresh) attributes = Element("attributes");
    if (detailsChanged) {
      xml::XmlNode details = CreateStaffDetails(part, part.TabStaff >= 1 ? part.TabStaff : staff);
      attributes.insertBefore(details,
                              attributes.selectSingleNode("transpose|directive|measure-style"));
    }
    if (styleChanged) SwitchMeasureStyle(attributes, part, staff);
    if (fresh && attributes.hasChildNodes()) measure.appendChild(attributes);
  });
}

// Closes the measure style open on the staff and opens the one now in force.
void ToXml::SwitchMeasureStyle(xml::XmlNode attributes, XmlPart& part, int16_t staff) {
  auto measureStyle = [&] {
    xml::XmlNode style = Element("measure-style");
    if (part.Staves() > 1) style.setAttribute("number", std::to_string(staff));
    return style;
  };
  std::string& open = OpenMeasureStyle.at(staff);
  if (!open.empty()) {
    xml::XmlNode style = measureStyle();
    style.appendChild(Element(open)).setAttribute("type", "stop");
    attributes.appendChild(style);
  }
  xml::XmlNode element = CreateMeasureStyleElement(part, staff);
  if (!element) {
    open.clear();
    return;
  }
  open = element.nodeName();
  xml::XmlNode style = measureStyle();
  style.appendChild(element);
  attributes.appendChild(style);
}

} // namespace ostin
