#include "z7cashflow/support/XmlDom.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <cstddef>
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

// What a document may say more than once by declaring it: bytes out of entities and of attributes that come by themselves.
constexpr std::size_t expansionBudget = std::size_t{16} << 20U;

/// What one parse reads, and how far it may go.
struct Source {
    std::string_view rest;
    std::size_t budget = expansionBudget;
    bool refused = false; ///< an error was found: nothing more is read
};

// Feeds the parser piece by piece: handed over whole, a text would count as one long look-ahead, which its guards end at
// ten million bytes. Behind an error the parser would go on and complain of every byte of a broken text, so it gets no more.
int readFromText(void* context, char* buffer, int size) {
    auto* source = static_cast<Source*>(context);
    if (source->refused) {
        return 0;
    }
    const std::size_t taken = source->rest.copy(buffer, static_cast<std::size_t>(size));
    source->rest.remove_prefix(taken);
    return static_cast<int>(taken);
}

// Counts the tags of a text and the quoted values in them, before the parser sees it: the parser compares each attribute of
// an element with all others, so that some ten thousand of them would keep it for minutes.
class MarkupCount {
public:
    /// Whether the text has no more markup than its largest honest reader or writer could need.
    static bool isBounded(std::string_view text) {
        MarkupCount count;
        for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
            at = count.markup(text, at);
            if (++count.tags_ > mostTags || count.values_ > mostValues || count.declared_ > mostValuesOfTag ||
                count.valuesOfTag_ > mostValuesOfTag) {
                return false;
            }
        }
        return true;
    }

private:
    // 32,767 lines of 64 attributes each.
    static constexpr std::size_t mostValues = std::size_t{1} << 21U;
    static constexpr std::size_t mostTags = std::size_t{1} << 20U;
    static constexpr std::size_t mostValuesOfTag = 512;

    static std::size_t behind(std::string_view text, std::size_t from, std::string_view end) {
        const std::size_t found = text.find(end, from);
        return found == std::string_view::npos ? text.size() : found + end.size();
    }

    // Gives the place behind the markup that begins at a place, or where other markup begins inside it.
    std::size_t markup(std::string_view text, std::size_t at) {
        valuesOfTag_ = 0;
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("<!--")) {
            return behind(text, at + 4, "-->");
        }
        if (rest.starts_with("<![CDATA[")) {
            return behind(text, at, "]]>");
        }
        if (rest.starts_with("<?")) {
            return behind(text, at, "?>");
        }
        const std::size_t end = tag(text, at + 1);
        values_ += valuesOfTag_;
        if (rest.starts_with("<!")) { // declarations of one document add up
            declared_ += valuesOfTag_;
        }
        return end;
    }

    std::size_t tag(std::string_view text, std::size_t at) {
        while (at < text.size() && text[at] != '<') {
            const char c = text[at++];
            if (c == '>') {
                break;
            }
            if (c == '\'' || c == '"') {
                ++valuesOfTag_;
                at = behind(text, at, std::string_view(&c, 1));
            }
        }
        return at;
    }

    std::size_t tags_ = 0;
    std::size_t values_ = 0;
    std::size_t valuesOfTag_ = 0;
    std::size_t declared_ = 0;
};

// Ends the parse with the verdict that the text is no document.
void refuse(void* context) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    parser->wellFormed = 0;
    xmlStopParser(parser);
}

constexpr std::size_t expansionCost = 64; // of one use, whatever its length
constexpr int mostNamespacesInScope = 64;

void spend(void* context, std::size_t bytes) {
    std::size_t& left = static_cast<Source*>(static_cast<xmlParserCtxt*>(context)->_private)->budget;
    const std::size_t cost = bytes + expansionCost;
    if (cost > left) {
        refuse(context);
    } else {
        left -= cost;
    }
}

// Entities are for pieces of text. One that holds markup or other entities could grow with every level.
bool isPlainText(std::string_view content) {
    constexpr std::array<std::string_view, 5> escapes{"&amp;", "&lt;", "&gt;", "&apos;", "&quot;"};
    for (std::size_t at = content.find_first_of("<&"); at != std::string_view::npos;
         at = content.find_first_of("<&", at + 1)) {
        const std::string_view rest = content.substr(at);
        if (std::none_of(escapes.begin(), escapes.end(),
                         [&](std::string_view escape) { return rest.starts_with(escape); })) {
            return false;
        }
    }
    return true;
}

void refuseEntitiesButTexts(void* context, const xmlChar* name, int type, const xmlChar* publicId,
                            const xmlChar* systemId, xmlChar* content) {
    if (type == XML_INTERNAL_GENERAL_ENTITY && isPlainText(chars(content))) {
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
    } else {
        spend(context, static_cast<std::size_t>(std::max(entity->length, 0)));
    }
    return entity;
}

void startElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
                  const xmlChar** namespaces, int attributeCount, int defaultedCount, const xmlChar** attributes) {
    // Each attribute is five pointers, of which the fourth and the fifth are the value's begin and end; defaults come last.
    constexpr int pointers = 5;
    for (int i = attributeCount - defaultedCount; i < attributeCount; ++i) {
        spend(context, static_cast<std::size_t>(attributes[i * pointers + 4] - attributes[i * pointers + 3]));
    }
    if (static_cast<xmlParserCtxt*>(context)->nsNr > 2 * mostNamespacesInScope) {
        refuse(context);
    }
    xmlSAX2StartElementNs(context, name, prefix, uri, namespaceCount, namespaces, attributeCount, defaultedCount,
                          attributes);
}

// A document is what its text says, not much more than its text, and nothing that it would fetch from elsewhere.
void restrain(xmlParserCtxt& parser, Source& source) {
    parser._private = &source;
    // Complaints quote the document: they stay off the error stream. (Their type differs between versions of the parser.)
    parser.sax->serror = [](void* context, auto* error) {
        if (error->level == XML_ERR_FATAL) {
            static_cast<Source*>(static_cast<xmlParserCtxt*>(context)->_private)->refused = true;
        }
    };
    parser.sax->entityDecl = refuseEntitiesButTexts;
    parser.sax->internalSubset = refuseExternalSubset;
    parser.sax->getEntity = refuseUnknownEntities;
    parser.sax->startElementNs = startElement;
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
    if (!isElement()) {
        return std::nullopt;
    }
    // Most names have no prefix; those are found without making a text of every other attribute.
    for (const xmlAttr* attribute = asNode(node_)->properties; attribute != nullptr; attribute = attribute->next) {
        if ((attribute->ns == nullptr || attribute->ns->prefix == nullptr) && nodeName == chars(attribute->name)) {
            return textOf(attribute);
        }
    }
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
    if (text.empty() || text.size() > maxDocumentSize || text.find('\0') != std::string_view::npos ||
        !MarkupCount::isBounded(text)) {
        return std::nullopt;
    }
    const std::shared_ptr<xmlParserCtxt> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser) {
        return std::nullopt;
    }
    Source source{text};
    restrain(*parser, source);
    const std::shared_ptr<xmlDoc> document(
        xmlCtxtReadIO(parser.get(), readFromText, nullptr, &source, nullptr, "UTF-8", parseOptions),
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
