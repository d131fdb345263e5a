// The ODBC adapter beside the same calls made bare, on SQLite's ODBC driver: what a statement costs more, and what a
// fetched row does. The bare side runs texts that are rewritten already.
//
//   bench_odbc [TURNS]           7 turns if it is not said

#include "Account.h"
#include "BareOdbc.h"
#include "Measure.h"

#include "adapters/odbc/Connection.h"
#include "adapters/odbc/SqliteDialect.h"
#include "adapters/tsql/Rewriting.h"
#include "adapters/tsql/Shape.h"
#include "adapters/tsql/tokens.h"
#include "host/account/accountMaker.h"
#include "host/account/tableFiles.h"
#include "workbench/vouchers/Allotment.h"
#include "workbench/vouchers/voucherList.h"
#include "z7cashflow/data/DataProvider.h"
#include "z7cashflow/support/conversions.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace z7::cashflow;

constexpr std::int16_t year = 2024;
int turns = 7;
constexpr int longVoucher = 10'000; // lines

std::string driverText(const std::filesystem::path& file) {
    return "Driver={SQLite3};Database=" + file.string() + ";LoadExt=" + Z7_SESSION_FUNCTIONS;
}

std::string adapterText(const std::filesystem::path& file) {
    return driverText(file) + ";year=" + std::to_string(year);
}

// A statement of the library, and the texts to which it is rewritten, each with the way to fetch its result.
struct Statement {
    struct Rewritten {
        std::string text;
        std::vector<odbc::FetchAs> plan;
    };
    int session = 0;
    std::string text;
    std::vector<Rewritten> rewritten;
};

bool isOfTransaction(const std::string& text) {
    return text == "BEGIN" || text == "COMMIT" || text == "ROLLBACK" ||
           text == "DELETE FROM main.accinformation WHERE 0";
}

// The statements that the library sends while it allocates every voucher of the sample company.
std::vector<Statement> recordedStatements(const std::filesystem::path& file) {
    std::vector<Statement> statements;
    bench::Account account(file, year);
    const auto vouchers = workbench::listVouchers(account.connection(), year, std::nullopt);
    account.connection().onStatement([&](int session, const std::string& text) {
        statements.push_back({session, text, {}});
    });
    account.connection().onRewrittenStatement([&](int, const std::string& text) {
        if (!isOfTransaction(text)) {
            statements.back().rewritten.push_back({text, {}});
        }
    });
    DataProvider data;
    workbench::Allotment allotment(account.connection(), data, account.gl(), true);
    allotment.allotAll(
        vouchers, [] { return false; }, [](const workbench::VoucherResult&) {});
    return statements;
}

// The sessions of one replay. The first is that of the host, with all its work in one transaction: a commit waits
// for the disk, which would hide the difference.
template <class Session> class Sessions {
public:
    Sessions(const std::vector<Statement>& statements, const std::function<std::unique_ptr<Session>()>& open) {
        for (const Statement& statement : statements) {
            auto& session = sessions_[statement.session];
            session = session != nullptr ? std::move(session) : open();
        }
    }
    Session& of(const Statement& statement) { return *sessions_.at(statement.session); }
    Session& host() { return *sessions_.begin()->second; }

private:
    std::map<int, std::unique_ptr<Session>> sessions_;
};

using AdapterSessions = Sessions<odbc::Connection>;
using BareSessions = Sessions<bench::BareOdbc>;

std::unique_ptr<odbc::Connection> openAdapter(const std::filesystem::path& file) {
    auto connection = std::make_unique<odbc::Connection>([] { return std::make_unique<odbc::SqliteDialect>(); });
    connection->Open(adapterText(file));
    return connection;
}

std::unique_ptr<bench::BareOdbc> openBare(const std::filesystem::path& file) {
    auto session = std::make_unique<bench::BareOdbc>(driverText(file));
    session->run("select z7_use_year(" + std::to_string(year) + ")", {});
    return session;
}

std::vector<std::string> valuesOf(Recordset& records) {
    std::vector<std::string> values;
    for (; records.State() == ObjectState::open && !records.atEnd(); records.MoveNext()) {
        FieldList& fields = records.Fields();
        for (int i = 0; i < fields.Count(); ++i) {
            const Variant value = fields.Item(i);
            values.push_back(value.isNull()     ? "null"
                             : value.is<bool>() ? std::string(value == Variant(true) ? "1" : "0")
                                                : toText(value));
        }
    }
    return values;
}

void requireSame(const std::vector<std::string>& own, const std::vector<std::string>& bare, const std::string& text) {
    bench::require(own.size() == bare.size(), "as many values of " + text);
    for (std::size_t i = 0; i < own.size(); ++i) {
        bench::require(own[i] == bare[i], "the same values of " + text + ": " + own[i] + " and " + bare[i]);
    }
}

