#pragma once

#include <gtest/gtest.h>

#include "Fakes.h"
#include "Script.h"
#include "hw/BackEnds.h"
#include "reference/Capture.h"
#include "support/ScriptedHost.h"
#include "trigger/CompiledTrigWords.h"

namespace zu::test {

inline constexpr int kReferenceAddress = 0x230;

/// An instrument for both writings of a sequence: answers a read by what was written before, memory by a
/// running number.
class EchoInstrument : public RegisterOps {
  public:
    std::function<std::uint8_t(std::uint16_t port, EchoInstrument& self)> Answer;
    std::map<std::uint16_t, std::uint8_t> Latch;
    std::function<std::uint8_t(unsigned index)> Memory;  ///< bytes of block reads, counted on from the start
    unsigned Reads = 0;

    void RegWrite(std::uint16_t, std::uint16_t port, std::uint8_t value) override { Latch[port] = value; }
    std::uint8_t RegRead(std::uint16_t, std::uint16_t port) override {
        ++Reads;
        return Answer ? Answer(port, *this) : static_cast<std::uint8_t>(Reads * 7);
    }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t count, std::uint8_t* buffer) override {
        for (std::int32_t i = 0; i < count; ++i) {
            buffer[i] = Memory ? Memory(stored_) : static_cast<std::uint8_t>(stored_ * 29 >> 3);
            ++stored_;
        }
    }

  private:
    unsigned stored_ = 0;
};

/// The program on one instrument, the reference on an equal one, both with the same shadows to start from.
class ReferenceBench {
  public:
    ScriptedHost Host;
    Lines Program;
    FakeUsb Usb;
    TraceUsbDevice TracedUsb{Usb, Program.Log};
    HardwareSession Hardware{Host};
    InstrumentState State;
    EchoInstrument Instrument;
    EchoInstrument Twin;
    TraceOps Traced{Instrument, Program.Log};
    reference::Bank Bank;
    reference::Capture Setup;
    CompiledTrigWords Words;
    reference::UsbPaper Paper;

    ReferenceBench(int type, bool direct, unsigned seed = 1, int address = kReferenceAddress)
        : Bank(type, direct, address, Twin) {
        Hardware.Ops = &Traced;
        Hardware.PodRegsDirect = direct ? 1 : 0;
        Hardware.Slots->Usb.SetTrace(&Program.Log);
        for (int b = 0; b < 4; ++b) {
            SetBoardBase(Hardware.Ports, b, static_cast<std::uint16_t>(address + 0x400 * b));
        }
        State.Identity.HardwareType = static_cast<std::uint8_t>(type);
        State.Identity.Emulated = 0;
        Setup.Pods.assign(20, 0);
        Setup.Lengths.assign(20, 0);
        Setup.Patterns.assign(20, {});
        FillShadows(seed);
    }

    /// Both go over the USB from here on, and what is compared are the packets.
    void UseUsb();
    /// Copies the setup into the state.
    void Apply();
    /// Whole texts and all shadows.
    void Compare();
    /// Sample memory of every pod, four times its length, and the alignments.
    void CompareSamples();

  private:
    void FillShadows(unsigned seed);
    void ApplyBuffers();
    void ApplyTrigger();
};

}  // namespace zu::test
