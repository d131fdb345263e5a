#pragma once

#include "z7cashflow/support/Reason.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

/// The contents of a document, as far as they are needed: its elements with their names and attributes, and the
/// positions of other nodes and texts. It is kept in a few arrays, because a document of rows has some hundred
/// thousand attributes.
struct XmlTree {
    /// An index into one of the arrays. The document element is not a child or sibling, so its index means
    /// "none" there.
    using Place = std::uint32_t;

    struct Attribute {
        const char* prefix = nullptr; ///< "xmlns" for a namespace declaration; a null pointer without a prefix
        const char* baseName = nullptr;
        Place text = 0; ///< beginning of the text in texts
        std::uint32_t textSize = 0;
    };

    struct Node {
        const char* baseName = nullptr; ///< a null pointer for a node that is not an element
        bool inNamespace = false;
        Place firstAttribute = 0;
        std::uint32_t attributeCount = 0;
        Place firstChild = 0;
        Place nextSibling = 0;
        Place text = 0; ///< beginning of a text node's text in texts
        std::uint32_t textSize = 0;
    };

    /// In document order, beginning with the document element; white space between elements does not count as a
    /// node.
    std::vector<Node> nodes;
    std::vector<Attribute> attributes; ///< in document order
    std::string texts;                 ///< of all attributes and text nodes, one after another
    std::shared_ptr<const void> names; ///< owns the names

    /// Reads a text by the rules of XmlDocument. A null pointer, and the reason, if it is refused;
    /// std::bad_alloc if memory runs out.
    [[nodiscard]] static std::shared_ptr<const XmlTree> read(std::string_view text, Explanation& why);
};

} // namespace z7::cashflow
