#include "z7cashflow/support/XmlTree.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow {

namespace {

const char* chars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

// The parser's own limits on depth remain active (no XML_PARSE_HUGE), network access is off, and references in
// attribute values are resolved (XML_PARSE_NOENT).
constexpr int parseOptions = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                             XML_PARSE_NOCDATA | XML_PARSE_IGNORE_ENC;

// The range of the parser's own counters. A document's memory is limited to a multiple of its text, which its owner
// already holds, so callers limit the texts that they accept.
constexpr std::size_t maxDocumentSize = std::numeric_limits<std::int32_t>::max();

/// Builds a tree from the parts that the parser reports.
class TreeBuilder {
public:
    /// Reserves memory for the maximum that a text can contain.
    void reserve(std::size_t tags, std::size_t values, std::size_t bytes) {
        tree_.nodes.reserve(tags);
        tree_.attributes.reserve(values);
        tree_.texts.reserve(bytes);
    }
    void beginElement(const char* baseName, bool inNamespace) {
        open_.push_back({addNode(baseName), 0});
        tree_.nodes.back().inNamespace = inNamespace;
    }
    /// An attribute of the element that has just begun.
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
    /// A text is reported in pieces, which form one node unless all of them are blank.
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
    /// A comment or a processing instruction; those outside the document element are ignored.
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
    bool inText_ = false; ///< the last node is a text that may be continued
};

/// One parse: its input, its limits, and its result.
struct Reading {
    std::string_view text;
    std::string_view rest;    ///< of the text: what the parser has not read yet
    bool refused = false;     ///< an error was found: nothing more is read
    bool outOfMemory = false; ///< the error is not one of the document
    Explanation why;          ///< the first error
    TreeBuilder builder;
};

Reading& readingOf(void* context) { return *static_cast<Reading*>(static_cast<xmlParserCtxt*>(context)->_private); }

// Feeds the parser in pieces: a text passed as a whole would count as one long look-ahead, which the parser limits
// to ten million bytes. After an error the parser would continue and report every byte of a broken text, so it gets
// no more.
int readFromText(void* context, char* buffer, int size) {
    auto* reading = static_cast<Reading*>(context);
    if (reading->refused) {
        return 0;
    }
    const std::size_t taken = reading->rest.copy(buffer, static_cast<std::size_t>(size));
    reading->rest.remove_prefix(taken);
    return static_cast<int>(taken);
}

// Counts the tags and the quoted values of a text before it is parsed: the parser compares each attribute of an
// element with all others, so that some ten thousand of them would take minutes.
class MarkupCount {
public:
    /// Empty if the text has more markup than a legitimate text of its length could need.
    static std::optional<MarkupCount> of(std::string_view text) {
        MarkupCount count;
        const std::size_t mostTags = std::max(tagsOfAnyText, text.size() / shortestRow);
        const std::size_t mostValues = std::max(valuesOfAnyText, text.size() / shortestField);
        for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
            at = count.markup(text, at);
            if (++count.tags_ > mostTags || count.values_ > mostValues || count.valuesOfTag_ > mostValuesOfTag) {
                return std::nullopt;
            }
        }
        return count;
    }

    [[nodiscard]] std::size_t tags() const noexcept { return tags_; }
    [[nodiscard]] std::size_t values() const noexcept { return values_; }

private:
    // Any text may have as much markup as 32,767 lines of 64 attributes each. Beyond that the limit depends on
    // the length: rows written by the library can always be read, whatever their number, and a document
    // consisting only of markup cannot cost many times its text.
    static constexpr std::size_t valuesOfAnyText = std::size_t{1} << 21U;
    static constexpr std::size_t tagsOfAnyText = std::size_t{1} << 20U;
    static constexpr std::size_t shortestField = std::string_view("a='' ").size();
    static constexpr std::size_t shortestRow = std::string_view("<row />\r\n").size();
    static constexpr std::size_t mostValuesOfTag = 512;

    static std::size_t after(std::string_view text, std::size_t from, std::string_view end) {
        const std::size_t found = text.find(end, from);
        return found == std::string_view::npos ? text.size() : found + end.size();
    }

    // Returns the position after the markup that begins at a position, or where other markup begins inside it.
    std::size_t markup(std::string_view text, std::size_t at) {
        valuesOfTag_ = 0;
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("<!--")) {
            return after(text, at + 4, "-->");
        }
        if (rest.starts_with("<![CDATA[")) {
            return after(text, at, "]]>");
        }
        if (rest.starts_with("<?")) {
            return after(text, at, "?>");
        }
        const std::size_t end = tag(text, at + 1);
        values_ += valuesOfTag_;
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
                at = after(text, at, std::string_view(&c, 1));
            }
        }
        return at;
    }

    std::size_t tags_ = 0;
    std::size_t values_ = 0;
    std::size_t valuesOfTag_ = 0;
};

