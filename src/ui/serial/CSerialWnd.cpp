#include "ui/serial/CSerialWnd.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPushButton>

#include "ui/CZuView.h"
#include "ui/QtText.h"
#include "ui/serial/CSerialList.h"

namespace zu {
namespace {

/// F3 and Shift+F3 search what this window lists, as they search the samples elsewhere.
std::optional<SearchWay> SearchKey(const QKeyEvent& event) {
    if (event.key() != Qt::Key_F3) return std::nullopt;
    if (event.modifiers() == Qt::NoModifier) return SearchWay::Next;
    return event.modifiers() == Qt::ShiftModifier ? std::optional(SearchWay::Prev) : std::nullopt;
}

}  // namespace

CSerialWnd::CSerialWnd(CZuView& controller) : CSerialWnd(controller, new CSerialList(controller)) {}

CSerialWnd::CSerialWnd(CZuView& controller, CSerialList* list) : CTrafficWnd(controller, *list), list_(list) {
    AddTool(*MakeKinds());
    QPushButton* next = MakeButton("&Next", "Next", "Go to the next such event (F3)");
    QPushButton* prev = MakeButton("Pr&ev", "Prev", "Go back to such an event (Shift+F3)");
    QPushButton* filter = MakeButton("F&ilter", "Filter", "Choose the events that are listed");
    connect(next, &QPushButton::clicked, this, [this] { list_->View().Search(SearchWay::Next); });
    connect(prev, &QPushButton::clicked, this, [this] { list_->View().Search(SearchWay::Prev); });
    connect(filter, &QPushButton::clicked, this, [this, filter] { OpenFilter(*filter); });
    groups_ =
        MakeButton("&Group setup...", "GroupSetup", "No group is an I2C or Microwire bus yet: make one");
    connect(groups_, &QPushButton::clicked, this, [this] { Controller().Execute(CommandId::GroupSetup); });
    OfferGroups();
}

QComboBox* CSerialWnd::MakeKinds() {
    auto* kinds = new QComboBox(this);
    kinds->setObjectName(QStringLiteral("SearchKind"));
    kinds->setToolTip(QStringLiteral("What Next and Prev look for"));
    kinds->setAccessibleName(kinds->toolTip());
    for (const SerialSearchKind& kind : kSerialSearchKinds) kinds->addItem(FromState(kind.Text));
    kinds->setCurrentIndex(Controller().State().Serial.SearchKind);
    connect(kinds, &QComboBox::currentIndexChanged, this,
            [this](int kind) { Controller().State().Serial.SearchKind = static_cast<std::int8_t>(kind); });
    return kinds;
}

QPushButton* CSerialWnd::MakeButton(const char* text, const char* name, const char* hint) {
    auto* button = new QPushButton(QString::fromLatin1(text), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(hint));
    AddTool(*button);
    return button;
}

void CSerialWnd::OpenFilter(const QPushButton& button) {
    const QPoint below = button.mapToGlobal(QPoint(0, button.height()));
    const QPoint at = list_->viewport()->mapFromGlobal(below);
    list_->View().OpenFilter(at.x(), at.y());
}

/// Without a bus the list stays empty; then the way to one is among the tools.
void CSerialWnd::OfferGroups() {
    groups_->setVisible(Controller().State().Serial.SerialMode == 0);
}

void CSerialWnd::Redraw() {
    OfferGroups();
    list_->View().ShowTransfers(Controller().State().Serial.TransfersShown != 0);
    list_->Redraw();
}

bool CSerialWnd::event(QEvent* event) {
    // Ahead of the commands that have these keys.
    if (event->type() == QEvent::ShortcutOverride && SearchKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return CTrafficWnd::event(event);
}

void CSerialWnd::keyPressEvent(QKeyEvent* event) {
    if (const auto way = SearchKey(*event)) {
        list_->View().Search(*way);
        return;
    }
    CTrafficWnd::keyPressEvent(event);
}

}  // namespace zu
