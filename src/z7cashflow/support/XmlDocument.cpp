#include "z7cashflow/support/XmlDocument.h"

#include "z7cashflow/support/XmlTree.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace z7::cashflow {

namespace {

std::span<const XmlTree::Attribute> attributesOf(const XmlTree& tree, XmlTree::Place place) {
    const XmlTree::Node& node = tree.nodes[place];
    return std::span(tree.attributes).subspan(node.firstAttribute, node.attributeCount);
}

std::string_view textOf(const XmlTree& tree, const XmlTree::Attribute& attribute) {
    return std::string_view(tree.texts).substr(attribute.text, attribute.textSize);
}

// Whether an attribute's name, prefix included, is this one.
bool isNamed(const XmlTree::Attribute& attribute, std::string_view nodeName) {
    if (attribute.prefix != nullptr) {
        const std::string_view prefix = attribute.prefix;
        if (!nodeName.starts_with(prefix) || !nodeName.substr(prefix.size()).starts_with(':')) {
            return false;
        }
        nodeName.remove_prefix(prefix.size() + 1);
    }
    return nodeName == attribute.baseName;
}

} // namespace

XmlNode::XmlNode(std::shared_ptr<const XmlTree> tree, std::uint32_t place) noexcept
    : tree_(std::move(tree)), place_(place) {}

std::string XmlNode::baseName() const {
    const char* const name = tree_->nodes[place_].baseName;
    return name == nullptr ? std::string() : name;
}

std::vector<XmlNode> XmlNode::childNodes() const {
    std::vector<XmlNode> nodes;
    for (auto child = tree_->nodes[place_].firstChild; child != 0; child = tree_->nodes[child].nextSibling) {
        nodes.push_back(XmlNode(tree_, child));
    }
    return nodes;
}

void XmlNode::eachAttribute(const std::function<void(std::string_view, std::string_view)>& take) const {
    for (const XmlTree::Attribute& attribute : attributesOf(*tree_, place_)) {
        take(attribute.baseName, textOf(*tree_, attribute));
    }
}

std::optional<std::string> XmlNode::attribute(std::string_view nodeName) const {
    const auto attributes = attributesOf(*tree_, place_);
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& attribute) { return isNamed(attribute, nodeName); });
    return found == attributes.end() ? std::nullopt : std::optional(std::string(textOf(*tree_, *found)));
}

std::string XmlNode::text() const {
    constexpr const char* blanks = " \t\r\n";
    std::string text;
    appendText(text);
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

void XmlNode::appendText(std::string& out) const {
    const XmlTree::Node& node = tree_->nodes[place_];
    out += std::string_view(tree_->texts).substr(node.text, node.textSize);
    for (const XmlNode& child : childNodes()) {
        child.appendText(out);
    }
}

std::vector<XmlNode> XmlNode::selectNodes(std::string_view path) const {
    const std::size_t slash = std::min(path.find('/'), path.size());
    const std::string_view step = path.substr(0, slash);
    std::vector<XmlNode> found;
    for (auto child = tree_->nodes[place_].firstChild; child != 0; child = tree_->nodes[child].nextSibling) {
        const XmlTree::Node& node = tree_->nodes[child];
        // A name without a prefix means a name in no namespace.
        if (node.baseName == nullptr || node.inNamespace || node.baseName != step) {
            continue;
        }
        const XmlNode element(tree_, child);
        if (slash == path.size()) {
            found.push_back(element);
            continue;
        }
        auto below = element.selectNodes(path.substr(slash + 1));
        std::move(below.begin(), below.end(), std::back_inserter(found));
    }
    return found;
}

XmlDocument::XmlDocument(std::shared_ptr<const XmlTree> tree) noexcept : tree_(std::move(tree)) {}

std::optional<XmlDocument> XmlDocument::load(std::string_view text, Explanation* why) {
    Explanation found;
    auto tree = XmlTree::read(text, why == nullptr ? found : *why);
    return tree == nullptr ? std::nullopt : std::optional(XmlDocument(std::move(tree)));
}

XmlNode XmlDocument::documentElement() const { return XmlNode(tree_, 0); }

} // namespace z7::cashflow
