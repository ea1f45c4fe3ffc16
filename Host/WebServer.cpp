#include "Host/WebServer.hpp"

#include <httplib.h>

#include <chrono>
#include <future>
#include <memory>
#include <optional>

#include "Host/Options.hpp"
#include "Host/WebPage.hpp"
#include "Platform/coding/JSONWriter.hpp"
#include "Platform/drawing/WidgetRenderingMode.hpp"

namespace qrv::host {

namespace {

constexpr std::size_t kMaxBody = 16 * 1024;
constexpr auto kIntentWait = std::chrono::seconds(10);
constexpr double kPictureScale = 2;
// An event stream holds one of the server's threads for as long as it is open;
// past this many the page is told to poll instead.
constexpr int kMaxEventStreams = 4;
// How long a stream waits for a change before it looks whether the server is
// stopping (so stop() never waits on an open stream for longer than this).
constexpr auto kEventSlice = std::chrono::milliseconds(100);
// A comment line this often, so that a stream whose reader has gone is noticed.
constexpr auto kKeepAlive = std::chrono::seconds(15);

void sendError(httplib::Response& response, int status, const std::string& message) {
    response.status = status;
    response.set_content("{\"error\":" + jsonString(message) + "}", "application/json; charset=utf-8");
}

// "localhost:8700" → "localhost", "[::1]:8700" → "::1".
std::string hostName(std::string_view host) {
    if (!host.empty() && host.front() == '[') {
        const auto close = host.find(']');
        return std::string(host.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
    }
    return std::string(host.substr(0, host.find(':')));
}

std::optional<platform::ColorScheme> schemeNamed(const std::string& name) {
    if (name == "light") return platform::ColorScheme::light;
    if (name == "dark") return platform::ColorScheme::dark;
    return std::nullopt;
}

// Parameters in the address would slip past the body's checks.
bool hasQuery(const httplib::Request& request) { return request.target.find('?') != std::string::npos; }

}  // namespace

bool isLoopback(std::string_view address) {
    return address == "localhost" || address == "::1" || address.starts_with("127.");
}

WebServer::WebServer(HostEngine& engine, WebServerOptions options)
    : engine_(engine), options_(std::move(options)), server_(std::make_unique<httplib::Server>()) {
    routes();
}

WebServer::~WebServer() { stop(); }

std::string WebServer::url() const {
    const std::string host = options_.bind == "0.0.0.0" || options_.bind == "::" ? "127.0.0.1" : options_.bind;
    const bool v6 = host.find(':') != std::string::npos;
    return "http://" + (v6 ? "[" + host + "]" : host) + ":" + std::to_string(port_) + "/";
}

int WebServer::start() {
    if (options_.port == 0)
        port_ = server_->bind_to_any_port(options_.bind);
    else
        port_ = server_->bind_to_port(options_.bind, options_.port) ? options_.port : -1;
    if (port_ <= 0)
        throw WebServerError("cannot listen on " + options_.bind + " port " + std::to_string(options_.port) +
                             " (in use, or not an address of this machine)");
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    return port_;
}

void WebServer::stop() {
    if (!thread_.joinable()) return;
    stopping_ = true;  // open event streams end within one slice
    server_->stop();
    thread_.join();
}

void WebServer::routes() {
    auto& server = *server_;
    server.set_payload_max_length(kMaxBody);
    server.set_default_headers({{"X-Content-Type-Options", "nosniff"},
                                {"Cache-Control", "no-store"},
                                {"Referrer-Policy", "no-referrer"},
                                {"X-Frame-Options", "DENY"}});

    const bool loopbackOnly = isLoopback(options_.bind);
    server.set_pre_routing_handler([loopbackOnly](const httplib::Request& request, httplib::Response& response) {
        const auto host = request.get_header_value("Host");
        // A name that resolves to loopback only by a trick of DNS must not
        // reach the host through a browser.
        if (loopbackOnly && !isLoopback(hostName(host))) {
            sendError(response, 403, "this host answers only to a loopback address");
            return httplib::Server::HandlerResponse::Handled;
        }
        if (request.method == "POST" && request.has_header("Origin") &&
            request.get_header_value("Origin") != "http://" + host) {
            sendError(response, 403, "requests from other sites are refused");
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Unhandled;
    });
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (!response.body.empty()) return;
        if (response.status == 404)
            sendError(response, 404, "no such page");
        else if (response.status == 413)
            sendError(response, 413, "the request body is too large");
        else
            sendError(response, response.status, "the request cannot be answered");
    });

