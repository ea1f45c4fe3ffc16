#include "QRVUICatalog/Fonts/DeviceIdiom.hpp"

#include <atomic>

namespace qrv::catalog {
namespace {
std::atomic<DeviceIdiom> idiom{DeviceIdiom::phone};
}

DeviceIdiom currentDeviceIdiom() { return idiom.load(std::memory_order_relaxed); }
void setCurrentDeviceIdiom(DeviceIdiom value) { idiom.store(value, std::memory_order_relaxed); }

}  // namespace qrv::catalog
