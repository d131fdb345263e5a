#include "z7cashflow/support/XmlDocument.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace z7::cashflow {
namespace {

XmlNode rootOf(std::string_view text) {
    const auto document = XmlDocument::load(text);
    if (!document) {
        throw std::runtime_error("refused: " + std::string(text));
    }
    return document->documentElement();
}

// The attributes of a node as returned: local name and text of each.
std::string attributesOf(const XmlNode& node) {
    std::string list;
    node.eachAttribute([&](std::string_view baseName, std::string_view text) {
        list.append(baseName).append("=").append(text).append(";");
    });
    return list;
}

// The attributes of the child nodes, each in brackets.
std::string childrenOf(const XmlNode& node) {
    std::string list;
    for (const XmlNode& child : node.childNodes()) {
        list += "[" + attributesOf(child) + "]";
    }
    return list;
}

TEST(XmlDom, ReturnsElementsAndAttributes) {
    const XmlNode root = rootOf("<root a='1' b=\"two\"><x n='3'>te<y n='4'/>t</x><z/></root>");
    EXPECT_EQ(attributesOf(root), "a=1;b=two;");
    EXPECT_EQ(root.attribute("b"), "two");
    EXPECT_EQ(root.attribute("B"), std::nullopt);
    EXPECT_EQ(childrenOf(root), "[n=3;][]");
    EXPECT_EQ(childrenOf(root.childNodes()[0]), "[][n=4;][]");
}

TEST(XmlDom, TakesWhiteSpaceBetweenElementsAsNoNode) {
    EXPECT_EQ(childrenOf(rootOf("<r>\r\n  <a n='1'/>\t\n<b n='2'/> \n</r>")), "[n=1;][n=2;]");
    EXPECT_EQ(childrenOf(rootOf("<r>  </r>")), "");
    EXPECT_EQ(childrenOf(rootOf("<r> &#32;<![CDATA[ ]]><![CDATA[]]>\n</r>")), "");
}

TEST(XmlDom, CountsOtherNodesAmongTheChildren) {
    const XmlNode root = rootOf("<r>text<a n='1'/><!-- remark --><?target text?>\n<b n='2'/></r>");
    EXPECT_EQ(childrenOf(root), "[][n=1;][][][n=2;]");
    EXPECT_EQ(root.childNodes()[0].attribute("n"), std::nullopt);
    EXPECT_TRUE(root.childNodes()[0].childNodes().empty());
}

TEST(XmlDom, TakesATextInPiecesAsOneNode) {
    EXPECT_EQ(childrenOf(rootOf("<r> a&amp;b &#65;<![CDATA[<&>]]> \xE5\x80\x9F </r>")), "[]");
    EXPECT_EQ(childrenOf(rootOf("<r>a<!-- -->b<?p?>c<x/>d</r>")), "[][][][][][][]");
    EXPECT_EQ(childrenOf(rootOf("<r>" + std::string(100000, 'x') + "<a n='1'/></r>")), "[][n=1;]");
}

TEST(XmlDom, ReturnsTheTextsOfANodeAndItsDescendants) {
    EXPECT_EQ(rootOf("<r> a &lt; <![CDATA[<b>]]><!-- no --><x y='no'>c<z>d</z></x>e </r>").text(), "a < <b>cde");
    EXPECT_EQ(rootOf("<r>  \n </r>").text(), "");
    EXPECT_EQ(rootOf("<r a='1'/>").text(), "");
    const XmlNode root = rootOf("<r><a>" + std::string(100000, 'x') + "</a><b>y</b></r>");
    EXPECT_EQ(root.childNodes()[0].text().size(), 100000U);
    EXPECT_EQ(root.childNodes()[1].text(), "y");
}

TEST(XmlDom, LeavesRemarksOutsideTheDocumentElementAside) {
    const XmlNode root = rootOf("<!-- 1 --><?p?><!DOCTYPE r [<!-- 2 --><?p?>]><r><a n='1'/></r><!-- 3 --><?p?>");
    EXPECT_EQ(childrenOf(root), "[n=1;]");
}

TEST(XmlDom, TakesPrefixesOffBaseNames) {
    const XmlNode root = rootOf("<p:r p:x='1' x='2' xmlns:p='urn:p' xmlns='urn:q' p:xmlns='3'/>");
    EXPECT_EQ(attributesOf(root), "x=1;x=2;p=urn:p;xmlns=urn:q;xmlns=3;");
    EXPECT_EQ(root.attribute("p:x"), "1");
    EXPECT_EQ(root.attribute("x"), "2");
    EXPECT_EQ(root.attribute("xmlns:p"), "urn:p");
    EXPECT_EQ(root.attribute("xmlns"), "urn:q");
    EXPECT_EQ(root.attribute("p"), std::nullopt);
    EXPECT_EQ(root.attribute("q:x"), std::nullopt);
    EXPECT_EQ(root.attribute("px"), std::nullopt);
}

TEST(XmlDom, ResolvesTheFiveUsualEntities) {
    const XmlNode root = rootOf("<r a='&amp;&lt;&gt;&apos;&quot;&#38;'>&amp;&lt;&gt;&apos;&quot;&#38;</r>");
    EXPECT_EQ(attributesOf(root), "a=&<>'\"&;");
    EXPECT_EQ(root.text(), "&<>'\"&");
}

TEST(XmlDom, TakesADocumentTypeThatDeclaresNeitherEntitiesNorAttributes) {
    for (const char* type : {"<!DOCTYPE r>", "<!DOCTYPE r []>", "<!DOCTYPE r [<!ELEMENT r ANY>]>",
                             "<!DOCTYPE r [<!ELEMENT r (a*)><!NOTATION n SYSTEM 'n'><!-- c --><?p?>]>"}) {
        EXPECT_EQ(attributesOf(rootOf(type + std::string("<r b='1'/>"))), "b=1;") << type;
    }
}

TEST(XmlDom, RefusesADocumentTypeThatDeclaresEntitiesOrAttributes) {
    for (const char* declaration :
         {"<!ENTITY e 'text'>", "<!ENTITY e ''>", "<!ENTITY % e 'text'>", "<!ENTITY lt '&#38;#60;'>",
          "<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'x' NDATA n>", "<!ATTLIST r a CDATA 'v'>",
          "<!ATTLIST r a (x|y) 'x'>", "<!ATTLIST r a CDATA #IMPLIED>", "%e;"}) {
        const std::string text = std::string("<!DOCTYPE r [") + declaration + "]><r/>";
        EXPECT_FALSE(XmlDocument::load(text)) << text;
    }
}

TEST(XmlDom, FollowsPathsOfNames) {
    const XmlNode root =
        rootOf("<r><rows><row n='1'/><other/><row n='2'/></rows><row n='0'/><rows><row n='3'/></rows></r>");
    const auto rows = root.selectNodes("rows/row");
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].attribute("n"), "1");
    EXPECT_EQ(rows[1].attribute("n"), "2");
    EXPECT_EQ(rows[2].attribute("n"), "3");
    EXPECT_TRUE(root.selectNodes("Rows/row").empty());
    EXPECT_EQ(root.selectNodes("row").size(), 1U);
}

