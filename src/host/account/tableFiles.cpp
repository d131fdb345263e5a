#include "host/account/tableFiles.h"

#include "adapters/shared/loading/TableLoader.h"
#include "host/account/csvReader.h"
#include "host/account/sampleData.h"
#include "host/cli/ExitCode.h"
#include "host/cli/Failure.h"
#include "host/text/joined.h"
#include "z7cashflow/support/conversions.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string_view>

namespace z7::cashflow::host {

namespace {

HostText reasonText(CsvError::Kind kind) noexcept {
    switch (kind) {
    case CsvError::Kind::invalidUtf8:
        return HostText::csvInvalidUtf8;
    case CsvError::Kind::zeroByte:
        return HostText::csvZeroByte;
    case CsvError::Kind::strayQuote:
        return HostText::csvStrayQuote;
    case CsvError::Kind::unclosedQuote:
        return HostText::csvUnclosedQuote;
    case CsvError::Kind::recordTooLong:
        return HostText::csvTooLong;
    case CsvError::Kind::outOfMemory:
        return HostText::csvNoMemory;
    case CsvError::Kind::unreadable:
        break;
    }
    return HostText::csvUnreadable;
}

/// What each kind of refusal says; its places are the kind's arguments.
HostText reasonText(shared::LoadError::Kind kind) noexcept {
    using Kind = shared::LoadError::Kind;
    switch (kind) {
    case Kind::unknownColumn:
        return HostText::csvUnknownColumn;
    case Kind::columnTwice:
        return HostText::csvColumnTwice;
    case Kind::columnMissing:
        return HostText::csvColumnMissing;
    case Kind::wrongCount:
        return HostText::csvWrongCount;
    case Kind::noValue:
        return HostText::csvNoValue;
    case Kind::noTruth:
        return HostText::csvNoTruth;
    case Kind::noWhole:
        return HostText::csvNoWhole;
    case Kind::noNumber:
        return HostText::csvNoNumber;
    case Kind::noDate:
        return HostText::csvNoDate;
    case Kind::tooLong:
        return HostText::csvTextTooLong;
    case Kind::refused:
        break;
    }
    return HostText::csvRefused;
}

/// Loads one file. The first record becomes the column names, all others rows.
class FileLoading {
public:
    FileLoading(LoadableTables& tables, const TableFile& file, Language language,
                const std::function<bool()>& stopRequested)
        : tables_(tables), file_(file), language_(language), stopRequested_(stopRequested) {}

    std::int64_t run() {
        const std::unique_ptr<std::istream> stream = file_.open();
        if (!stream) {
            refuse(1, hostText(language_, HostText::csvCannotOpen));
        }
        try {
            readCsv(*stream, [this](const CsvRecord& record) {
                try {
                    if (loader_) {
                        addRecord(record);
                    } else {
                        readHeading(record);
                    }
                } catch (const shared::LoadError& error) {
                    refuse(record.line, error);
                }
            });
        } catch (const CsvError& error) {
            refuse(error.line(), hostText(language_, reasonText(error.kind())));
        }
        if (!loader_) {
            refuse(1, hostText(language_, HostText::csvNoHeading));
        }
        return loader_->count();
    }

private:
    [[noreturn]] void refuse(std::size_t line, const std::string& reason) const {
        throw Failure(exitCode::usage, HostText::csvAt, {file_.shownName, std::to_string(line), reason});
    }

    [[noreturn]] void refuse(std::size_t line, const shared::LoadError& error) const {
        const std::string reason = hostText(language_, reasonText(error.kind()), error.arguments());
        if (error.column().empty()) {
            refuse(line, reason);
        }
        throw Failure(exitCode::usage, HostText::csvAtColumn,
                      {file_.shownName, std::to_string(line), error.column(), reason});
    }

    void readHeading(const CsvRecord& record) {
        std::vector<std::string> columns;
        for (std::size_t i = 0; i < record.fields.size(); ++i) {
            if (!record.fields[i] || record.fields[i]->empty()) {
                refuse(record.line, hostText(language_, HostText::csvNoName, {std::to_string(i + 1)}));
            }
            columns.push_back(*record.fields[i]);
        }
        loader_ = tables_.loader(file_.table, columns);
    }

    void addRecord(const CsvRecord& record) {
        if (stopRequested_()) {
            throw Interrupted();
        }
        values_.assign(record.fields.begin(), record.fields.end());
        loader_->add(values_);
    }

    LoadableTables& tables_;
    const TableFile& file_;
    Language language_;
    const std::function<bool()>& stopRequested_;
    std::vector<std::optional<std::string_view>> values_;
    std::unique_ptr<RowLoader> loader_;
};

} // namespace

std::vector<TableFile> tableFilesOfFolder(const std::filesystem::path& folder) {
    std::error_code failure;
    std::vector<std::filesystem::path> paths;
    for (auto entry = std::filesystem::directory_iterator(folder, failure);
         !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
        std::error_code ignored;
        if (asciiLower(entry->path().extension().string()) == ".csv" && entry->is_regular_file(ignored)) {
            paths.push_back(entry->path());
        }
    }
    if (failure) {
        throw Failure(exitCode::usage, HostText::folderMissing, {folder.string()});
    }
    if (paths.empty()) {
        throw Failure(exitCode::usage, HostText::folderEmpty, {folder.string()});
    }
    std::sort(paths.begin(), paths.end());
    std::vector<TableFile> files;
    files.reserve(paths.size());
    for (const std::filesystem::path& path : paths) {
        files.push_back({path.stem().string(), path.string(), [path]() -> std::unique_ptr<std::istream> {
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
    const std::vector<std::string> names = tables.names();
    LoadedTables loaded;
    std::set<std::string> seen;
    for (const TableFile& file : files) {
        const auto isThis = [&file](const std::string& table) { return asciiLower(table) == asciiLower(file.table); };
        if (std::none_of(names.begin(), names.end(), isThis)) {
            throw Failure(exitCode::usage, HostText::csvAt,
                          {file.shownName, "1",
                           hostText(language, HostText::csvUnknownTable, {file.table, joined(names, ", ")})});
        }
        if (!seen.insert(asciiLower(file.table)).second) {
            throw Failure(exitCode::usage, HostText::csvAt,
                          {file.shownName, "1", hostText(language, HostText::csvTableTwice, {file.table})});
        }
        loaded.records += FileLoading(tables, file, language, stopRequested).run();
        ++loaded.tables;
    }
    return loaded;
}

} // namespace z7::cashflow::host
