#include "host/account/tableFiles.h"

#include "adapters/shared/loading/TableLoader.h"
#include "adapters/shared/reasons/DatabaseReason.h"
#include "adapters/sqlite/ConnectionOptions.h"
#include "host/account/csvReader.h"
#include "host/account/sampleData.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/text/codeText.h"
#include "host/text/joined.h"
#include "host/text/reasonText.h"
#include "z7cashflow/support/Error.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>

namespace z7::cashflow::host {

namespace {

/// The faults of the files, up to a limit that stops the reading.
class Faults {
public:
    explicit Faults(Language language) noexcept : language_(language) {}

    /// Adds a fault under its own code, or without one under that of the text.
    void add(HostText text, std::vector<std::string> arguments, std::string code = {}) {
        faults_.push_back({text, std::move(arguments), code.empty() ? codeText(text) : std::move(code)});
        if (faults_.size() == most) {
            raiseIfAny();
        }
    }

    /// Throws a Failure with all faults so far, if there are any.
    void raiseIfAny() const {
        if (faults_.size() == 1) {
            throw Failure(exit_code::usage, faults_.front().text, faults_.front().arguments)
                .coded(faults_.front().code);
        }
        if (!faults_.empty()) {
            std::vector<Failure::Fault> lines;
            for (const Fault& fault : faults_) {
                lines.push_back({fault.code, hostText(language_, fault.text, fault.arguments)});
            }
            throw Failure(exit_code::usage, faults_.size() == most ? HostText::csvFaultsAndMore : HostText::csvFaults,
                          {std::to_string(faults_.size())}, std::move(lines));
        }
    }

private:
    static constexpr std::size_t most = 50;
    struct Fault {
        HostText text;
        std::vector<std::string> arguments;
        std::string code;
    };
    Language language_;
    std::vector<Fault> faults_;
};

std::string withoutBlanks(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Whether two fields would probably be equal in a key; used only for a message.
bool isSameInKey(const std::optional<std::string>& one, const std::optional<std::string>& other) {
    if (!one || !other) {
        return false;
    }
    const std::string a = asciiLower(withoutBlanks(*one));
    const std::string b = asciiLower(withoutBlanks(*other));
    const auto number = readNumber(a);
    return a == b || (number && number == readNumber(b));
}

/// Loads one file. The first record holds the column names, all others are rows. A record that is refused is a
/// fault, and loading continues with the next one; a file that cannot be read any further is a fault as well.
class FileLoading {
public:
    FileLoading(LoadableTables& tables, const TableFile& file, Language language, Faults& faults,
                const std::function<bool()>& stopRequested)
        : tables_(tables), file_(file), language_(language), faults_(faults), stopRequested_(stopRequested) {}

    /// Returns the number of rows added.
    std::int64_t run() {
        const std::unique_ptr<std::istream> stream = file_.open();
        if (!stream) {
            fault(1, HostText::csvCannotOpen);
            return 0;
        }
        try {
            readCsv(*stream, [this](const CsvRecord& record) { take(record); });
            if (columns_.empty()) {
                fault(1, HostText::csvNoHeading);
            }
        } catch (const CsvError& error) {
            fault(error.line(), reasonText(language_, error), codeText(error));
        } catch (const Unusable&) { // its heading was reported as a fault
        }
        return loader_ ? loader_->count() : 0;
    }

private:
    /// Ends the reading of a file.
    struct Unusable {};

    [[nodiscard]] std::string text(HostText text, const std::vector<std::string>& arguments = {}) const {
        return hostText(language_, text, arguments);
    }

    void fault(std::size_t line, HostText reason, const std::vector<std::string>& arguments = {}) {
        fault(line, text(reason, arguments), codeText(reason));
    }

    void fault(std::size_t line, const std::string& reason, std::string code) {
        faults_.add(HostText::csvAt, {file_.shownName, std::to_string(line), reason}, std::move(code));
    }

    void fault(const CsvRecord& record, const shared::LoadError& error) {
        const std::string code = codeText(error.fault().reason);
        if (error.fault().reason == shared::DatabaseReason::keyTaken) {
            fault(record.line, doubleKeyText(record, error.columns()), code);
            return;
        }
        const std::string reason = reasonText(language_, error.fault());
        if (error.columns().empty()) {
            fault(record.line, reason, code);
        } else {
            faults_.add(HostText::csvAtColumn,
                        {file_.shownName, std::to_string(record.line), error.columns().front(), reason}, code);
        }
    }

    void take(const CsvRecord& record) {
        if (columns_.empty()) {
            readHeading(record);
        } else {
            addRecord(record);
        }
    }

    void readHeading(const CsvRecord& record) {
        requireCommas(record);
        for (std::size_t i = 0; i < record.fields.size(); ++i) {
            columns_.push_back(withoutBlanks(record.fields[i].value_or("")));
            if (columns_.back().empty()) {
                fault(record.line, HostText::csvNoName, {std::to_string(i + 1)});
                throw Unusable{};
            }
        }
        try {
            loader_ = tables_.loader(file_.table, columns_);
        } catch (const shared::LoadError& error) {
            fault(record, error);
            throw Unusable{};
        }
    }

    /// Refuses a heading with another separator: it shows as a single column name that contains the separator.
    void requireCommas(const CsvRecord& record) {
        if (record.fields.size() != 1 || !record.fields.front()) {
            return;
        }
        const std::size_t separator = record.fields.front()->find_first_of(";\t|");
        if (separator != std::string::npos) {
            const std::string sign(1, record.fields.front()->at(separator));
            fault(record.line, HostText::csvSeparator, {sign == "\t" ? text(HostText::tabulator) : "\"" + sign + "\""});
            throw Unusable{};
        }
    }

    void addRecord(const CsvRecord& record) {
        if (stopRequested_()) {
            throw Interrupted();
        }
        values_.assign(record.fields.begin(), record.fields.end());
        try {
            loader_->add(values_);
        } catch (const shared::LoadError& error) {
            fault(record, error);
        }
    }

    /// Names the key of a record, and the line on which the key first appeared.
    [[nodiscard]] std::string doubleKeyText(const CsvRecord& record, const std::vector<std::string>& keyColumns) const {
        std::vector<std::size_t> places;
        std::vector<std::string> key;
        for (const std::string& column : keyColumns) {
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                if (asciiLower(columns_[i]) == asciiLower(column)) {
                    places.push_back(i);
                    key.push_back(columns_[i] + "=" + shortened(record.fields[i].value_or("")));
                }
            }
        }
        const std::string keyText = joined(key, text(HostText::listComma));
        const auto line = earlierLine(record, places);
        return line ? text(HostText::csvDoubleKeyAt, {keyText, std::to_string(*line)})
                    : reasonText(language_, Explanation{shared::DatabaseReason::keyTaken, {keyText}});
    }

    /// The line of an earlier record with the same fields in these columns.
    [[nodiscard]] std::optional<std::size_t> earlierLine(const CsvRecord& record,
                                                         const std::vector<std::size_t>& places) const {
        struct Found {
            std::optional<std::size_t> line;
        };
        const std::unique_ptr<std::istream> stream = file_.open();
        bool heading = true;
        try {
            readCsv(*stream, [&](const CsvRecord& other) {
                if (other.line >= record.line) {
                    throw Found{};
                }
                const bool same = std::all_of(places.begin(), places.end(), [&](std::size_t place) {
                    return place < other.fields.size() && isSameInKey(other.fields[place], record.fields[place]);
                });
                if (!std::exchange(heading, false) && same && !places.empty()) {
                    throw Found{other.line};
                }
            });
        } catch (const Found& found) {
            return found.line;
        }
        return std::nullopt;
    }

    LoadableTables& tables_;
    const TableFile& file_;
    Language language_;
    Faults& faults_;
    const std::function<bool()>& stopRequested_;
    std::vector<std::string> columns_;
    std::vector<std::optional<std::string_view>> values_;
    std::unique_ptr<RowLoader> loader_;
};

/// Loads the files one after another, if there is a table for each.
LoadedTables loadFiles(LoadableTables& tables, const std::vector<TableFile>& files, Language language, Faults& faults,
                       const std::function<bool()>& stopRequested) {
    const std::vector<std::string> names = tables.names();
    LoadedTables loaded;
    std::set<std::string> seen;
    for (const TableFile& file : files) {
        const auto isThis = [&file](const std::string& table) { return asciiLower(table) == asciiLower(file.table); };
        if (std::none_of(names.begin(), names.end(), isThis)) {
            faults.add(HostText::csvNoTable, {file.shownName, file.table, joined(names, ", ")});
        } else if (!seen.insert(asciiLower(file.table)).second) {
            faults.add(HostText::csvTableTwice, {file.shownName, file.table});
        } else {
            loaded.records += FileLoading(tables, file, language, faults, stopRequested).run();
            ++loaded.tables;
        }
    }
    return loaded;
}

} // namespace

std::vector<TableFile> tableFilesOfFolder(const std::filesystem::path& folder) {
    std::error_code failure;
    std::vector<std::filesystem::path> paths;
    for (auto entry = std::filesystem::directory_iterator(folder, failure);
         !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::error_code ignored;
        if (asciiLower(sqlite::utf8Of(entry->path().extension())) == ".csv" && entry->is_regular_file(ignored)) {
            paths.push_back(entry->path());
        }
    }
    if (failure) {
        throw Failure(exit_code::usage, HostText::folderMissing, {sqlite::utf8Of(folder)});
    }
    if (paths.empty()) {
        throw Failure(exit_code::usage, HostText::folderEmpty, {sqlite::utf8Of(folder)});
    }
    std::sort(paths.begin(), paths.end());
    std::vector<TableFile> files;
    files.reserve(paths.size());
    for (const std::filesystem::path& path : paths) {
        files.push_back({sqlite::utf8Of(path.stem()), sqlite::utf8Of(path), [path]() -> std::unique_ptr<std::istream> {
                             auto stream = std::make_unique<std::ifstream>(path, std::ios::binary);
                             return stream->is_open() ? std::move(stream) : nullptr;
                         }});
    }
    return files;
}

std::vector<TableFile> tableFilesOfSample() {
    std::vector<TableFile> files;
    const auto definitionOf = [](std::string_view name) {
        for (const SampleFile& definition : sampleDefinitions()) {
            if (definition.name == name) {
                return std::string(definition.text);
            }
        }
        return std::string();
    };
    for (const SampleFile& sample : sampleFiles()) {
        files.push_back(
            {std::string(sample.name), std::string(sample.name) + ".csv",
             [text = sample.text] { return std::make_unique<std::istringstream>(std::string(text), std::ios::binary); },
             definitionOf(sample.name)});
    }
    return files;
}

LoadedTables loadTableFiles(Connection& connection, LoadableTables& tables, const std::vector<TableFile>& files,
                            Language language, const std::function<bool()>& stopRequested) {
    for (const TableFile& file : files) {
        if (!file.definition.empty()) {
            connection.Execute(file.definition);
        }
    }
    Faults faults(language);
    try {
        const LoadedTables loaded = loadFiles(tables, files, language, faults, stopRequested);
        faults.raiseIfAny();
        return loaded;
    } catch (const Error&) { // after a refused row a server may refuse everything that follows
        faults.raiseIfAny();
        throw;
    }
}

} // namespace z7::cashflow::host