struct Paths {
    std::filesystem::path pristine;
    std::filesystem::path own;
    std::filesystem::path bare;
};

// Runs every statement once on both sides, compares all values, and records how the bare side fetches.
void checkStatements(const Paths& paths, std::vector<Statement>& statements) {
    bench::copyAccount(paths.pristine, paths.own);
    bench::copyAccount(paths.pristine, paths.bare);
    AdapterSessions own(statements, [&] { return openAdapter(paths.own); });
    BareSessions bare(statements, [&] { return openBare(paths.bare); });
    own.host().BeginTrans();
    bare.host().run("BEGIN", {});
    for (Statement& statement : statements) {
        const std::vector<std::string> ownValues = valuesOf(*own.of(statement).Execute(statement.text));
        std::vector<std::string> bareValues;
        for (auto& [text, plan] : statement.rewritten) {
            plan = text.starts_with("SELECT") ? bare.of(statement).fetchPlan(text) : plan;
            auto values = bare.of(statement).values(text, plan);
            bareValues.insert(bareValues.end(), values.begin(), values.end());
        }
        requireSame(ownValues, bareValues, statement.text);
    }
    own.host().RollbackTrans();
    bare.host().run("ROLLBACK", {});
}

std::size_t rowsOf(Recordset& records) {
    return records.State() == ObjectState::open ? static_cast<std::size_t>(records.RecordCount()) : 0;
}

// The replays of the recorded statements. Each round begins with new files; opening and closing are not measured.
class Replays {
public:
    Replays(const Paths& paths, const std::vector<Statement>& statements) : paths_(paths), statements_(statements) {}

    double own() {
        bench::copyAccount(paths_.pristine, paths_.own);
        AdapterSessions sessions(statements_, [&] { return openAdapter(paths_.own); });
        sessions.host().BeginTrans();
        ownRows = 0;
        const double time = bench::seconds([&] {
            for (const Statement& statement : statements_) {
                ownRows += rowsOf(*sessions.of(statement).Execute(statement.text));
            }
        });
        sessions.host().CommitTrans();
        return time;
    }
    double bare() {
        bench::copyAccount(paths_.pristine, paths_.bare);
        BareSessions sessions(statements_, [&] { return openBare(paths_.bare); });
        sessions.host().run("BEGIN", {});
        bareRows = 0;
        const double time = bench::seconds([&] {
            for (const Statement& statement : statements_) {
                for (const auto& [text, plan] : statement.rewritten) {
                    bareRows += sessions.of(statement).run(text, plan);
                }
            }
        });
        sessions.host().run("COMMIT", {});
        return time;
    }

    std::size_t ownRows = 0;
    std::size_t bareRows = 0;

private:
    const Paths& paths_;
    const std::vector<Statement>& statements_;
};

void measureStatements(const Paths& paths) {
    bench::copyAccount(paths.pristine, paths.own);
    std::vector<Statement> statements = recordedStatements(paths.own);
    checkStatements(paths, statements);
    Replays replays(paths, statements);
    const std::string sums = "select total(md) + total(mc) * 3 + count(*) * 7 from gl_cashtable";
    const auto result = bench::compare(
        turns, [&] { return replays.own(); }, [&] { return replays.bare(); });
    bench::require(replays.ownRows == replays.bareRows && replays.ownRows > 0, "the same rows are fetched");
    bench::require(bench::number(paths.own, sums) == bench::number(paths.bare, sums), "the same rows are stored");
    const double each = 1e6 / static_cast<double>(statements.size());
    std::printf("%zu statements, %zu rows: %.1f us/statement, bare calls %.1f us/statement, ratio %.2f (aim: at most "
                "1.3)\n",
                statements.size(), replays.ownRows, result.own * each, result.floor * each, result.ratio);
}

// A voucher with many lines, each like a line of the sample company.
void makeLongVoucher(const std::filesystem::path& file) {
    std::string statements = "create temp table lines as select * from gl_accvouch where iyear=2024 limit 500;"
                             "update lines set iperiod=1, isignseq=1, ino_id=9000, inid=rowid - 500;";
    for (int lines = 0; lines < longVoucher; lines += 500) {
        statements += "update lines set inid=inid + 500; insert into gl_accvouch select * from lines;";
    }
    bench::runBare(file, statements);
}

