#include "ReferenceBench.h"

#include <algorithm>

namespace zu::test {

void ReferenceBench::FillShadows(unsigned seed) {
    unsigned noise = seed * 2654435761U + 12345U;
    for (int row = 1; row <= 11; ++row) {
        for (int column = 0; column < 4; ++column) {
            noise = noise * 1664525U + 1013904223U;
            const auto byte = static_cast<std::uint8_t>(noise >> 24);
            Bank.S(row, column) = byte;
            Hardware.Shadows.At(row, column) = byte;
        }
    }
}

void ReferenceBench::UseUsb() {
    unsigned reads = 0;  // the status has bit 4 in the first two reads and not in the others
    Usb.Answer = [&reads](std::uint8_t) -> std::uint8_t { return reads++ < 2 ? 0x3F : 0x2F; };
    Hardware.Seams.Usb = &TracedUsb;
    SetupOSFunctions(Hardware, 0);
    SetupIO(Hardware, State, 0, 9);
    Usb.Answer = {};
    EXPECT_TRUE(UsbInForce(Hardware));
    Paper.CommandWithIndex(0x8C, 0x10, {4});
    Paper.Text.clear();
    Program.Take();
    Bank.Usb = &Paper;
    Setup.IsUsb = true;
}

void ReferenceBench::Apply() {
    State.Identity.Emulated = Setup.Emulated ? 1 : 0;
    State.Clock.ClockType = static_cast<std::uint8_t>(Setup.ClockType);
    State.Clock.ClockRate = static_cast<std::uint8_t>(Setup.ClockRate);
    State.Clock.ClockEdge = static_cast<std::uint8_t>(Setup.ClockEdge);
    for (std::size_t i = 0; i < Setup.ClockExt.size(); ++i) State.Clock.ClockExt[i] = Setup.ClockExt[i];
    State.Memory.HardwareMode = static_cast<std::int8_t>(Setup.HardwareMode);
    State.Pattern.PatternOutputMode = static_cast<std::int8_t>(Setup.OutputMode);
    State.Shape.WordsPerTrig = Setup.Boards;
    State.Shape.BufStep = Setup.BufStep;
    Setup.PodCount = 5 * Setup.Boards;
    State.Shape.PodCount = static_cast<std::int8_t>(Setup.PodCount);
    Hardware.FirstRun = Setup.FirstRun ? 1 : 0;
    Host.Answers.assign(1, Setup.UserGoesOn);
    State.Identity.ComMode = Setup.IsUsb ? 9 : 8;
    State.Pattern.PatDirty = Setup.PatDirty ? 1 : 0;
    State.Pods.ReprogramFlag = static_cast<std::uint8_t>(Setup.Reprogram);
    for (std::size_t p = 0; p < 20; ++p) State.Pods.HardwarePod[p] = static_cast<std::int8_t>(Setup.Pods[p]);
    for (std::size_t i = 0; i < 12; ++i) {
        State.Pods.ThrHd[i] = static_cast<std::uint16_t>(Setup.Thresholds[i]);
        State.Pods.PatGenV[i] = static_cast<std::uint16_t>(Setup.Voltages[i]);
    }
    ApplyBuffers();
    ApplyTrigger();
}

void ReferenceBench::ApplyBuffers() {
    const int longest = *std::max_element(Setup.Lengths.begin(), Setup.Lengths.end());
    State.Buffer.BufLen.fill(longest);
    State.Buffer.Allocate();
    const std::size_t room = 4 * static_cast<std::size_t>(longest) + 8;
    Setup.Samples.assign(20, std::vector<std::uint8_t>(room, 0xEE));
    for (std::size_t p = 0; p < 20; ++p) {
        State.Buffer.BufLen[p] = Setup.Lengths[p];
        std::fill_n(State.Buffer.Pod[p], 4 * longest, std::uint8_t{0xEE});
        std::copy(Setup.Patterns[p].begin(), Setup.Patterns[p].end(), State.Buffer.PatPod[p]);
    }
    for (std::size_t c = 0; c < 160; ++c) State.Channels.ChannelInvert[c] = Setup.Inverted[c] ? 1 : 0;
}

void ReferenceBench::ApplyTrigger() {
    for (std::size_t k = 0; k < 16; ++k) {
        State.Trigger.SeqList[k] = Setup.Levels[k];
        for (std::size_t b = 0; b < 4; ++b) {
            CompiledTrigWords::Entry& entry = Words.Word[k][b];
            entry.fill('\0');
            const std::string& text = Setup.Words[k][b];
            std::copy(text.begin(), text.end(), entry.begin());
        }
    }
    State.Trigger.TrigMatchMode[0] = Setup.AnyBit ? 0 : 1;
    State.Trigger.EdgeList16[0] = static_cast<std::uint8_t>(Setup.Edge);
    State.Trigger.TrigCnt = static_cast<std::uint8_t>(Setup.Count);
    State.Trigger.TrigCntMd = static_cast<std::int8_t>(Setup.CountMode);
    State.Cursors.Cur[kCursorT] = Setup.Position;
}

void ReferenceBench::Compare() {
    std::string& wanted = Bank.Usb != nullptr ? Bank.Usb->Text : Bank.Text;
    EXPECT_EQ(Difference(wanted, Program.Take()), "");
    wanted.clear();
    for (int row = 1; row <= 11; ++row) {
        for (int column = 0; column < 4; ++column) {
            EXPECT_EQ(Bank.S(row, column), Hardware.Shadows.At(row, column))
                << "S" << row << " of board " << column;
        }
    }
}

void ReferenceBench::CompareSamples() {
    const auto longest =
        static_cast<std::size_t>(*std::max_element(Setup.Lengths.begin(), Setup.Lengths.end()));
    for (std::size_t p = 0; p < 20; ++p) {
        const std::uint8_t* pod = State.Buffer.Pod[p];
        const std::vector<std::uint8_t> stored(pod, pod + 4 * longest);
        const std::vector<std::uint8_t> wanted(
            Setup.Samples[p].begin(), Setup.Samples[p].begin() + static_cast<std::ptrdiff_t>(4 * longest));
        EXPECT_EQ(stored == wanted, true) << "samples of pod " << p;
        EXPECT_EQ(State.Pods.AdjAddr[p], Setup.Adjusted[p]) << "alignment of pod " << p;
    }
}

}  // namespace zu::test
