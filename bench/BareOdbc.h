#pragma once

#include "adapters/odbc/ResultReader.h"

#include <cstddef>
#include <string>
#include <vector>

namespace z7::cashflow::bench {

/// A session of bare ODBC calls: the floor for an adapter. A call that fails ends the program.
class BareOdbc {
public:
    /// Takes the string that the driver manager gets.
    explicit BareOdbc(const std::string& connectionString);
    BareOdbc(const BareOdbc&) = delete;
    BareOdbc& operator=(const BareOdbc&) = delete;
    ~BareOdbc();

    /// How the columns of a statement's result are fetched: in the same way as by the adapter.
    [[nodiscard]] std::vector<odbc::FetchAs> fetchPlan(const std::string& text);
    /// Runs a statement and fetches each value of its result; returns the number of rows. With an empty plan
    /// nothing is fetched.
    std::size_t run(const std::string& text, const std::vector<odbc::FetchAs>& plan);
    /// The same with variables bound to the columns once for the whole result. Texts are truncated at 4,095
    /// bytes.
    std::size_t runBound(const std::string& text, const std::vector<odbc::FetchAs>& plan);
    /// The same, returning every value as text, null as "null".
    std::vector<std::string> values(const std::string& text, const std::vector<odbc::FetchAs>& plan);

private:
    void execute(const std::string& text);
    [[nodiscard]] bool fetch();
    void require(bool succeeded, const std::string& what) const;
    /// Fetches the value of a column of the current row; a text is stored in text_.
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
