#include "Host/HostEngineStoreWatcher.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>

namespace qrv::host {

StoreWatcher::StoreWatcher(std::filesystem::path file, std::function<void()> changed)
    : file_(std::move(file)), changed_(std::move(changed)) {
    const auto directory = file_.parent_path();
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) throw StoreWatchError("cannot create " + directory.string() + ": " + error.message());
    inotify_ = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    if (inotify_ < 0) throw StoreWatchError(std::string("cannot watch the store: ") + std::strerror(errno));
    // Written in place, replaced by rename, created or removed.
    if (inotify_add_watch(inotify_, directory.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_DELETE) < 0) {
        const std::string reason = std::strerror(errno);
        close(inotify_);
        throw StoreWatchError("cannot watch " + directory.string() + ": " + reason);
    }
    stop_ = eventfd(0, EFD_CLOEXEC);
    if (stop_ < 0) {
        close(inotify_);
        throw StoreWatchError(std::string("cannot watch the store: ") + std::strerror(errno));
    }
    thread_ = std::thread([this] { run(); });
}

StoreWatcher::~StoreWatcher() {
    const std::uint64_t one = 1;
    if (write(stop_, &one, sizeof one) < 0) {
        // Nothing else would wake the thread; it ends with the process.
    }
    if (thread_.joinable()) thread_.join();
    close(stop_);
    close(inotify_);
}

void StoreWatcher::run() {
    const std::string name = file_.filename().string();
    alignas(inotify_event) char buffer[16 * 1024];
    for (;;) {
        pollfd fds[2] = {{inotify_, POLLIN, 0}, {stop_, POLLIN, 0}};
        if (poll(fds, 2, -1) < 0) {
            if (errno == EINTR) continue;
            return;
        }
        if (fds[1].revents != 0) return;
        bool touched = false;
        for (;;) {
            const auto count = read(inotify_, buffer, sizeof buffer);
            if (count <= 0) break;
            for (std::size_t offset = 0; offset < static_cast<std::size_t>(count);) {
                inotify_event event;
                std::memcpy(&event, buffer + offset, sizeof event);
                const char* eventName = buffer + offset + sizeof(inotify_event);
                if (event.len > 0 && name == eventName) touched = true;
                // A watch that overflowed may have dropped the event that matters.
                if (event.mask & IN_Q_OVERFLOW) touched = true;
                offset += sizeof(inotify_event) + event.len;
            }
        }
        if (touched) changed_();
    }
}

}  // namespace qrv::host
