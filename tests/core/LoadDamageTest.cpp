// Damaged files through the whole load: what comes back is bounded, what no file covers stays.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string_view>
#include <unistd.h>

#include "core/Defaults.h"
#include "core/FileCommands.h"
#include "core/RateRules.h"
#include "files/SettingsWriter.h"
#include "state/Catalogue.h"
#include "support/Bench.h"
#include "support/MemoryFile.h"

namespace zu {
namespace {

using test::Bench;
using test::MemoryFile;

constexpr int kDaceRow = 16;  // 24 channels in three pods of 2048 samples
constexpr std::size_t kPods = 3;
constexpr std::size_t kSamples = 2048;

std::unique_ptr<Bench> Running(int row) {
    auto bench = std::make_unique<Bench>();
    bench->State->Command.ModelRow = row;
    InitDefaults(bench->App);
    SetMemoryMode(bench->App, -1, 0);
    bench->Forget();
    return bench;
}

/// A data file of the small model; every sample and pattern byte tells its pod.
std::string WholeFile() {
    const auto bench = Running(kDaceRow);
    for (std::size_t pod = 0; pod < kPods; ++pod) {
        std::fill_n(bench->State->Buffer.Pod[pod], kSamples, static_cast<std::uint8_t>('A' + pod));
        std::fill_n(bench->State->Buffer.PatPod[pod], kSamples, static_cast<std::uint8_t>('a' + pod));
    }
    SaveFile(bench->App, bench->Folder.File("x.zu"), "ZU");
    return bench->Folder.Read("x.zu");
}

/// The capture that is there before a load.
void Mark(InstrumentState& state) {
    for (std::size_t pod = 0; pod < kPods; ++pod) {
        std::fill_n(state.Buffer.Pod[pod], kSamples, std::uint8_t{'.'});
        std::fill_n(state.Buffer.PatPod[pod], kSamples, std::uint8_t{'-'});
    }
}

/// How many bytes of the payload behind a header stand in the first `size` bytes of a file.
std::size_t Arrived(const std::string& file, const std::string& target, std::size_t size) {
    const std::string header = "\r\n[Data " + target + " 0 2048]\r\n";
    const std::size_t at = file.find(header);
    EXPECT_NE(at, std::string::npos) << target;
    const std::size_t begin = at + header.size();
    return size <= begin ? 0 : std::min(size - begin, kSamples);
}

/// Whether a buffer holds `count` bytes of the file and then what it held before.
bool Holds(const std::uint8_t* buffer, char loaded, char before, std::size_t count) {
    const std::string_view all(reinterpret_cast<const char*>(buffer), kSamples);
    return all.substr(0, count).find_first_not_of(loaded) == std::string_view::npos &&
           all.substr(count).find_first_not_of(before) == std::string_view::npos;
}

/// Loads the first `size` bytes; a sentence on what is wrong with the result.
std::string LoadCut(Bench& bench, const MemoryFile& file, const std::string& whole, std::size_t size) {
    if (::truncate(file.Path().c_str(), static_cast<off_t>(size)) != 0) return "the file cannot be cut";
    Mark(*bench.State);
    bench.Forget();
    if (LoadFile(bench.App, "ZU", file.Path(), true) != LoadStatus::Loaded) return "it is not loaded";
    for (std::size_t pod = 0; pod < kPods; ++pod) {
        const std::string number = std::to_string(pod);
        const auto shift = static_cast<char>(pod);
        if (!Holds(bench.State->Buffer.Pod[pod], static_cast<char>('A' + shift), '.',
                   Arrived(whole, "D" + number, size))) {
            return "samples of pod " + number;
        }
        if (!Holds(bench.State->Buffer.PatPod[pod], static_cast<char>('a' + shift), '-',
                   Arrived(whole, "PG" + number, size))) {
            return "pattern of pod " + number;
        }
    }
    return {};
}

TEST(LoadOfATruncatedFile, TakesWhatIsThereAndKeepsTheRestOfTheCapture) {
    const std::string whole = WholeFile();
    const auto bench = Running(kDaceRow);
    const MemoryFile file(whole);
    const std::size_t records = whole.find("\r\n[Data ");
    for (std::size_t size = whole.size();; --size) {
        // Inside a payload one byte is as good as the other.
        const bool quiet = size > records + 100 && size % 97 != 0 && whole[size - 1] == whole[size - 2];
        if (!quiet) {
            ASSERT_EQ(LoadCut(*bench, file, whole, size), "") << size << " bytes";
        }
        if (size == 0) break;
    }
}

TEST(LoadOfATruncatedFile, IsMendedByTheWholeOne) {
    const std::string whole = WholeFile();
    const MemoryFile good(whole);
    const auto fresh = Running(kDaceRow);
    LoadFile(fresh->App, "ZU", good.Path(), true);
    const std::string expected = SettingsText(*fresh->State, fresh->Host);
    for (std::size_t size = 0; size < whole.size(); size += 499) {
        const auto bench = Running(kDaceRow);
        const MemoryFile cut(std::string_view(whole).substr(0, size));
        LoadFile(bench->App, "ZU", cut.Path(), true);
        LoadFile(bench->App, "ZU", good.Path(), true);
        EXPECT_EQ(SettingsText(*bench->State, bench->Host), expected) << size;
    }
}

/// What must be true of a state whatever was loaded into it.
std::string OutOfBounds(const InstrumentState& state) {
    for (int pod = 0; pod < kMaxPods; ++pod) {
        const std::int32_t length = GetBufLenFull(state.Buffer.BufLen, pod);
        if (length < 0) return "a length below 0";
        if (static_cast<std::size_t>(length) > state.Buffer.Room(pod)) return "a length beyond its memory";
    }
    const TimingRecord& timing = state.Timing;
    if (timing.TimingLines < 0 || timing.TimingLines > kMaxLines) return "lines";
    if (state.Serial.SerialMode < 0 || state.Serial.SerialMode > 2) return "serial mode";
    if (state.Clock.ClockType == 4) return "clock type";
    for (const GroupRecord& group : state.Groups) {
        if (group.Size < 0 || group.Size > kGroupSlots) return "group size";
    }
    return {};
}

class Damage {
  public:
    explicit Damage(unsigned seed) : random_(seed) {}

