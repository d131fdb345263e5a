// Every report comes as a table, as CSV and as JSON, on standard output or in a new file, and fits a terminal.

#include "CommandLine.h"
#include "EnvironmentGuard.h"
#include "adapters/terminal/printable.h"
#include "doubles/ScratchFolder.h"
#include "host/account/csvReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <iterator>
#include <optional>
#include <regex>

namespace z7::cashflow::host {
namespace {

using test::ScratchFolder;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

std::string textOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A report without the times of runs.
std::string lasting(const std::string& report) {
    static const std::regex passing("[0-9-]{10} [0-9]{2}:[0-9]{2}:[0-9]{2}");
    return std::regex_replace(report, passing, "");
}

/// A report with a place {} for the account's file.
class ReportFormats : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() {
        prepared().emplace();
        const std::string file = (prepared()->path() / "company.db").string();
        EXPECT_EQ(runLine("z7cf init " + file + " --sample --quiet").exitCode, 0);
        EXPECT_EQ(runLine("z7cf allot " + file + " --year 2024 --quiet").exitCode, 1);        // run 1
        EXPECT_EQ(runLine("z7cf assign " + file + " 2024/6/2/10 1 0113 100.00").exitCode, 0); // run 2
    }
    static void TearDownTestSuite() { prepared().reset(); }

    ReportFormats() {
        fs::copy(prepared()->path(), scratch_.path(), fs::copy_options::recursive);
        scratch_.write("sheet.csv", "voucher,line,item\n2024/6/2/10,1,0112\n");
    }

    /// The command with more options, on a new copy of the account.
    [[nodiscard]] std::vector<std::string> words(const std::string& more) const {
        std::string line = GetParam() + more;
        for (const auto& [place, name] : {std::pair{"{}", "company.db"}, std::pair{"{sheet}", "sheet.csv"}}) {
            const std::size_t found = line.find(place);
            if (found != std::string::npos) {
                line.replace(found, std::string(place).size(), (scratch_.path() / name).string());
            }
        }
        auto result = wordsOf(line);
        result.erase(result.begin());
        return result;
    }
    [[nodiscard]] RunResult run(const std::string& more, std::size_t columns = 0) const {
        for (const char* const name : {"company.db", "company.zqsystem.db"}) {
            fs::copy_file(prepared()->path() / name, scratch_.path() / name, fs::copy_options::overwrite_existing);
        }
        std::istringstream in;
        std::ostringstream out;
        std::ostringstream err;
        Console console{in, out, err};
        console.columns = columns;
        RunResult result;
        result.exitCode = runApplication(words(more), console);
        result.out = out.str();
        result.err = err.str();
        return result;
    }
    [[nodiscard]] fs::path file(const std::string& name) const { return scratch_.path() / name; }

private:
    static std::optional<ScratchFolder>& prepared() {
        static std::optional<ScratchFolder> folder;
        return folder;
    }

    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    ScratchFolder scratch_;
};

TEST_P(ReportFormats, AreTheSameOnStandardOutputAndInANewFile) {
    for (const std::string form : {"", " --csv", " --json"}) {
        const RunResult shown = run(form);
        EXPECT_LE(shown.exitCode, 1) << shown.err;
        EXPECT_FALSE(shown.out.empty()) << form;
        const std::string name = "report" + std::to_string(form.size());
        const RunResult written = run(form + " -o " + file(name).string());
        EXPECT_EQ(written.exitCode, shown.exitCode) << written.err;
        EXPECT_EQ(written.out, "");
        EXPECT_EQ(lasting(textOf(file(name))), lasting(shown.out)) << form;
        const RunResult again = run(form + " -o " + file(name).string());
        EXPECT_EQ(again.exitCode, 2) << "nothing is overwritten";
        EXPECT_EQ(lasting(textOf(file(name))), lasting(shown.out)) << form;
    }
}

TEST_P(ReportFormats, CsvIsARectangleAndJsonALineForEachValue) {
    std::istringstream csv(run(" --csv").out);
    std::size_t columns = 0;
    std::size_t records = 0;
    readCsv(csv, [&](const CsvRecord& record) {
        columns = columns == 0 ? record.fields.size() : columns;
        EXPECT_EQ(record.fields.size(), columns) << "line " << record.line;
        ++records;
    });
    EXPECT_GT(columns, 1U);
    EXPECT_GT(records, 1U) << "no record after the headings";
    for (const std::string& line : run(" --json").lines()) {
        EXPECT_FALSE(nlohmann::json::parse(line, nullptr, false).is_discarded()) << line;
    }
}

TEST_P(ReportFormats, TablesAreCutToATerminalAndWholeElsewhere) {
    EXPECT_THAT(run("").out, Not(HasSubstr("…")));
    // Reasons and sources are not cut, and a column for each quarter finds no room.
    const std::string command = GetParam();
    const bool wraps = command.ends_with("--open") || command.ends_with("--why") || command.ends_with("--by-currency");
    constexpr std::size_t width = 100;
    for (const std::string& line : run("", width).lines()) {
        const bool isSentence = line.find("  ") == std::string::npos;
        EXPECT_TRUE(wraps || isSentence || terminal::displayWidth(line) <= width) << line;
    }
    EXPECT_EQ(run(" -o " + file("wide").string(), width).out, "");
    EXPECT_EQ(lasting(textOf(file("wide"))), lasting(run("").out)) << "a file is no terminal";
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ReportFormats,
    testing::Values("z7cf statement {} --year 2024", "z7cf statement {} --year 2024 --by quarter --by-currency",
                    "z7cf vouchers {} --year 2024 --period 6", "z7cf vouchers {} --year 2024 --open",
                    "z7cf vouchers {} --year 2024 --open --group", "z7cf vouchers {} --year 2024 --open --lines",
                    "z7cf voucher {} 2024/6/2/10", "z7cf items {}", "z7cf accounts {} --year 2024",
                    "z7cf templates {} --year 2024", "z7cf kinds {}", "z7cf rows {} 2024/6/2/10",
                    "z7cf rows {} 2024/6/2/10 --why", "z7cf rows {} 2024/6/2/10 --generate --why",
                    "z7cf assign {} 2024/6/2/10 1 0114 300.00 --dry-run", "z7cf assign {} 2024/6/2/10 1 0114 300.00",
                    "z7cf assign {} --from {sheet}", "z7cf clear {} 2024/6/2/10",
                    "z7cf reassign {} --year 2024 --from 0113 --to 0114 --period 6", "z7cf log {}", "z7cf log {} 2",
                    "z7cf undo {} 2", "z7cf undo {} 2 --dry-run", "z7cf save {} 2024/6/2/10 --regenerate",
                    "z7cf save {} 2024/6/2/10 --regenerate --dry-run", "z7cf allot {} --year 2024 --period 6",
                    "z7cf allot {} --year 2024 --period 6 --regenerate --dry-run"));

} // namespace
} // namespace z7::cashflow::host
