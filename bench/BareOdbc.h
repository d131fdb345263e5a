#pragma once

#include "adapters/odbc/ResultReader.h"

#include <cstddef>
#include <string>
#include <vector>

namespace z7::cashflow::bench {

/// A session made of bare ODBC calls: the floor of what an adapter costs. A call that fails ends the program.
class BareOdbc {
public:
    /// Takes what the driver manager gets.
    explicit BareOdbc(const std::string& connectionString);
    BareOdbc(const BareOdbc&) = delete;
    BareOdbc& operator=(const BareOdbc&) = delete;
    ~BareOdbc();

    /// How the columns of a text's result are fetched: as the adapter fetches them.
    [[nodiscard]] std::vector<odbc::FetchAs> fetchPlan(const std::string& text);
    /// Runs a text and fetches each value of its result; gives the number of rows. An empty plan fetches nothing.
    std::size_t run(const std::string& text, const std::vector<odbc::FetchAs>& plan);
    /// The same with variables that are bound to the columns once for the whole result. Texts are cut at 4,095 bytes.
    std::size_t runBound(const std::string& text, const std::vector<odbc::FetchAs>& plan);
    /// The same, and every value as text, null as "null".
    std::vector<std::string> values(const std::string& text, const std::vector<odbc::FetchAs>& plan);

private:
    void execute(const std::string& text);
    [[nodiscard]] bool fetch();
    void require(bool succeeded, const std::string& what) const;
    /// The value of the current row's column; text_ holds it if it is one.
    long readLength(int position, odbc::FetchAs fetchAs);

    struct Bound {
        long length = 0;
        long long whole = 0;
        double real = 0.0;
        std::string text = std::string(4096, '\0');
    };

    void* environment_ = nullptr;
    void* connection_ = nullptr;
    void* statement_ = nullptr;
    long long whole_ = 0;
    double real_ = 0.0;
    std::string text_ = std::string(4096, '\0');
    std::vector<Bound> bound_;
};

} // namespace z7::cashflow::bench
