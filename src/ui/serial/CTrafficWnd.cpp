#include "ui/serial/CTrafficWnd.h"

#include <QFocusEvent>
#include <QHBoxLayout>

#include "ui/serial/CTrafficList.h"

namespace zu {

CTrafficWnd::CTrafficWnd(CZuView& controller, CTrafficList& list)
    : controller_(controller), content_(list), tools_(new QHBoxLayout) {
    constexpr int kGap = 4;
    setWindowTitle(list.windowTitle());
    connect(&list, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
    tools_->setContentsMargins(kGap, kGap, kGap, kGap);
    tools_->setSpacing(kGap);
    tools_->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(tools_);
    layout->addWidget(&list, 1);
}

void CTrafficWnd::AddTool(QWidget& tool) {
    tools_->insertWidget(tools_->count() - 1, &tool);
    setTabOrder(&tool, &content_);
}

void CTrafficWnd::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    // A focus proxy would hold the Tab key at the list.
    content_.setFocus(event->reason());
}

}  // namespace zu