// Records the first error with its line; later ones are its consequences.
void note(void* context, Reason reason) {
    Reading& reading = readingOf(context);
    if (reading.why.reason == Reason::none) {
        const xmlParserInput* input = static_cast<xmlParserCtxt*>(context)->input;
        reading.why = {reason, {std::to_string(input == nullptr ? 1 : input->line)}};
    }
}

// Ends the parse because the text is not accepted.
void refuse(void* context, Reason reason = Reason::xmlBeyondLimits) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    note(context, reason);
    parser->wellFormed = 0;
    xmlStopParser(parser);
}

// The meaning of a parser error for the author of a document.
Reason reasonOf(int code) noexcept {
    switch (code) {
    case XML_ERR_DOCUMENT_START:
    case XML_ERR_DOCUMENT_EMPTY:
        return Reason::xmlNotXml;
    case XML_ERR_DOCUMENT_END:
        return Reason::xmlTextAfterEnd;
    case XML_ERR_TAG_NAME_MISMATCH:
        return Reason::xmlTagMismatch;
    case XML_ERR_TAG_NOT_FINISHED:
        return Reason::xmlTagNotFinished;
    case XML_ERR_ATTRIBUTE_REDEFINED:
    case XML_NS_ERR_ATTRIBUTE_REDEFINED:
        return Reason::xmlAttributeTwice;
    case XML_ERR_ATTRIBUTE_WITHOUT_VALUE:
    case XML_ERR_ATTRIBUTE_NOT_STARTED:
        return Reason::xmlAttributeWithoutValue;
    case XML_ERR_ATTRIBUTE_NOT_FINISHED:
    case XML_ERR_LT_IN_ATTRIBUTE:
        return Reason::xmlAttributeNotFinished;
    case XML_ERR_UNDECLARED_ENTITY:
    case XML_ERR_ENTITYREF_SEMICOL_MISSING:
    case XML_ERR_NAME_REQUIRED:
        return Reason::xmlEntityUnknown;
    case XML_NS_ERR_UNDEFINED_NAMESPACE:
        return Reason::xmlPrefixUndeclared;
    case XML_ERR_INVALID_CHAR:
    case XML_ERR_INVALID_ENCODING:
        return Reason::xmlCharacterInvalid;
    case XML_ERR_NO_MEMORY: // a limit of the parser itself, see isMemoryLost
        return Reason::xmlBeyondLimits;
    default:
        return Reason::xmlNotWellFormed;
    }
}

// The parser reports "no memory" also for its limit on names, and after an error that ends the parse.
bool isMemoryLost(const Reading& reading, const xmlParserCtxt& parser, int code) {
    return code == XML_ERR_NO_MEMORY && !reading.refused && xmlDictGetUsage(parser.dict) <= XML_MAX_DICTIONARY_LIMIT;
}

/// Detects on this thread that the parser lacks memory in cases in which it reports this only to standard error;
/// the destructor restores the former error handler.
class MemoryWatch {
public:
    explicit MemoryWatch(Reading& reading) noexcept
        : handler_(xmlStructuredError), context_(xmlStructuredErrorContext) {
        xmlSetStructuredErrorFunc(&reading, [](void* context, auto* error) {
            auto* reading = static_cast<Reading*>(context);
            reading->outOfMemory = reading->outOfMemory || (error->code == XML_ERR_NO_MEMORY && !reading->refused);
        });
    }
    ~MemoryWatch() { xmlSetStructuredErrorFunc(context_, handler_); }
    MemoryWatch(const MemoryWatch&) = delete;
    MemoryWatch& operator=(const MemoryWatch&) = delete;

private:
    xmlStructuredErrorFunc handler_;
    void* context_;
};

// A document type may only name the document element: entities grow with each use, declared attributes appear by
// default, and other files are never read.
void refuseExternalSubset(void* context, const xmlChar* /*name*/, const xmlChar* publicId, const xmlChar* systemId) {
    if (publicId != nullptr || systemId != nullptr) {
        refuse(context);
    }
}

void refuseEntity(void* context, const xmlChar* /*name*/, int /*type*/, const xmlChar* /*publicId*/,
                  const xmlChar* /*systemId*/, xmlChar* /*content*/) {
    refuse(context);
}

