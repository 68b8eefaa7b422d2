// Loading, parse errors, DTD validation, serialisation, saving and XSLT of the document service.
#include "shell/failure.h"
#include "xml/xml_document.h"
#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace ostin::xml {
namespace {

using test_support::Loaded;
using test_support::Raised;
using test_support::Said;
using test_support::TempFolder;

const std::string kScoreDoctype = "<!DOCTYPE score-partwise PUBLIC \r\n"
                                  "\t\"-//Calvimora//DTD MusicXML 0.7b Partwise//EN\"\r\n"
                                  "\t\"//C:/musicxml/partwise.dtd\">";
const std::string kScoreText = "<?xml version=\"1.0\" standalone=\"no\"?>\r\n" + kScoreDoctype +
                               "\r\n<score-partwise>\r\n</score-partwise>\r\n";

// The first error's line, position and source line; the next successful load clears it.
TEST(XmlParseError, GivesPlaceAndSourceLineOfTheFirstError) {
  const std::tuple<std::string, int32_t, int32_t, std::string> cases[] = {
      // clang-format off
      {"<a>\n <b>\n</a>", 3, 5, "</a>"}, {"<a>\r\n<b></c>\r\n</a>\r\n", 2, 8, "<b></c>"},
      {"<a x='1' x='2'/>", 1, 15, "<a x='1' x='2'/>"}, {"<a>\n\n  <b c=1/></a>", 3, 8, "  <b c=1/></a>"},
      {"", 1, 1, ""},
      // clang-format on
  };
  for (const auto& [text, line, linepos, srcText] : cases) {
    auto doc = XmlDocument::Create();
    EXPECT_FALSE(doc->loadXML(text)) << text;
    const ParseError& error = doc->parseError();
    EXPECT_LT(error.errorCode, 0) << text;
    EXPECT_TRUE(!error.reason.empty() && error.reason.back() != '\n') << error.reason;
    EXPECT_EQ(std::tie(error.url, error.line, error.linepos, error.srcText),
              std::make_tuple("", line, linepos, srcText))
        << text;
    EXPECT_FALSE(doc->documentElement()) << "a failed load leaves the document empty";
    ASSERT_TRUE(doc->loadXML("<a/>"));
    EXPECT_EQ(std::tie(error.errorCode, error.reason, error.line, error.srcText),
              std::make_tuple(0, "", 0, ""));
  }
}

TEST(XmlLoad, MissingFileIsAParseErrorAndAFolderIsRefused) {
  TempFolder folder;
  auto doc = XmlDocument::Create();
  EXPECT_FALSE(doc->load(folder / "none.xml"));
  const ParseError& error = doc->parseError();
  EXPECT_EQ(std::tie(error.errorCode, error.reason, error.url),
            std::make_tuple(Code(0x800C0006), "The system cannot locate the object specified.",
                            folder / "none.xml"));
  folder.Write("sub/x.xml", "<a/>");
  EXPECT_EQ(Said(Raised([&] { doc->load(folder / "sub"); })),
            std::make_tuple(Code(0x80070005), "msxml3.dll", "Access is denied."));
}

TEST(XmlLoad, ValidatesAgainstTheExternalDtdOnlyWhenAskedTo) {
  TempFolder folder;
  const std::string dtd =
      folder.Write("my dtds/score.dtd", "<!ENTITY % notes SYSTEM \"note.mod\">%notes;\n"
                                        "<!ELEMENT score (note)*>\n");
  folder.Write("my dtds/note.mod", "<!ELEMENT note EMPTY>\n");
  const std::string good = "<score><note/></score>";
  const std::string bad = "<score>\n<rest/></score>";
  // What is checked, validateOnParse, resolveExternals, system identifier (empty: no
  // DOCTYPE), body, error code (0: loads; 1: any validation error).
  const std::tuple<const char*, bool, bool, std::string, std::string, int32_t> cases[] = {
      // clang-format off
      {"valid", true, true, dtd, good, 0},
      {"invalid", true, true, dtd, bad, 1},
      {"leading // before a path", true, true, "//" + dtd, bad, 1},
      {"relative to the file", true, true, "score.dtd", bad, 1},
      {"not validating", false, true, dtd, bad, 0}, {"not resolving", true, false, dtd, bad, 0},
      {"no doctype", true, true, "", bad, 0},
      {"missing dtd", true, true, folder / "none.dtd", good, Code(0x800C0006)},
      {"missing dtd, not resolving", true, false, folder / "none.dtd", good, 0},
      // clang-format on
  };
  for (const auto& [name, validate, resolve, systemId, body, code] : cases) {
    const std::string doctype =
        systemId.empty() ? "" : "<!DOCTYPE score SYSTEM \"" + systemId + "\">\n";
    const std::string path = folder.Write("my dtds/doc.xml", doctype + body);
    auto doc = XmlDocument::Create();
    doc->validateOnParse = validate;
    doc->resolveExternals = resolve;
    EXPECT_EQ(doc->load(path), code == 0) << name << ": " << doc->parseError().reason;
    const ParseError& error = doc->parseError();
    if (code == 1) {
      EXPECT_TRUE(error.errorCode < 0 && error.errorCode != Code(0x800C0006)) << name;
      EXPECT_NE(error.reason.find("rest"), std::string::npos) << name << ": " << error.reason;
      EXPECT_EQ(std::tie(error.line, error.url, error.srcText),
                std::make_tuple(3, path, "<rest/></score>"))
          << name;
    } else {
      EXPECT_EQ(error.errorCode, code) << name;
    }
    if (code == Code(0x800C0006)) {
      EXPECT_NE(error.reason.find(".dtd"), std::string::npos) << error.reason;
    }
  }
}

TEST(XmlLoad, ReadsExternalEntitiesOnlyWhenResolving) {
  TempFolder folder;
  const std::string secret = folder.Write("secret.txt", "SECRET");
  for (const bool resolve : {false, true}) {
    auto doc = XmlDocument::Create();
    doc->validateOnParse = false;
    doc->resolveExternals = resolve;
    EXPECT_TRUE(doc->loadXML("<!DOCTYPE a [<!ENTITY s SYSTEM \"" + secret + "\">]><a>&s;</a>"));
    EXPECT_EQ(doc->documentElement().text(), resolve ? "SECRET" : "") << resolve;
  }
}

// Text, its serialisation, whether white space is kept. The sample score is in the next test.
TEST(XmlSerialise, WritesTheLoadedDocumentInItsExactForm) {
  const std::tuple<std::string, std::string, bool> cases[] = {
      // clang-format off
      {"<a y='2' x=\"1\"><b/>text</a>", "<a y=\"2\" x=\"1\"><b/>text</a>\r\n", false},
      {"<a t='&lt;&amp;&quot;&gt;'>&lt;&amp;&gt;\"'</a>", "<a t=\"&lt;&amp;&quot;>\">&lt;&amp;&gt;\"'</a>\r\n", false},
      {"<a>\n  <b> x </b>\n</a>", "<a><b> x </b></a>\r\n", false},
      {"<a>\n  <b> x </b>\r\n</a>", "<a>\r\n  <b> x </b>\r\n</a>\r\n", true},
      {"<a>x\ny<!--1\n2--><![CDATA[3\n4]]></a>", "<a>x\r\ny<!--1\r\n2--><![CDATA[3\r\n4]]></a>\r\n", false},
      {"<a xml:space='preserve'> <b> </b><c xml:space='default'> </c></a>", "<a xml:space=\"preserve\"> <b> </b><c xml:space=\"default\"/></a>\r\n", false},
      {"\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>\n<!--c-->\n<?pi data?>\n<a/>\n<!--end-->",
       "<?xml version='1.0' encoding='UTF-8'?>\r\n<!--c-->\r\n<?pi data?>\r\n<a/>\r\n<!--end-->\r\n", false},
      {"<a><![CDATA[x<y]]>&#233;</a>", "<a><![CDATA[x<y]]>\xC3\xA9</a>\r\n", false},
      {"<a xmlns='u' xmlns:p='v'><p:b p:c='1'/></a>", "<a xmlns=\"u\" xmlns:p=\"v\"><p:b p:c=\"1\"/></a>\r\n", false},
      {"<!DOCTYPE a [\n<!ENTITY e \"v\">\n]><a>&e;</a>", "<!DOCTYPE a [\n<!ENTITY e \"v\">\n]>\r\n<a>v</a>\r\n", false},
      // clang-format on
  };
  for (const auto& [text, xml, preserveWhiteSpace] : cases) {
    EXPECT_EQ(Loaded(text, preserveWhiteSpace)->xml(), xml) << text;
  }
  // A built document is its root and a line end.
  auto doc = XmlDocument::Create();
  XmlNode root = doc->appendChild(doc->createElement("score"));
  root.appendChild(doc->createElement("part")).appendChild(doc->createTextNode("a&b\nc\r\nd"));
  EXPECT_EQ(doc->xml(), "<score><part>a&amp;b\r\nc\r\nd</part></score>\r\n");
}

TEST(XmlSerialise, RoundTripsWithLineBreaksBetweenTags) {
  auto doc = Loaded(kScoreText);
  doc->documentElement().appendChild(doc->createElement("part-list"));
  const std::string xml = doc->xml();
  EXPECT_EQ(xml, "<?xml version=\"1.0\" standalone=\"no\"?>\r\n" + kScoreDoctype +
                     "\r\n<score-partwise><part-list/></score-partwise>\r\n");
  EXPECT_EQ(std::make_pair(doc->doctype().xml(), doc->doctype().nodeName()),
            std::make_pair(kScoreDoctype, std::string("score-partwise")));
  std::string broken = xml;
  for (auto at = broken.find("><"); at != std::string::npos; at = broken.find("><", at)) {
    broken.replace(at, 2, ">\r\n<");
  }
  EXPECT_EQ(Loaded(broken)->xml(), xml);
  EXPECT_EQ(Loaded(broken, true)->xml(), broken) << "kept line breaks are written as CR LF";
}

TEST(XmlSerialise, LargeDocumentsAreSavedWhole) {
  std::string text = "<score>";
  for (int i = 0; i < 100000; ++i)
    text += "<note n=\"" + std::to_string(i) + "\"><pitch>C</pitch></note>";
  text += "</score>";
  auto doc = Loaded(text);
  EXPECT_EQ(doc->xml(), text + "\r\n");
  EXPECT_EQ(std::make_pair(doc->selectNodes("//note/pitch").length(),
                           doc->getElementsByTagName("note").length()),
            std::make_pair(100000, 100000));
  // The file is written in pieces; with line breaks between tags a piece may end at a tag.
  doc->setBreakBetweenTags(true);
  TempFolder folder;
  const std::string path = folder / "large.xml";
  doc->save(path);
  EXPECT_EQ(TempFolder::Read(path), doc->xml());
}

TEST(XmlSave, ReplacesTheFileAndRefusesReadOnlyFilesAndMissingFolders) {
  TempFolder folder;
  std::string path = folder.Write("out.xml", "old content that is longer than the new one");
  Loaded("<a><b/></a>")->save(path);
  EXPECT_EQ(TempFolder::Read(path), "<a><b/></a>\r\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / ""), {}), 1)
      << "no temporary file is left behind";
  // A read-only file is refused and kept as it was; so is a missing folder.
  path = folder.Write("locked.xml", "keep me");
  chmod(path.c_str(), 0444);
  auto doc = Loaded("<a/>");
  EXPECT_EQ(Said(Raised([&] { doc->save(path); })),
            std::make_tuple(Code(0x80070005), "msxml3.dll", "Access is denied."));
  EXPECT_EQ(TempFolder::Read(path), "keep me");
  EXPECT_EQ(Said(Raised([&] { doc->save(folder / "no/such/out.xml"); })),
            std::make_tuple(Code(0x80070003), "msxml3.dll",
                            "The system cannot find the path specified."));
}

TEST(XmlSave, RefusesWhatAnOrdinaryUserMayNotTouch) {
  if (geteuid() == 0) GTEST_SKIP() << "permissions do not bind root";
  TempFolder folder;
  const std::string path = folder.Write("shut/out.xml", "keep me");
  chmod(path.c_str(), 0200);
  EXPECT_EQ(Raised([&] { XmlDocument::Create()->load(path); }).Number, Code(0x80070005));
  chmod((folder / "shut").c_str(), 0555);
  EXPECT_EQ(Raised([&] { Loaded("<a/>")->save(folder / "shut/new.xml"); }).Number,
            Code(0x80070005));
  chmod((folder / "shut").c_str(), 0755);
}

TEST(XmlSettings, AcceptsOnlyXPathAsSelectionLanguage) {
  auto doc = XmlDocument::Create();
  EXPECT_TRUE(doc->async && doc->validateOnParse && doc->resolveExternals);
  EXPECT_FALSE(doc->preserveWhiteSpace);
  doc->setProperty("SelectionLanguage", "XPath");
  EXPECT_EQ(Raised([&] { doc->setProperty("SelectionLanguage", "XSLPattern"); }).Source,
            "msxml3.dll");
  EXPECT_EQ(Raised([&] { doc->setProperty("ServerHTTPRequest", "true"); }).Source, "msxml3.dll");
}

const std::string kStyleSheet =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:output method='xml' omit-xml-declaration='yes'/>"
    "<xsl:template match='/a'><list><xsl:for-each select='b'><i n='{.}'/></xsl:for-each>"
    "<xsl:if test='@stop'><xsl:message terminate='yes'>stopped here</xsl:message></xsl:if>"
    "</list></xsl:template></xsl:stylesheet>";

// The output goes into the result document; a sheet that is no XSLT and a terminating
// message raise.
TEST(XmlTransform, PutsTheOutputIntoTheResultDocumentOrRaises) {
  auto result = XmlDocument::Create();
  Loaded("<a><b>1</b><b>2</b></a>")->transformNodeToObject(*Loaded(kStyleSheet), *result);
  EXPECT_EQ(result->xml(), "<list><i n=\"1\"/><i n=\"2\"/></list>\r\n");
  EXPECT_EQ(result->selectNodes("/list/i").length(), 2);
  const Failure notXslt =
      Raised([&] { Loaded("<a/>")->transformNodeToObject(*Loaded("<a/>"), *result); });
  EXPECT_EQ(std::tie(notXslt.Number, notXslt.Source),
            std::make_tuple(Code(0x80004005), "msxml3.dll"));
  EXPECT_FALSE(notXslt.Description.empty());
  const Failure stopped = Raised(
      [&] { Loaded("<a stop='1'/>")->transformNodeToObject(*Loaded(kStyleSheet), *result); });
  EXPECT_EQ(stopped.Number, Code(0x80004005));
  EXPECT_NE(stopped.Description.find("stopped here"), std::string::npos) << stopped.Description;
}

} // namespace
} // namespace ostin::xml
