#pragma once

#include <memory>
#include <string>

namespace z7::cashflow::odbc {

/// A door on loopback that passes everything on to a server, until it cuts the lines.
class CuttingProxy {
public:
    CuttingProxy(const std::string& host, int port);
    CuttingProxy(const CuttingProxy&) = delete;
    CuttingProxy& operator=(const CuttingProxy&) = delete;
    ~CuttingProxy();

    /// Where it listens on 127.0.0.1.
    [[nodiscard]] int port() const;
    /// Cuts every line that is open now. Later ones pass.
    void cut();

private:
    class Worker;
    std::unique_ptr<Worker> worker_;
};

} // namespace z7::cashflow::odbc
