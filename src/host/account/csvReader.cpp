#include "host/account/csvReader.h"

#include <csv.h>
#include <utf8proc.h>

#include <array>
#include <exception>
#include <istream>
#include <string_view>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t longestRecord = std::size_t{16} << 20;

/// The first byte of a line that begins no valid UTF-8 character, or npos.
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

/// Feeds the parser line by line, so that the line of every record is known, and collects what it finds.
class Reader {
public:
    explicit Reader(const std::function<void(const CsvRecord&)>& take) : take_(take) {
        csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_EMPTY_IS_NULL);
        // By itself the parser's buffer grows by 128 bytes at a time, which a long record pays for by its square.
        constexpr std::size_t growth = std::size_t{64} << 10U;
        csv_set_blk_size(&parser_, growth);
    }
    ~Reader() { csv_free(&parser_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    void feed(std::string_view line) {
        ++line_;
        if (line_ == 1 && line.starts_with("\xEF\xBB\xBF")) {
            line.remove_prefix(3);
        }
        if (line.find('\0') != std::string_view::npos) {
            throw CsvError(CsvError::Kind::zeroByte, line_);
        }
        if (firstInvalidByte(line) != std::string_view::npos) {
            throw CsvError(CsvError::Kind::invalidUtf8, line_);
        }
        if (!insideRecord()) {
            record_.line = line_;
            recordBytes_ = 0;
        }
        recordBytes_ += line.size();
        if (recordBytes_ > longestRecord) {
            throw CsvError(CsvError::Kind::recordTooLong, record_.line);
        }
        if (csv_parse(&parser_, line.data(), line.size(), &Reader::onField, &Reader::onRecord, this) != line.size()) {
            failed();
        }
        rethrow();
    }

    void finish() {
        if (csv_fini(&parser_, &Reader::onField, &Reader::onRecord, this) != 0) {
            throw CsvError(CsvError::Kind::unclosedQuote, record_.line);
        }
        rethrow();
    }

    [[nodiscard]] std::size_t line() const noexcept { return line_; }

private:
    [[nodiscard]] bool insideRecord() const noexcept { return parser_.pstate != 0; }

    [[noreturn]] void failed() {
        rethrow();
        throw CsvError(csv_error(&parser_) == CSV_EPARSE ? CsvError::Kind::strayQuote : CsvError::Kind::outOfMemory,
                       line_);
    }

    void rethrow() {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

    /// Exceptions must not pass through the parser, which is written in C: they wait in failure_.
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
    std::exception_ptr failure_;
};

} // namespace

CsvError::CsvError(Kind kind, std::size_t line) : std::runtime_error("no CSV file"), kind_(kind), line_(line) {}

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
            throw CsvError(CsvError::Kind::recordTooLong, reader.line() + 1);
        }
    }
    if (input.bad()) {
        throw CsvError(CsvError::Kind::unreadable, reader.line() + 1);
    }
    if (!line.empty()) {
        reader.feed(line);
    }
    reader.finish();
}

} // namespace z7::cashflow::host
