#pragma once

#include <functional>

#include <QStyledItemDelegate>

namespace zu {

/// Draws the rows of a list with some air between them and, if wanted, a small text ahead of each.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// What stands ahead of a row, and how many characters it takes at most.
    void SetGutter(std::function<QString(int)> text, int characters);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    [[nodiscard]] int GutterWidth(const QStyleOptionViewItem& option) const;

    std::function<QString(int)> gutter_;
    int characters_ = 0;
};

}  // namespace zu
