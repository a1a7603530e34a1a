#include "ui/display/RowDelegate.h"

#include <QPainter>

namespace zu {
namespace {

constexpr int kAir = 4;  // pixels between two rows

}  // namespace

void RowDelegate::SetGutter(std::function<QString(int)> text, int characters) {
    gutter_ = std::move(text);
    characters_ = characters;
}

int RowDelegate::GutterWidth(const QStyleOptionViewItem& option) const {
    if (!gutter_) return 0;
    return (characters_ + 1) * option.fontMetrics.horizontalAdvance(u'0');
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QSize plain = QStyledItemDelegate::sizeHint(option, index);
    return {plain.width() + GutterWidth(option), option.fontMetrics.height() + kAir};
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    const int gutter = GutterWidth(option);
    row.rect.setLeft(row.rect.left() + gutter);
    QStyledItemDelegate::paint(painter, row, index);
    if (gutter == 0) return;
    const QRect place(option.rect.left(), option.rect.top(),
                      gutter - option.fontMetrics.horizontalAdvance(u'0') / 2, option.rect.height());
    painter->setPen(option.palette.color(QPalette::PlaceholderText));
    painter->setFont(option.font);
    painter->drawText(place, Qt::AlignRight | Qt::AlignVCenter, gutter_(index.row()));
}

}  // namespace zu
