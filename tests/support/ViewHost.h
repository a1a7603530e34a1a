#pragma once

#include <deque>
#include <string>
#include <vector>

#include "display/TimingView.h"

namespace zu::test {

/// A window that writes down what the view's logic asks of it.
class ViewHost final : public TimingViewHost {
  public:
    int Invalidations = 0;
    int Refreshes = 0;
    int Followers = 0;
    int Beeps = 0;
    std::vector<PointerShape> Shapes;
    std::vector<bool> Captures;
    std::vector<MenuSpec> Menus;
    std::vector<DialogRequest> Dialogs;
    int Choice = 0;  ///< answer to Popup
    std::optional<Rgb> Color;

    void Invalidate() override { ++Invalidations; }
    void RefreshAll() override { ++Refreshes; }
    void RedrawFollowers() override { ++Followers; }
    void SetPointer(PointerShape shape) override { Shapes.push_back(shape); }
    void CaptureMouse(bool capture) override { Captures.push_back(capture); }
    int Popup(const MenuSpec& menu, std::int32_t, std::int32_t) override {
        Menus.push_back(menu);
        return Choice;
    }
    void OpenDialog(const DialogRequest& request) override { Dialogs.push_back(request); }
    std::optional<Rgb> ChooseColor(Rgb) override { return Color; }
    void Beep() override { ++Beeps; }
    /// Redraws of any kind since the last call.
    int TakeRedraws() {
        const int all = Invalidations + Refreshes + Followers;
        Invalidations = Refreshes = Followers = 0;
        return all;
    }
};

}  // namespace zu::test
