#pragma once
// Watches the shared store's file for writes by other processes (the app, or
// a developer's script) and says so, from a thread of its own. The store
// replaces its file by rename, so the watch is on the directory and picks the
// events that name the file.
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <thread>

namespace qrv::host {

class StoreWatchError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class StoreWatcher {
  public:
    // Creates the file's directory when missing. `changed` runs on the
    // watcher's thread, once per burst of events read together. Throws
    // StoreWatchError when the directory cannot be watched.
    StoreWatcher(std::filesystem::path file, std::function<void()> changed);
    // Stops the thread and waits for it.
    ~StoreWatcher();
    StoreWatcher(const StoreWatcher&) = delete;
    StoreWatcher& operator=(const StoreWatcher&) = delete;

    const std::filesystem::path& file() const { return file_; }

  private:
    void run();

    std::filesystem::path file_;
    std::function<void()> changed_;
    int inotify_ = -1;
    int stop_ = -1;  // an eventfd that ends the thread's wait
    std::thread thread_;
};

}  // namespace qrv::host
