#pragma once

#include "core/Shell.h"

namespace zu {

/// The windows of a program that has none.
class NoWindows final : public Shell {
  public:
    ScreenFacts Screen() override { return {}; }
    void Open(WindowId /*window*/) override {}
    void Close(WindowId /*window*/) override {}
    void Redraw(WindowId /*window*/) override {}
    void UpdateBars() override {}
    void UpdateMenus() override {}
    bool RunAddressDialog() override { return false; }
    void RunModelDialog() override {}
    void SetBusy(bool /*busy*/) override {}
};

}  // namespace zu
