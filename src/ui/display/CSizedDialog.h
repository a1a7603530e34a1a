#pragma once

#include <initializer_list>

#include <QDialog>

#include "state/ViewRecords.h"

namespace zu {

/// A dialog that comes back in the size that the user gave it, and never larger than the screen.
class CSizedDialog : public QDialog {
    Q_OBJECT

  public:
    void setVisible(bool visible) override;
    void done(int result) override;

  protected:
    /// `name` is the key under which the size is kept.
    CSizedDialog(WindowRecord& windows, const char* name, QWidget* parent);
    /// The Tab key goes through these in this order.
    static void ChainTabs(std::initializer_list<QWidget*> widgets);

  private:
    void RestoreSize();

    WindowRecord& windows_;
    bool restored_ = false;
};

}  // namespace zu
