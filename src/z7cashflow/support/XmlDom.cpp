#include "z7cashflow/support/XmlDom.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <string>
#include <utility>

namespace z7::cashflow {

namespace {

const char* chars(const xmlChar* text) { return text == nullptr ? "" : reinterpret_cast<const char*>(text); }

const xmlNode* asNode(const void* node) { return static_cast<const xmlNode*>(node); }

std::string owned(xmlChar* text) {
    std::string copy = chars(text);
    xmlFree(text);
    return copy;
}

std::string textOf(const xmlAttr* attribute) {
    const xmlNode* first = attribute->children;
    const bool plain = first != nullptr && first->next == nullptr && first->type == XML_TEXT_NODE;
    return plain ? std::string(chars(first->content)) : owned(xmlNodeListGetString(attribute->doc, first, 1));
}

bool isBlankText(const xmlNode* node) { return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) != 0; }

// The parser's own guards against expansion and depth stay on (no XML_PARSE_HUGE), and the network is off.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                             XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;

// A voucher of 32,767 lines, the most that line numbers can count, stays well below this.
constexpr std::size_t maxDocumentSize = std::size_t{64} << 20U;

// Feeds the parser piece by piece: handed over whole, a text would count as one long look-ahead, which its guards end at
// ten million bytes.
int readFromText(void* source, char* buffer, int size) {
    auto* rest = static_cast<std::string_view*>(source);
    const std::size_t taken = rest->copy(buffer, static_cast<std::size_t>(size));
    rest->remove_prefix(taken);
    return static_cast<int>(taken);
}

// Ends the parse with the verdict that the text is no document.
void refuse(void* context) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    parser->wellFormed = 0;
    xmlStopParser(parser);
}

void refuseExternalEntities(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                            const xmlChar* systemId, xmlChar* content) {
    if (type == XML_INTERNAL_GENERAL_ENTITY || type == XML_INTERNAL_PARAMETER_ENTITY) {
        xmlSAX2EntityDecl(context, name, type, publicId, systemId, content);
    } else {
        refuse(context);
    }
}

void refuseExternalSubset(void* context, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId) {
    if (publicId == nullptr && systemId == nullptr) {
        xmlSAX2InternalSubset(context, name, publicId, systemId);
    } else {
        refuse(context);
    }
}

xmlEntity* refuseUnknownEntities(void* context, const xmlChar* name) {
    xmlEntity* entity = xmlSAX2GetEntity(context, name);
    if (entity == nullptr) {
        refuse(context);
    }
    return entity;
}

// A document is what its text says: what it would fetch from elsewhere makes it no document.
void closeToOutside(xmlParserCtxt& parser) {
    parser.sax->entityDecl = refuseExternalEntities;
    parser.sax->internalSubset = refuseExternalSubset;
    parser.sax->getEntity = refuseUnknownEntities;
}

} // namespace

XmlNode::XmlNode(std::shared_ptr<const void> document, const void* node) noexcept
    : document_(std::move(document)), node_(node) {}

bool XmlNode::isElement() const noexcept { return asNode(node_)->type == XML_ELEMENT_NODE; }

std::string XmlNode::baseName() const { return isElement() ? chars(asNode(node_)->name) : std::string(); }

std::string XmlNode::text() const { return owned(xmlNodeGetContent(asNode(node_))); }

std::vector<XmlNode> XmlNode::childNodes() const {
    std::vector<XmlNode> nodes;
    for (const xmlNode* child = asNode(node_)->children; child != nullptr; child = child->next) {
        if (!isBlankText(child)) {
            nodes.push_back(XmlNode(document_, child));
        }
    }
    return nodes;
}

void XmlNode::eachAttribute(const std::function<void(std::string_view, std::string_view, std::string)>& take) const {
    if (!isElement()) {
        return;
    }
    const xmlNode* node = asNode(node_);
    std::string name;
    for (const xmlNs* ns = node->nsDef; ns != nullptr; ns = ns->next) {
        const bool named = ns->prefix != nullptr;
        name = named ? std::string("xmlns:") + chars(ns->prefix) : "xmlns";
        take(named ? chars(ns->prefix) : "xmlns", name, chars(ns->href));
    }
    for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
        const char* baseName = chars(attribute->name);
        if (attribute->ns == nullptr || attribute->ns->prefix == nullptr) {
            take(baseName, baseName, textOf(attribute));
        } else {
            name = std::string(chars(attribute->ns->prefix)) + ":" + baseName;
            take(baseName, name, textOf(attribute));
        }
    }
}

std::vector<XmlAttribute> XmlNode::attributes() const {
    std::vector<XmlAttribute> list;
    eachAttribute([&](std::string_view baseName, std::string_view nodeName, std::string text) {
        list.push_back({std::string(baseName), std::string(nodeName), std::move(text)});
    });
    return list;
}

std::optional<std::string> XmlNode::attribute(std::string_view nodeName) const {
    std::optional<std::string> found;
    eachAttribute([&](std::string_view /*baseName*/, std::string_view name, std::string text) {
        if (name == nodeName) {
            found = std::move(text);
        }
    });
    return found;
}

std::vector<XmlNode> XmlNode::selectNodes(std::string_view path) const {
    const std::size_t slash = std::min(path.find('/'), path.size());
    const std::string_view step = path.substr(0, slash);
    std::vector<XmlNode> found;
    for (const xmlNode* child = asNode(node_)->children; child != nullptr; child = child->next) {
        // A name without a prefix means a name in no namespace.
        if (child->type != XML_ELEMENT_NODE || child->ns != nullptr || chars(child->name) != step) {
            continue;
        }
        const XmlNode node(document_, child);
        if (slash == path.size()) {
            found.push_back(node);
            continue;
        }
        auto below = node.selectNodes(path.substr(slash + 1));
        std::move(below.begin(), below.end(), std::back_inserter(found));
    }
    return found;
}

XmlDocument::XmlDocument(std::shared_ptr<const void> document) noexcept : document_(std::move(document)) {}

std::optional<XmlDocument> XmlDocument::load(std::string_view text) {
    if (text.empty() || text.size() > maxDocumentSize || text.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::shared_ptr<xmlParserCtxt> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser) {
        return std::nullopt;
    }
    closeToOutside(*parser);
    std::string_view rest = text;
    const std::shared_ptr<xmlDoc> document(
        xmlCtxtReadIO(parser.get(), readFromText, nullptr, &rest, nullptr, "UTF-8", parseOptions),
        [](xmlDoc* doc) { xmlFreeDoc(doc); });
    // Errors of namespaces leave a document behind; it is refused all the same.
    if (!document || parser->wellFormed == 0 || parser->nsWellFormed == 0 ||
        xmlDocGetRootElement(document.get()) == nullptr) {
        return std::nullopt;
    }
    return XmlDocument(document);
}

XmlNode XmlDocument::documentElement() const {
    const auto* document = static_cast<const xmlDoc*>(document_.get());
    return XmlNode(document_, xmlDocGetRootElement(document));
}

} // namespace z7::cashflow
