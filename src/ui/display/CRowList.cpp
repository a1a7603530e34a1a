#include "ui/display/CRowList.h"

#include <algorithm>

#include <QScrollBar>

#include "ui/QtText.h"
#include "ui/display/RowDelegate.h"

namespace zu {
namespace {

constexpr int kUsualCharacters = 22;
constexpr int kUsualRows = 20;
constexpr int kLeastCharacters = 17;
constexpr int kLeastRows = 6;

}  // namespace

CRowList::CRowList(const char* name, QWidget* parent)
    : QListWidget(parent), delegate_(new RowDelegate(this)) {
    setObjectName(QString::fromLatin1(name));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true);
    setItemDelegate(delegate_);
}

void CRowList::SetGutter(std::function<QString(int)> text, int characters) {
    delegate_->SetGutter(std::move(text), characters);
    viewport()->update();
}

void CRowList::ShowRows(int count, const std::function<std::string(int)>& text, const Selection& selected) {
    const QSignalBlocker quiet(this);
    while (this->count() > count) delete takeItem(this->count() - 1);
    while (this->count() < count) addItem(QString());
    int first = -1;
    for (int row = 0; row < count; ++row) {
        const bool on = row < kLineSlots && selected[static_cast<std::size_t>(row)];
        item(row)->setText(FromState(text(row)));
        item(row)->setSelected(on);
        if (on && first < 0) first = row;
    }
    if (first < 0) return;
    if (currentItem() == nullptr || !currentItem()->isSelected()) {
        setCurrentRow(first, QItemSelectionModel::NoUpdate);
    }
    scrollToItem(currentItem(), QAbstractItemView::EnsureVisible);
}

Selection CRowList::Selected() const {
    Selection selection{};
    for (int row = 0; row < std::min(count(), kLineSlots); ++row) {
        selection[static_cast<std::size_t>(row)] = item(row)->isSelected();
    }
    return selection;
}

QSize CRowList::sizeHint() const {
    const int frame = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    const int row = count() > 0 ? sizeHintForRow(0) : fontMetrics().lineSpacing();
    return {kUsualCharacters * fontMetrics().averageCharWidth() + frame, kUsualRows * row + 2 * frameWidth()};
}

QSize CRowList::minimumSizeHint() const {
    return {kLeastCharacters * fontMetrics().averageCharWidth(), kLeastRows * fontMetrics().lineSpacing()};
}

}  // namespace zu
