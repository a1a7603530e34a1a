#pragma once

#include <QDialog>
#include <QList>
#include <QPair>

namespace zu {

/// One line of the sheet: keys and what they do.
using KeyLine = QPair<QString, QString>;
/// A chapter of the sheet.
struct KeyChapter {
    QString Title;
    QList<KeyLine> Lines;
};
/// Every key of the program: those of the commands from the command table, those of the views as they work.
QList<KeyChapter> KeySheet();

/// All keys on one sheet.
class CKeySheet final : public QDialog {
    Q_OBJECT

  public:
    explicit CKeySheet(QWidget* parent = nullptr);
};

}  // namespace zu
