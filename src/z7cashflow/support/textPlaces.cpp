#include "z7cashflow/support/textPlaces.h"

#include <charconv>
#include <optional>
#include <system_error>

namespace z7::cashflow {

namespace {

struct Place {
    std::size_t begin; ///< of the opening brace
    std::size_t end;   ///< after the closing brace
    std::size_t number;
};

std::optional<Place> nextPlace(std::string_view text, std::size_t from) {
    for (std::size_t open = text.find('{', from); open != std::string_view::npos; open = text.find('{', open + 1)) {
        std::size_t number = 0;
        const char* const begin = text.data() + open + 1;
        const char* const end = text.data() + text.size();
        const auto [stop, failure] = std::from_chars(begin, end, number);
        if (failure == std::errc{} && stop != end && *stop == '}') {
            return Place{open, static_cast<std::size_t>(stop - text.data()) + 1, number};
        }
    }
    return std::nullopt;
}

} // namespace

std::string fillPlaces(std::string_view text, const std::vector<std::string>& arguments) {
    std::string filled;
    std::size_t from = 0;
    while (const auto place = nextPlace(text, from)) {
        filled += text.substr(from, place->begin - from);
        filled += place->number < arguments.size() ? std::string_view(arguments[place->number])
                                                   : text.substr(place->begin, place->end - place->begin);
        from = place->end;
    }
    filled += text.substr(from);
    return filled;
}

std::vector<std::size_t> placesOf(std::string_view text) {
    std::vector<std::size_t> numbers;
    std::size_t from = 0;
    while (const auto place = nextPlace(text, from)) {
        numbers.push_back(place->number);
        from = place->end;
    }
    return numbers;
}

} // namespace z7::cashflow
