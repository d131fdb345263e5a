#include "desks/Office.h"

#include "adapters/odbc/Connection.h"
#include "adapters/odbc/OdbcDatabase.h"
#include "adapters/sqlite/Connection.h"
#include "adapters/sqlite/database.h"
#include "desks/CutCalls.h"
#include "doubles/ScratchFolder.h"
#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"

#include <filesystem>
#include <regex>

namespace z7::cashflow::desks {

namespace {

std::string inYear(const std::string& text, int timeout) {
    return text + ";timeout=" + std::to_string(timeout) + ";year=" + std::to_string(year);
}

/// The sample company in a file, in a temporary folder that is removed with it.
class SampleFile {
public:
    SampleFile() {
        host::makeAccount(path(), host::tableFilesOfSample(), {}, host::Language::english, [] { return false; });
    }
    [[nodiscard]] std::filesystem::path path() const { return folder_.path() / "company.db"; }

private:
    test::ScratchFolder folder_;
};

class EmbeddedOffice final : public Office {
public:
    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const override {
        return std::make_unique<sqlite::Connection>();
    }
    [[nodiscard]] std::string connectionString(int timeout) const override {
        return sqlite::connectionString(file_.path(), year) + ";timeout=" + std::to_string(timeout);
    }

private:
    SampleFile file_;
};

class DriverOffice final : public Office {
public:
    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const override { return odbc::makeDriverConnection(); }
    [[nodiscard]] std::string connectionString(int timeout) const override {
        // The driver waits for a lock by its own keyword, which has the name of the adapter's.
        return inYear("driver=odbc;odbc={Driver=SQLite3;Database=" + file_.path().string() +
                          ";LoadExt=" + Z7_SESSION_FUNCTIONS + ";Timeout=" + std::to_string(timeout) + "}",
                      timeout);
    }
    [[nodiscard]] Lines* lines() override { return &lines_; }

private:
    SampleFile file_;
    CutCalls lines_;
};

const std::regex serverKeyword("Server=([^;]*)", std::regex::icase);
const std::regex portKeyword("Port=([0-9]*)", std::regex::icase);

/// A new database with the sample company, on the server that the environment names.
class ServerOffice final : public Office, private Lines {
public:
    ServerOffice() {
        const SampleFile sample;
        sqlite::Connection source;
        source.Open(sqlite::connectionString(sample.path(), year));
        odbc::Connection target;
        target.Open(connectionString(60000));
        target.BeginTrans();
        for (const host::TableFile& file : host::tableFilesOfSample()) {
            if (file.definition.empty()) {
                copy(source, target, file.table);
            }
        }
        target.CommitTrans();

        std::smatch server;
        std::smatch port;
        const std::string text = connectionString(0);
        if (std::regex_search(text, server, serverKeyword) && std::regex_search(text, port, portKeyword)) {
            door_.emplace(server[1], std::stoi(port[1]));
        }
    }
    [[nodiscard]] std::unique_ptr<Connection> makeConnection() const override {
        return std::make_unique<odbc::Connection>();
    }
    [[nodiscard]] std::string connectionString(int timeout) const override {
        return database_.connectionString(year, timeout);
    }
    [[nodiscard]] host::GlobalOptions options() const override {
        host::GlobalOptions options;
        options.account = database_.accountId();
        return options;
    }
    [[nodiscard]] conformance::Capability selectInto() const override { return database_.selectInto(); }
    [[nodiscard]] conformance::Capability tellsLockTimeout() const override { return database_.tellsLockTimeout(); }
    [[nodiscard]] std::string connectionStringOverLines(int timeout) const override {
        const std::string text = std::regex_replace(connectionString(timeout), serverKeyword, "Server=127.0.0.1");
        return std::regex_replace(text, portKeyword, "Port=" + std::to_string(door_->port()));
    }
    [[nodiscard]] Lines* lines() override { return door_ ? this : nullptr; }

private:
    void cutAt(int request, odbc::Cut moment) override { door_->cutAt(request, moment); }
    bool stopCounting() override { return door_->stopCounting(); }

    void copy(Connection& source, Connection& target, const std::string& table) const {
        const bool periods = table == "ua_period"; // the one table of the system database, which accounts share
        const std::string query = "select * from " + (periods ? "zqsystem.." + table : table);
        const auto from = source.Execute(query);
        const auto to = target.createRecordset();
        to->Open(query + " where 1=0", &target, CursorType::keyset, LockType::optimistic);
        for (; !from->atEnd(); from->MoveNext()) {
            to->AddNew();
            for (int i = 0; i < from->Fields().Count(); ++i) {
                const std::string& column = from->Fields().Name(i);
                if (column != "iID") { // the server counts it by itself
                    to->Fields().Item(column,
                                      column == "cacc_id" ? Variant(database_.accountId()) : from->Fields().Item(i));
                }
            }
            to->Update();
        }
    }

    odbc::ServerDatabase database_;
    std::optional<odbc::CuttingProxy> door_;
};

} // namespace

std::vector<OfficeKind> offices() {
    const auto server = []() -> std::unique_ptr<Office> {
        return odbc::ServerDatabase::server() ? std::make_unique<ServerOffice>() : nullptr;
    };
    return {{"embedded", [] { return std::make_unique<EmbeddedOffice>(); }, {}},
            {"odbc_sqlite", [] { return std::make_unique<DriverOffice>(); }, {}},
            {"odbc_server", server, "Z7CF_TEST_SQLSERVER holds no connection string, so there is no server to share"}};
}

} // namespace z7::cashflow::desks
