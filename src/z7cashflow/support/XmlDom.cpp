#include "z7cashflow/support/XmlDom.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <limits>
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

std::string prefixed(const xmlNs* ns, const xmlChar* name) {
    const bool hasPrefix = ns != nullptr && ns->prefix != nullptr;
    return hasPrefix ? std::string(chars(ns->prefix)) + ":" + chars(name) : std::string(chars(name));
}

bool isBlankText(const xmlNode* node) { return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) != 0; }

// The parser's own guards against expansion and depth stay on (no XML_PARSE_HUGE), and the network is off.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                             XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;

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

std::vector<XmlAttribute> XmlNode::attributes() const {
    std::vector<XmlAttribute> list;
    if (!isElement()) {
        return list;
    }
    const xmlNode* node = asNode(node_);
    for (const xmlNs* ns = node->nsDef; ns != nullptr; ns = ns->next) {
        const bool named = ns->prefix != nullptr;
        list.push_back({named ? chars(ns->prefix) : "xmlns",
                        named ? std::string("xmlns:") + chars(ns->prefix) : "xmlns", chars(ns->href)});
    }
    for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
        list.push_back({chars(attribute->name), prefixed(attribute->ns, attribute->name),
                        owned(xmlNodeListGetString(node->doc, attribute->children, 1))});
    }
    return list;
}

std::optional<std::string> XmlNode::attribute(std::string_view nodeName) const {
    for (XmlAttribute& candidate : attributes()) {
        if (candidate.nodeName == nodeName) {
            return std::move(candidate.text);
        }
    }
    return std::nullopt;
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
    if (text.empty() || text.find('\0') != std::string_view::npos ||
        text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return std::nullopt;
    }
    const std::shared_ptr<xmlParserCtxt> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser) {
        return std::nullopt;
    }
    closeToOutside(*parser);
    const std::shared_ptr<xmlDoc> document(
        xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", parseOptions),
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
