#include "z7cashflow/support/XmlTree.h"

#include <libxml/SAX2.h>
#include <libxml/dict.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>
#include <optional>
#include <span>
#include <utility>

namespace z7::cashflow {

namespace {

const char* chars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

// The parser's own guards against expansion and depth stay on (no XML_PARSE_HUGE), and the network is off.
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                             XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;

// A voucher of 32,767 lines, the most that line numbers can count, stays well below this.
constexpr std::size_t maxDocumentSize = std::size_t{64} << 20U;

// What a document may say more than once by declaring it: bytes out of entities and of attributes that come by themselves.
constexpr std::size_t expansionBudget = std::size_t{16} << 20U;

/// Puts a tree together as the parser comes by its parts.
class TreeBuilder {
public:
    /// Makes room for as much as a text has at most, entities left aside.
    void reserve(std::size_t tags, std::size_t values, std::size_t bytes) {
        tree_.nodes.reserve(tags);
        tree_.attributes.reserve(values);
        tree_.texts.reserve(bytes);
    }
    void beginElement(const char* baseName, bool inNamespace) {
        open_.push_back({addNode(baseName), 0});
        tree_.nodes.back().inNamespace = inNamespace;
    }
    /// Of the element that has just begun.
    void addAttribute(const char* prefix, const char* baseName, std::string_view text) {
        tree_.attributes.push_back({prefix, baseName, static_cast<XmlTree::Place>(tree_.texts.size()),
                                    static_cast<std::uint32_t>(text.size())});
        tree_.texts += text;
        ++tree_.nodes.back().attributeCount;
    }
    void endElement() {
        open_.pop_back();
        inText_ = false;
    }
    /// A text comes in pieces, which are one node unless all of them are blank.
    void addText(std::string_view piece) {
        if (!inText_ && piece.find_first_not_of(" \t\r\n") != std::string_view::npos) {
            addOther();
            inText_ = !open_.empty();
            if (inText_) {
                tree_.nodes.back().text = static_cast<XmlTree::Place>(tree_.texts.size());
            }
        }
        if (inText_) {
            tree_.nodes.back().textSize += static_cast<std::uint32_t>(piece.size());
            tree_.texts += piece;
        }
    }
    /// A remark or an instruction; those outside the document element are nobody's child.
    void addOther() {
        if (!open_.empty()) {
            addNode(nullptr);
        }
    }
    [[nodiscard]] XmlTree take() { return std::move(tree_); }

private:
    struct OpenElement {
        XmlTree::Place place;
        XmlTree::Place lastChild;
    };

    XmlTree::Place addNode(const char* baseName) {
        const auto place = static_cast<XmlTree::Place>(tree_.nodes.size());
        tree_.nodes.push_back(
            {.baseName = baseName, .firstAttribute = static_cast<XmlTree::Place>(tree_.attributes.size())});
        if (!open_.empty()) {
            OpenElement& parent = open_.back();
            (parent.lastChild == 0 ? tree_.nodes[parent.place].firstChild : tree_.nodes[parent.lastChild].nextSibling) =
                place;
            parent.lastChild = place;
        }
        inText_ = false;
        return place;
    }

    XmlTree tree_;
    std::vector<OpenElement> open_;
    bool inText_ = false; ///< the last node is a text that may go on
};

/// One parse: what it reads, how far it may go, and what it has found.
struct Reading {
    std::string_view rest;
    std::size_t budget = expansionBudget;
    bool refused = false; ///< an error was found: nothing more is read
    TreeBuilder builder;
};

Reading& readingOf(void* context) { return *static_cast<Reading*>(static_cast<xmlParserCtxt*>(context)->_private); }

// Feeds the parser piece by piece: handed over whole, a text would count as one long look-ahead, which its guards end at
// ten million bytes. Behind an error the parser would go on and complain of every byte of a broken text, so it gets no more.
int readFromText(void* context, char* buffer, int size) {
    auto* reading = static_cast<Reading*>(context);
    if (reading->refused) {
        return 0;
    }
    const std::size_t taken = reading->rest.copy(buffer, static_cast<std::size_t>(size));
    reading->rest.remove_prefix(taken);
    return static_cast<int>(taken);
}

// Counts the tags of a text and the quoted values in them, before the parser sees it: the parser compares each attribute of
// an element with all others, so that some ten thousand of them would keep it for minutes.
class MarkupCount {
public:
    /// Nothing if the text has more markup than its largest honest reader or writer could need.
    static std::optional<MarkupCount> of(std::string_view text) {
        MarkupCount count;
        for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
            at = count.markup(text, at);
            if (++count.tags_ > mostTags || count.values_ > mostValues || count.declared_ > mostValuesOfTag ||
                count.valuesOfTag_ > mostValuesOfTag) {
                return std::nullopt;
            }
        }
        return count;
    }

