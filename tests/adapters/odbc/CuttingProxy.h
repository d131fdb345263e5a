#pragma once

#include <memory>
#include <string>

namespace z7::cashflow::odbc {

/// When a connection is cut: when a request reaches the proxy, so that the server never sees it, or after the
/// server has executed it, so that only the answer is lost.
enum class Cut { beforeRequest, beforeAnswer };

/// A proxy on loopback that passes everything on to a server, until it cuts the connections.
class CuttingProxy {
public:
    CuttingProxy(const std::string& host, int port);
    CuttingProxy(const CuttingProxy&) = delete;
    CuttingProxy& operator=(const CuttingProxy&) = delete;
    ~CuttingProxy();

    /// The port on 127.0.0.1.
    [[nodiscard]] int port() const;
    /// Cuts every open connection. Later ones are not affected.
    void cut();
    /// Cuts every connection at the n-th request from now, counted from 1 over all connections. A request is
    /// what a client sends before the server answers, such as a statement or a step of a login. Later
    /// connections are not affected.
    void cutAt(int request, Cut moment);
    /// Whether that has happened. Ends the counting.
    bool stopCounting();

private:
    class Worker;
    std::unique_ptr<Worker> worker_;
};

} // namespace z7::cashflow::odbc