    server.Get("/", [](const httplib::Request&, httplib::Response& response) {
        response.set_header("Content-Security-Policy",
                            "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; "
                            "connect-src 'self'; frame-ancestors 'none'; base-uri 'none'; form-action 'none'");
        response.set_content(std::string(webPageHTML()), "text/html; charset=utf-8");
    });
    server.Get("/app.js", [](const httplib::Request&, httplib::Response& response) {
        response.set_content(std::string(webPageScript()), "text/javascript; charset=utf-8");
    });
    server.Get("/app.css", [](const httplib::Request&, httplib::Response& response) {
        response.set_content(std::string(webPageStyle()), "text/css; charset=utf-8");
    });
    server.Get("/api/state", [this](const httplib::Request&, httplib::Response& response) {
        response.set_content(stateJSON(engine_.snapshot(), engine_, options_.state),
                             "application/json; charset=utf-8");
    });
    // The state again, as server-sent events: one "data:" line with the whole
    // state at once and after every change, so the page follows a tap or a store
    // change within a frame or two instead of at its next poll.
    server.Get("/api/events", [this](const httplib::Request&, httplib::Response& response) {
        if (++openStreams_ > kMaxEventStreams) {
            --openStreams_;
            return sendError(response, 503, "too many open event streams; poll /api/state instead");
        }
        struct Stream {
            std::optional<std::uint64_t> sent;
            std::chrono::steady_clock::time_point lastWrite = std::chrono::steady_clock::now();
        };
        auto stream = std::make_shared<Stream>();
        response.set_chunked_content_provider(
            "text/event-stream",
            [this, stream](std::size_t, httplib::DataSink& sink) {
                if (stopping_) return false;
                const auto version =
                    stream->sent ? engine_.waitForChange(*stream->sent, kEventSlice) : engine_.version();
                if (stopping_) return false;
                const auto now = std::chrono::steady_clock::now();
                std::string event;
                if (version != stream->sent) {
                    const auto snapshot = engine_.snapshot();
                    stream->sent = snapshot.version;
                    event = "data: " + stateJSON(snapshot, engine_, options_.state) + "\n\n";
                } else if (now - stream->lastWrite >= kKeepAlive) {
                    event = ": still here\n\n";
                }
                if (event.empty()) return true;
                stream->lastWrite = now;
                return sink.write(event.data(), event.size());
            },
            [this](bool) { --openStreams_; });
    });
    server.Get(R"(/api/widgets/([a-z]+-[A-Za-z]+)/(light|dark)\.(png|svg))",
               [this](const httplib::Request& request, httplib::Response& response) {
                   const std::string id = request.matches[1];
                   const auto scheme = *schemeNamed(request.matches[2]);
                   if (request.matches[3] == "png") {
                       // ?appearance=tinted&tint=#rrggbb: the picture where the page shows it.
                       auto appearance = Appearance::homeScreen;
                       auto tint = platform::RenderingModeStyle::defaultWidgetTint();
                       if (request.has_param("appearance")) {
                           const auto named = appearanceNamed(request.get_param_value("appearance"));
                           if (!named)
                               return sendError(response, 400,
                                                "unknown appearance " + request.get_param_value("appearance"));
                           appearance = *named;
                       }
                       if (request.has_param("tint")) {
                           const auto color = platform::parseHexColor(request.get_param_value("tint"));
                           if (!color) return sendError(response, 400, "the tint is not a colour (#RRGGBB)");
                           tint = *color;
                       }
                       auto png = engine_.png(id, scheme, kPictureScale, appearance, tint);
                       if (!png) return sendError(response, 404, png.error());
                       const auto& bytes = png.value();
                       response.set_content(std::string(bytes.begin(), bytes.end()), "image/png");
                   } else {
                       auto svg = engine_.svg(id, scheme);
                       if (!svg) return sendError(response, 404, svg.error());
                       response.set_content(svg.value(), "image/svg+xml");
                   }
               });
    server.Post(R"(/api/widgets/([a-z]+-[A-Za-z]+)/intents/([A-Za-z][A-Za-z0-9]*))",
                [this](const httplib::Request& request, httplib::Response& response) {
                    if (hasQuery(request))
                        return sendError(response, 400, "the parameters go in the body, not in the address");
                    auto fields = parseFields(request.get_header_value("Content-Type"), request.body);
                    if (auto* bad = std::get_if<BadRequest>(&fields)) return sendError(response, 400, bad->message);
                    auto invocation = intentRequest(request.matches[2], std::get<Fields>(fields));
                    if (auto* bad = std::get_if<BadRequest>(&invocation))
                        return sendError(response, 400, bad->message);

                    auto outcome = std::make_shared<std::promise<IntentOutcome>>();
                    auto future = outcome->get_future();
                    engine_.runIntent(request.matches[1], std::get<IntentRequest>(std::move(invocation)),
                                      [outcome](IntentOutcome result) { outcome->set_value(std::move(result)); });
                    if (future.wait_for(kIntentWait) != std::future_status::ready)
                        return sendError(response, 503, "the host did not get to the intent in time");
                    const auto result = future.get();
                    switch (result.status) {
                        case IntentOutcome::Status::ran:
                            response.set_content("{\"ran\":true}", "application/json; charset=utf-8");
                            return;
                        case IntentOutcome::Status::unknownWidget:
                            return sendError(response, 404, result.message);
                        case IntentOutcome::Status::noSuchButton:
                        case IntentOutcome::Status::unknownIntent:
                            return sendError(response, 400, result.message);
                    }
                });
    server.Post("/api/clock", [this](const httplib::Request& request, httplib::Response& response) {
        if (hasQuery(request))
            return sendError(response, 400, "the clock setting goes in the body, not in the address");
        auto fields = parseFields(request.get_header_value("Content-Type"), request.body);
        if (auto* bad = std::get_if<BadRequest>(&fields)) return sendError(response, 400, bad->message);
        auto setting = clockSetting(std::get<Fields>(fields), engine_.calendar());
        if (auto* bad = std::get_if<BadRequest>(&setting)) return sendError(response, 400, bad->message);
        const auto& clock = std::get<ClockSetting>(setting);
        engine_.setClock(clock.date, clock.running);
        response.set_content("{\"clock\":" + jsonString(modeName(engine_.clock()->mode())) + "}",
                             "application/json; charset=utf-8");
    });
    server.Post("/api/reload", [this](const httplib::Request& request, httplib::Response& response) {
        if (hasQuery(request) || !request.body.empty())
            return sendError(response, 400, "reloading takes no parameters");
        engine_.reloadAll();
        response.set_content("{\"reloading\":true}", "application/json; charset=utf-8");
    });
}

}  // namespace qrv::host
