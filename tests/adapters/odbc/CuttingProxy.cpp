#include "adapters/odbc/CuttingProxy.h"

#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace z7::cashflow::odbc {
namespace {

class Socket {
public:
    explicit Socket(int handle) : handle_(handle) {}
    Socket(Socket&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    Socket& operator=(Socket&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Socket() {
        if (handle_ >= 0) {
            close(handle_);
        }
    }
    [[nodiscard]] int get() const { return handle_; }

private:
    int handle_;
};

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Passes on what has arrived; false at the end.
bool pass(const Socket& from, const Socket& to) {
    std::array<char, 16384> buffer{};
    const ssize_t count = recv(from.get(), buffer.data(), buffer.size(), 0);
    for (ssize_t sent = 0; sent < count;) {
        const ssize_t now = send(to.get(), buffer.data() + sent, static_cast<std::size_t>(count - sent), MSG_NOSIGNAL);
        if (now <= 0) {
            return false;
        }
        sent += now;
    }
    return count > 0;
}

} // namespace

class CuttingProxy::Worker {
public:
    Worker(std::string host, int port) : host_(std::move(host)), port_(port), door_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address = loopback(0);
        socklen_t size = sizeof(address);
        std::array<int, 2> ends{};
        if (bind(door_.get(), reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(door_.get(), 16) != 0 ||
            getsockname(door_.get(), reinterpret_cast<sockaddr*>(&address), &size) != 0 || pipe(ends.data()) != 0) {
            throw std::runtime_error("no door on loopback");
        }
        ownPort_ = ntohs(address.sin_port);
        wakeRead_ = Socket(ends[0]);
        wakeWrite_ = Socket(ends[1]);
        thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        thread_.request_stop();
        wake();
    }

    [[nodiscard]] int port() const { return ownPort_; }
    void cut() {
        const std::lock_guard lock(mutex_);
        lines_.clear();
        wake();
    }
    void cutAt(int request, Cut moment) {
        const std::lock_guard lock(mutex_);
        requestsToGo_ = request;
        moment_ = moment;
        hasCut_ = false;
    }
    bool stopCounting() {
        const std::lock_guard lock(mutex_);
        requestsToGo_ = 0;
        for (Line& line : lines_) {
            line.answerIsLost = false;
        }
        return hasCut_;
    }

private:
    struct Line {
        Socket client;
        Socket server;
        bool asked = false;        ///< the client has sent last
        bool answerIsLost = false; ///< cut the connections when the server answers
    };

    void wake() { static_cast<void>(!write(wakeWrite_.get(), "x", 1)); }

    void run(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            std::vector<pollfd> waiting{{wakeRead_.get(), POLLIN, 0}, {door_.get(), POLLIN, 0}};
            {
                const std::lock_guard lock(mutex_);
                for (const Line& line : lines_) {
                    waiting.push_back({line.client.get(), POLLIN, 0});
                    waiting.push_back({line.server.get(), POLLIN, 0});
                }
            }
            poll(waiting.data(), waiting.size(), -1);
            if (waiting[0].revents != 0) { // the connections have changed
                char byte = 0;
                static_cast<void>(!read(wakeRead_.get(), &byte, 1));
                continue;
            }
            const std::lock_guard lock(mutex_);
            serve(waiting);
        }
    }

    void serve(const std::vector<pollfd>& waiting) {
        std::vector<Line> standing;
        for (std::size_t i = 0; i < lines_.size() && 2 * i + 3 < waiting.size(); ++i) {
            Line& line = lines_[i];
            if (waiting[2 * i + 2].fd != line.client.get()) {
                return; // cut between the wait and now
            }
            const bool asks = waiting[2 * i + 2].revents != 0;
            const bool answers = waiting[2 * i + 3].revents != 0;
            if ((asks && isLastRequest(line)) || (answers && line.answerIsLost)) {
                hasCut_ = true;
                lines_.clear();
                return;
            }
            const bool there = !asks || pass(line.client, line.server);
            const bool back = !answers || pass(line.server, line.client);
            line.asked = (line.asked || asks) && !answers;
            if (there && back) {
                standing.push_back(std::move(line));
            }
        }
        lines_ = std::move(standing);
        if (waiting[1].revents != 0) {
            accept();
        }
    }

    /// Counts the beginning of what a client sends as a request. True if the connections are to be cut before
    /// it.
    bool isLastRequest(Line& line) {
        if (line.asked || requestsToGo_ == 0 || --requestsToGo_ > 0) {
            return false;
        }
        line.answerIsLost = moment_ == Cut::beforeAnswer;
        return moment_ == Cut::beforeRequest;
    }

    void accept() {
        Socket client(::accept(door_.get(), nullptr, nullptr));
        addrinfo hints{};
        hints.ai_socktype = SOCK_STREAM;
        addrinfo* found = nullptr;
        if (getaddrinfo(host_.c_str(), std::to_string(port_).c_str(), &hints, &found) != 0) {
            return;
        }
        const std::unique_ptr<addrinfo, void (*)(addrinfo*)> addresses(found, freeaddrinfo);
        Socket server(socket(found->ai_family, found->ai_socktype, found->ai_protocol));
        if (connect(server.get(), found->ai_addr, found->ai_addrlen) == 0) {
            lines_.push_back({std::move(client), std::move(server)});
        }
    }

    std::string host_;
    int port_;
    int ownPort_ = 0;
    Socket door_;
    Socket wakeRead_{-1};
    Socket wakeWrite_{-1};
    std::mutex mutex_;
    std::vector<Line> lines_;
    int requestsToGo_ = 0; ///< 0 if requests are not counted
    Cut moment_ = Cut::beforeRequest;
    bool hasCut_ = false;
    std::jthread thread_;
};

CuttingProxy::CuttingProxy(const std::string& host, int port) : worker_(std::make_unique<Worker>(host, port)) {}
CuttingProxy::~CuttingProxy() = default;
int CuttingProxy::port() const { return worker_->port(); }
void CuttingProxy::cut() { worker_->cut(); }
void CuttingProxy::cutAt(int request, Cut moment) { worker_->cutAt(request, moment); }
bool CuttingProxy::stopCounting() { return worker_->stopCounting(); }

} // namespace z7::cashflow::odbc
