#pragma once

#include <QWidget>

class QHBoxLayout;

namespace zu {

class CTrafficList;
class CZuView;

/// A window of decoded traffic: a row of tools above a list, which has the focus to begin with.
class CTrafficWnd : public QWidget {
    Q_OBJECT

  protected:
    CTrafficWnd(CZuView& controller, CTrafficList& list);

    /// Appends a tool; the Tab key goes through the tools in this order, then to the list.
    void AddTool(QWidget& tool);
    void focusInEvent(QFocusEvent* event) override;
    [[nodiscard]] CZuView& Controller() const { return controller_; }

  private:
    CZuView& controller_;
    CTrafficList& content_;
    QHBoxLayout* tools_;
};

}  // namespace zu
