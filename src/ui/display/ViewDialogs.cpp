#include "ui/display/ViewDialogs.h"

#include <algorithm>

#include "display/GroupEdits.h"
#include "ui/CMainFrame.h"
#include "ui/CZuView.h"
#include "ui/display/CChannelDlg.h"
#include "ui/display/CDisplayOptions.h"
#include "ui/display/CGroupDef.h"
#include "ui/display/CInsertGroup.h"
#include "ui/display/CSearchDlg.h"
#include "ui/display/CStateListSetup.h"
#include "ui/display/CTimingSetup.h"
#include "ui/display/CTimingWnd.h"

namespace zu {
namespace {

std::optional<LineHit> PointedLine(CZuView& view) {
    return view.Timing() == nullptr ? std::nullopt : view.Timing()->View().LineForCommand();
}

/// Line in front of which the view inserts: the end of the list without one under the pointer.
std::int32_t InsertLine(CZuView& view) {
    const auto hit = PointedLine(view);
    return hit ? hit->Line : LineCount(view.State());
}

/// Group or channel of the pointed line; 0 where it has none of that kind.
int PointedNumber(CZuView& view, LineKind kind) {
    const auto hit = PointedLine(view);
    return hit && hit->Kind == kind ? std::max(hit->Number, 0) : 0;
}

void EditGroup(CZuView& view, int group) {
    CGroupDef(view.TheApp(), view.Colors(), GroupToEdit(group), &view.Frame()).exec();
}

void EditChannel(CZuView& view, int channel) {
    CChannelDlg(view.TheApp(), view.Colors(), channel, &view.Frame()).exec();
}

void RunOptions(CZuView& view, const DialogRequest& request) {
    if (view.Timing() == nullptr) return;
    TimingView& timing = view.Timing()->View();
    const ZoomPoint point{request.Sample, request.X - timing.Axis().Left};
    CDisplayOptions::View actions;
    actions.Zoom = [&view, &timing, point](int origin, bool in) {
        timing.ZoomFrom(in, origin, point);
        view.UpdateBars();
    };
    actions.ToWindow = [&timing](int cursor) { timing.CursorToWindow(cursor); };
    actions.ToPoint = [&timing, &request](int cursor) { timing.CursorToPoint(cursor, request.Sample); };
    CDisplayOptions(view.State(), std::move(actions), &view.Frame()).exec();
}

}  // namespace

bool RunEditCommand(CZuView& view, CommandId id) {
    switch (id) {
        case CommandId::GroupSetup:
            EditGroup(view, PointedNumber(view, LineKind::Group));
            return true;
        case CommandId::ChannelSetup:
            EditChannel(view, PointedNumber(view, LineKind::Channel));
            return true;
        case CommandId::TimingSetup:
            CTimingSetup(view.TheApp(), view.Colors(), &view.Frame()).exec();
            return true;
        case CommandId::StateListSetup:
            CStateListSetup(view.TheApp(), view.Colors(), &view.Frame()).exec();
            return true;
        case CommandId::Search:
            CSearchDlg(
                view.TheApp(), [&view](bool forward) { view.RunSearch(forward); }, &view.Frame())
                .exec();
            return true;
        case CommandId::SearchForward:
        case CommandId::SearchBackward:
            view.RunSearch(id == CommandId::SearchForward);
            return true;
        case CommandId::InsertGroup:
            RunInsertGroup(view.TheApp(), InsertLine(view), &view.Frame());
            return true;
        case CommandId::InsertSpacer:
            RunInsertSpacer(view.TheApp(), InsertLine(view));
            return true;
        default:
            return false;
    }
}

void RunTimingDialog(CZuView& view, const DialogRequest& request) {
    switch (request.Dialog) {
        case TimingDialog::DisplayOptions:
            return RunOptions(view, request);
        case TimingDialog::GroupSetup:
            return EditGroup(view, request.Number);
        case TimingDialog::ChannelSetup:
            return EditChannel(view, request.Number);
        case TimingDialog::TrigWord:
            return;
    }
}

}  // namespace zu
