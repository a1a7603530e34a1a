#include "ui/display/CStyleList.h"

#include <algorithm>

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

#include "ui/QtText.h"
#include "ui/display/RowDelegate.h"

namespace zu {
namespace {

constexpr int kStyles = static_cast<int>(kLineStyles.size());
constexpr int kExtras = static_cast<int>(kLineModeTexts.size()) - 1;

/// A tick in the list's own text colour, or the room for one.
class TickEngine final : public QIconEngine {
  public:
    TickEngine(const QPalette& palette, bool on) : palette_(palette), on_(on) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        if (!on_) return;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::Text;
        const QRectF box(rect);
        QPainterPath tick(QPointF(box.x() + box.width() * 0.18, box.y() + box.height() * 0.55));
        tick.lineTo(box.x() + box.width() * 0.42, box.y() + box.height() * 0.78);
        tick.lineTo(box.x() + box.width() * 0.84, box.y() + box.height() * 0.26);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(palette_.color(role), box.width() / 8));
        painter->drawPath(tick);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new TickEngine(palette_, on_); }

  private:
    QPalette palette_;
    bool on_;
};

}  // namespace

CStyleList::CStyleList(QWidget* parent) : QListWidget(parent) {
    setObjectName(QStringLiteral("Styles"));
    setUniformItemSizes(true);
    setItemDelegate(new RowDelegate(this));
    const int side = fontMetrics().height();
    setIconSize({side, side});
    for (const LineStyleTraits& style : kLineStyles) addItem(FromState(style.Text));
    for (int extra = 1; extra <= kExtras; ++extra) {
        addItem(FromState(kLineModeTexts[static_cast<std::size_t>(extra)]));
    }
    Mark({});
}

int CStyleList::StyleOfRow(int row) {
    return row >= 0 && row < kStyles ? row : -1;
}

LineExtra CStyleList::ExtraOfRow(int row) {
    const int extra = row - kStyles + 1;
    return extra >= 1 && extra <= kExtras ? static_cast<LineExtra>(extra) : LineExtra::Plain;
}

void CStyleList::Mark(const std::vector<DisplayLine>& lines) {
    for (int row = 0; row < count(); ++row) {
        const LineExtra extra = ExtraOfRow(row);
        const bool on = std::any_of(lines.begin(), lines.end(), [row, extra](const DisplayLine& line) {
            return extra == LineExtra::Plain ? line.Style == row : line.Extra == extra;
        });
        item(row)->setIcon(QIcon(new TickEngine(palette(), on)));
        item(row)->setData(Qt::UserRole, on);
    }
}

QSize CStyleList::sizeHint() const {
    return {sizeHintForColumn(0) + 2 * frameWidth() + fontMetrics().averageCharWidth(),
            sizeHintForRow(0) * count() + 2 * frameWidth()};
}

QSize CStyleList::minimumSizeHint() const {
    return {sizeHint().width(), sizeHintForRow(0) * 6};
}

}  // namespace zu
