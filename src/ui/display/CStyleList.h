#pragma once

#include <vector>

#include <QListWidget>

#include "display/Lines.h"

namespace zu {

/// The styles that a line may have and, below them, the renderings that it may carry besides. Marks tell
/// what the selected lines have.
class CStyleList final : public QListWidget {
    Q_OBJECT

  public:
    explicit CStyleList(QWidget* parent);

    /// Style of a row; -1 for the row of an extra rendering.
    static int StyleOfRow(int row);
    /// Extra rendering of a row; Plain for the row of a style.
    static LineExtra ExtraOfRow(int row);
    /// Marks the rows that some of these lines have.
    void Mark(const std::vector<DisplayLine>& lines);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
};

}  // namespace zu
