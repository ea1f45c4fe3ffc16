// Overlapping read-modify-write of one key from threads, sharing a handle or
// not; from processes, the reliability tests.
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "Platform/store/UserDefaults.hpp"
#include "tests/Platform/store/StoreTestSupport.hpp"

namespace qrv::platform {
namespace {

using Value = PropertyListValue;

// Appends one item tagged "<writer>:<n>" to the array under key.
void append(UserDefaults& store, const std::string& key, const std::string& tag) {
    store.update(key, [&](std::optional<Value> current) -> std::optional<Value> {
        Value::Array items;
        if (current && current->arrayValue() != nullptr) {
            items = std::move(*current->arrayValue());
        }
        items.emplace_back(Value::Data(tag.begin(), tag.end()));
        return Value(std::move(items));
    });
}

std::set<std::string> tagsUnder(const UserDefaults& store, const std::string& key) {
    std::set<std::string> tags;
    const auto value = store.object(key);
    if (value && value->arrayValue() != nullptr) {
        for (const auto& item : *value->arrayValue()) {
            if (const auto* bytes = item.dataValue()) {
                tags.emplace(bytes->begin(), bytes->end());
            }
        }
    }
    return tags;
}

TEST(StoreConcurrency, ThreadsSharingOrNotSharingAHandleLoseNothing) {
    test::ScratchDirectory scratch(test::memoryBackedTemporaryDirectory());
    auto shared = UserDefaults::openSuite("group.com.qrv.widgets", scratch.path());
    ASSERT_TRUE(shared);
    constexpr int kPerThread = 50;
    std::vector<std::thread> threads;
    for (int writer = 0; writer < 4; ++writer) {
        threads.emplace_back([&, writer] {
            // Half use the shared object, half open their own, as separate readers would.
            auto own = writer % 2 == 0 ? shared : UserDefaults::openSuite("group.com.qrv.widgets", scratch.path());
            for (int n = 0; n < kPerThread; ++n) {
                append(*own, "widget_events", std::to_string(writer) + ":" + std::to_string(n));
                (void)own->data("widget_events");
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(tagsUnder(*shared, "widget_events").size(), 4u * kPerThread);
}

}  // namespace
}  // namespace qrv::platform
