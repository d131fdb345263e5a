#include "host/account/csvReader.h"

#include <csv.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <exception>
#include <istream>
#include <string_view>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestRecord = std::size_t{16} << 20;

/// The position of the first byte that is not part of a valid UTF-8 character, or npos.
std::size_t firstInvalidByte(std::string_view line) noexcept {
    for (std::size_t at = 0; at < line.size();) {
        const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(line.data() + at);
        utf8proc_int32_t codePoint = 0;
        const utf8proc_ssize_t length =
            utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(line.size() - at), &codePoint);
        if (length <= 0) {
            return at;
        }
        at += static_cast<std::size_t>(length);
    }
    return std::string_view::npos;
}

/// Whether a line could be GB18030, which Chinese spreadsheet programs write: ASCII bytes, two-byte characters, and
/// four-byte characters with digits as second and fourth byte.
bool mayBeGb18030(std::string_view line) noexcept {
    const auto byteAt = [line](std::size_t at) {
        return at < line.size() ? static_cast<unsigned char>(line[at]) : static_cast<unsigned char>(0);
    };
    const auto isLead = [](unsigned char byte) { return byte >= 0x81 && byte <= 0xFE; };
    const auto isDigit = [](unsigned char byte) { return byte >= 0x30 && byte <= 0x39; };
    for (std::size_t at = 0; at < line.size();) {
        const unsigned char second = byteAt(at + 1);
        if (byteAt(at) < 0x80) {
            at += 1;
        } else if (isLead(byteAt(at)) && second >= 0x40 && second <= 0xFE && second != 0x7F) {
            at += 2;
        } else if (isLead(byteAt(at)) && isDigit(second) && isLead(byteAt(at + 2)) && isDigit(byteAt(at + 3))) {
            at += 4;
        } else {
            return false;
        }
    }
    return true;
}

bool isAscii(std::string_view line) noexcept {
    return std::all_of(line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Refuses a file whose first line shows that it is a spreadsheet or UTF-16.
void requireCsv(std::string_view line) {
    constexpr std::string_view zip = "PK\x03\x04";
    constexpr std::string_view compound = "\xD0\xCF\x11\xE0";
    if (line.starts_with(zip) || line.starts_with(compound)) {
        throw CsvError(CsvReason::spreadsheet, 1);
    }
    if (line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF") || line.find('\0') < 2) {
        throw CsvError(CsvReason::utf16, 1);
    }
}

/// Keeps the blanks at both ends of a field.
int isNoSpace(unsigned char /*character*/) { return 0; }

/// Feeds the parser line by line, so that the line of every record is known, and collects its fields.
class Reader {
public:
    explicit Reader(const std::function<void(const CsvRecord&)>& take) : take_(take) {
        csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL);
        // By default the parser's buffer grows by 128 bytes at a time, which takes quadratic time for a long
        // record.
        constexpr std::size_t growth = std::size_t{64} << 10U;
        csv_set_blk_size(&parser_, growth);
        csv_set_space_func(&parser_, isNoSpace);
    }
    ~Reader() { csv_free(&parser_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    void feed(std::string_view line) {
        ++line_;
        if (line_ == 1) {
            requireCsv(line);
            line.remove_prefix(line.starts_with("\xEF\xBB\xBF") ? 3 : 0);
        }
        if (line.find('\0') != std::string_view::npos) {
            throw CsvError(CsvReason::zeroByte, line_);
        }
        if (firstInvalidByte(line) != std::string_view::npos) {
            throw CsvError(!foreignSeen_ && mayBeGb18030(line) ? CsvReason::gb18030 : CsvReason::invalidUtf8, line_);
        }
        foreignSeen_ = foreignSeen_ || !isAscii(line);
        if (!insideRecord()) {
            if (line.find_first_not_of(" \t\r\n") == std::string_view::npos) {
                return;
            }
            record_.line = line_;
            recordBytes_ = 0;
        }
        recordBytes_ += line.size();
        if (recordBytes_ > longestRecord) {
            throw CsvError(CsvReason::recordTooLong, record_.line);
        }
        if (csv_parse(&parser_, line.data(), line.size(), &Reader::onField, &Reader::onRecord, this) != line.size()) {
            failed();
        }
        rethrow();
    }

    void finish() {
        if (csv_fini(&parser_, &Reader::onField, &Reader::onRecord, this) != 0) {
            throw CsvError(CsvReason::unclosedQuote, record_.line);
        }
        rethrow();
    }

    [[nodiscard]] std::size_t line() const noexcept { return line_; }

private:
    [[nodiscard]] bool insideRecord() const noexcept { return parser_.pstate != 0; }

    [[noreturn]] void failed() {
        rethrow();
        throw CsvError(csv_error(&parser_) == CSV_EPARSE ? CsvReason::strayQuote : CsvReason::outOfMemory, line_);
    }

    void rethrow() {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

    /// Exceptions must not pass through the parser, which is written in C: they are kept in failure_ and
    /// rethrown after it.
    template <class Action> void guarded(const Action& action) {
        if (failure_) {
            return;
        }
        try {
            action();
        } catch (...) {
            failure_ = std::current_exception();
        }
    }

    static void onField(void* data, std::size_t size, void* self) {
        auto& reader = *static_cast<Reader*>(self);
        reader.guarded([&] {
            reader.record_.fields.push_back(
                data == nullptr ? std::nullopt : std::optional(std::string(static_cast<const char*>(data), size)));
        });
    }

    static void onRecord(int /*terminator*/, void* self) {
        auto& reader = *static_cast<Reader*>(self);
        reader.guarded([&] {
            reader.take_(reader.record_);
            reader.record_.fields.clear();
        });
    }

    const std::function<void(const CsvRecord&)>& take_;
    csv_parser parser_{};
    CsvRecord record_;
    std::size_t recordBytes_ = 0;
    std::size_t line_ = 0;
    bool foreignSeen_ = false; ///< a line with valid non-ASCII UTF-8 was seen, so the file is not GB18030
    std::exception_ptr failure_;
};

} // namespace

void readCsv(std::istream& input, const std::function<void(const CsvRecord&)>& take) {
    Reader reader(take);
    std::array<char, 65536> chunk{};
    std::string line;
    while (input) {
        input.read(chunk.data(), chunk.size());
        std::string_view rest(chunk.data(), static_cast<std::size_t>(input.gcount()));
        for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
            line += rest.substr(0, end + 1);
            reader.feed(line);
            line.clear();
            rest.remove_prefix(end + 1);
        }
        line += rest;
        if (line.size() > longestRecord) {
            throw CsvError(CsvReason::recordTooLong, reader.line() + 1);
        }
    }
    if (input.bad()) {
        throw CsvError(CsvReason::unreadable, reader.line() + 1);
    }
    if (!line.empty()) {
        reader.feed(line);
    }
    reader.finish();
}

} // namespace z7::cashflow::host