    std::string Of(std::string bytes) {
        const int count = static_cast<int>(1 + Below(6));
        for (int i = 0; i < count && !bytes.empty(); ++i) Once(bytes);
        return bytes;
    }

  private:
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    void Once(std::string& bytes) {
        constexpr std::string_view kNumbers[] = {"-1",  "-2147483648", "2147483647", "99999999999999999999",
                                                 "0",   "255",         "-",          "",
                                                 "231", "4294967295"};
        const std::size_t at = Below(bytes.size());
        switch (Below(5)) {
            case 0:
                bytes[at] = static_cast<char>(Below(256));
                break;
            case 1:
                bytes.erase(at, Below(40));
                break;
            case 2:
                bytes.insert(at, bytes.substr(Below(bytes.size()), Below(200)));
                break;
            case 3:
                bytes.resize(at);
                break;
            default:
                const std::size_t digit = bytes.find_first_of("0123456789", at);
                if (digit == std::string::npos) break;
                const std::size_t end = bytes.find_first_not_of("0123456789", digit);
                bytes.replace(digit, std::min(end, bytes.size()) - digit, kNumbers[Below(10)]);
        }
    }

    std::mt19937 random_;
};

class LoadOfADamagedFile : public testing::TestWithParam<int> {};

TEST_P(LoadOfADamagedFile, StaysInItsBounds) {
    const auto bench = Running(GetParam());
    SaveFile(bench->App, bench->Folder.File("x.ini"), "INI");
    std::string whole =
        bench->Folder.Read("x.ini") + "\r\n[Model " + std::string(Model(GetParam()).FileLabel) + " 0 0]";
    for (const char* target : {"D0", "PG0", "IO", "D1"}) {
        whole += std::string("\r\n[Data ") + target + " 0 40]\r\n" + std::string(40, 'x');
    }
    whole += "\r\n[Settings]\r\n";
    for (unsigned seed = 0; seed < 60; ++seed) {
        const MemoryFile file(Damage(seed).Of(whole));
        bench->Forget();
        const LoadStatus status = LoadFile(bench->App, "ZU", file.Path(), true);
        ASSERT_EQ(status, LoadStatus::Loaded) << "seed " << seed;
        ASSERT_EQ(OutOfBounds(*bench->State), "") << "seed " << seed;
        // What came in goes out again.
        ASSERT_FALSE(SettingsText(*bench->State, bench->Host).empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, LoadOfADamagedFile,
                         testing::Values(0, 5, 13, 15, 16, 18, 19, 20, 24, 25, 26, 27),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace zu
