#pragma once

#include <QPushButton>

#include "core/App.h"
#include "display/EditResult.h"
#include "ui/display/CSizedDialog.h"

namespace zu {

class ColorChooser;

/// What every edit of channels, groups and lines ends with: decoders run, all views are redrawn, the message
/// is shown.
void FinishEdit(App& app, const EditResult& result);

/// What the dialogs of channels, groups and lines share: their edits take effect at once.
class CEditDialog : public CSizedDialog {
    Q_OBJECT

  protected:
    CEditDialog(App& app, ColorChooser& colors, const char* name, QWidget* parent);

    /// Brings every field up to date with the records.
    virtual void Reload() = 0;
    /// Finishes an edit and shows what became of the records.
    void Finish(const EditResult& result);

    template <typename Slot>
    QPushButton* MakeButton(const char* text, const char* name, const char* hint, Slot slot) {
        auto* button = new QPushButton(QString::fromLatin1(text), this);
        button->setObjectName(QString::fromLatin1(name));
        button->setToolTip(QString::fromLatin1(hint));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, slot);
        return button;
    }

    App& app_;
    ColorChooser& colors_;
};

}  // namespace zu