void refuseUnparsedEntity(void* context, const xmlChar* /*name*/, const xmlChar* /*publicId*/,
                          const xmlChar* /*systemId*/, const xmlChar* /*notation*/) {
    refuse(context);
}

void refuseAttribute(void* context, const xmlChar* /*element*/, const xmlChar* /*name*/, int /*type*/,
                     int /*defaultKind*/, const xmlChar* /*defaultValue*/, xmlEnumeration* values) {
    xmlFreeEnumeration(values);
    refuse(context);
}

// The parser handles the five predefined entities itself.
xmlEntity* refuseUnknownEntity(void* context, const xmlChar* /*name*/) {
    refuse(context, Reason::xmlEntityUnknown);
    return nullptr;
}

// Adds to the tree. No exception may pass through the parser, which is written in C: lack of memory is recorded and
// reported after the parser has returned.
template <class Addition> void build(void* context, Addition&& addition) {
    try {
        addition(readingOf(context).builder);
    } catch (const std::bad_alloc&) {
        readingOf(context).outOfMemory = true;
        xmlStopParser(static_cast<xmlParserCtxt*>(context));
    }
}

// The names of the attributes of the tag just read, as written in the text. Values do not contain "<".
std::vector<std::string_view> namesInTag(xmlParserCtxt& parser, std::string_view text) {
    const auto end = std::min(static_cast<std::size_t>(std::max(xmlByteConsumed(&parser), 0L)), text.size());
    const std::size_t begin = end == 0 ? std::string_view::npos : text.rfind('<', end - 1);
    std::vector<std::string_view> names;
    if (begin == std::string_view::npos) {
        return names;
    }
    constexpr std::string_view blanks = " \t\r\n";
    std::string_view tag = text.substr(begin, end - begin);
    while (true) { // a name, "=", a value between two quotes of the same kind
        const std::size_t equals = tag.find('=');
        const std::size_t quote = tag.find_first_of("'\"", equals == std::string_view::npos ? equals : equals + 1);
        if (equals == std::string_view::npos || quote == std::string_view::npos) {
            return names;
        }
        const std::string_view before = tag.substr(0, equals);
        const std::size_t last = before.find_last_not_of(blanks);
        const std::size_t first = last == std::string_view::npos ? last : before.find_last_of(blanks, last);
        if (first != std::string_view::npos) {
            names.push_back(before.substr(first + 1, last - first));
        }
        const std::size_t close = tag.find(tag[quote], quote + 1);
        tag = close == std::string_view::npos ? std::string_view() : tag.substr(close + 1);
        if (!tag.empty() && blanks.find(tag.front()) == std::string_view::npos) {
            return names;
        }
    }
}

struct SaidAttribute {
    const char* prefix;
    const char* baseName;
    std::string_view text;

    [[nodiscard]] std::string nodeName() const {
        return prefix == nullptr ? baseName : std::string(prefix) + ":" + baseName;
    }
};

// The parser reports namespace declarations separately from other attributes; this restores the order of the
// document.
void orderAsWritten(std::vector<SaidAttribute>& said, const std::vector<std::string_view>& names) {
    const auto placeOf = [&names](const SaidAttribute& attribute) {
        return std::find(names.begin(), names.end(), attribute.nodeName()) - names.begin();
    };
    std::stable_sort(said.begin(), said.end(),
                     [&](const SaidAttribute& a, const SaidAttribute& b) { return placeOf(a) < placeOf(b); });
}

