#pragma once

#include "z7cashflow/support/Reason.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace z7::cashflow {

/// What a document says, as far as anybody asks: its elements with their names and attributes, and where there are
/// other nodes and texts. It is kept in a few arrays, because a document of rows has some hundred thousand attributes.
struct XmlTree {
    /// A place in one of the arrays. The document element is nobody's child or sibling, so its place says "none" there.
    using Place = std::uint32_t;

    struct Attribute {
        const char* prefix = nullptr; ///< "xmlns" for a declaration of a prefix; a null pointer without one
        const char* baseName = nullptr;
        Place text = 0; ///< where the text begins in texts
        std::uint32_t textSize = 0;
    };

    struct Node {
        const char* baseName = nullptr; ///< a null pointer for a node that is not an element
        bool inNamespace = false;
        Place firstAttribute = 0;
        std::uint32_t attributeCount = 0;
        Place firstChild = 0;
        Place nextSibling = 0;
        Place text = 0; ///< where the text of a text node begins in texts
        std::uint32_t textSize = 0;
    };

    /// In document order, the document element first; white space between elements does not count as a node.
    std::vector<Node> nodes;
    std::vector<Attribute> attributes; ///< in document order
    std::string texts;                 ///< of all attributes and text nodes, one after the other
    std::shared_ptr<const void> names; ///< where the names lie

    /// Reads a text by the rules of XmlDocument. A null pointer, and why, if it is refused; std::bad_alloc if memory
    /// runs out.
    [[nodiscard]] static std::shared_ptr<const XmlTree> read(std::string_view text, Explanation& why);
};

} // namespace z7::cashflow
