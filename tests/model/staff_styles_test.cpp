// Staff style names read from document styles, and the styles made from MusicXML elements.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/host_test.h"
#include "../xml/xml_test_support.h"
#include "host/records.h"
#include "model/staff_styles.h"
#include "shell/messages.h"

namespace ostin {
namespace {

class StaffStyleTest : public testing::HostTest {
protected:
  void SetUp() override {
    HostTest::SetUp();
    OpenData("default-document.json");
  }
  static StaffStyle Saved(int16_t mask1, int16_t mask2, int16_t mask3, int16_t altFlag,
                          int16_t transposition, const std::string& styleName = "") {
    StaffStyle record;
    record.FinaleVersion = 2004;
    record.Create(-1, 0);
    record.Mask1 = mask1;
    record.Mask2 = mask2;
    record.Mask3 = mask3;
    record.AltFlag = altFlag;
    record.Transposition = transposition;
    record.StyleName = styleName;
    record.Save();
    EXPECT_TRUE(record.Load(record.Cmper(), 0));
    return record;
  }
};

TEST_F(StaffStyleTest, DocumentStylesAreNamedByMasksAndFlags) {
  struct Case {
    int16_t Mask1, Mask2, Mask3, AltFlag, Transposition;
    std::string Name;
  };
  // clang-format off
  const std::vector<Case> cases = {
      {0, 0x1000, 0, 0x1001, 0, "measure-style-slash-dots"},
      {0, 0x1000, 0, 0x2101, 0, "measure-style-slash-nodots"},
      {0, 0x1000, 0, 0x2002, 0, "measure-style-slash-stems"},
      {0, 0x1000, 0, 0x6003, 0, "measure-style-measure-repeat-1"},
      {0, 0x1000, 0, 0x6004, 0, "measure-style-measure-repeat-2"},
      {0, 0x1000, 0, 0x0005, 0, ""},      {0, 0x1000, 0, 0x0000, 0, ""},
      {1, 0x1000, 0, 0x0001, 0, ""},      {0x0100, 0x1000, 0, 0x0001, 0, ""},
      {0, 0x1000, 4, 0x0001, 0, ""},      {0, 0x1001, 0, 0x0001, 0, ""},
      {0x0100, 0, 0, 0, 4094, "transpose-4094"}, {0x0100, 0, 0, 0, -3, "transpose--3"},
      {0x0101, 0, 0, 0, 7, ""},           {0x0100, 0, 1, 0, 7, ""},
  };
  // clang-format on
  for (const Case& c : cases) {
    const StaffStyle record = Saved(c.Mask1, c.Mask2, c.Mask3, c.AltFlag, c.Transposition);
    XmlStaffStyle style{99, "old", 2004};
    style.Create(record);
    EXPECT_EQ(style.Name, c.Name) << c.Mask1 << " " << c.Mask2 << " " << c.AltFlag;
    EXPECT_EQ(style.Number, c.Name.empty() ? 0 : record.Cmper()) << c.Name;
  }
}

TEST_F(StaffStyleTest, ElementsMakeSavedStylesThatNameThemselvesTheSame) {
  struct Case {
    std::string Xml;
    int16_t TransposeValue, Mask1, Mask2, AltFlag, Sfflag;
    int32_t Message;
    std::vector<std::string> Args;
    std::string Name;
  };
  const std::string dots = "<use-dots>yes</use-dots>";
  const std::string stems = "<use-stems>yes</use-stems>";
  // clang-format off
  const std::vector<Case> cases = {
      {"<slash/>", 0, 0, 4096, 0x2101, 7, 218, {}, "measure-style-slash-nodots"},
      {"<slash>" + dots + "</slash>", 0, 0, 4096, 0x3101, 7, 219, {}, "measure-style-slash-dots"},
      {"<slash>" + dots + stems + "</slash>", 0, 0, 4096, 0x2102, 7, 218, {},
       "measure-style-slash-stems"},
      {"<beat-repeat>" + dots + "</beat-repeat>", 0, 0, 4096, 0x3001, 7, 219, {},
       "measure-style-slash-dots"},
      {"<beat-repeat><use-dots>no</use-dots></beat-repeat>", 0, 0, 4096, 0x2001, 7, 218, {},
       "measure-style-slash-nodots"},
      {"<measure-repeat>1</measure-repeat>", 0, 0, 4096, 0x6003, 7, 216, {},
       "measure-style-measure-repeat-1"},
      {"<measure-repeat>2</measure-repeat>", 0, 0, 4096, 0x6004, 7, 217, {},
       "measure-style-measure-repeat-2"},
      {"<measure-repeat>3</measure-repeat>", 0, 0, 4096, 0x6003, 7, 216, {},
       "measure-style-measure-repeat-1"},
      {"<measure-repeat>4</measure-repeat>", 0, 0, 4096, 0x6004, 7, 217, {},
       "measure-style-measure-repeat-2"},
      {"<measure-repeat>x</measure-repeat>", 0, 0, 4096, 0x6003, 7, 216, {},
       "measure-style-measure-repeat-1"},
      {"<transpose/>", 4094, 256, 0, 0x6700, 5, 220, {"-1", "-2"}, "transpose-4094"},
      {"<transpose/>", 0x0105, 256, 0, 0x6700, 5, 220, {"4", "5"}, "transpose-261"},
  };
  // clang-format on
  for (const Case& c : cases) {
    XmlStaffStyle style;
    style.FinaleVersion = 2004;
    style.FromXml(xml::test_support::Loaded(c.Xml)->documentElement(), c.TransposeValue);
    EXPECT_EQ(style.Name, c.Name) << c.Xml;

    StaffStyle saved;
    saved.FinaleVersion = 2004;
    ASSERT_TRUE(saved.Load(style.Number, 0)) << c.Xml;
    const int transposition = c.Mask1 != 0 ? c.TransposeValue : 0;
    EXPECT_EQ((std::vector<int>{saved.Mask1, saved.Mask2, saved.Mask3, saved.AltFlag, saved.Sfflag,
                                saved.Transposition, saved.BotLines, saved.Dw_wRest,
                                saved.H_otherRest, saved.StemReversal}),
              (std::vector<int>{c.Mask1, c.Mask2, 0, c.AltFlag, c.Sfflag, transposition, 5, -772,
                                -772, -4}))
        << c.Xml;
    // The host keeps the text in its code page.
    const std::string message = FormatResString(c.Message, c.Args);
    EXPECT_EQ(saved.StyleName, Saved(0, 0, 0, 0, 0, message).StyleName) << c.Xml;

    XmlStaffStyle named;
    named.Create(saved);
    EXPECT_EQ(named.Name, c.Name) << c.Xml;
  }
}

} // namespace
} // namespace ostin
