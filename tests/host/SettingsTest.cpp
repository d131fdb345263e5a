#include "host/cli/Settings.h"

#include "EnvironmentGuard.h"
#include "RunProgram.h"
#include "doubles/ScratchFolder.h"
#include "host/cli/Failure.h"
#include "host/cli/exitCode.h"
#include "host/work/HostLogin.h"
#include "z7cashflow/support/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace z7::cashflow::host {
namespace {

using testing::HasSubstr;

std::string failureOf(const std::string& text) {
    try {
        static_cast<void>(readSettings(text, "my.toml", Language::english));
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.exitCode(), exit_code::usage);
        return failure.message(Language::english);
    }
    ADD_FAILURE() << "no failure: " << text;
    return {};
}

TEST(Settings, ReadsTheNamesOfGroups) {
    const Settings settings = readSettings("account = \"1\"\n[statement_groups]\n01 = \"经营活动\"\n\"0 2\" = \"b\"\n",
                                           "my.toml", Language::english);
    EXPECT_EQ(settings.statementGroups, (std::map<std::string, std::string>{{"0 2", "b"}, {"01", "经营活动"}}));
    for (const char* text : {"statement_groups = \"01\"\n", "[statement_groups]\n01 = 5\n",
                             "[statement_groups]\n\"\" = \"x\"\n", "[[statement_groups]]\n01 = \"x\"\n"}) {
        EXPECT_THAT(failureOf(text), HasSubstr("statement_groups")) << text;
    }
}

TEST(Settings, ReadsEveryKey) {
    const Settings settings = readSettings("# mine\naccount = \"002\"\nuser = 'wang'\noperator = \"王芳\"\n"
                                           "accounting_system = \"政府会计制度（2019）\"\nlanguage = \"zh_cn\"\n",
                                           "my.toml", Language::english);
    EXPECT_EQ(settings.account, "002");
    EXPECT_EQ(settings.user, "wang");
    EXPECT_EQ(settings.operatorName, "王芳");
    EXPECT_EQ(settings.accountingSystem, "政府会计制度（2019）");
    EXPECT_EQ(settings.language, Language::chinese);
}

TEST(Settings, LeavesOutWhatTheFileLeavesOut) {
    const Settings settings = readSettings("", "my.toml", Language::english);
    EXPECT_FALSE(settings.account || settings.user || settings.operatorName || settings.accountingSystem ||
                 settings.language || settings.guard);
}

TEST(Settings, SwitchTheGuard) {
    EXPECT_EQ(readSettings("guard = false\n", "my.toml", Language::english).guard, std::optional(false));
    EXPECT_EQ(readSettings("guard = true\n", "my.toml", Language::english).guard, std::optional(true));
}

TEST(Settings, NamesWhatIsWrongAndWhere) {
    EXPECT_EQ(failureOf("account = \"1\"\npassword = \"x\"\n"),
              "Settings file my.toml, line 2: unknown setting \"password\"; the settings are account, user, operator, "
              "accounting_system, language, guard and statement_groups");
    EXPECT_EQ(failureOf("account = 1\n"), "Settings file my.toml, line 1: setting \"account\" must be a text");
    EXPECT_EQ(failureOf("\n\nlanguage = \"fr\"\n"),
              "Settings file my.toml, line 3: setting \"language\" has the invalid value \"fr\"");
    EXPECT_EQ(failureOf("guard = \"false\"\n"),
              "Settings file my.toml, line 1: setting \"guard\" must be true or false");
    EXPECT_THAT(failureOf("user = \"a\"\nuser = \"b\"\n"), HasSubstr("my.toml, line 2: "));
    EXPECT_THAT(failureOf("user = \n"), HasSubstr("my.toml, line 1: "));
    EXPECT_THAT(failureOf("user = \"\xFF\"\n"), HasSubstr("my.toml, line 1: "));
}

TEST(Settings, RefusesTooMuchOfEverything) {
    std::string dotted = "a";
    for (int i = 0; i < 40000; ++i) {
        dotted += ".a";
    }
    const std::string deep =
        "Settings file my.toml is nested too deeply; write each setting on one line: NAME = \"VALUE\"";
    EXPECT_EQ(failureOf(dotted + " = 1\n"), deep);
    EXPECT_EQ(failureOf("[" + dotted + "]\n"), deep);
    EXPECT_EQ(failureOf("x = {" + dotted + " = 1}\n"), deep);
    EXPECT_THAT(failureOf("x = " + std::string(20000, '[') + "\n"),
                HasSubstr("my.toml, line 1: this is not valid TOML"));
    EXPECT_EQ(readSettings("# " + std::string(1000, '.') + "\nuser = \"a.b\"\n", "my.toml", Language::english).user,
              "a.b");
    const test::ScratchFolder scratch;
    const auto file = scratch.write("s.toml", "# " + std::string(70000, 'x') + "\n");
    try {
        static_cast<void>(readSettingsFile(file, Language::english));
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.message(Language::english), "Settings file " + file.string() + " is longer than 64 KiB");
    }
}

TEST(Settings, AFileThatIsNotThereIsAFailure) {
    EXPECT_THROW(static_cast<void>(readSettingsFile("/nonexistent/settings.toml", Language::english)), Failure);
    EXPECT_THROW(static_cast<void>(readSettingsFile("/", Language::english)), Failure) << "a folder";
}

