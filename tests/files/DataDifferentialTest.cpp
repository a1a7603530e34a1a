// Random data files, whole and damaged, against the plainest reader.
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "LoadSupport.h"
#include "SlowRecordReader.h"
#include "support/MemoryFile.h"
#include "support/TempFolder.h"

namespace zu {
namespace {

constexpr int kLength = 40;

/// Writes files that look like data files from afar.
class RandomFile {
  public:
    explicit RandomFile(unsigned seed) : random_(seed) {}

    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    std::string Make() {
        std::string file;
        const int parts = Below(12);
        for (int i = 0; i < parts; ++i) file += Part();
        if (Below(3) == 0) Damage(file);
        return file;
    }

  private:
    std::string One(std::initializer_list<const char*> choices) {
        return *(choices.begin() + Below(static_cast<int>(choices.size())));
    }

    std::string Part() {
        switch (Below(10)) {
            case 0:
                return "[" +
                       One({"File", "Comment x", "Comment", "Cömment", "Settings", "Model", "data", ""}) +
                       One({"]", " ", ""});
            case 1:
                return "\r\n[Model " + One({"Dace_32", "Dace_128", "None", "x", ""}) + " " + Number() + " " +
                       Number() + "]";
            case 2:
                return "\r\n[Comment " + std::string(static_cast<std::size_t>(Below(100)), 'c') + "]";
            case 3:
                return Bytes(Below(30));
            default:
                return Record();
        }
    }

    std::string Number() {
        return One({"0", "1", "-1", "2", "40", "41", "2147483647", "-2147483648", "99999999999999999999", "x",
                    "+3", ""});
    }

    std::string Record() {
        const int first = Below(kLength + 2);
        const int count = Below(kLength + 2 - std::min(first, kLength));
        const std::string kind = One({"D", "D", "D", "PG", "PG", "IO", "d"});
        const std::string index = kind == "IO" ? "" : std::to_string(Below(Below(8) == 0 ? 22 : 3));
        std::string range = std::to_string(first) + " " + std::to_string(count);
        if (Below(12) == 0) range = Number() + " " + Number();
        return One({"\r\n", "\r\n", "", "\n"}) + "[" + One({"Data", "DATA", "data", "Data"}) +
               One({" ", " ", " ", "  ", ""}) + kind + index + " " + range +
               One({"]", "]", "]", "]", " ]", ""}) + One({"\r\n", "\n", "\r\r\n", "\r", "x"}) +
               Bytes(Below(10) == 0 ? Below(50) : count);
    }

    std::string Bytes(int count) {
        constexpr std::string_view kLikely("[]\r\n Data0\0", 12);
        std::string bytes;
        for (int i = 0; i < count; ++i) {
            bytes +=
                Below(4) == 0 ? kLikely[static_cast<std::size_t>(Below(12))] : static_cast<char>(Below(256));
        }
        return bytes;
    }

    void Damage(std::string& file) {
        if (file.empty()) return;
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(file.size())));
        if (Below(2) == 0) {
            file.resize(at);
        } else {
            file[at] = static_cast<char>(Below(256));
        }
    }

    std::mt19937 random_;
};

std::string Text(const std::uint8_t* bytes) {
    return {reinterpret_cast<const char*>(bytes), kLength};
}

