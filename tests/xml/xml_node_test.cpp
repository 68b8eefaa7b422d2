// Node handles: XPath, navigation, tree changes, attributes, lists and memory ownership.
#include "shell/failure.h"
#include "xml/xml_document.h"
#include "xml_test_support.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace ostin::xml {
namespace {

using test_support::Loaded;
using test_support::Raised;

const std::string kScore =
    "<r><p id='1'><m n='1'/><m n='2'>x<!--c--></m></p><p id='2'><m n='3'>y</m></p></r>";

// Each node of the list as its name plus its n or id attribute, joined by commas.
std::string Names(XmlNodeList list) {
  std::string names;
  for (XmlNode node = list.nextNode(); node; node = list.nextNode()) {
    if (!names.empty()) names += ',';
    names += node.nodeName() + node.getAttribute("n") + node.getAttribute("id");
  }
  return names;
}

TEST(XmlXPath, FindsNodesInDocumentOrderRelativeToTheContext) {
  auto doc = Loaded(kScore);
  // Context (empty: the document), query, the nodes found.
  const std::tuple<std::string, std::string, std::string> cases[] = {
      // clang-format off
      {"", "//m", "m1,m2,m3"}, {"", "/r/p", "p1,p2"}, {"/r/p[2]", "m", "m3"},
      {"/r/p[2]", "/r/p/m", "m1,m2,m3"}, {"//m[@n='3']", "../../p/@id", "id,id"},
      {"", "//m | /r/p", "p1,m1,m2,p2,m3"}, {"//m[@n='2']", "following::m | preceding-sibling::*", "m1,m3"},
      {"", "//m/text()", "#text,#text"}, {"", "//q", ""},
      // clang-format on
  };
  for (const auto& [at, query, found] : cases) {
    const XmlNode context = at.empty() ? XmlNode(*doc) : doc->selectSingleNode(at);
    EXPECT_EQ(Names(context.selectNodes(query)), found) << at << " " << query;
  }
  EXPECT_FALSE(doc->selectSingleNode("//q"));
  EXPECT_EQ(doc->selectSingleNode("//m").getAttribute("n"), "1");
  // Bad expressions and results that are no nodes raise.
  for (const std::string query : {"//m[", "count(//m)", "//m/@"}) {
    EXPECT_EQ(Raised([&] { doc->selectNodes(query); }).Source, "msxml3.dll") << query;
  }
}

TEST(XmlXPath, KeepsDocumentOrderAfterNodesMove) {
  auto doc = Loaded(kScore);
  const XmlNode root = doc->documentElement();
  root.appendChild(root.firstChild());
  root.insertBefore(doc->createElement("m"), root.firstChild());
  EXPECT_EQ(Names(doc->selectNodes("//m")), "m,m3,m1,m2");
  EXPECT_EQ(Names(doc->selectNodes("/r/p | //m")), "m,p2,m3,p1,m1,m2");
  EXPECT_EQ(Names(doc->selectNodes("/r/*[@id]")), "p2,p1");
  EXPECT_EQ(Names(doc->getElementsByTagName("m")), "m,m3,m1,m2");
}

TEST(XmlNode, ReadsAndWritesText) {
  auto doc = Loaded(kScore);
  const XmlNode p1 = doc->selectSingleNode("/r/p");
  const XmlNode m2 = doc->selectSingleNode("//m[@n='2']");
  EXPECT_EQ(doc->documentElement().text() + "/" + doc->text(), "xy/xy");
  p1.text("a<b");
  EXPECT_EQ(std::make_tuple(p1.xml(), p1.childNodes().length(), p1.firstChild().nodeType()),
            std::make_tuple("<p id=\"1\">a&lt;b</p>", 1, NODE_TEXT));
  EXPECT_FALSE(m2.parentNode()) << "replaced children are out of the tree";
  doc->documentElement().appendChild(m2);
  EXPECT_EQ(Names(doc->selectNodes("//m")), "m3,m2");
  p1.text("");
  EXPECT_FALSE(p1.hasChildNodes());
  m2.firstChild().text("z");
  EXPECT_EQ(m2.xml(), "<m n=\"2\">z<!--c--></m>");
  // Texts of every length in turn, short ones stored inside the node, and their copies.
  const std::string lengths[] = {
      "1", std::string(15, 'a'), std::string(16, 'b'), "", "22", std::string(40, 'c'), "3"};
  for (const std::string& value : lengths) {
    p1.text(value);
    EXPECT_EQ(std::make_tuple(p1.text(), p1.cloneNode(true).text(),
                              doc->createTextNode(value).text(),
                              doc->selectNodes("/r/p[1][. = '" + value + "']").length()),
              std::make_tuple(value, value, value, 1));
  }
}

TEST(XmlNode, GivesMsxmlTypesNamesAndForms) {
  auto doc = Loaded("<!DOCTYPE r><r a='v'>t<![CDATA[c]]><!--k--><?go now?></r>");
  const std::tuple<std::string, int32_t, std::string, std::string> cases[] = {
      {"/r", NODE_ELEMENT, "r", "<r a=\"v\">t<![CDATA[c]]><!--k--><?go now?></r>"},
      {"/r/@a", NODE_ATTRIBUTE, "a", "a=\"v\""},
      {"/r/text()[1]", NODE_TEXT, "#text", "t"},
      {"/r/text()[2]", NODE_CDATA_SECTION, "#cdata-section", "<![CDATA[c]]>"},
      {"/r/comment()", NODE_COMMENT, "#comment", "<!--k-->"},
      {"/r/processing-instruction()", NODE_PROCESSING_INSTRUCTION, "go", "<?go now?>"},
  };
  for (const auto& [query, type, name, xml] : cases) {
    const XmlNode node = doc->selectSingleNode(query);
    ASSERT_TRUE(node) << query;
    EXPECT_EQ(std::make_tuple(node.nodeType(), node.nodeName(), node.xml()),
              std::tie(type, name, xml));
  }
  EXPECT_EQ(std::make_tuple(doc->nodeType(), doc->nodeName()),
            std::make_tuple(NODE_DOCUMENT, "#document"));
  EXPECT_EQ(doc->doctype().nodeType(), NODE_DOCUMENT_TYPE);
  EXPECT_EQ(doc->firstChild(), doc->doctype());
  EXPECT_EQ(doc->doctype().nextSibling(), doc->documentElement());
  EXPECT_FALSE(doc->documentElement().getAttributeNode("a").parentNode());
}

TEST(XmlNode, InsertsMovesReplacesAndRemovesChildren) {
  auto doc = Loaded("<r><a/><b/></r>");
  const XmlNode r = doc->documentElement();
  const XmlNode a = r.firstChild();
  const XmlNode b = r.lastChild();
  const XmlNode c = doc->createElement("c");
  EXPECT_EQ(r.insertBefore(c, XmlNode()), c);
  EXPECT_EQ(r.xml(), "<r><a/><b/><c/></r>");
  r.insertBefore(c, a);
  EXPECT_EQ(r.xml(), "<r><c/><a/><b/></r>");
  a.appendChild(b);
  EXPECT_EQ(r.xml(), "<r><c/><a><b/></a></r>");
  EXPECT_EQ(b.parentNode(), a);
  EXPECT_EQ(r.replaceChild(doc->createElement("d"), c), c);
  EXPECT_EQ(r.xml(), "<r><d/><a><b/></a></r>");
  EXPECT_EQ(a.removeChild(b), b);
  EXPECT_FALSE(b.parentNode() || a.hasChildNodes());
  r.firstChild().appendChild(b);
  r.appendChild(c);
  EXPECT_EQ(r.xml(), "<r><d><b/></d><a/><c/></r>");
  EXPECT_TRUE(c.previousSibling() == a && a.nextSibling() == c);
}

TEST(XmlNode, RefusesImpossibleInsertions) {
  auto doc = Loaded("<r k='1'><a><b/></a></r>");
  const XmlNode r = doc->documentElement();
  const XmlNode a = r.firstChild();
  const XmlNode b = a.firstChild();
  const std::pair<std::function<void()>, uint32_t> impossible[] = {
      {[&] { b.appendChild(a); }, 0x80004005u}, // an ancestor under itself
      {[&] { doc->appendChild(doc->createElement("second")); }, 0x80004005u},
      {[&] { a.appendChild(r.getAttributeNode("k")); }, 0x80004005u},
      {[&] { r.insertBefore(doc->createElement("x"), b); }, 0x80070057u}, // b is a grandchild
      {[&] { r.removeChild(b); }, 0x80070057u},
  };
  for (const auto& [insertion, number] : impossible) {
    const Failure failure = Raised(insertion);
    EXPECT_EQ(failure.Number, Code(number)) << failure.Description;
    EXPECT_EQ(failure.Source, "msxml3.dll");
  }
  EXPECT_EQ(r.xml(), "<r k=\"1\"><a><b/></a></r>");
  EXPECT_EQ(doc->replaceChild(doc->createElement("new"), r), r);
  EXPECT_EQ(doc->documentElement().nodeName(), "new");
  // An empty handle is false and raises 91 when used.
  EXPECT_FALSE(XmlNode());
  EXPECT_EQ(Raised([] { XmlNode().nodeName(); }).Number, 91);
}

TEST(XmlNode, ClonesDeepOrShallowOutsideTheTree) {
  auto doc = Loaded("<r><a k='1'><b>t</b></a></r>");
  const XmlNode a = doc->selectSingleNode("//a");
  const XmlNode deep = a.cloneNode(true);
  const XmlNode shallow = a.cloneNode(false);
  EXPECT_EQ(deep.xml() + shallow.xml(), "<a k=\"1\"><b>t</b></a><a k=\"1\"/>");
  EXPECT_FALSE(deep.parentNode() || deep == a);
  deep.firstChild().text("changed");
  deep.setAttribute("k", "2");
  EXPECT_EQ(a.xml(), "<a k=\"1\"><b>t</b></a>");
  doc->documentElement().appendChild(deep);
  EXPECT_EQ(doc->documentElement().xml(),
            "<r><a k=\"1\"><b>t</b></a><a k=\"2\"><b>changed</b></a></r>");
}

TEST(XmlNode, ReadsAndWritesAttributes) {
  auto doc = Loaded("<r xmlns:x='u' x:h='1' a='old'/>");
  const XmlNode r = doc->documentElement();
  EXPECT_EQ(std::make_tuple(r.tagName(), r.getAttribute("x:h"), r.getAttribute("none")),
            std::make_tuple("r", "1", ""));
  EXPECT_FALSE(r.getAttributeNode("none"));
  const XmlNode a = r.getAttributeNode("a");
  r.setAttribute("a", "new \"&<");
  r.setAttribute("b", "2");
  EXPECT_EQ(a.text(), "new \"&<");
  EXPECT_EQ(r.xml(), "<r xmlns:x=\"u\" x:h=\"1\" a=\"new &quot;&amp;&lt;\" b=\"2\"/>");
}

TEST(XmlNodeList, IsASnapshotWithACursor) {
  auto doc = Loaded(kScore);
  XmlNodeList list = doc->getElementsByTagName("*");
  EXPECT_EQ(Names(list), "r,p1,m1,m2,p2,m3");
  int count = 0;
  while (list.nextNode())
    ++count;
  EXPECT_EQ(count, 6) << "a copy of the list has its own cursor";
  EXPECT_FALSE(list.nextNode()) << "the cursor stays at the end";
  list.reset();
  EXPECT_EQ(list.nextNode().nodeName(), "r");
  EXPECT_FALSE(list.item(-1) || list.item(6));
  const XmlNode p2 = list.item(4);
  doc->documentElement().removeChild(p2);
  EXPECT_TRUE(list.length() == 6 && list.item(4) == p2) << "a snapshot keeps removed nodes";
  EXPECT_EQ(doc->getElementsByTagName("m").length(), 2);
  std::vector<XmlNodeList> lists = doc->getElementsByTagNames({"m", "p", "*", "q"});
  EXPECT_EQ(Names(lists[0]) + "/" + Names(lists[1]) + "/" + Names(lists[2]) + "/" +
                std::to_string(lists[3].length()),
            "m1,m2/p1/r,p1,m1,m2/0");
}

TEST(XmlNode, TextNodesStaySeparateAndNodesOutliveTheirDocument) {
  XmlNode kept;
  XmlNode old;
  {
    auto doc = Loaded("<r/>");
    const XmlNode r = doc->documentElement();
    const XmlNode first = r.appendChild(doc->createTextNode("a"));
    r.appendChild(doc->createTextNode("b"));
    EXPECT_EQ(r.childNodes().length(), 2);
    EXPECT_EQ(first.text(), "a");
    doc->createElement("never-inserted").appendChild(doc->createTextNode("x"));
    r.appendChild(doc->createElement("gone")).cloneNode(true);
    r.removeChild(r.lastChild());
    old = r;
    ASSERT_TRUE(doc->loadXML("<other><kept/></other>"));
    EXPECT_EQ(old.xml(), "<r>ab</r>") << "handles keep the content they were made on";
    kept = doc->documentElement().firstChild();
    old.appendChild(kept); // from other content: a copy goes in
    EXPECT_EQ(kept.parentNode().nodeName(), "other");
  }
  EXPECT_EQ(kept.parentNode().xml(), "<other><kept/></other>");
  EXPECT_EQ(old.xml(), "<r>ab<kept/></r>");
}

} // namespace
} // namespace ostin::xml
