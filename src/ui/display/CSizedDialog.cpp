#include "ui/display/CSizedDialog.h"

#include <QScreen>

namespace zu {

CSizedDialog::CSizedDialog(WindowRecord& windows, const char* name, QWidget* parent)
    : QDialog(parent), windows_(windows) {
    setObjectName(QString::fromLatin1(name));
    setSizeGripEnabled(true);
}

void CSizedDialog::ChainTabs(std::initializer_list<QWidget*> widgets) {
    QWidget* last = nullptr;
    for (QWidget* widget : widgets) {
        if (last != nullptr) setTabOrder(last, widget);
        last = widget;
    }
}

void CSizedDialog::RestoreSize() {
    const auto found = windows_.DialogSizes.find(objectName().toStdString());
    const bool known = found != windows_.DialogSizes.end();
    const QSize wanted = known ? QSize(found->second.Width, found->second.Height) : sizeHint();
    resize(wanted.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
}

void CSizedDialog::setVisible(bool visible) {
    if (visible && !restored_) {
        restored_ = true;
        RestoreSize();
    }
    QDialog::setVisible(visible);
}

void CSizedDialog::done(int result) {
    windows_.DialogSizes[objectName().toStdString()] = {width(), height()};
    QDialog::done(result);
}

}  // namespace zu
