// In every command that shows a voucher's key, people read it with the sign of its kind, and programs with the number
// and the sign beside it.

#include "CommandLine.h"
#include "EnvironmentGuard.h"
#include "doubles/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <regex>

namespace z7::cashflow::host {
namespace {

using test::ScratchFolder;
using testing::HasSubstr;
using Json = nlohmann::json;
namespace fs = std::filesystem;

/// Whether a text shows a key with the number of its kind.
bool showsNumber(const std::string& text) {
    static const std::regex numbers("2024/[0-9]+/[0-9]+/[0-9]+");
    return std::regex_search(text, numbers);
}

bool showsSign(const std::string& text) {
    static const std::regex signs("2024/[0-9]+/(收|付|转)/[0-9]+");
    return std::regex_search(text, signs);
}

/// Expects a sign beside each key; returns how many keys there are. Findings quote what a document says of itself.
int countKeys(const Json& json) {
    int keys = 0;
    for (const char* const name : {"voucher", "first"}) {
        if (json.is_object() && json.contains(name) && json[name].is_string()) {
            ++keys;
            EXPECT_EQ(json.value("sign", ""), "付") << json;
        }
    }
    for (const auto& [name, part] : json.items()) {
        keys += part.is_structured() && name != "findings" ? countKeys(part) : 0;
    }
    return keys;
}

/// Commands that show keys, with places {} for the account's file. All of them are about payments.
class VoucherSign : public testing::TestWithParam<const char*> {
protected:
    VoucherSign() {
        fs::create_directory(folder_);
        EXPECT_EQ(runLine(at("z7cf init {} --sample --quiet")).exitCode, 0);
        EXPECT_EQ(runLine(at("z7cf allot {} --year 2024 --period 5-6 --quiet")).exitCode, 1);    // run 1
        EXPECT_EQ(runLine(at("z7cf assign {} 2024/6/付/10 1 0113 100.00 --quiet")).exitCode, 0); // run 2
        EXPECT_EQ(runLine(at("z7cf assign {} 2024/6/付/10 1 0114 --quiet")).exitCode, 0);        // run 3
        scratch_.write("sheet.csv", "voucher,line,item\n2024/6/付/10,1,0112\n");
        EXPECT_EQ(runLine(at("z7cf export {} 2024/6/付/10 > " + (scratch_.path() / "rows.xml").string())).exitCode, 0);
    }
    [[nodiscard]] std::string at(std::string line) const {
        for (const auto& [place, path] : {std::pair<std::string, fs::path>{"{}", folder_ / "company.db"},
                                          {"{sheet}", scratch_.path() / "sheet.csv"},
                                          {"{rows}", scratch_.path() / "rows.xml"}}) {
            const std::size_t found = line.find(place);
            line = found == std::string::npos ? line : line.replace(found, place.size(), path.string());
        }
        return line;
    }
    /// Runs a command on a new copy of the account.
    [[nodiscard]] RunResult run(const std::string& line) const {
        const fs::path kept = scratch_.path() / "kept";
        fs::copy(folder_, kept);
        RunResult result = runLine(at(line));
        fs::remove_all(folder_);
        fs::rename(kept, folder_);
        EXPECT_LE(result.exitCode, 1) << result.err;
        return result;
    }

private:
    EnvironmentGuard language_{"LC_ALL", "C"};
    EnvironmentGuard home_{"HOME", "/nonexistent"};
    EnvironmentGuard config_{"XDG_CONFIG_HOME", nullptr};
    EnvironmentGuard connect_{"Z7CF_CONNECT", nullptr};
    ScratchFolder scratch_;
    fs::path folder_ = scratch_.path() / "account";
};

TEST_P(VoucherSign, IsShownToPeopleAndStandsBesideTheNumberInJson) {
    const std::string line = GetParam();
    const RunResult people = run(line);
    const std::string shown = people.out + people.err;
    const bool silent = line.find(" check ") != std::string::npos || line.find(" export ") != std::string::npos;
    EXPECT_FALSE(showsNumber(shown)) << shown;
    EXPECT_TRUE(silent || showsSign(shown)) << shown;
    if (line.find("--csv") != std::string::npos) {
        return;
    }
    int keys = 0;
    for (const std::string& each : run(line + " --json").lines()) {
        keys += countKeys(Json::parse(each));
    }
    EXPECT_GT(keys, 0);
}

INSTANTIATE_TEST_SUITE_P(Commands, VoucherSign,
                         testing::Values("z7cf vouchers {} --year 2024 --period 5 --open",
                                         "z7cf vouchers {} --year 2024 --period 5 --open --csv",
                                         "z7cf voucher {} 2024/6/付/10", "z7cf check {} 2024/6/付/10",
                                         "z7cf export {} 2024/6/付/10", "z7cf save {} 2024/6/付/10",
                                         "z7cf save {} 2024/6/付/10 --dry-run", "z7cf clear {} 2024/6/付/10",
                                         "z7cf clear {} 2024/6/付/10 --dry-run", "z7cf import {} 2024/6/付/10 {rows}",
                                         "z7cf assign {} 2024/6/付/10 1 0113 250.00", "z7cf assign {} --from {sheet}",
                                         "z7cf assign {} --from {sheet} --dry-run",
                                         "z7cf reassign {} --year 2024 --from 0113 --to 0114 --period 6",
                                         "z7cf reassign {} --year 2024 --from 0113 --to 0114 --period 6 --dry-run",
                                         "z7cf log {} 2", "z7cf log {} 2 --csv", "z7cf undo {} 3 --dry-run",
                                         "z7cf undo {} 2"));

/// Commands that show vouchers of every kind.
class VoucherSignOfLists : public VoucherSign {};

TEST_P(VoucherSignOfLists, IsShownToPeople) {
    const RunResult people = run(GetParam());
    EXPECT_FALSE(showsNumber(people.out)) << people.out;
    EXPECT_TRUE(showsSign(people.out)) << people.out;
    for (const std::string& line : run(GetParam() + std::string(" --json")).lines()) {
        const Json json = Json::parse(line);
        EXPECT_TRUE(!json.contains("voucher") || json.contains("sign")) << line;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Commands, VoucherSignOfLists,
    testing::Values("z7cf vouchers {} --year 2024 --period 6", "z7cf vouchers {} --year 2024 --open --group",
                    "z7cf vouchers {} --year 2024 --open --lines", "z7cf vouchers {} --year 2024 --open --lines --csv",
                    "z7cf statement {} --year 2024 --period 5 --csv", "z7cf statement {} --year 2024 --period 5",
                    "z7cf allot {} --year 2024 --period 5", "z7cf allot {} --year 2024 --period 5 --dry-run"));

} // namespace
} // namespace z7::cashflow::host
