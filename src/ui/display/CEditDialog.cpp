#include "ui/display/CEditDialog.h"

#include "core/Capture.h"
#include "serial/SpiDecoder.h"

namespace zu {

void FinishEdit(App& app, const EditResult& result) {
    if (result.DecodeSpi) DecodeSPI(app.State);
    if (result.DecodeSerial) DecodeSerialGroup(app.State);
    if (result.MustRefresh() || result.DecodeSpi || result.DecodeSerial) {
        RefreshAll(app);
        RedrawIfOpen(app, WindowId::Pattern);
    }
    if (result.HasMessage()) app.Host.Message(result.Text, result.Title);
}

CEditDialog::CEditDialog(App& app, ColorChooser& colors, const char* name, QWidget* parent)
    : CSizedDialog(app.State.Windows, name, parent), app_(app), colors_(colors) {}

void CEditDialog::Finish(const EditResult& result) {
    Reload();
    FinishEdit(app_, result);
}

}  // namespace zu
