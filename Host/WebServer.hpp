#pragma once
// The live host's HTTP side: the page, its script and style, the state as
// JSON (once, or pushed as server-sent events whenever it changes), each
// widget's picture, and the three things a viewer may ask for (run a button's
// intent, move the clock, reload every widget). Nothing else is served; no
// route takes a file name, and nothing is read from disk.
//
// Requests from other sites are refused: a POST must come without an Origin
// or from the page's own, and while the server listens on loopback the Host
// header must name a loopback address, so a web page elsewhere cannot reach
// the host through its visitor's browser.
#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include "Host/HostEngine.hpp"
#include "Host/WebServerRequests.hpp"

namespace httplib {
class Server;
}

namespace qrv::host {

class WebServerError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct WebServerOptions {
    std::string bind = "127.0.0.1";
    int port = 8700;  // 0 picks a free one
    StateOptions state;
};

class WebServer {
  public:
    // `engine` must outlive the server.
    WebServer(HostEngine& engine, WebServerOptions options);
    ~WebServer();
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    // Binds the socket and starts answering on a thread of its own; answers the
    // port. Throws WebServerError when the address cannot be bound.
    int start();
    // Stops answering and waits for the thread.
    void stop();

    int port() const { return port_; }
    std::string url() const;

  private:
    void routes();

    HostEngine& engine_;
    WebServerOptions options_;
    std::unique_ptr<httplib::Server> server_;
    std::thread thread_;
    int port_ = 0;
    std::atomic<bool> stopping_{false};
    std::atomic<int> openStreams_{0};
};

// Whether `address` is a loopback address or "localhost".
bool isLoopback(std::string_view address);

}  // namespace qrv::host
