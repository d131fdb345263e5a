#pragma once

#include "z7cashflow/support/Reason.h"
#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

struct XmlTree;

/// A node of a document: an element, or a piece of text, a remark or the like, which has neither attributes nor child
/// nodes. It keeps its document alive.
class XmlNode {
public:
    /// The element's name without any prefix; empty for a node that is not an element.
    [[nodiscard]] std::string baseName() const;
    /// The child nodes in document order. White space between elements does not count as a node.
    [[nodiscard]] std::vector<XmlNode> childNodes() const;
    /// Passes the attributes in document order, each with its local name without any prefix and its text; none for a
    /// node that is not an element. Declarations of namespaces count as attributes.
    void eachAttribute(const std::function<void(std::string_view baseName, std::string_view text)>& take) const;
    /// The text of the attribute of exactly this name, prefix included; nothing if there is none.
    [[nodiscard]] std::optional<std::string> attribute(std::string_view nodeName) const;
    /// The texts at and below this node in document order, without blanks at either end.
    [[nodiscard]] std::string text() const;
    /// The elements below this one that a path of names without prefixes leads to, such as "rows/row", in document
    /// order.
    [[nodiscard]] std::vector<XmlNode> selectNodes(std::string_view path) const;

private:
    friend class XmlDocument;
    void appendText(std::string& out) const;
    XmlNode(std::shared_ptr<const XmlTree> tree, std::uint32_t place) noexcept;

    std::shared_ptr<const XmlTree> tree_;
    std::uint32_t place_;
};

/// A parsed XML document.
///
/// The text is UTF-8 whatever its declaration says. Refused are: anything not well-formed, two attributes of one
/// name, an undeclared prefix, an entity other than the five usual ones, a document type that declares entities or
/// attributes or that refers to a file or an address (nothing is read from there), nesting beyond 256 levels, 2 GiB
/// of text, 10,000,000 bytes in one value, 512 attributes on an element, 64 prefixes that are known at one place,
/// and more markup than the limits allow: 2,097,152 attributes or one in five bytes, 1,048,576 tags or one in nine
/// bytes, whichever is more. A byte-order mark at the beginning is left aside.
class XmlDocument {
public:
    /// The document, or nothing if the text is refused; why, with its line, goes to the explanation if one is wanted.
    /// std::bad_alloc if memory runs out, which says nothing of the document.
    [[nodiscard]] static std::optional<XmlDocument> load(std::string_view text, Explanation* why = nullptr);
    /// The root element. A document always has one.
    [[nodiscard]] XmlNode documentElement() const;

private:
    explicit XmlDocument(std::shared_ptr<const XmlTree> tree) noexcept;
    std::shared_ptr<const XmlTree> tree_;
};

} // namespace z7::cashflow

Z7_PUBLIC_END