/// The file that was compared.
std::string Compare(unsigned seed, InstrumentState& state, std::map<std::string, int>& seen) {
    RandomFile random(seed);
    test::ScriptedHost host;
    test::Loader loader{state, host};
    test::SlowRecordReader slow;
    slow.HardwareType = state.Identity.HardwareType;
    slow.Emulated = state.Identity.Emulated = static_cast<std::uint8_t>(random.Below(2));
    slow.FileVersion = state.Files.FileVersion = 189 + random.Below(3);
    slow.Buffers = 3;
    slow.DirectionLength = kLength;
    slow.Direction = std::string(kLength - 8, 'i');
    state.Pattern.DirectionBuffer.assign(kLength - 8, 'i');
    for (std::size_t pod = 0; pod < 3; ++pod) {
        slow.PodModes[pod] = random.Below(5);
        state.Pods.HardwarePod[pod] = static_cast<std::int8_t>(slow.PodModes[pod]);
        slow.Samples[pod] = std::string(kLength, 's');
        slow.Patterns[pod] = std::string(kLength, 'p');
        std::fill_n(state.Buffer.Pod[pod], 2 * kLength, std::uint8_t{'s'});
        std::fill_n(state.Buffer.PatPod[pod], 2 * kLength, std::uint8_t{'p'});
    }
    const std::string file = random.Make();
    slow.Run(file);
    DataFileHooks hooks = loader.Hooks();
    hooks.ApplyMemoryMode = [&loader](int mux, int mode) { loader.Modes.emplace_back(mux, mode); };
    EXPECT_EQ(ReadDataFile(state, host, test::MemoryFile(file).Path(), "ZU", false, hooks),
              LoadStatus::Loaded);
    EXPECT_EQ(host.Boxes, slow.Boxes);
    for (const auto& box : host.Boxes) ++seen[box.Caption];
    EXPECT_EQ(loader.Modes, slow.Modes);
    EXPECT_EQ(state.Identity.Emulated, slow.Emulated);
    for (std::size_t pod = 0; pod < 3; ++pod) {
        EXPECT_EQ(Text(state.Buffer.Pod[pod]), slow.Samples[pod]);
        EXPECT_EQ(Text(state.Buffer.PatPod[pod]), slow.Patterns[pod]);
        EXPECT_EQ(state.Buffer.Pod[pod][kLength], 's') << "nothing behind the buffer";
        EXPECT_EQ(state.Buffer.PatPod[pod][kLength], 'p');
    }
    const auto& direction = state.Pattern.DirectionBuffer;
    EXPECT_EQ(std::string(direction.begin(), direction.end()), slow.Direction);
    return file;
}

TEST(DataFiles, OfAnyKindAreReadAsThePlainReaderReadsThem) {
    auto state = test::StartState(16, 1);
    test::SetLengths(*state, kLength);
    std::map<std::string, int> seen;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        const std::string file = Compare(seed, *state, seen);
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << testing::PrintToString(file);
    }
    for (const char* caption :
         {"File Load Error(1)", "File Load Error(2)", "File Load Error(3)", "File Load Error(4)",
          "File Load Error(10)", "Software running in Demo mode"}) {
        EXPECT_GT(seen[caption], 50) << caption;
    }
}

/// A save of random contents comes back as it was, whatever the lengths.
TEST(DataFiles, ComeBackAsTheyWereSaved) {
    const test::TempFolder folder;
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    for (const std::int32_t length : {1, 40, 32767, 32768, 32769, 70000}) {
        auto saved = test::StartState(17, 1);
        auto loaded = test::StartState(17, 1);
        test::SetLengths(*saved, length);
        for (std::size_t pod = 0; pod < 3; ++pod) {
            for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
                saved->Buffer.Pod[pod][i] = static_cast<std::uint8_t>(byte(random));
                saved->Buffer.PatPod[pod][i] = static_cast<std::uint8_t>(byte(random));
            }
        }
        saved->Pods.HardwarePod[1] = 2;
        test::ScriptedHost host;
        ASSERT_TRUE(WriteDataFile(*saved, host, folder.File("x.zu")));
        test::SetLengths(*loaded, length);
        ReadSettings(*loaded, host, folder.File("x.zu"));
        ReadDataFile(*loaded, host, folder.File("x.zu"), "ZU", false, {});
        EXPECT_TRUE(host.Boxes.empty());
        for (const int pod : {0, 1, 2}) {
            EXPECT_TRUE(std::ranges::equal(saved->Buffer.Pattern(pod), loaded->Buffer.Pattern(pod)));
            const auto samples = loaded->Buffer.Samples(pod);
            EXPECT_EQ(std::ranges::equal(saved->Buffer.Samples(pod), samples), pod != 1);
        }
        ASSERT_TRUE(WriteDataFile(*loaded, host, folder.File("y.zu")));
        ReadSettings(*loaded, host, folder.File("y.zu"));
        ASSERT_TRUE(WriteDataFile(*loaded, host, folder.File("z.zu")));
        EXPECT_TRUE(test::ReadBytes(folder.File("y.zu")) == test::ReadBytes(folder.File("z.zu"))) << length;
    }
}

}  // namespace
}  // namespace zu
