#pragma once
// The sample document with frames that each test fills, and an export engine reached
// through its test access: staff 1 holds frames 1 to 4 in measures 1 to 4, staff 2 frames
// 5 to 8. Measure 1 is left alone: its staff styles belong to another stage.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/host_test.h"
#include "host/frames/frame_bits.h"
#include "host/records.h"
#include "to_xml_access.h"

namespace ostin::testing {

inline constexpr int32_t kNote = kEfValid | kEfNote;
inline constexpr int32_t kRest = kEfValid;

class ContentTest : public HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("sample.json").Frames = sim::FrameStore{};
    Access.Start(2004);
  }

  static sim::FrameStore& Store() { return HostSim().Doc().Frames; }
  // An entry of the given notes (Tcd and Note.Flag); no notes for a rest.
  static sim::StoredEntry Made(int16_t dura, int32_t ef, std::vector<int16_t> tcds = {},
                               int32_t noteFlag = 0, int16_t xef = 0) {
    sim::StoredEntry entry{Store().TakeEntnum(), dura, 0, ef, xef, {}};
    for (size_t i = 0; i < tcds.size(); ++i)
      entry.Notes.push_back({tcds[i], 0, static_cast<int16_t>(i + 1), kNoteValid | noteFlag});
    return entry;
  }
  static void Fill(int16_t frame, std::vector<sim::StoredEntry> entries) {
    Store().Frames[frame] = std::move(entries);
  }
  static void SetBeats(int16_t measure, int16_t beats) {
    MeasureSpec spec;
    ASSERT_TRUE(spec.Load(measure, 0));
    spec.Beats = beats;
    spec.Save();
  }

  // The measure's children: names, with the duration of each backup and forward.
  static std::string Shape(const xml::XmlNode& measure) {
    std::string shape;
    xml::XmlNodeList children = measure.selectNodes("*");
    for (xml::XmlNode child = children.nextNode(); child; child = children.nextNode()) {
      if (!shape.empty()) shape += " ";
      shape += child.nodeName();
      if (child.nodeName() == "backup" || child.nodeName() == "forward")
        shape += ":" + child.selectSingleNode("duration").text();
    }
    return shape;
  }
  static std::vector<std::string> Texts(const xml::XmlNode& node, const std::string& path) {
    std::vector<std::string> texts;
    xml::XmlNodeList list = node.selectNodes(path);
    for (xml::XmlNode item = list.nextNode(); item; item = list.nextNode())
      texts.push_back(item.text());
    return texts;
  }
  static xml::XmlNode MeasureOf(const XmlPart& part, int16_t measure) {
    return part.Part().selectSingleNode("measure[" + std::to_string(measure) + "]");
  }

  ToXml Engine;
  ToXmlTestAccess Access{Engine};
};

} // namespace ostin::testing
