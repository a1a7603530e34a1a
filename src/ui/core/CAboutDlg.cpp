#include "ui/core/CAboutDlg.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "core/CommandLine.h"
#include "core/Commands.h"
#include "ui/QtText.h"

namespace zu {

CAboutDlg::CAboutDlg(const InstrumentState& state, QWidget* parent) : QDialog(parent) {
    constexpr int kIconSide = 64;
    setWindowTitle(QStringLiteral("About"));
    auto* picture = new QLabel(this);
    picture->setPixmap(QApplication::windowIcon().pixmap(QSize(kIconSide, kIconSide), devicePixelRatioF()));
    auto* version = new QLabel(FromState(AboutText(state)), this);
    version->setObjectName(QStringLiteral("Version"));
    QFont bold = version->font();
    bold.setBold(true);
    version->setFont(bold);
    auto* program = new QLabel(FromState(VersionLine("zu")).trimmed(), this);
    auto* purpose =
        new QLabel(QStringLiteral("Control and analysis of logic analyzers and pattern generators"), this);

    auto* words = new QVBoxLayout;
    words->addWidget(version);
    words->addWidget(program);
    words->addWidget(purpose);
    words->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addSpacing(8);
    row->addLayout(words);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace zu
