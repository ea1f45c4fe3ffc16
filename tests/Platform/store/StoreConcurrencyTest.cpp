// Overlapping read-modify-write of one key, from processes and from threads.
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

TEST(StoreConcurrency, TwoProcessesAppendingLoseNothing) {
    test::ScratchDirectory scratch(test::memoryBackedTemporaryDirectory());
    auto store = UserDefaults::openSuite("group.com.qrv.widgets", scratch.path());
    ASSERT_TRUE(store);
    store->set("unrelated", Value("kept"));
    constexpr int kPerWriter = 500;

    std::vector<pid_t> children;
    // Both children start appending at once, released by closing the pipe.
    int gate[2];
    ASSERT_EQ(::pipe(gate), 0);
    for (int writer = 0; writer < 2; ++writer) {
        std::fflush(nullptr);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::close(gate[1]);
            char byte = 0;
            (void)::read(gate[0], &byte, 1);
            int code = 0;
            try {
                auto own = UserDefaults::openSuite("group.com.qrv.widgets", scratch.path());
                for (int n = 0; n < kPerWriter; ++n) {
                    append(*own, "WaterInteractiveData", std::to_string(writer) + ":" + std::to_string(n));
                }
            } catch (...) {
                code = 3;
            }
            ::_exit(code);
        }
        children.push_back(child);
    }
    ::close(gate[0]);
    ::close(gate[1]);
    for (pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }

    const auto value = store->object("WaterInteractiveData");
    ASSERT_TRUE(value && value->arrayValue());
    EXPECT_EQ(value->arrayValue()->size(), 2u * kPerWriter);
    EXPECT_EQ(tagsUnder(*store, "WaterInteractiveData").size(), 2u * kPerWriter);
    EXPECT_EQ(store->object("unrelated"), Value("kept"));
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
