#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/Shell.h"
#include "state/InstrumentState.h"

namespace zu::test {

inline const char* NameOf(WindowId window) {
    switch (window) {
        case WindowId::Timing:
            return "Timing";
        case WindowId::StateList:
            return "StateList";
        case WindowId::Serial:
            return "Serial";
        case WindowId::Spi:
            return "Spi";
        case WindowId::Cursor:
            return "Cursor";
        case WindowId::Threshold:
            return "Threshold";
        case WindowId::Pattern:
            return "Pattern";
    }
    return "?";
}

/// Windows that only keep their open flags and write down what is asked of them.
class RecordingShell : public Shell {
  public:
    explicit RecordingShell(InstrumentState& state) : state_(state) {}

    ScreenFacts Facts{1920, 1080, 1040, 1920, 1080};
    std::vector<std::string> Log;  ///< "open Timing", "redraw Cursor", "address dialog" in order
    std::function<void()> OnAddressDialog;
    std::function<void()> OnModelDialog;
    bool AddressChosen = true;  ///< how the address dialog is left
    std::function<void(WindowId)> OnRedraw;

    ScreenFacts Screen() override { return Facts; }
    void Open(WindowId window) override {
        Log.push_back(std::string("open ") + NameOf(window));
        Flag(window) = 1;
    }
    void Close(WindowId window) override {
        Log.push_back(std::string("close ") + NameOf(window));
        Flag(window) = 0;
    }
    void Redraw(WindowId window) override {
        Log.push_back(std::string("redraw ") + NameOf(window));
        if (OnRedraw) OnRedraw(window);
    }
    void UpdateBars() override { Log.emplace_back("bars"); }
    void UpdateMenus() override { Log.emplace_back("menus"); }
    bool RunAddressDialog() override {
        Log.emplace_back("address dialog");
        if (OnAddressDialog) OnAddressDialog();
        return AddressChosen;
    }
    void RunModelDialog() override {
        Log.emplace_back("model dialog");
        if (OnModelDialog) OnModelDialog();
    }
    void SetBusy(bool busy) override { Log.emplace_back(busy ? "busy" : "not busy"); }

    [[nodiscard]] int Count(const std::string& line) const {
        int count = 0;
        for (const std::string& entry : Log) count += entry == line ? 1 : 0;
        return count;
    }

  private:
    std::int32_t& Flag(WindowId window) {
        WindowRecord& windows = state_.Windows;
        switch (window) {
            case WindowId::Timing:
                return windows.TimingStat;
            case WindowId::StateList:
                return windows.StateStat;
            case WindowId::Serial:
                return windows.SerialStat;
            case WindowId::Spi:
                return windows.SpiStat;
            case WindowId::Cursor:
                return windows.CursorDlgStat;
            case WindowId::Threshold:
                return windows.ThresholdStat;
            case WindowId::Pattern:
                break;
        }
        return windows.PatEditStat;
    }

    InstrumentState& state_;
};

}  // namespace zu::test
