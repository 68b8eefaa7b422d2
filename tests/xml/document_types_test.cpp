// The document types of the data folder (partwise.dtd, timewise.dtd and their modules) and the
// timewise to partwise style sheet, through the XML document service.
#include "dtd_validation.h"
#include "xml/xml_document.h"
#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace ostin::xml {
namespace {

using test_support::TempFolder;
using test_support::ValidateAgainst;
using test_support::ValidScore;

namespace fs = std::filesystem;

// Corpus files that break MusicXML 4.0 itself, with what they break.
const std::map<std::string, std::string> kInvalidCorpusFiles = {
    {"41h-TooManyParts.xml",
     "parts P3 and P4 are missing from the part list: a part's id must name a score-part"},
    {"45i-Repeats-Nested.xml",
     "a barline holds repeat before ending; the format orders ending before repeat"},
};

// The .xml files of the MusicXML test suite, sorted; the test is skipped without the suite.
class Corpus : public ::testing::Test {
protected:
  void SetUp() override {
    const fs::path corpus = OSTIN_CORPUS_DIR;
    if (!fs::is_directory(corpus)) GTEST_SKIP() << "no MusicXML test suite at " << corpus;
    for (const auto& entry : fs::directory_iterator(corpus))
      if (entry.path().extension() == ".xml") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    ASSERT_GT(files.size(), 100u);
  }
  std::vector<fs::path> files;
};

TEST_F(Corpus, AcceptsEveryFileThatIsValidMusicXml) {
  std::size_t rejected = 0;
  for (const fs::path& file : files) {
    const std::string name = file.filename().string();
    const auto valid = ValidScore(TempFolder::Read(file.string()));
    const auto exception = kInvalidCorpusFiles.find(name);
    if (exception == kInvalidCorpusFiles.end()) {
      EXPECT_TRUE(valid) << name;
    } else {
      EXPECT_FALSE(valid) << name << " should be rejected: " << exception->second;
      ++rejected;
    }
  }
  EXPECT_EQ(rejected, kInvalidCorpusFiles.size()) << "an exception names a file not in the suite";
}

// A score whose only measure holds the given music, on line 6.
std::string ScoreWith(const std::string& music) {
  return "<?xml version=\"1.0\"?>\n<score-partwise version=\"4.0\">\n<part-list><score-part "
         "id=\"P1\"><part-name>Music</part-name>\n<score-instrument id=\"P1-I1\"><instrument-name>"
         "Snare</instrument-name></score-instrument></score-part></part-list>\n<part id=\"P1\">"
         "<measure number=\"1\">\n" +
         music + "\n</measure></part>\n</score-partwise>\n";
}

const std::string kPitch = "<pitch><step>C</step><octave>4</octave></pitch>";

// What is checked, the text, whether it is valid.
struct FragmentCase {
  std::string what, music;
  bool valid;
};

TEST(DocumentTypes, CheckOrderNamesAndRequiredAttributesOfMeasureContent) {
  const std::string p = kPitch, d = "<duration>1</duration>";
  const FragmentCase cases[] = {
      // clang-format off
      {"a plain note", "<note>" + p + d + "<voice>1</voice></note>", true},
      {"a full note",
       "<note default-x=\"12\" print-object=\"yes\"><grace slash=\"yes\"/>" + p +
           "<tie type=\"start\"/><instrument id=\"P1-I1\"/><voice>1</voice><type>eighth</type>"
           "<dot/><accidental>sharp</accidental><stem>up</stem><staff>1</staff>"
           "<beam number=\"1\">begin</beam><notations><tied type=\"start\"/><ornaments>"
           "<trill-mark/><accidental-mark>flat</accidental-mark></ornaments></notations>"
           "<lyric number=\"1\"><syllabic>single</syllabic><text>la</text></lyric></note>", true},
      {"a direction with sound",
       "<direction placement=\"above\"><direction-type><words>Allegro</words>"
       "<words>assai</words></direction-type><direction-type><metronome><beat-unit>quarter"
       "</beat-unit><per-minute>120</per-minute></metronome></direction-type><offset>1</offset>"
       "<staff>1</staff><sound tempo=\"120\"/></direction>", true},
      {"duration before pitch", "<note>" + d + p + "<voice>1</voice></note>", false},
      {"type before voice", "<note>" + p + d + "<type>half</type><voice>1</voice></note>", false},
      {"a grace note with a duration", "<note><grace/>" + p + d + "</note>", false},
      {"three ties", "<note>" + p + d + "<tie type=\"stop\"/><tie type=\"start\"/><tie type=\"stop\"/></note>", false},
      {"time before key", "<attributes><time><beats>3</beats><beat-type>4</beat-type></time><key><fifths>0</fifths></key></attributes>", false},
      {"an unknown element", "<note>" + p + d + "<glitter/></note>", false},
      {"an unknown element in a measure", "<glitter/>", false},
      {"an unknown attribute", "<note sparkle=\"yes\">" + p + d + "</note>", false},
      {"a tie without type", "<note>" + p + d + "<tie/></note>", false},
      {"a repeat without direction", "<barline><repeat/></barline>", false},
      {"a wedge without type", "<direction><direction-type><wedge/></direction-type></direction>", false},
      {"a barline at the top", "<barline location=\"top\"/>", false},
      {"an empty direction type", "<direction><direction-type/></direction>", false},
      {"an instrument of no part", "<note>" + p + d + "<instrument id=\"P9-I1\"/></note>", false},
      {"text in a pitch", "<note><pitch>C4</pitch>" + d + "</note>", false},
      // clang-format on
  };
  for (const FragmentCase& c : cases) {
    const ParseError error = ValidateAgainst(ScoreWith(c.music), test_support::ScoreDtd(""));
    if (c.valid) {
      EXPECT_EQ(error.errorCode, 0) << c.what << ": " << error.reason;
    } else {
      EXPECT_NE(error.errorCode, 0) << c.what;
      // The error stands in the fragment, not in the document type or the rest of the score.
      EXPECT_EQ(error.line, 6) << c.what << ": " << error.reason;
    }
  }
}

TEST(DocumentTypes, CheckTheScoreAroundTheMeasures) {
  const std::string score = "<score-partwise>", end = "</score-partwise>";
  const std::string part = "<score-part id=\"P1\"><part-name/></score-part>";
  const std::string list = "<part-list>" + part + "</part-list>";
  const std::string measure = "<part id=\"P1\"><measure number=\"1\"/></part>" + end;
  const FragmentCase cases[] = {
      // clang-format off
      {"a measure without number", score + list + "<part id=\"P1\"><measure><note><rest/><duration>1</duration></note></measure></part>" + end, false},
      {"a part without id", score + list + "<part><measure number=\"1\"/></part>" + end, false},
      {"no part list", score + measure, false},
      {"a part without measures", score + list + "<part id=\"P1\"/>" + end, false},
      {"two score parts with one id", score + "<part-list>" + part + part + "</part-list>" + measure, false},
      {"the head in order",
       score + "<work><work-title>W</work-title></work><movement-title>M</movement-title><identification>"
       "<creator type=\"composer\">C</creator><encoding><software>S</software><supports element=\"accidental\" "
       "type=\"yes\"/></encoding></identification><defaults><scaling><millimeters>7</millimeters><tenths>40"
       "</tenths></scaling></defaults><credit page=\"1\"><credit-words>T</credit-words></credit><part-list>"
       "<part-group type=\"start\" number=\"1\"><group-symbol>bracket</group-symbol></part-group>" + part +
       "<part-group type=\"stop\" number=\"1\"/></part-list>" + measure, true},
      {"the head out of order", score + "<movement-title>M</movement-title><work><work-title>W</work-title></work>" + list + measure, false},
      // clang-format on
  };
  for (const FragmentCase& c : cases) {
    EXPECT_EQ(static_cast<bool>(ValidScore(c.music)), c.valid) << c.what;
  }
}

// A file as the export writes it: its own public identifier and a system identifier on a
// drive that need not exist.
const std::string kExportedScore =
    "<?xml version=\"1.0\" standalone=\"no\"?>\r\n"
    "<!DOCTYPE score-partwise PUBLIC \r\n"
    "\t\"-//Calvimora//DTD MusicXML 0.7b Partwise//EN\"\r\n"
    "\t\"//C:/musicxml/partwise.dtd\">\r\n"
    "<score-partwise>\r\n<movement-title>Sample</movement-title>\r\n<identification>\r\n"
    "<encoding>\r\n<software>Finale 2004 for Windows</software>\r\n"
    "<encoding-date>2004-03-01</encoding-date>\r\n</encoding>\r\n</identification>\r\n"
    "<part-list>\r\n<score-part id=\"P1\">\r\n<part-name>Piano</part-name>\r\n"
    "<score-instrument id=\"P1-I1\">\r\n<instrument-name>Piano</instrument-name>\r\n"
    "</score-instrument>\r\n<midi-instrument id=\"P1-I1\">\r\n<midi-channel>1</midi-channel>\r\n"
    "<midi-program>1</midi-program>\r\n</midi-instrument>\r\n</score-part>\r\n</part-list>\r\n"
    "<part id=\"P1\">\r\n<measure number=\"1\">\r\n<attributes>\r\n<divisions>4</divisions>\r\n"
    "<key>\r\n<fifths>0</fifths>\r\n<mode>major</mode>\r\n</key>\r\n<time>\r\n<beats>4</beats>\r\n"
    "<beat-type>4</beat-type>\r\n</time>\r\n<clef>\r\n<sign>G</sign>\r\n<line>2</line>\r\n"
    "</clef>\r\n</attributes>\r\n<sound tempo=\"96\"/>\r\n<note>\r\n<pitch>\r\n<step>C</step>\r\n"
    "<octave>5</octave>\r\n</pitch>\r\n<duration>16</duration>\r\n<voice>1</voice>\r\n"
    "<type>whole</type>\r\n</note>\r\n<barline location=\"right\">\r\n"
    "<bar-style>light-heavy</bar-style>\r\n</barline>\r\n</measure>\r\n</part>\r\n"
    "</score-partwise>\r\n";

TEST(DocumentTypes, AcceptAFileAsTheExportWritesIt) {
  EXPECT_TRUE(ValidScore(kExportedScore));
  const std::string inOrder = "<voice>1</voice>\r\n<type>whole</type>";
  std::string broken = kExportedScore;
  broken.replace(broken.find(inOrder), inOrder.size(), "<type>whole</type>\r\n<voice>1</voice>");
  const ParseError error = ValidateAgainst(broken, test_support::ScoreDtd("score-partwise"));
  EXPECT_NE(error.errorCode, 0);
  // The error stands at the end of the note, counted in the lines of the file itself.
  const auto noteEnd = broken.find("</note>");
  EXPECT_EQ(error.line, std::count(broken.begin(), broken.begin() + noteEnd, '\n') + 1)
      << error.reason;
}

TEST(DocumentTypes, DeclareTheNamedLatin1Characters) {
  std::string text = kExportedScore;
  text.replace(text.find("Sample"), 6, "Caf&eacute; &copy;&nbsp;&yuml;");
  auto doc = XmlDocument::Create();
  const std::string path = std::string(OSTIN_DATA_DIR) + "/partwise.dtd";
  text.replace(text.find("//C:/musicxml/partwise.dtd"), 26, path);
  ASSERT_TRUE(doc->loadXML(text)) << doc->parseError().reason;
  EXPECT_EQ(doc->documentElement().selectSingleNode("movement-title").text(),
            "Caf\u00e9 \u00a9\u00a0\u00ff");
}

// The document types read their modules from their own folder, wherever that is, when a file
// names them by a relative system identifier as the corpus files do.
TEST(DocumentTypes, WorkFromAnyFolderTheyAreCopiedTo) {
  const TempFolder folder;
  for (const auto& entry : fs::directory_iterator(OSTIN_DATA_DIR)) {
    const std::string extension = entry.path().extension().string();
    if (extension == ".dtd" || extension == ".mod" || extension == ".ent") {
      fs::copy_file(entry.path(), folder / entry.path().filename().string());
    }
  }
  std::string text = kExportedScore;
  text.replace(text.find("//C:/musicxml/"), 14, "");
  text.replace(text.find("0.7b"), 4, "4.0");
  auto doc = XmlDocument::Create();
  EXPECT_TRUE(doc->load(folder.Write("score.xml", text))) << doc->parseError().reason;
  text.replace(text.find("<mode>"), 6, "<mood>");
  EXPECT_FALSE(doc->load(folder.Write("score.xml", text)));
  EXPECT_NE(doc->parseError().reason.find("mood"), std::string::npos) << doc->parseError().reason;
}

// Two parts in two measures, the second measure giving its parts in the other order.
const std::string kTimewiseScore =
    "<?xml version=\"1.0\"?>"
    "\n<!DOCTYPE score-timewise PUBLIC \"-//Calvimora//DTD MusicXML 4.0 Timewise//EN\" "
    "\"timewise.dtd\">"
    "\n<score-timewise version=\"4.0\">\n<movement-title>Two</movement-title>\n<part-list>"
    "<score-part id=\"P1\"><part-name>Flute</part-name></score-part><score-part id=\"P2\">"
    "<part-name>Cello</part-name></score-part></part-list>"
    "\n<measure number=\"0\" implicit=\"yes\" width=\"120\">\n<part id=\"P1\"><attributes>"
    "<divisions>1</divisions></attributes><note><rest/><duration>1</duration></note></part>"
    "\n<part id=\"P2\"><note><pitch><step>C</step><octave>3</octave></pitch><duration>"
    "1</duration></note><barline><bar-style>dashed</bar-style></barline></part>\n</measure>"
    "\n<measure number=\"1\">\n<part id=\"P2\"><note><pitch><step>D</step><octave>3</octave>"
    "</pitch><duration>4</duration></note></part>\n<part id=\"P1\"><note>"
    "<rest measure=\"yes\"/><duration>4</duration></note></part>\n</measure>\n</score-timewise>"
    "\n";

TEST(DocumentTypes, TimewiseScoresValidateAndTurnIntoPartwiseOnes) {
  ASSERT_TRUE(ValidScore(kTimewiseScore));
  std::string nested = kTimewiseScore;
  nested.replace(nested.find("<part id=\"P1\"><note><rest measure"), 14,
                 "<part id=\"P1\"><measure number=\"9\"/>");
  EXPECT_FALSE(ValidScore(nested)) << "a timewise part holds music, not measures";

  auto styleSheet = XmlDocument::Create();
  ASSERT_TRUE(styleSheet->load(std::string(OSTIN_DATA_DIR) + "/timepart.xsl"))
      << styleSheet->parseError().reason;
  auto result = XmlDocument::Create();
  test_support::Loaded(kTimewiseScore)->transformNodeToObject(*styleSheet, *result);

  const XmlNode root = result->documentElement();
  ASSERT_TRUE(root);
  EXPECT_EQ(std::make_tuple(root.nodeName(), root.getAttribute("version"),
                            root.selectSingleNode("movement-title").text(),
                            root.selectNodes("part-list/score-part").length()),
            std::make_tuple("score-partwise", "4.0", "Two", 2));
  // Each part's measures in order: part, number, implicit, width, first note's content and
  // its text, and a bar for a barline.
  std::string found;
  XmlNodeList measures = root.selectNodes("part/measure");
  for (XmlNode m = measures.nextNode(); m; m = measures.nextNode()) {
    found += m.parentNode().getAttribute("id") + " " + m.getAttribute("number") +
             m.getAttribute("implicit") + m.getAttribute("width") + " " +
             m.selectSingleNode("note/*[1]").nodeName() + m.selectSingleNode("note").text() +
             (m.selectSingleNode("barline") ? "|;" : ";");
  }
  EXPECT_EQ(found, "P1 0yes120 rest1;P1 1 rest4;P2 0yes120 pitchC31|;P2 1 pitchD34;");
  EXPECT_TRUE(ValidScore(result->xml()));

  // A score already written part by part comes through unchanged, replacing the result's content.
  auto partwise = test_support::Loaded(kExportedScore);
  partwise->transformNodeToObject(*styleSheet, *result);
  EXPECT_EQ(result->documentElement().xml(), partwise->documentElement().xml());
}

// The reverse of timepart.xsl, for tests: the measures of the first part, each holding every
// part's measure at the same place.
const std::string kPartToTime =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:template match='/score-partwise'><score-timewise><xsl:copy-of select='@*'/>"
    "<xsl:copy-of select='*[not(self::part)]'/><xsl:for-each select='part[1]/measure'>"
    "<xsl:variable name='at' select='position()'/><measure><xsl:copy-of select='@*'/>"
    "<xsl:for-each select='/score-partwise/part'><part><xsl:copy-of select='@*'/>"
    "<xsl:copy-of select='measure[$at]/node()'/></part></xsl:for-each></measure>"
    "</xsl:for-each></score-timewise></xsl:template></xsl:stylesheet>";

std::shared_ptr<XmlDocument> Transformed(const XmlDocument& source, const XmlDocument& sheet) {
  auto result = XmlDocument::Create();
  source.transformNodeToObject(sheet, *result);
  return result;
}

// Every valid corpus file, turned timewise, validates against timewise.dtd, and timepart.xsl
// brings back each part's measures with their music.
TEST_F(Corpus, FilesTurnedTimewiseValidateAndComeBack) {
  auto toTime = XmlDocument::Create();
  ASSERT_TRUE(toTime->loadXML(kPartToTime));
  auto toPart = XmlDocument::Create();
  ASSERT_TRUE(toPart->load(std::string(OSTIN_DATA_DIR) + "/timepart.xsl"));
  for (const fs::path& file : files) {
    const std::string name = file.filename().string();
    if (kInvalidCorpusFiles.count(name)) continue;
    auto partwise = XmlDocument::Create();
    partwise->resolveExternals = false;
    ASSERT_TRUE(partwise->load(file.string())) << name;
    auto timewise = Transformed(*partwise, *toTime);
    EXPECT_TRUE(ValidScore(timewise->xml())) << name;
    const XmlNode back = Transformed(*timewise, *toPart)->documentElement();
    const XmlNodeList parts = partwise->documentElement().selectNodes("part");
    ASSERT_EQ(back.selectNodes("part").length(), parts.length()) << name;
    for (int32_t p = 0; p < parts.length(); ++p) {
      const std::string id = parts.item(p).getAttribute("id");
      const XmlNodeList measures = parts.item(p).selectNodes("measure");
      const XmlNodeList returned = back.selectNodes("part[@id='" + id + "']/measure");
      ASSERT_EQ(returned.length(), measures.length()) << name << " " << id;
      for (int32_t m = 0; m < measures.length(); ++m) {
        const XmlNodeList music = measures.item(m).childNodes();
        const XmlNodeList again = returned.item(m).childNodes();
        ASSERT_EQ(again.length(), music.length()) << name << " " << id << " " << m;
        for (int32_t i = 0; i < music.length(); ++i) {
          EXPECT_EQ(again.item(i).xml(), music.item(i).xml()) << name << " " << id << " " << m;
        }
      }
    }
  }
}

} // namespace
} // namespace ostin::xml
