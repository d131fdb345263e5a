#pragma once

#include <memory>
#include <string>

namespace z7::cashflow::odbc {

/// When a line is cut: as a request reaches the door, so that the server never sees it, or once the server has done
/// what it says, so that only the answer is lost.
enum class Cut { beforeRequest, beforeAnswer };

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
    /// Cuts every line at the n-th request from now on, counted from 1 over all lines. A request is what a client says
    /// before the server's next word, such as one statement or one step of a login. Later lines pass.
    void cutAt(int request, Cut moment);
    /// Whether that has happened. Ends the counting.
    bool stopCounting();

private:
    class Worker;
    std::unique_ptr<Worker> worker_;
};

} // namespace z7::cashflow::odbc
