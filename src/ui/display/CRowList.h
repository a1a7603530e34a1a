#pragma once

#include <functional>
#include <string>

#include <QListWidget>

#include "display/EditResult.h"

namespace zu {

class RowDelegate;

/// A list of texts in which any rows may be selected. What is selected goes out and comes back as flags.
class CRowList final : public QListWidget {
    Q_OBJECT

  public:
    /// `name` is how tests and style sheets find it.
    CRowList(const char* name, QWidget* parent);

    /// Replaces the texts and the selection; the place of the list stays where it can.
    void ShowRows(int count, const std::function<std::string(int)>& text, const Selection& selected);
    [[nodiscard]] Selection Selected() const;
    /// A small text ahead of each row, of at most so many characters.
    void SetGutter(std::function<QString(int)> text, int characters);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  private:
    RowDelegate* delegate_;
};

}  // namespace zu
