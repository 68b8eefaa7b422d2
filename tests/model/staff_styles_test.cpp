// Staff style names read from document styles, and the styles made from MusicXML elements.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "host/records.h"
#include "model/staff_styles.h"
#include "model_test.h"
#include "shell/messages.h"

namespace ostin {
namespace {

using namespace model_test;

// A new staff style record with those masks, flags, transposition and name, as stored.
StaffStyle Saved(int16_t mask1, int16_t mask2, int16_t mask3, int16_t altFlag,
                 int16_t transposition, const std::string& styleName = "") {
  StaffStyle record;
  record.FinaleVersion = 2004;
  record.Create(-1, 0);
  record.Mask1 = mask1, record.Mask2 = mask2, record.Mask3 = mask3;
  record.AltFlag = altFlag, record.Transposition = transposition;
  record.StyleName = styleName;
  record.Save();
  EXPECT_TRUE(record.Load(record.Cmper(), 0));
  return record;
}

using StaffStyleTest = ModelTest;

TEST_F(StaffStyleTest, DocumentStylesAreNamedByMasksAndFlags) {
  // Mask1, Mask2, Mask3, AltFlag, Transposition; then the name, empty for no style. The
  // styles made from elements read their own names back below.
  // clang-format off
  const std::vector<std::pair<std::array<int16_t, 5>, std::string>> cases = {
      {{0, 0x1000, 0, 0x0005, 0}, ""}, {{0, 0x1000, 0, 0x0000, 0}, ""},
      {{1, 0x1000, 0, 0x0001, 0}, ""}, {{0x0100, 0x1000, 0, 0x0001, 0}, ""},
      {{0, 0x1000, 4, 0x0001, 0}, ""}, {{0, 0x1001, 0, 0x0001, 0}, ""},
      {{0x0100, 0, 0, 0, -3}, "transpose--3"}, {{0x0101, 0, 0, 0, 7}, ""},
      {{0x0100, 0, 1, 0, 7}, ""}, {{0, 0x1000, 0, 0x1001, 0}, "measure-style-slash-dots"}};
  // clang-format on
  for (const auto& [m, name] : cases) {
    const StaffStyle record = Saved(m[0], m[1], m[2], m[3], m[4]);
    XmlStaffStyle style{99, "old", 2004};
    style.Create(record);
    EXPECT_EQ(style.Name, name) << m[0] << " " << m[1] << " " << m[2] << " " << m[3];
    EXPECT_EQ(style.Number, name.empty() ? 0 : record.Cmper()) << name;
  }
}

TEST_F(StaffStyleTest, ElementsMakeSavedStylesThatNameThemselvesTheSame) {
  struct Case {
    std::string Xml;
    int16_t TransposeValue, Mask1, AltFlag, Sfflag;
    int32_t Message;
    std::vector<std::string> Args;
    std::string Name;
  };
  const std::string dots = "<use-dots>yes</use-dots>", stems = "<use-stems>yes</use-stems>";
  const std::string slash = "measure-style-slash-", repeat = "measure-style-measure-repeat-";
  // clang-format off
  const std::vector<Case> cases = {
      {"<slash/>", 0, 0, 0x2101, 7, 218, {}, slash + "nodots"},
      {"<slash>" + dots + "</slash>", 0, 0, 0x3101, 7, 219, {}, slash + "dots"},
      {"<slash>" + dots + stems + "</slash>", 0, 0, 0x2102, 7, 218, {}, slash + "stems"},
      {"<beat-repeat>" + dots + "</beat-repeat>", 0, 0, 0x3001, 7, 219, {}, slash + "dots"},
      {"<beat-repeat><use-dots>no</use-dots></beat-repeat>", 0, 0, 0x2001, 7, 218, {},
       slash + "nodots"},
      {"<measure-repeat>1</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<measure-repeat>2</measure-repeat>", 0, 0, 0x6004, 7, 217, {}, repeat + "2"},
      {"<measure-repeat>3</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<measure-repeat>4</measure-repeat>", 0, 0, 0x6004, 7, 217, {}, repeat + "2"},
      {"<measure-repeat>x</measure-repeat>", 0, 0, 0x6003, 7, 216, {}, repeat + "1"},
      {"<transpose/>", 4094, 256, 0x6700, 5, 220, {"-1", "-2"}, "transpose-4094"},
      {"<transpose/>", 0x0105, 256, 0x6700, 5, 220, {"4", "5"}, "transpose-261"}};
  // clang-format on
  for (const Case& c : cases) {
    XmlStaffStyle style;
    style.FinaleVersion = 2004;
    style.FromXml(Element(c.Xml), c.TransposeValue);
    EXPECT_EQ(style.Name, c.Name) << c.Xml;
    StaffStyle saved;
    saved.FinaleVersion = 2004;
    ASSERT_TRUE(saved.Load(style.Number, 0)) << c.Xml;
    // Mask2 is 4096 for the measure styles, 0 for a transposition.
    EXPECT_EQ(V(saved.Mask1, saved.Mask2, saved.Mask3, saved.AltFlag, saved.Sfflag,
                saved.Transposition, saved.BotLines, saved.Dw_wRest, saved.H_otherRest,
                saved.StemReversal),
              V(c.Mask1, c.Mask1 ? 0 : 4096, 0, c.AltFlag, c.Sfflag, c.Mask1 ? c.TransposeValue : 0,
                5, -772, -772, -4))
        << c.Xml;
    // The host keeps the text in its code page.
    EXPECT_EQ(saved.StyleName, Saved(0, 0, 0, 0, 0, FormatResString(c.Message, c.Args)).StyleName)
        << c.Xml;
    XmlStaffStyle named;
    named.Create(saved);
    EXPECT_EQ(named.Name, c.Name) << c.Xml;
  }
}

} // namespace
} // namespace ostin
