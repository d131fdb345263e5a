#include "z7cashflow/support/XmlDom.h"

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

TEST(XmlDom, GivesElementsAttributesAndTexts) {
    const XmlNode root = rootOf("<root a='1' b=\"two\"><x>te<y>x</y>t</x><z/></root>");
    EXPECT_TRUE(root.isElement());
    EXPECT_EQ(root.baseName(), "root");
    const auto attributes = root.attributes();
    ASSERT_EQ(attributes.size(), 2U);
    EXPECT_EQ(attributes[0].baseName, "a");
    EXPECT_EQ(attributes[0].nodeName, "a");
    EXPECT_EQ(attributes[0].text, "1");
    EXPECT_EQ(attributes[1].text, "two");
    EXPECT_EQ(root.attribute("b"), "two");
    EXPECT_EQ(root.attribute("B"), std::nullopt);
    ASSERT_EQ(root.childNodes().size(), 2U);
    EXPECT_EQ(root.childNodes()[0].text(), "text");
    EXPECT_EQ(root.childNodes()[1].baseName(), "z");
    EXPECT_TRUE(root.childNodes()[1].attributes().empty());
}

TEST(XmlDom, TakesWhiteSpaceBetweenElementsAsNoNode) {
    const XmlNode root = rootOf("<r>\r\n  <a/>\t\n<b/> \n</r>");
    ASSERT_EQ(root.childNodes().size(), 2U);
    EXPECT_EQ(root.childNodes()[0].baseName(), "a");
    EXPECT_EQ(root.childNodes()[1].baseName(), "b");
    EXPECT_TRUE(rootOf("<r>  </r>").childNodes().empty());
}

TEST(XmlDom, TellsElementsFromOtherNodes) {
    const XmlNode root = rootOf("<r>text<a/><!-- remark --></r>");
    const auto nodes = root.childNodes();
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_FALSE(nodes[0].isElement());
    EXPECT_TRUE(nodes[0].attributes().empty());
    EXPECT_TRUE(nodes[1].isElement());
    EXPECT_FALSE(nodes[2].isElement());
}

TEST(XmlDom, TakesPrefixesOffBaseNames) {
    const XmlNode root = rootOf("<p:r xmlns:p='urn:p' p:x='1' x='2'/>");
    EXPECT_EQ(root.baseName(), "r");
    EXPECT_EQ(root.attribute("p:x"), "1");
    EXPECT_EQ(root.attribute("x"), "2");
    const auto attributes = root.attributes();
    ASSERT_EQ(attributes.size(), 3U);
    EXPECT_EQ(attributes[0].nodeName, "xmlns:p");
    EXPECT_EQ(attributes[0].text, "urn:p");
    EXPECT_EQ(attributes[1].nodeName, "p:x");
    EXPECT_EQ(attributes[1].baseName, "x");
    EXPECT_EQ(attributes[2].nodeName, "x");
    EXPECT_EQ(attributes[2].baseName, "x");
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

TEST(XmlDom, ReadsEscapesAndCharacterReferences) {
    const XmlNode root = rootOf("<r a='&amp;&lt;&gt;&apos;&quot;&#x501F;&#65;'><![CDATA[<&>]]></r>");
    EXPECT_EQ(root.attribute("a"), "&<>'\"借A");
    EXPECT_EQ(root.text(), "<&>");
}

TEST(XmlDom, HandsAttributesOverOneByOneAsItListsThem) {
    const XmlNode root = rootOf("<r b='2' xmlns:p='u' p:a='1' c=''/>");
    std::string told;
    root.eachAttribute([&](std::string_view baseName, std::string_view nodeName, std::string text) {
        told.append(baseName).append("|").append(nodeName).append("|").append(text).append(";");
    });
    std::string listed;
    for (const XmlAttribute& attribute : root.attributes()) {
        listed += attribute.baseName + "|" + attribute.nodeName + "|" + attribute.text + ";";
    }
    EXPECT_EQ(told, listed);
    EXPECT_NE(told.find("b|b|2;a|p:a|1;c|c|;"), std::string::npos) << told;
    EXPECT_EQ(root.attribute("p:a"), "1");
    EXPECT_EQ(root.attribute("a"), std::nullopt);
}

TEST(XmlDom, TakesTheTextAsUtf8WhateverItDeclares) {
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='gb2312' ?><r a='现金'/>").attribute("a"), "现金");
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='utf-16'?><r a='é'/>").attribute("a"), "é");
    EXPECT_EQ(rootOf("<?xml version='1.0' encoding='no-such'?><r a='é'/>").attribute("a"), "é");
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
        const auto document =
            XmlDocument::load("<!DOCTYPE r [<!ENTITY f SYSTEM '" + address + "'>]><r><a>x&f;</a></r>");
        if (document) {
            EXPECT_EQ(document->documentElement().text().find("secret"), std::string::npos);
        }
        const auto outside = XmlDocument::load("<!DOCTYPE r SYSTEM '" + address + "'><r>x</r>");
        if (outside) {
            EXPECT_EQ(outside->documentElement().text(), "x");
        }
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
