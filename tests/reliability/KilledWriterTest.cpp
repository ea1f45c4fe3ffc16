// A writer killed at a random point of its work (SIGKILL, no chance to tidy
// up) never leaves a store file that does not parse, and only the write in
// flight can be missing afterwards.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <random>
#include <string>
#include <vector>

#include "Platform/store/PropertyList.hpp"
#include "Platform/store/UserDefaults.hpp"
#include "Widget/Cache/InteractiveWaterData.hpp"
#include "Widget/Cache/InteractiveWidgetDataCacheWriter.hpp"
#include "tests/reliability/ReliabilitySupport.hpp"

using namespace qrv;
using namespace qrv::reliability;

namespace {

constexpr const char* kKey = "WaterInteractiveData";

widget::InteractiveWidgetDataCacheWriter makeWriter(const fs::path& file) {
    return widget::InteractiveWidgetDataCacheWriter(
        {{widget::InteractiveWidgetDataType::water,
          std::make_shared<widget::InteractiveWaterDataWriteStrategy>(kKey)}},
        platform::UserDefaults::atPath(file));
}

// The taps in the file, read straight from its bytes: a file that does not
// parse fails the test instead of being set aside as the store would.
std::vector<int> tapsInFile(const fs::path& file) {
    const std::string bytes = readFile(file);
    if (bytes.empty()) return {};
    std::optional<widget::InteractiveWaterDataList> records;
    try {
        const auto root = platform::PropertyList::decode(
            std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
        const auto* dictionary = root.dictionaryValue();
        if (!dictionary) throw platform::PropertyListError("it holds " + std::string(root.typeName()));
        const auto found = dictionary->find(kKey);
        if (found == dictionary->end()) return {};
        if (const auto* data = found->second.dataValue()) records = widget::decodeInteractiveWaterDataList(*data);
    } catch (const platform::PropertyListError& error) {
        ADD_FAILURE() << "store file does not parse: " << error.what();
        return {};
    }
    if (!records) ADD_FAILURE() << "the tap list does not decode";
    std::vector<int> taps;
    for (const auto& record : records.value_or(widget::InteractiveWaterDataList{}))
        taps.push_back(static_cast<int>(record.waterValue));
    return taps;
}

// Writes taps first, first+1, ... for ever, one byte on `acks` after each one is stored.
[[noreturn]] void writeForever(const fs::path& file, int first, int acks) {
    auto writer = makeWriter(file);
    for (int tap = first;; ++tap) {
        const auto result = writer.write(
            widget::InteractiveWaterData(platform::Date{7.5e8 + tap}, static_cast<float>(tap),
                                         widget::WaterWidgetUnit::ml),
            widget::InteractiveWidgetDataType::water);
        if (result != widget::InteractiveWriteResult::stored) ::_exit(3);
        const char byte = 1;
        if (::write(acks, &byte, 1) != 1) ::_exit(4);
    }
}

TEST(KilledWriter, HundredKillsLoseOnlyTheWriteInFlight) {
    constexpr int kKills = 100;
    Scratch scratch;
    const auto file = storeFile(scratch / "container");
    {
        // A list of some size, so that a write takes long enough to be caught in the middle.
        auto writer = makeWriter(file);
        widget::InteractiveWaterDataList seed;
        for (int tap = 0; tap < 400; ++tap)
            seed.emplace_back(platform::Date{7.5e8 + tap}, static_cast<float>(tap), widget::WaterWidgetUnit::ml);
        platform::UserDefaults::atPath(file)->set(kKey, widget::encodeInteractiveWaterDataList(seed));
    }
    std::mt19937 random(20240309);
    int stored = static_cast<int>(tapsInFile(file).size());
    ASSERT_EQ(stored, 400);
    int killedMidWrite = 0;
    using Clock = std::chrono::steady_clock;
    Clock::duration tapTime = std::chrono::milliseconds(2);  // until measured

    for (int round = 0; round < kKills; ++round) {
        int acks[2];
        ASSERT_EQ(::pipe(acks), 0);
        std::fflush(nullptr);
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(acks[0]);
            writeForever(file, stored, acks[1]);
        }
        ::close(acks[1]);
        // Let it store 1 to 3 taps, then kill it at a random moment of the next
        // one: anywhere from just after the last acknowledgement to a little
        // past the time a tap has been taking. The clock only picks the moment;
        // nothing waits on it for the outcome.
        const int wanted = 1 + static_cast<int>(random() % 3);
        int acknowledged = 0;
        char byte;
        auto last = Clock::now();
        while (acknowledged < wanted) {
            const ssize_t count = ::read(acks[0], &byte, 1);
            if (count < 0 && errno == EINTR) continue;
            ASSERT_EQ(count, 1) << "the writer stopped on its own in round " << round;
            if (++acknowledged > 1) tapTime = Clock::now() - last;
            last = Clock::now();
        }
        const auto killAt = last + std::chrono::duration_cast<Clock::duration>(
                                       tapTime * std::uniform_real_distribution<double>(0.0, 1.2)(random));
        while (Clock::now() < killAt) {
        }
        ::kill(child, SIGKILL);
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer ended by itself in round " << round;
        // Taps stored but not yet acknowledged when the kill came.
        while (::read(acks[0], &byte, 1) == 1) ++acknowledged;
        ::close(acks[0]);

        const auto taps = tapsInFile(file);
        ASSERT_FALSE(HasFailure()) << "round " << round;
        const int now = static_cast<int>(taps.size());
        ASSERT_GE(now, stored + acknowledged) << "a stored tap was lost in round " << round;
        ASSERT_LE(now, stored + acknowledged + 1) << "round " << round;
        if (now == stored + acknowledged + 1) ++killedMidWrite;  // stored, but killed before it could say so
        for (int index = 0; index < now; ++index) ASSERT_EQ(taps[static_cast<std::size_t>(index)], index);
        stored = now;
    }
    RecordProperty("taps_stored", stored);
    RecordProperty("killed_between_store_and_ack", killedMidWrite);
    // A writer killed between creating its temporary file and renaming it
    // leaves that file behind; it is never read, only counted here.
    int leftovers = 0;
    for (const auto& entry : fs::directory_iterator(file.parent_path()))
        if (entry.path().filename().string().starts_with(file.filename().string() + ".") &&
            entry.path().extension() != ".lock")
            ++leftovers;
    RecordProperty("temporary_files_left_by_killed_writers", leftovers);

    // The store opens and takes writes as usual afterwards.
    auto writer = makeWriter(file);
    EXPECT_EQ(writer.write(widget::InteractiveWaterData(platform::Date{7.6e8}, static_cast<float>(stored),
                                                        widget::WaterWidgetUnit::ml),
                           widget::InteractiveWidgetDataType::water),
              widget::InteractiveWriteResult::stored);
    EXPECT_EQ(tapsInFile(file).size(), static_cast<std::size_t>(stored + 1));
}

}  // namespace