/// The first step of a statement's rewriting with its literals put back in place of the parameters.
std::string rewrittenWithLiterals(const std::string& statement) {
    const tsql::Shape shape = tsql::shapeOf(statement);
    const tsql::Step step = tsql::rewrite(statement).steps.front();
    std::string text;
    bool quoted = false;
    for (std::size_t at = 0; at < step.sql.size(); ++at) {
        const char c = step.sql[at];
        quoted = quoted != (c == '"');
        if (quoted || c != '?') {
            text += c;
            continue;
        }
        std::size_t number = 0;
        while (at + 1 < step.sql.size() && tsql::byteClass(step.sql[at + 1]) == tsql::ByteClass::digit) {
            number = number * 10 + static_cast<std::size_t>(step.sql[++at] - '0');
        }
        const tsql::Parameter& parameter = step.parameters.at(number - 1);
        const tsql::Literal& literal = shape.literals.at(static_cast<std::size_t>(parameter.literal));
        text += parameter.negative ? "-" : "";
        const bool prefixed = literal.kind == tsql::Literal::Kind::text && literal.source.front() != '\'';
        text += prefixed ? literal.source.substr(1) : literal.source;
    }
    return text;
}

void measureRows(const Paths& paths, const char* what, const std::string& statement) {
    bench::copyAccount(paths.pristine, paths.own);
    const std::string rewritten = rewrittenWithLiterals(statement);
    const auto connection = openAdapter(paths.own);
    const auto bare = openBare(paths.own);
    const auto plan = bare->fetchPlan(rewritten);
    requireSame(valuesOf(*connection->Execute(statement)), bare->values(rewritten, plan), statement);

    std::size_t rows = 0;
    std::size_t values = 0;
    const auto fetch = [&] { rows = rowsOf(*connection->Execute(statement)); };
    const auto fetchAndRead = [&] {
        const auto records = connection->Execute(statement);
        for (; !records->atEnd(); records->MoveNext()) {
            const FieldList& fields = records->Fields();
            for (int i = 0; i < fields.Count(); ++i) {
                values += fields.Item(i).isNull() ? 0 : 1;
            }
        }
    };
    const auto ask = [&] { bench::require(bare->run(rewritten, plan) == rows, "as many rows"); };
    const auto bind = [&] { bench::require(bare->runBound(rewritten, plan) == rows, "as many rows"); };
    const auto beside = [](const std::function<void()>& own, const std::function<void()>& floor) {
        return bench::compare(
            turns, [&] { return bench::seconds(own); }, [&] { return bench::seconds(floor); });
    };
    const auto asked = beside(fetch, ask);
    const auto bound = beside(fetch, bind);
    const auto read = beside(fetchAndRead, ask);
    bench::require(values > rows, "the values are read");
    const double each = 1e6 / static_cast<double>(rows);
    std::printf(
        "%s, %zu rows of %zu columns: %.2f us/row, bare calls %.2f us/row with SQLGetData, ratio %.2f (aim: at "
        "most 1.3), %.2f us/row with SQLBindCol, ratio %.2f; each value then read through the recordset: %.2f us/row, "
        "ratio %.2f to SQLGetData\n",
        what, rows, plan.size(), asked.own * each, asked.floor * each, asked.ratio, bound.floor * each, bound.ratio,
        read.own * each, read.ratio);
}

} // namespace

int main(int argc, char** argv) {
    turns = argc > 1 ? std::atoi(argv[1]) : turns;
    const bench::ScratchFolder folder;
    const Paths paths{folder.file("pristine.db"), folder.file("own.db"), folder.file("bare.db")};
    host::makeAccount(paths.pristine, host::tableFilesOfSample(), {}, host::Language::english, [] { return false; });
    measureStatements(paths);
    makeLongVoucher(paths.pristine);
    measureRows(paths, "a voucher as the library reads it",
                "select code.iYear,iPeriod,iSignSeq,csign,iNo_id,inid,md,mc,code.ccode,md_f,mc_f,nd_s,nc_s,cdept_id,"
                "cperson_id,ccus_id,csup_id,citem_class,citem_id,cDefine1,cDefine2,cDefine3,cDefine4,cDefine5,cDefine6,"
                "cDefine7,cDefine8,cDefine9,cDefine10,cDefine11,cDefine12,cDefine13,cDefine14,cDefine15,cDefine16,"
                "bCashItem from gl_accvouch as TempVoucher inner join code on TempVoucher.iyear=code.iyear and "
                "code.iyear=2024 and TempVoucher.ccode=code.ccode where TempVoucher.iperiod=1 and "
                "TempVoucher.isignseq=1 and TempVoucher.ino_id=9000");
    measureRows(
        paths, "a list of lines",
        "select iperiod,isignseq,ino_id,inid,dbill_date,cdigest,ccode,md,mc from gl_accvouch where ino_id=9000");
    return 0;
}
