#pragma once

#include "z7cashflow/ports/Z7Login.h"
#include "z7cashflow/support/Error.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace z7::cashflow::test {

/// A catalogue that returns "<key>" for every key, or the text set for it.
class FakeTextLookup final : public TextLookup {
public:
    [[nodiscard]] std::string text(const std::string& key) override {
        asked.push_back(key);
        if (failure) {
            throw Error(*failure);
        }
        const auto found = texts.find(key);
        return found == texts.end() ? "<" + key + ">" : found->second;
    }

    std::map<std::string, std::string> texts; ///< texts that differ from "<key>"
    std::optional<Error> failure;             ///< raised for every key
    std::vector<std::string> asked;           ///< every key asked for, in order
};

/// The catalogue with arguments: returns "<key:n>" with the number of arguments.
class FakeFormattedTextLookup final : public FormattedTextLookup {
public:
    [[nodiscard]] std::string text(const std::string& key, const std::vector<Variant>& arguments) override {
        asked.emplace_back(key, arguments);
        if (failure) {
            throw Error(*failure);
        }
        return "<" + key + ":" + std::to_string(arguments.size()) + ">";
    }

    std::optional<Error> failure;
    std::vector<std::pair<std::string, std::vector<Variant>>> asked;
};

/// A login whose properties are its members. It records which of them were read.
class FakeLogin : public Z7Login {
public:
    std::int32_t LocaleId() override { return read("LocaleId"), localeId; }
    std::string accountId() override { return read("accountId"), answers.accountId; }
    std::string accountingYear() override { return read("accountingYear"), answers.accountingYear; }
    std::string userId() override { return read("userId"), answers.userId; }
    std::string operatorName() override { return read("operatorName"), answers.operatorName; }
    std::string ConnectionString() override { return read("ConnectionString"), connectionString; }
    Variant information(std::int32_t code) override {
        read("information " + std::to_string(code));
        const auto found = answers.information.find(code);
        return found == answers.information.end() ? Variant("") : found->second;
    }
    std::string languageTag() override { return read("languageTag"), answers.languageTag; }
    std::shared_ptr<cashflow::TextLookup> TextLookup() override {
        read("TextLookup");
        if (textLookupFailure) {
            throw Error(*textLookupFailure);
        }
        return texts;
    }
    std::shared_ptr<cashflow::FormattedTextLookup> FormattedTextLookup() override {
        read("FormattedTextLookup");
        if (formattedTextLookupFailure) {
            throw Error(*formattedTextLookupFailure);
        }
        return formattedTexts;
    }

    bool guardsStatements() override { return guards; }

    /// What the properties of the same names return.
    struct Answers {
        std::string accountId = "001";
        std::string accountingYear = "2013";
        std::string userId = "u1";
        std::string operatorName = "demo";
        std::map<std::int32_t, Variant> information;
        std::string languageTag = "zh-CN";
    };
    Answers answers;
    std::int32_t localeId = 2052;
    std::string connectionString = "db=login";
    bool guards = false; ///< what guardsStatements returns
    std::shared_ptr<FakeTextLookup> texts = std::make_shared<FakeTextLookup>();
    std::shared_ptr<FakeFormattedTextLookup> formattedTexts = std::make_shared<FakeFormattedTextLookup>();
    std::optional<Error> textLookupFailure;
    std::optional<Error> formattedTextLookupFailure;
    std::vector<std::string> calls; ///< members read, in order

private:
    void read(const std::string& member) { calls.push_back(member); }
};

} // namespace z7::cashflow::test