    [[nodiscard]] std::size_t tags() const noexcept { return tags_; }
    [[nodiscard]] std::size_t values() const noexcept { return values_; }

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
    std::size_t& left = readingOf(context).budget;
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
    if (type == XML_INTERNAL_GENERAL_ENTITY && isPlainText(content == nullptr ? "" : chars(content))) {
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

// Adds to the tree. No exception may pass through the parser, which is C: where memory ends there is no document, as when
// the parser itself finds none.
template <class Addition> void build(void* context, Addition&& addition) {
    try {
        addition(readingOf(context).builder);
    } catch (const std::bad_alloc&) {
        refuse(context);
    }
}

void startElement(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri, int namespaceCount,
                  const xmlChar** namespaces, int attributeCount, int defaultedCount, const xmlChar** attributes) {
    // Each attribute is five pointers: name, prefix, namespace, and the value's begin and end. Those that the document does
    // not say but declares come last: they count, and are left out.
    constexpr std::size_t pointers = 5;
    const auto count = static_cast<std::size_t>(attributeCount);
    const std::size_t saidCount = count - static_cast<std::size_t>(defaultedCount);
    const auto valueOf = [&](std::size_t i) {
        const char* begin = chars(attributes[i * pointers + 3]);
        return std::string_view(begin, static_cast<std::size_t>(chars(attributes[i * pointers + 4]) - begin));
    };
    for (std::size_t i = saidCount; i < count; ++i) {
        spend(context, valueOf(i).size());
    }
    if (static_cast<xmlParserCtxt*>(context)->nsNr > 2 * mostNamespacesInScope) {
        refuse(context);
    }
    build(context, [&](TreeBuilder& builder) {
        builder.beginElement(chars(name), uri != nullptr);
        const std::span scopes(namespaces, 2 * static_cast<std::size_t>(namespaceCount));
        for (std::size_t i = 0; i < scopes.size(); i += 2) { // each is two pointers, prefix and namespace
            const char* prefix = chars(scopes[i]);
            builder.addAttribute(prefix == nullptr ? nullptr : "xmlns", prefix == nullptr ? "xmlns" : prefix,
                                 chars(scopes[i + 1]));
        }
        for (std::size_t i = 0; i < saidCount; ++i) {
            builder.addAttribute(chars(attributes[i * pointers + 1]), chars(attributes[i * pointers]), valueOf(i));
        }
    });
}

void endElement(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/) {
    readingOf(context).builder.endElement();
}

void characters(void* context, const xmlChar* text, int size) {
    build(context, [&](TreeBuilder& builder) { builder.addText({chars(text), static_cast<std::size_t>(size)}); });
}

void comment(void* context, const xmlChar* /*text*/) {
    build(context, [](TreeBuilder& builder) { builder.addOther(); });
}

void instruction(void* context, const xmlChar* target, const xmlChar* /*text*/) { comment(context, target); }

// A document is what its text says, not much more than its text, and nothing that it would fetch from elsewhere. The
// parser tells what it finds and makes no tree of its own, which would cost as much again as the parse.
void prepare(xmlParserCtxt& parser, Reading& reading) {
    parser._private = &reading;
    // Complaints quote the document: they stay off the error stream. (Their type differs between versions of the parser.)
    parser.sax->serror = [](void* context, auto* error) {
        if (error->level == XML_ERR_FATAL) {
            readingOf(context).refused = true;
        }
    };
    parser.sax->entityDecl = refuseEntitiesButTexts;
    parser.sax->internalSubset = refuseExternalSubset;
    parser.sax->getEntity = refuseUnknownEntities;
    parser.sax->startElementNs = startElement;
    parser.sax->endElementNs = endElement;
    parser.sax->characters = characters;
    parser.sax->ignorableWhitespace = characters;
    parser.sax->comment = comment;
    parser.sax->processingInstruction = instruction;
}

} // namespace

std::shared_ptr<const XmlTree> XmlTree::read(std::string_view text) {
    if (text.empty() || text.size() > maxDocumentSize || text.find('\0') != std::string_view::npos) {
        return nullptr;
    }
    const auto count = MarkupCount::of(text);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!count || !parser) {
        return nullptr;
    }
    Reading reading;
    reading.rest = text;
    reading.builder.reserve(count->tags(), count->values(), text.size());
    prepare(*parser, reading);
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlCtxtReadIO(parser.get(), readFromText, nullptr, &reading, nullptr, "UTF-8", parseOptions), xmlFreeDoc);
    auto tree = std::make_shared<XmlTree>(reading.builder.take());
    // Errors of namespaces leave a document behind; it is refused all the same.
    if (!document || parser->wellFormed == 0 || parser->nsWellFormed == 0 || tree->nodes.empty()) {
        return nullptr;
    }
    xmlDictReference(parser->dict);
    tree->names = std::shared_ptr<xmlDict>(parser->dict, xmlDictFree);
    return tree;
}

} // namespace z7::cashflow
