#include "host/terminal/foldedText.h"

#include "adapters/terminal/printable.h"

#include <algorithm>
#include <array>

namespace z7::cashflow::host {

namespace {

using terminal::firstCharacter;

bool isWide(std::string_view character) { return terminal::displayWidth(character) == 2; }

bool isClosing(std::string_view character) {
    constexpr std::array<std::string_view, 10> marks{"，", "。", "；", "：", "、", "）", "”", "》", "？", "！"};
    return std::find(marks.begin(), marks.end(), character) != marks.end();
}

bool isOpening(std::string_view character) { return character == "（" || character == "“" || character == "《"; }

/// The text up to the first place where a line may break.
std::string_view firstWord(std::string_view text) {
    std::size_t length = firstCharacter(text).size();
    std::string_view last = text.substr(0, length);
    while (length < text.size()) {
        const std::string_view next = firstCharacter(text.substr(length));
        const bool beside = isWide(last) || isWide(next);
        if (last == " " || (next != " " && beside && !isClosing(next) && !isOpening(last))) {
            break;
        }
        length += next.size();
        last = next;
    }
    return text.substr(0, length);
}

std::string withoutBlanksAtEnd(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

std::vector<std::string> foldedText(std::string_view text, std::size_t columns) {
    std::vector<std::string> lines;
    std::string line;
    while (!text.empty()) {
        const std::string_view word = firstWord(text);
        text.remove_prefix(word.size());
        if (!line.empty() && terminal::displayWidth(withoutBlanksAtEnd(line + std::string(word))) > columns) {
            lines.push_back(withoutBlanksAtEnd(std::move(line)));
            line.clear();
        }
        line += word;
    }
    lines.push_back(withoutBlanksAtEnd(std::move(line)));
    return lines;
}

} // namespace z7::cashflow::host
