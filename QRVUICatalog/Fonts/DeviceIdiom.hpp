#pragma once
// The kind of device the widgets are drawn for. The host sets it once at start
// (its --device option); fonts asked to grow on the tablet read it.
namespace qrv::catalog {

enum class DeviceIdiom { phone, pad };

DeviceIdiom currentDeviceIdiom();
void setCurrentDeviceIdiom(DeviceIdiom idiom);

// Sets the idiom for the lifetime of the object, then restores the previous one.
class ScopedDeviceIdiom {
  public:
    explicit ScopedDeviceIdiom(DeviceIdiom idiom) : previous_(currentDeviceIdiom()) {
        setCurrentDeviceIdiom(idiom);
    }
    ~ScopedDeviceIdiom() { setCurrentDeviceIdiom(previous_); }
    ScopedDeviceIdiom(const ScopedDeviceIdiom&) = delete;
    ScopedDeviceIdiom& operator=(const ScopedDeviceIdiom&) = delete;

  private:
    DeviceIdiom previous_;
};

}  // namespace qrv::catalog
