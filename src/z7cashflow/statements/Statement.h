#pragma once

#include "z7cashflow/statements/ColumnList.h"
#include "z7cashflow/statements/LiteralPolicy.h"
#include "z7cashflow/statements/Number.h"
#include "z7cashflow/statements/RowValues.h"
#include "z7cashflow/statements/Table.h"
#include "z7cashflow/statements/Text.h"
#include "z7cashflow/statements/VoucherKey.h"
#include "z7cashflow/support/visibility.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

// The statements of the library, each once, as constants in the headers of this folder. To add one:
// 1. Write an entry beside those on the same subject: inline constexpr Statement<places...> name{"name", "text"}. Every
//    place of the text is a word in braces; the types of the places follow the order of the text. A VoucherKey fills
//    three places in a row: period, kind and number. A text that does not fit its places does not compile.
// 2. Test its text letter by letter in tests/statements; scripts/check_statements.py fails until its name occurs there.
// 3. Run filled(statements::name, values...), which is declared in model/filled.h and applies the login's policy.

Z7_PUBLIC_BEGIN

namespace z7::cashflow::statements {

namespace detail {

template <class P> inline constexpr std::size_t slotsOf = std::is_same_v<P, VoucherKey> ? 3 : 1;

template <class P>
void appendSlot(std::string& out, LiteralPolicy policy, const Place& place, const P& value, std::size_t slot) {
    if constexpr (std::is_same_v<P, VoucherKey>) {
        const std::array<Number, 3> parts{value.period, value.kind, value.number};
        parts[slot].appendTo(out, policy, place);
    } else {
        value.appendTo(out, policy, place);
    }
}

} // namespace detail

/// The text of a statement with places to be filled, each with a value of its type.
template <class... Places> class Statement {
public:
    /// A text with its places in braces, such as "select * from dsign where isignseq={kind}". Text places must
    /// be between quotes, all others outside them; otherwise the constant does not compile.
    constexpr Statement(std::string_view name, std::string_view text) : name_(name) {
        constexpr std::array<bool, slots + 1> isText{textSlots()};
        bool quoted = false;
        std::size_t slot = 0;
        std::size_t begin = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '\'') {
                quoted = !quoted;
            } else if (text[at] == '{') {
                const std::size_t end = text.find('}', at);
                if (end == std::string_view::npos || slot == slots) {
                    throw "a statement has more places than values, or a place without an end";
                }
                const bool enclosed = text[at - 1] == '\'' && end + 1 < text.size() && text[end + 1] == '\'';
                if (isText[slot] != quoted || quoted != enclosed) {
                    throw "a text is alone between its quotes, every other value is outside quotes";
                }
                places_[slot] = {name, text.substr(at + 1, end - at - 1)};
                pieces_[slot++] = text.substr(begin, at - begin);
                begin = end + 1;
                at = end;
            }
        }
        if (slot != slots || quoted) {
            throw "a statement has fewer places than values, or a quote without an end";
        }
        pieces_[slot] = text.substr(begin);
    }

    /// The name under which it is known in messages and tests.
    [[nodiscard]] constexpr std::string_view name() const noexcept { return name_; }
    /// The text before the first place, with which every text of the statement begins; the whole text if there
    /// is no place.
    [[nodiscard]] constexpr std::string_view beginning() const noexcept { return pieces_.front(); }

    /// The statement with its places filled. Error 10020 if the policy does not allow a value.
    [[nodiscard]] std::string fill(LiteralPolicy policy, const Places&... values) const {
        std::string out;
        appendTo(out, policy, values...);
        return out;
    }

    /// The same, appended to a text. After an error the text contains part of the statement.
    void appendTo(std::string& out, [[maybe_unused]] LiteralPolicy policy, const Places&... values) const {
        std::size_t slot = 0;
        (appendValue(out, policy, values, slot), ...);
        out += pieces_[slot];
    }

private:
    static constexpr std::size_t slots = (std::size_t{0} + ... + detail::slotsOf<Places>);

    static constexpr std::array<bool, slots + 1> textSlots() {
        std::array<bool, slots + 1> list{};
        [[maybe_unused]] std::size_t at = 0;
        ((list[at] = std::is_same_v<Places, Text>, at += detail::slotsOf<Places>), ...);
        return list;
    }

    template <class P>
    void appendValue(std::string& out, LiteralPolicy policy, const P& value, std::size_t& slot) const {
        for (std::size_t part = 0; part < detail::slotsOf<P>; ++part, ++slot) {
            out += pieces_[slot];
            detail::appendSlot(out, policy, places_[slot], value, part);
        }
    }

    std::string_view name_;
    std::array<std::string_view, slots + 1> pieces_{};
    std::array<Place, slots + 1> places_{};
};

} // namespace z7::cashflow::statements

Z7_PUBLIC_END