void startElement(void* context, const xmlChar* name, const xmlChar* /*prefix*/, const xmlChar* uri, int namespaceCount,
                  const xmlChar** namespaces, int attributeCount, int /*defaultedCount*/, const xmlChar** attributes) {
    // Each attribute is five pointers: name, prefix, namespace, and the beginning and end of the value.
    constexpr std::size_t pointers = 5;
    constexpr int mostNamespacesInScope = 64;
    const auto count = static_cast<std::size_t>(attributeCount);
    const auto valueOf = [&](std::size_t i) {
        const char* begin = chars(attributes[i * pointers + 3]);
        return std::string_view(begin, static_cast<std::size_t>(chars(attributes[i * pointers + 4]) - begin));
    };
    if (static_cast<xmlParserCtxt*>(context)->nsNr > 2 * mostNamespacesInScope) {
        refuse(context);
    }
    build(context, [&](TreeBuilder& builder) {
        builder.beginElement(chars(name), uri != nullptr);
        if (namespaceCount == 0) {
            for (std::size_t i = 0; i < count; ++i) {
                builder.addAttribute(chars(attributes[i * pointers + 1]), chars(attributes[i * pointers]), valueOf(i));
            }
            return;
        }
        std::vector<SaidAttribute> said;
        const std::span scopes(namespaces, 2 * static_cast<std::size_t>(namespaceCount));
        for (std::size_t i = 0; i < scopes.size(); i += 2) { // each is two pointers, prefix and namespace
            const char* prefix = chars(scopes[i]);
            said.push_back(
                {prefix == nullptr ? nullptr : "xmlns", prefix == nullptr ? "xmlns" : prefix, chars(scopes[i + 1])});
        }
        for (std::size_t i = 0; i < count; ++i) {
            said.push_back({chars(attributes[i * pointers + 1]), chars(attributes[i * pointers]), valueOf(i)});
        }
        orderAsWritten(said, namesInTag(*static_cast<xmlParserCtxt*>(context), readingOf(context).text));
        for (const SaidAttribute& attribute : said) {
            builder.addAttribute(attribute.prefix, attribute.baseName, attribute.text);
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

// The parser reports what it finds and builds no tree of its own, which would double the cost of parsing.
void prepare(xmlParserCtxt& parser, Reading& reading) {
    parser._private = &reading;
    // Messages quote the document, so they are not written to standard error. (Their type differs between
    // versions of the parser.)
    parser.sax->serror = [](void* context, auto* error) {
        Reading& reading = readingOf(context);
        if (isMemoryLost(reading, *static_cast<xmlParserCtxt*>(context), error->code)) {
            reading.outOfMemory = true;
        } else if (error->level >= XML_ERR_ERROR) {
            note(context, reasonOf(error->code));
        }
        reading.refused = reading.refused || error->level == XML_ERR_FATAL;
    };
    parser.sax->internalSubset = refuseExternalSubset;
    parser.sax->entityDecl = refuseEntity;
    parser.sax->unparsedEntityDecl = refuseUnparsedEntity;
    parser.sax->attributeDecl = refuseAttribute;
    parser.sax->getEntity = refuseUnknownEntity;
    parser.sax->startElementNs = startElement;
    parser.sax->endElementNs = endElement;
    parser.sax->characters = characters;
    parser.sax->ignorableWhitespace = characters;
    parser.sax->comment = comment;
    parser.sax->processingInstruction = instruction;
}

// A null pointer, and the reason, if the parser refuses the text.
std::shared_ptr<const XmlTree> parse(std::string_view text, const MarkupCount& count, Explanation& why) {
    Reading reading;
    const MemoryWatch memory(reading);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!parser) {
        throw std::bad_alloc();
    }
    reading.text = text;
    reading.rest = text;
    reading.builder.reserve(count.tags(), count.values(), text.size());
    prepare(*parser, reading);
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlCtxtReadIO(parser.get(), readFromText, nullptr, &reading, nullptr, "UTF-8", parseOptions), xmlFreeDoc);
    if (reading.outOfMemory) {
        throw std::bad_alloc();
    }
    auto tree = std::make_shared<XmlTree>(reading.builder.take());
    // After namespace errors there is a document, which is refused all the same.
    if (!document || parser->wellFormed == 0 || parser->nsWellFormed == 0 || tree->nodes.empty()) {
        note(parser.get(), Reason::xmlNotWellFormed);
        why = std::move(reading.why);
        return nullptr;
    }
    xmlDictReference(parser->dict);
    tree->names = std::shared_ptr<xmlDict>(parser->dict, xmlDictFree);
    return tree;
}

} // namespace

std::shared_ptr<const XmlTree> XmlTree::read(std::string_view text, Explanation& why) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    const auto count = MarkupCount::of(text);
    why = text.empty()                                ? Explanation{Reason::xmlEmpty}
          : text.size() > maxDocumentSize             ? Explanation{Reason::xmlTooLong}
          : text.find('\0') != std::string_view::npos ? Explanation{Reason::xmlZeroByte}
          : !count                                    ? Explanation{Reason::xmlTooMuchMarkup}
                                                      : Explanation{};
    if (why.reason != Reason::none) {
        return nullptr;
    }
    if (auto tree = parse(text, *count, why)) {
        return tree;
    }
    // The parser does not always report that it has run out of memory, and then refuses what it could not store:
    // a refusal counts only if it occurs twice.
    const Explanation first = std::move(why);
    why = {};
    auto tree = parse(text, *count, why);
    if (tree == nullptr && (why.reason != first.reason || why.arguments != first.arguments)) {
        throw std::bad_alloc();
    }
    return tree;
}

} // namespace z7::cashflow
