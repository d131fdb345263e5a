#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

class XmlDocument;

/// An attribute of an element: the local name without any prefix, the name as written, and the text.
struct XmlAttribute {
    std::string baseName;
    std::string nodeName;
    std::string text;
};

/// A node of a document: an element, or a piece of text, a comment or the like, which has no attributes. It keeps its document alive.
class XmlNode {
public:
    /// True for an element, false for text, comments and the rest.
    [[nodiscard]] bool isElement() const noexcept;
    /// The local name without any prefix.
    [[nodiscard]] std::string baseName() const;
    /// The text of the node and everything below it.
    [[nodiscard]] std::string text() const;
    /// The child nodes in document order. White space between elements is no node.
    [[nodiscard]] std::vector<XmlNode> childNodes() const;
    /// The attributes in document order; none for a node that is no element. Declarations of namespaces count as attributes.
    [[nodiscard]] std::vector<XmlAttribute> attributes() const;
    /// Hands the attributes over one by one, as attributes() has them, without making the list: local name, name as written, text.
    void eachAttribute(
        const std::function<void(std::string_view baseName, std::string_view nodeName, std::string text)>& take) const;
    /// The text of the attribute of exactly this name, prefix included; nothing if there is none.
    [[nodiscard]] std::optional<std::string> attribute(std::string_view nodeName) const;
    /// The elements below this one that a path of names without prefixes leads to, such as "rows/row", in document order.
    [[nodiscard]] std::vector<XmlNode> selectNodes(std::string_view path) const;

private:
    friend class XmlDocument;
    XmlNode(std::shared_ptr<const void> document, const void* node) noexcept;

    std::shared_ptr<const void> document_;
    const void* node_;
};

/// A parsed XML document.
///
/// The text is UTF-8 whatever its declaration says. Refused are: anything not well-formed, two attributes of one name, an
/// undeclared prefix, an unknown entity, entities that hold more than text or add more than 16 MiB to the document, nesting
/// beyond 256 levels, more than 64 MiB of text, 512 attributes on an element, 2,097,152 in all, 1,048,576 tags or 64 prefixes
/// that are known at one place. Nothing is read from files or the network: a text that refers to something outside is refused too.
class XmlDocument {
public:
    /// The document, or nothing if the text is refused.
    [[nodiscard]] static std::optional<XmlDocument> load(std::string_view text);
    [[nodiscard]] XmlNode documentElement() const;

private:
    explicit XmlDocument(std::shared_ptr<const void> document) noexcept;
    std::shared_ptr<const void> document_;
};

} // namespace z7::cashflow
