#include "core/HardwareAddress.h"

#include "core/Capture.h"
#include "core/RateRules.h"
#include "hw/AddressSearch.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kSeriesDace = 1;
constexpr std::int32_t kIsa = 8;
constexpr std::int32_t kUsb = 9;
constexpr std::int32_t kParallel16 = 16;
constexpr std::int32_t kDaceParallel = 128;

/// What the dialog's tries overwrite.
struct Connection {
    explicit Connection(const IdentityRecord& identity)
        : ComMode(identity.ComMode),
          AddressIndex(identity.AddressIndex),
          HwPort(identity.HwPort),
          HardwareType(identity.HardwareType),
          Emulated(identity.Emulated) {}
    void PutBack(IdentityRecord& identity) const {
        identity.ComMode = ComMode;
        identity.AddressIndex = AddressIndex;
        identity.HwPort = HwPort;
        identity.HardwareType = HardwareType;
        identity.Emulated = Emulated;
    }

    std::int32_t ComMode;
    std::uint16_t AddressIndex;
    std::uint16_t HwPort;
    std::uint8_t HardwareType;
    std::uint8_t Emulated;
};

void Select(App& app, std::uint16_t portIndex, std::int32_t comMode) {
    const bool known = comMode >= 0 && comMode <= UINT8_MAX;
    SetupIO(app.Hardware, app.State, portIndex, known ? static_cast<std::uint8_t>(comMode) : std::uint8_t{0});
}

void SelectDaceParallel(App& app) {
    app.State.Identity.HwPort = kParallelPorts[0];
    Select(app, 0, kDaceParallel);
}

/// Without an instrument nothing stays in force: an open bus would read as a finished capture.
void ReleaseUnlessInUse(App& app) {
    if (app.State.Identity.Emulated != 0) ReleaseRegisters(app.Hardware);
}

/// The tries have set the instrument to an idle state and the tables to other addresses, so it is detected
/// anew. One that is gone by now leaves its model as an emulation.
void TakeUpAgain(App& app, const Connection& before) {
    before.PutBack(app.State.Identity);
    if (before.Emulated == 0) {
        SelectConnection(app);
        const int row = FindStoredBoard(app.Hardware, app.State, before.AddressIndex);
        if (row != before.HardwareType) {
            before.PutBack(app.State.Identity);
            app.State.Identity.Emulated = 1;
        }
    }
    ReleaseUnlessInUse(app);
}

/// A change of row rebuilds all that depends on it; with the same row the samples stay.
void FollowChoice(App& app, const Connection& before) {
    InstrumentState& state = app.State;
    IdentityRecord& identity = state.Identity;
    TakeBoardAddress(identity);
    const bool otherRow = identity.HardwareType != before.HardwareType;
    if (otherRow) ChangeModel(state, identity.HardwareType);
    if (otherRow) ComputeGroupWidths(state);
    state.Pattern.PatDirty = 1;
    // A board knows only the depths of its modes, not the one that a row begins with.
    const bool newBoard = identity.Emulated == 0 && (otherRow || before.Emulated != 0);
    if (newBoard) SetMemoryMode(app, -1, state.Memory.HardwareMode);
    ReleaseUnlessInUse(app);
}

}  // namespace

void SelectConnection(App& app) {
    const IdentityRecord& identity = app.State.Identity;
    const std::int32_t mode = identity.ComMode;
    if (identity.ModelSeries == kSeriesDace) SelectDaceParallel(app);  // overwrites the mode
    const bool first = mode == kIsa || mode == kParallel16 || mode == kUsb;
    // An ISA index with a parallel mode wraps to a port that does not exist, which ends the process.
    const auto port = static_cast<std::uint16_t>(identity.AddressIndex - kParallelCandidate);
    Select(app, first ? std::uint16_t{0} : port, mode);
}

void SelectFirstConnection(App& app) {
    if (app.State.Identity.ModelSeries == kSeriesDace) {
        SelectDaceParallel(app);
    } else {
        Select(app, 0, kIsa);
    }
}

void TakeBoardAddress(IdentityRecord& identity) {
    const std::size_t index = identity.AddressIndex;
    if (index < identity.AddressTable.size()) identity.BoardPortAddress = identity.AddressTable[index];
}

void AskForAddress(App& app) {
    const Connection before(app.State.Identity);
    if (!app.Shell.RunAddressDialog()) before.PutBack(app.State.Identity);
    ReleaseUnlessInUse(app);
}

void ChangeHardwareAddress(App& app) {
    const Connection before(app.State.Identity);
    if (app.Shell.RunAddressDialog()) {
        FollowChoice(app, before);
    } else {
        TakeUpAgain(app, before);
    }
    RefreshAll(app);
    app.Shell.UpdateMenus();
    app.Shell.UpdateBars();
    TellRestart(app.Hardware, app.State);
}

}  // namespace zu
