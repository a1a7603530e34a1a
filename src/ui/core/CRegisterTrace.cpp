#include "ui/core/CRegisterTrace.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "core/Paths.h"
#include "files/AtomicFile.h"
#include "ui/QtText.h"

namespace zu {
namespace {

constexpr int kRefreshMilliseconds = 100;
constexpr int kAccessColumn = 0;
constexpr int kRegisterColumn = 1;

}  // namespace

TraceModel::TraceModel(const TraceRecorder& recorder, const PortTable& ports, QObject* parent)
    : QAbstractTableModel(parent), recorder_(recorder), ports_(ports) {}

bool TraceModel::Update() {
    const auto lines = static_cast<int>(recorder_.Lines().size());
    if (seen_ == recorder_.Total() && rows_ == lines) return false;
    // Old lines may have gone for new ones, so no row can be said to have stayed.
    beginResetModel();
    seen_ = recorder_.Total();
    rows_ = lines;
    endResetModel();
    return true;
}

int TraceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int TraceModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kRegisterColumn + 1;
}

QVariant TraceModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (role != Qt::DisplayRole || !index.isValid() || row >= recorder_.Lines().size()) return {};
    const std::string& line = recorder_.Lines()[row];
    return FromState(index.column() == kAccessColumn ? line : RegisterOfLine(ports_, line));
}

QVariant TraceModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical)
        return QString::number(recorder_.Dropped() + static_cast<std::uint64_t>(section) + 1);
    return section == kAccessColumn ? QStringLiteral("Access") : QStringLiteral("Register");
}

CRegisterTrace::CRegisterTrace(App& app, QWidget* parent)
    : QDialog(parent),
      app_(app),
      recorder_(app.Hardware),
      model_(new TraceModel(recorder_, app.Hardware.Ports, this)),
      list_(new QTableView(this)),
      state_(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Register trace"));
    setSizeGripEnabled(true);
    list_->setModel(model_);
    list_->setObjectName(QStringLiteral("Lines"));
    list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    list_->setShowGrid(false);
    list_->setWordWrap(false);
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->horizontalHeader()->setStretchLastSection(true);
    list_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list_->setColumnWidth(kAccessColumn, list_->fontMetrics().horizontalAdvance(QString(24, u'0')));
    QHeaderView& rows = *list_->verticalHeader();
    rows.setSectionResizeMode(QHeaderView::Fixed);
    rows.setDefaultSectionSize(list_->fontMetrics().height() + 2);
    state_->setObjectName(QStringLiteral("State"));

    auto* buttons = new QDialogButtonBox(this);
    record_ = buttons->addButton(QStringLiteral("&Record"), QDialogButtonBox::ActionRole);
    record_->setObjectName(QStringLiteral("Record"));
    record_->setCheckable(true);
    clear_ = buttons->addButton(QStringLiteral("C&lear"), QDialogButtonBox::ActionRole);
    clear_->setObjectName(QStringLiteral("Clear"));
    save_ = buttons->addButton(QStringLiteral("&Save..."), QDialogButtonBox::ActionRole);
    save_->setObjectName(QStringLiteral("Save"));
    buttons->addButton(QDialogButtonBox::Close);
    connect(record_, &QPushButton::toggled, this, &CRegisterTrace::Record);
    connect(clear_, &QPushButton::clicked, this, &CRegisterTrace::Clear);
    connect(save_, &QPushButton::clicked, this, &CRegisterTrace::Save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&refresh_, &QTimer::timeout, this, &CRegisterTrace::Refresh);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(state_);
    layout->addWidget(buttons);
    resize(520, 480);
    ShowState();
}

void CRegisterTrace::Record(bool on) {
    if (on) {
        recorder_.Start();
        refresh_.start(kRefreshMilliseconds);
    } else {
        recorder_.Stop();
        refresh_.stop();
    }
    Refresh();
    ShowState();
}

void CRegisterTrace::Clear() {
    recorder_.Clear();
    Refresh();
    ShowState();
}

void CRegisterTrace::Refresh() {
    QScrollBar& bar = *list_->verticalScrollBar();
    const bool atEnd = bar.value() == bar.maximum();
    if (!model_->Update()) return;
    // Who has scrolled back to read is not carried away.
    if (atEnd) list_->scrollToBottom();
    ShowState();
}

void CRegisterTrace::ShowState() {
    QString text = QStringLiteral("%1 lines").arg(recorder_.Lines().size());
    if (recorder_.Dropped() > 0) text += QStringLiteral(", %1 earlier ones dropped").arg(recorder_.Dropped());
    if (recorder_.Recording()) {
        text += QStringLiteral("; recording");
    } else if (recorder_.Total() == 0) {
        text = QStringLiteral("Press Record and let the program talk to the instrument.");
    }
    state_->setText(text);
    clear_->setEnabled(recorder_.Total() != 0);
    save_->setEnabled(recorder_.Total() != 0);
}

void CRegisterTrace::Save() {
    FileRequest request;
    request.Save = true;
    request.InitialName = JoinPath(app_.State.Files.LastFolder, "registers.txt");
    request.Filters = "Register trace (*.txt)|*.txt|All files (*.*)|*.*||";
    request.DefaultExtension = "txt";
    const std::optional<std::string> path = app_.Host.ChooseFile(request);
    if (!path) return;
    const std::string error = WriteWholeFile(*path, recorder_.Text());
    if (!error.empty()) app_.Host.Message(*path + ": " + error, "Error:");
}

void CRegisterTrace::done(int result) {
    record_->setChecked(false);
    QDialog::done(result);
}

}  // namespace zu