TEST(XmlDom, FollowsNoPathIntoANamespace) {
    const XmlNode root = rootOf("<r xmlns:p='u'><p:a n='1'/><a n='2'/><b xmlns='u'><a n='3'/></b><a xmlns='u' n='4'/>"
                                "<b xmlns=''><a n='5'/></b></r>");
    const auto found = root.selectNodes("a");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].attribute("n"), "2");
    const auto below = root.selectNodes("b/a");
    ASSERT_EQ(below.size(), 1U);
    EXPECT_EQ(below[0].attribute("n"), "5");
}

TEST(XmlDom, ReadsEscapesAndCharacterReferences) {
    const XmlNode root = rootOf("<r a='&amp;&lt;&gt;&apos;&quot;&#x501F;&#65;' b='\r\n\t &#10;'/>");
    EXPECT_EQ(root.attribute("a"), "&<>'\"借A");
    EXPECT_EQ(root.attribute("b"), "   \n");
}

TEST(XmlDom, TakesTheTextAsUtf8WhateverItDeclares) {
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='gb2312' ?><r a='现金'/>").attribute("a"), "现金");
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='utf-16'?><r a='é'/>").attribute("a"), "é");
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='no-such'?><r a='é'/>").attribute("a"), "é");
}

TEST(XmlDom, KeepsTheOrderOfAttributesAmongDeclarationsOfNamespaces) {
    const XmlNode root = rootOf(
        "<r><e a = '1=2 b=\"3\"' xmlns:p\n=\n\"u\" p:c='>' xmlns='v' d=''/><f x='0' xmlns:p='u' y='1'>t</f></r>");
    EXPECT_EQ(childrenOf(root), "[a=1=2 b=\"3\";p=u;c=>;xmlns=v;d=;][x=0;p=u;y=1;]");
}

TEST(XmlDom, KeepsTheOrderFarIntoALongDocument) {
    std::string text = "<r>";
    for (int i = 0; i < 20000; ++i) {
        text += "<e n='借\xE5\x80\x9F'/>";
    }
    const XmlNode root = rootOf(text + "<e z='1' xmlns:p='u' a='2'/></r>");
    EXPECT_EQ(attributesOf(root.childNodes().back()), "z=1;p=u;a=2;");
}

TEST(XmlDom, TakesAnyNumberOfElementsThatAWriterOfRowsCanMake) {
    std::string text = "<r>";
    constexpr std::size_t manyRows = 1100000;
    for (std::size_t i = 0; i < manyRows; ++i) {
        text += "<row a='' b='' />\r\n";
    }
    EXPECT_EQ(rootOf(text + "</r>").childNodes().size(), manyRows);
}