TEST(Settings, TheDefaultPlaceFollowsTheEnvironment) {
    const EnvironmentGuard home("HOME", "/home/demo");
    {
        const EnvironmentGuard config("XDG_CONFIG_HOME", "/etc/mine");
        EXPECT_EQ(defaultSettingsPath(), "/etc/mine/z7cf/settings.toml");
    }
    {
        const EnvironmentGuard config("XDG_CONFIG_HOME", "relative");
        EXPECT_EQ(defaultSettingsPath(), "/home/demo/.config/z7cf/settings.toml");
    }
    const EnvironmentGuard config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(defaultSettingsPath(), "/home/demo/.config/z7cf/settings.toml");
    const EnvironmentGuard noHome("HOME", nullptr);
    EXPECT_EQ(defaultSettingsPath(), std::nullopt);
}

TEST(Language, ComesFromTheFirstSettingOfTheEnvironment) {
    const EnvironmentGuard all("LC_ALL", nullptr);
    const EnvironmentGuard messages("LC_MESSAGES", nullptr);
    const EnvironmentGuard lang("LANG", nullptr);
    EXPECT_EQ(languageOfEnvironment(), Language::english);
    const EnvironmentGuard chineseLang("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(languageOfEnvironment(), Language::chinese);
    const EnvironmentGuard englishMessages("LC_MESSAGES", "en_GB.UTF-8");
    EXPECT_EQ(languageOfEnvironment(), Language::english);
    const EnvironmentGuard chineseAll("LC_ALL", "zh_TW");
    EXPECT_EQ(languageOfEnvironment(), Language::chinese);
    const EnvironmentGuard emptyAll("LC_ALL", "");
    EXPECT_EQ(languageOfEnvironment(), Language::english) << "an empty variable is passed over";
}

TEST(Language, IsReadInAnyLetterCase) {
    EXPECT_EQ(readLanguage("zh"), Language::chinese);
    EXPECT_EQ(readLanguage("ZH_cn"), Language::chinese);
    EXPECT_EQ(readLanguage("en"), Language::english);
    EXPECT_EQ(readLanguage("EN-us"), Language::english);
    for (const char* text : {"", "fr", "zh-TW", "en-GB", "english"}) {
        EXPECT_EQ(readLanguage(text), std::nullopt) << text;
    }
}

TEST(HostLogin, AnswersWhatTheLibraryAsks) {
    GlobalOptions options;
    options.language = Language::chinese;
    options.account = "002";
    options.user = "u";
    options.operatorName = "op";
    options.accountingSystem = "政府会计制度";
    HostLogin login(options, 2024, "driver=sqlite;database=x");
    EXPECT_EQ(login.LocaleId(), 2052);
    EXPECT_EQ(login.accountId(), "002");
    EXPECT_EQ(login.accountingYear(), "2024");
    EXPECT_EQ(login.userId(), "u");
    EXPECT_EQ(login.operatorName(), "op");
    EXPECT_EQ(login.ConnectionString(), "driver=sqlite;database=x");
    EXPECT_EQ(login.information(117), Variant("政府会计制度"));
    EXPECT_TRUE(login.information(118).isNull());
    EXPECT_EQ(login.languageTag(), "zh-CN");
    EXPECT_EQ(login.TextLookup()->text("Z7.CW.GL.CashFlow.00013"), "现金流量");
    EXPECT_EQ(login.FormattedTextLookup()->text("Z7.GL.USZZPUB.00571", {Variant("")}), "列宽已改变，是否保存？");
}

TEST(HostLogin, IsTheDemoUserWithoutSettings) {
    HostLogin login(GlobalOptions{}, 2013, "");
    EXPECT_EQ(login.LocaleId(), 1033);
    EXPECT_EQ(login.languageTag(), "en-US");
    EXPECT_EQ(login.accountId(), "001");
    EXPECT_EQ(login.userId(), "demo");
    EXPECT_EQ(login.operatorName(), "demo");
    EXPECT_EQ(login.information(117), Variant(""));
}

TEST(Settings, OfAnAccountWithoutPeriodsAreReportedInsteadOfSkippingVouchers) {
    const test::ScratchFolder scratch;
    const std::string database = (scratch.path() / "company.db").string();
    ASSERT_EQ(runProgram({"init", database, "--sample"}).exitCode, 0);
    scratch.write("other.toml", "account = '999'\n");
    const std::string settings = (scratch.path() / "other.toml").string();
    for (const std::vector<std::string>& command : {std::vector<std::string>{"allot", database, "--year", "2024"},
                                                    {"vouchers", database, "--year", "2024"},
                                                    {"check", database, "2024/1/1/1"},
                                                    {"save", database, "2024/1/1/1"},
                                                    {"rows", database, "2024/1/1/1"}}) {
        std::vector<std::string> arguments{"--settings", settings};
        arguments.insert(arguments.end(), command.begin(), command.end());
        const RunResult result = runProgram(arguments);
        EXPECT_EQ(result.exitCode, exit_code::database) << command.front();
        EXPECT_THAT(result.err, HasSubstr("Account 999 has no accounting periods")) << command.front();
    }
}

} // namespace
} // namespace z7::cashflow::host
