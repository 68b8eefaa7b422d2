#include <gtest/gtest.h>

#include "host/handmade_records.h"
#include "host/preference_prefs.h"
#include "host/text/text_block.h"
#include "host_fixture.h"

namespace ostin {
namespace {

using Fault = sim::Host::Fault;
using HandmadeRecordTest = testing::DefaultDocumentTest;

TEST_F(HandmadeRecordTest, HeaderHasNoKeyAndIsAbsentUntilSaved) {
  Header header;
  EXPECT_FALSE(header.Load()) << "a document never saved has no header";
  header.Title = "Sonate für Klavier";
  header.Status.Set(2, 7);
  header.CreatedAppVersion = 0x1234567;
  header.Save();
  Header back;
  ASSERT_TRUE(back.Load());
  EXPECT_EQ(std::tuple(back.Title, back.Status(2), back.CreatedAppVersion),
            std::tuple("Sonate für Klavier", 7, 0x1234567));
  HostSim().Faults = {{"SaveHeader", Fault::Refuse}};
  ExpectRaised([&] { back.Save(); }, kHeaderPlaces.Save, "Finale save of Header failed");
}

TEST_F(HandmadeRecordTest, EndingKeepsEveryPassThroughItsArrayCall) {
  EndingRepeat ending;
  ending.Create(3, 0);
  ending.NumTotalPasses = 3;
  ending.Passes = {1, 2, 4};
  ending.Save();
  EndingRepeat back;
  ASSERT_TRUE(back.Load(3, 0));
  EXPECT_EQ(std::tuple(back.Passes, back.Pass(3), back.Pass(4)),
            std::tuple(std::vector<int16_t>{1, 2, 4}, 4, 0));
  HostSim().Faults = {{"LoadEndingRepeatArray", Fault::Refuse}};
  ExpectRaised([&] { (void)back.Load(3, 0); }, kEndingRepeatArrayFailed,
               "Finale load of EndingRepeat array");
  TextRepeatStyle single;
  single.Create(-1, 0);
  single.NumTotalPasses = 1;
  single.Passes = {2};
  single.Save();
  ASSERT_TRUE(single.Load(single.Cmper(), 0)) << "one pass needs no array call";
  EXPECT_EQ(single.Pass(1), 2);
}

TEST_F(HandmadeRecordTest, TextExpressionOfEachHostYear) {
  auto made = testing::OfYear<TextExpression>(2004);
  made.Create(-1, 0);
  EXPECT_EQ(made.Text, "Imported from MusicXML");
  made.TextIDKey = 12;
  made.MeasXadjust = -5;
  made.Save();
  auto older = testing::OfYear<TextExpression>(2003);
  older.Create(-1, 0, 4);
  older.Sizefont = 24;
  older.Text = "dolce";
  older.Save();
  auto walker = testing::OfYear<TextExpression>(2004);
  ASSERT_TRUE(walker.GetNext(0, 0));
  EXPECT_EQ(walker.TextIDKey, 12);
  walker.FinaleVersion = 2003;
  ASSERT_TRUE(walker.GetNext(walker.Cmper(), 0));
  EXPECT_EQ(std::tuple(walker.Text, walker.Sizefont, walker.TextIDKey), std::tuple("dolce", 24, 12))
      << "the plain call leaves the 2004 fields";
  EXPECT_FALSE(walker.GetNext(walker.Cmper(), 0));
}

TEST_F(HandmadeRecordTest, PlayMapIsPackedIntoEightWords) {
  DrumStaff drums;
  drums.Create(1, 0, 7);
  for (int key : {0, 15, 35, 127})
    drums.SetPlayMap(key, true);
  drums.Save();
  // Key 15 is bit 15 of the first word, its sign bit.
  EXPECT_EQ((std::tuple<int, int, int>(drums.Record::PlayMap[0], drums.Record::PlayMap[2],
                                       drums.Record::PlayMap[7])),
            std::tuple(-0x7FFF, 0x0008, -0x8000));
  DrumStaff back;
  EXPECT_FALSE(back.Load(1, 0, 8)) << "another tag finds nothing";
  ASSERT_TRUE(back.Load(1, 0, 7));
  for (int key = 0; key < 128; ++key)
    EXPECT_EQ(back.PlayMap(key), key == 0 || key == 15 || key == 35 || key == 127) << key;
  EXPECT_FALSE(back.PlayMap(128));
}

// The tuning goes through the block the host hands over on load; in a document opened anew
// no block was handed over, and the save carries no tuning.
TEST_F(HandmadeRecordTest, FretInstrumentTuningGoesThroughTheBlockOfItsLoad) {
  FretInstrument guitar;
  guitar.Create(-1, 0);
  guitar.Name = "Gitarre";
  guitar.StringTuning[0] = 64;
  guitar.Save();
  FretInstrument back;
  ASSERT_TRUE(back.GetNext(0, 0));
  EXPECT_EQ(std::tuple(back.Name, back.Tuning(1), back.Tuning(25)), std::tuple("Gitarre", 64, 0));
  back.StringTuning[0] = 62;
  back.Save();
  HostSim().Open(sim::Document(HostSim().Doc()));
  back.StringTuning[0] = 10;
  back.NoOfFrets = 19;
  back.Save();
  FretInstrument kept;
  ASSERT_TRUE(kept.Load(back.Cmper(), 0));
  EXPECT_EQ(std::tuple(kept.Tuning(1), kept.NoOfFrets), std::tuple(62, 19));
}

TEST_F(HandmadeRecordTest, LyricSyllablesComeFromTheRawText) {
  EXPECT_FALSE(AnyLyric(kVerse));
  int16_t id = CreateLyricText(kVerse, "^font(Times New Roman,8192)Hel-lo  wörld ^^3");
  const std::tuple<int16_t, std::string, bool> cases[] = {
      {1, "Hel", true}, {2, "lo", false}, {3, "wörld", false}, {4, "^3", false}};
  VerseLyric lyric;
  lyric.Create(100, -1);
  EXPECT_TRUE(AnyLyric(kVerse));
  EXPECT_FALSE(AnyLyric(kChorus));
  for (const auto& [syllable, text, hyphen] : cases) {
    lyric.RawTextNum = id;
    lyric.Syll = syllable;
    lyric.Save();
    ASSERT_TRUE(lyric.Load(100, 0));
    EXPECT_EQ(std::pair(lyric.Text, lyric.IsHyphen), std::pair(text, hyphen));
  }
  lyric.Syll = 5;
  lyric.Save();
  EXPECT_THROW((void)lyric.Load(100, 0), Failure) << "a syllable the text does not have";
  EXPECT_FALSE(ChorusLyric().Load(100, 0));
}

TEST_F(HandmadeRecordTest, NameTextsAreReadOnceAndWrittenAsNewBlocks) {
  auto staff = testing::OfYear<StaffSpec>(2004);
  ASSERT_TRUE(staff.Load(1, 0));
  EXPECT_EQ(staff.FullNameText(), "") << "no block, no name";
  staff.SetFullNameText("Violine I");
  int16_t block = staff.FullName;
  EXPECT_GT(block, 0);
  staff.SetFullNameText("Violine I");
  EXPECT_EQ(staff.FullName, block) << "the cached text makes no new block";
  staff.Save();
  auto back = testing::OfYear<StaffSpec>(2004);
  ASSERT_TRUE(back.Load(1, 0));
  EXPECT_EQ(back.FullNameText(), "Violine I");
  auto text = testing::OfYear<TextBlock>(2004);
  ASSERT_TRUE(text.Load(block, 0));
  EXPECT_EQ(std::pair(text.Text, text.TextTag),
            std::pair(std::string("^font(Times New Roman,8192)^size(12)^efx(plain)Violine I"),
                      kNameTextTag));
  back.SetAbbrvNameText("");
  EXPECT_EQ(back.AbbrvName, 0);
}

TEST_F(HandmadeRecordTest, DefaultFontsResolveTheirNames) {
  DefaultFontPrefs music, text;
  TupletPrefs tuplet;
  ASSERT_TRUE(music.Load(0) && text.Load(8) && tuplet.Load(0));
  EXPECT_EQ(music.FontName, "Maestro");
  EXPECT_EQ(text.CaretCommands(), "^font(Times New Roman,8192)^size(12)^efx(0)");
  EXPECT_EQ(tuplet.Tupnum, 3);
  EXPECT_FALSE(DefaultFontPrefs().Load(99));
}

TEST_F(HandmadeRecordTest, BaselineCreateGivesTheNextPairUnderItsNumber) {
  VerseBaseline first, second;
  first.Create(3, 0, 0);
  second.Create(3, 0, 0);
  EXPECT_EQ(std::tuple(first.Inci(), first.Third(), second.Inci(), second.Third()),
            std::tuple(0, 0, 0, 1));
  second.Offset = -120000;
  second.Save();
  VerseBaseline back;
  ASSERT_TRUE(back.Load(3, 0, 1));
  EXPECT_EQ(back.Offset, -120000);
  EXPECT_FALSE(SectionBaseline().Load(3, 0, 1));
}

TEST_F(HandmadeRecordTest, BlockIndexRules) {
  ToneCenter center;
  center.Units.Set(7, 3);
  EXPECT_EQ(center.Units(7), 3);
  EXPECT_THROW(center.Units(8), Failure);
  EXPECT_TRUE(Logged("ToneCenter Get Units subscript must be between 1 and 7, not 8")) << Log();
  EXPECT_THROW(center.Units.Set(0, 1), Failure);
  KeyMap map;
  map.Steps.Set(0, 5);
  EXPECT_EQ(map.Steps(0), 5) << "key map steps count from 0";
  EXPECT_THROW(map.Steps(12), Failure);
  MidiPatch patch;
  patch.SetBankData(3, 9);
  EXPECT_EQ(patch.BankData(3), 9);
  EXPECT_THROW(patch.PatchAndPatchType(4), Failure);
  StaffListScore list;
  EXPECT_EQ(list.Staffs(7), 0) << "other blocks read 0 out of range";
  EXPECT_NO_THROW(list.Staffs.Set(0, 4));
  TimeUpper upper;
  upper.SetMain(2, 3);
  EXPECT_EQ(upper.Main_2, 3);
  EXPECT_EQ(upper.Fract(3), 0);
}

TEST_F(HandmadeRecordTest, CurrentStaffAppliesTheStylesAssignedThere) {
  const int32_t end = 0x7FFFFFFF;
  testing::Put("StaffSpec", {1, 0}, {{"Transposition", 0, 0}, {"AltFlag", 0, 0}});
  testing::Put("StaffStyle", {5, 0},
               {{"Mask1", 0, 0x0100}, {"Transposition", 0, -2}, {"AltFlag", 0, 9}});
  testing::Put("StaffStyleAssign", {1, 0},
               {{"Style", 0, 5}, {"StartMeas", 0, 3}, {"EndMeas", 0, 4}, {"EndEdu", 0, end}});
  auto staff = testing::OfYear<StaffSpec>(2004);
  struct Case {
    int16_t Measure;
    int32_t Edu;
    int16_t Transposition, StartMeas, EndMeas;
  } cases[] = {{1, 0, 0, 1, 2}, {3, 0, -2, 3, 4}, {4, end, -2, 3, 4}, {5, 0, 0, 5, 32767}};
  for (const Case& c : cases) {
    ASSERT_TRUE(staff.LoadCurrent(1, c.Measure, c.Edu));
    EXPECT_EQ(staff.Transposition, c.Transposition) << c.Measure;
    EXPECT_EQ(staff.AltFlag, 0) << "Mask2 does not carry alternate notation";
    EXPECT_EQ(std::tuple(staff.RangeStartMeas, staff.RangeStartEdu, staff.RangeEndMeas,
                         staff.RangeEndEdu, staff.MeasNum),
              std::tuple(c.StartMeas, 0, c.EndMeas, end, c.Measure));
  }
  EXPECT_FALSE(staff.LoadCurrent(9, 1, 0));
  EXPECT_EQ(staff.LoadCurrentAbsent(), Code(0x80040675));
}

} // namespace
} // namespace ostin