TEST(XmlDom, LeavesAByteOrderMarkAside) {
    EXPECT_EQ(rootOf("\xEF\xBB\xBF<?xml version='1.0'?><r z='1' xmlns:p='u' a='2'/>").attribute("z"), "1");
    EXPECT_EQ(attributesOf(rootOf("\xEF\xBB\xBF<r z='1' xmlns:p='u' a='2'/>")), "z=1;p=u;a=2;");
    EXPECT_FALSE(XmlDocument::load("\xEF\xBB\xBF"));
}

TEST(XmlDom, SaysOnWhichLineADocumentIsWrongAndWhy) {
    const auto why = [](std::string_view text) {
        Explanation found;
        EXPECT_FALSE(XmlDocument::load(text, &found)) << text;
        return englishText(found);
    };
    EXPECT_EQ(why(""), "The document is empty");
    EXPECT_EQ(why("text"), "Line 1: the text is not XML");
    EXPECT_EQ(why("<r>\n<a>\n</b></r>"), "Line 3: an end tag does not match its start tag");
    EXPECT_EQ(why("<r>\n<a>"), "Line 2: the document ends before all its elements are closed");
    EXPECT_EQ(why("<r/>\n\nmore"), "Line 3: there is more text after the end of the document");
    EXPECT_EQ(why("<r a='1'\na='2'/>"), "Line 2: an element has the same attribute twice");
    EXPECT_EQ(why("<r a=1/>"), "Line 1: an attribute has no value in quotes");
    EXPECT_EQ(why("<r>\n&nbsp;</r>"), "Line 2: a \"&\" does not begin a known entity; write &amp;");
    EXPECT_EQ(why("<r>\n<p:a/></r>"), "Line 2: a prefix is not declared");
    EXPECT_EQ(why("<r a='\xff\xfe'/>"), "Line 1: a character is not allowed, or the text is not UTF-8");
    EXPECT_EQ(why(std::string_view("<r/>\0", 5)), "The document holds a zero byte");
}

TEST(XmlDom, RefusesWhatIsNotWellFormed) {
    for (const char* text : {"", " ", "text", "<r>", "<r></s>", "<r/><r/>", "<r a=1/>", "<r a='1' a='2'/>",
                             "<r a='<'/>", "<r>&unknown;</r>", "<r a='&unknown;'/>", "<p:r/>", "<r p:a='1'/>",
                             "<r xmlns:p='u' xmlns:q='u' p:a='1' q:a='2'/>", "<r>&</r>", "<r>&#0;</r>", "<1/>"}) {
        EXPECT_FALSE(XmlDocument::load(text)) << text;
    }
    EXPECT_FALSE(XmlDocument::load(std::string_view("<r/>\0", 5)));
    EXPECT_FALSE(XmlDocument::load("<r a='\xff\xfe'/>"));
}

TEST(XmlDom, RefusesEntitiesThatExpandBeyondBounds) {
    std::string text = "<!DOCTYPE r [<!ENTITY e0 'lollollollol'>";
    for (int i = 1; i <= 12; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (int k = 0; k < 10; ++k) {
            text += inner;
        }
        text += "'>";
    }
    text += "]><r>&e12;</r>";
    EXPECT_FALSE(XmlDocument::load(text));
}

TEST(XmlDom, ReadsNoOtherFiles) {
    const std::string path = testing::TempDir() + "z7cashflow_xml_entity.txt";
    std::ofstream(path) << "secret";
    for (const std::string& address : {path, "file://" + path}) {
        EXPECT_FALSE(XmlDocument::load("<!DOCTYPE r [<!ENTITY f SYSTEM '" + address + "'>]><r><a>x&f;</a></r>"));
        EXPECT_FALSE(XmlDocument::load("<!DOCTYPE r SYSTEM '" + address + "'><r>x</r>"));
    }
    std::remove(path.c_str());
}

TEST(XmlDom, BoundsTheNesting) {
    const auto nested = [](int levels) {
        std::string text;
        for (int i = 0; i < levels; ++i) {
            text += "<r>";
        }
        for (int i = 0; i < levels; ++i) {
            text += "</r>";
        }
        return text;
    };
    EXPECT_TRUE(XmlDocument::load(nested(200)));
    EXPECT_FALSE(XmlDocument::load(nested(300)));
    EXPECT_FALSE(XmlDocument::load(nested(200000)));
}

TEST(XmlDom, KeepsTheDocumentAsLongAsANodeIsHeld) {
    std::vector<XmlNode> nodes;
    {
        const auto document = XmlDocument::load("<r><a n='1'/><a n='2'/></r>");
        ASSERT_TRUE(document);
        nodes = document->documentElement().childNodes();
    }
    ASSERT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes[1].attribute("n"), "2");
}

TEST(XmlDom, TakesLongDocuments) {
    std::string text = "<r><rows>";
    for (int i = 0; i < 20000; ++i) {
        text += "<row n='" + std::to_string(i) + "' t='" + std::string(50, 'x') + "'/>";
    }
    text += "</rows></r>";
    EXPECT_EQ(rootOf(text).selectNodes("rows/row").size(), 20000U);
}

} // namespace
} // namespace z7::cashflow
