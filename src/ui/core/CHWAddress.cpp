#include "ui/core/CHWAddress.h"

#include <algorithm>

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/QtText.h"

namespace zu {
namespace {

constexpr int kIsaColumns = 4;
constexpr std::int32_t kIsaMode = 8;
constexpr std::int32_t kUsbMode = 9;

QString Hex(unsigned address) {
    return QStringLiteral("0x") + QString::number(address, 16).toUpper();
}

/// The label of a button; a carriage return means nothing there.
QString ButtonText(std::string_view label) {
    return FromState(label).remove(u'\r');
}

QString Introduction(const InstrumentState& state) {
    return state.Identity.Emulated == 0
               ? QStringLiteral("A logic analyzer is in use. Choose where to look for another one.")
               : QStringLiteral(
                     "No logic analyzer is in use. Choose where to look for one;\n"
                     "recorded captures can be viewed and set-ups prepared without it.");
}

}  // namespace

CHWAddress::CHWAddress(HardwareSession& hardware, InstrumentState& state, QWidget* parent)
    : QDialog(parent),
      state_(state),
      hardware_(hardware),
      search_(hardware, state, [this](std::string_view status) { return ShowProgress(status); }) {
    setWindowTitle(QStringLiteral("Hardware address"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(Introduction(state), this));
    layout->addWidget(MakeUsb());
    layout->addWidget(MakeParallel());
    layout->addWidget(MakeIsa());
    noPorts_ = new QLabel(this);
    noPorts_->setObjectName(QStringLiteral("NoPorts"));
    layout->addWidget(noPorts_);
    auto* demo = MakeButton(ButtonText(kDemoLabel), "Demo", "Go on without an instrument");
    connect(demo, &QPushButton::clicked, this, [this] {
        search_.ChooseDemo();
        CheckInForce();
        ShowResult();
    });
    layout->addWidget(demo);
    layout->addWidget(MakeStatus());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    cancel_ = buttons->button(QDialogButtonBox::Cancel);
    ok_->setEnabled(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CHWAddress::reject);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    OfferPorts();
    CheckInForce();
    MarkFound(isa_, 0);
    MarkFound(ports_, kParallelCandidate);
    demo->setFocus();
}

QPushButton* CHWAddress::MakeButton(const QString& text, const char* name, const char* hint) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(hint));
    pressable_.push_back(button);
    return button;
}

void CHWAddress::AddCandidate(Candidates& family, const QString& text, std::uint16_t value,
                              const char* name) {
    QPushButton* button = MakeButton(text, "", "");
    button->setObjectName(QString::fromLatin1(name) + QString::number(value));
    button->setCheckable(true);
    family.push_back({button, text, value});
}

QWidget* CHWAddress::MakeUsb() {
    auto* button = MakeButton(ButtonText(kUsbLabel), "UsbSearch", "Look for the instrument on USB");
    connect(button, &QPushButton::clicked, this, [this] {
        Run([this] { return search_.SearchUsb(); });
        CheckInForce();
    });
    return button;
}

QWidget* CHWAddress::MakeIsa() {
    isaGroup_ = new QGroupBox(QStringLiteral("ISA address"), this);
    auto* grid = new QGridLayout(isaGroup_);
    for (std::uint16_t i = 0; i < kIsaCandidates; ++i) {
        QString text = Hex(state_.Identity.AddressTable[i]);
        if (i == 0) text += QStringLiteral(" (default)");
        AddCandidate(isa_, text, i, "Isa");
        const std::size_t index = isa_.size() - 1;
        connect(isa_.back().Button, &QPushButton::clicked, this, [this, index] { TryIsa(index); });
        grid->addWidget(isa_.back().Button, i / kIsaColumns, i % kIsaColumns);
    }
    auto* search = MakeButton(QStringLiteral("Auto detect"), "IsaSearch", "Try all ISA addresses");
    connect(search, &QPushButton::clicked, this, &CHWAddress::SearchIsa);
    grid->addWidget(search, kIsaCandidates / kIsaColumns, kIsaCandidates % kIsaColumns);
    return isaGroup_;
}

QWidget* CHWAddress::MakeParallel() {
    parallelGroup_ = new QGroupBox(QStringLiteral("Parallel port"), this);
    auto* grid = new QGridLayout(parallelGroup_);
    for (const std::uint16_t address : kParallelPorts) {
        const auto port = static_cast<std::uint16_t>(ports_.size());
        AddCandidate(ports_, Hex(address), port, "Port");
        const std::size_t index = ports_.size() - 1;
        connect(ports_.back().Button, &QPushButton::clicked, this, [this, index] { PressPort(index); });
        grid->addWidget(ports_.back().Button, port, 0);
    }
    for (const ComModeLabel& mode : kParallelModes) {
        const int place = static_cast<int>(modes_.size());
        AddCandidate(modes_, ButtonText(mode.Text), mode.ComMode, "Mode");
        const std::size_t index = modes_.size() - 1;
        connect(modes_.back().Button, &QPushButton::clicked, this, [this, index] { PressMode(index); });
        grid->addWidget(modes_.back().Button, place / 2, 1 + place % 2);
    }
    parallelSearch_ = MakeButton(QStringLiteral("Auto detect"), "ParallelSearch",
                                 "Try all parallel ports and take the fastest mode that works");
    connect(parallelSearch_, &QPushButton::clicked, this, &CHWAddress::SearchParallel);
    grid->addWidget(parallelSearch_, 2, 2);
    return parallelGroup_;
}

QWidget* CHWAddress::MakeStatus() {
    auto* area = new QWidget(this);
    auto* layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 4, 0, 4);
    status_ = new QLabel(area);
    status_->setObjectName(QStringLiteral("Status"));
    status_->setTextFormat(Qt::PlainText);
    status_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    status_->setMargin(4);
    status_->setMinimumHeight(status_->sizeHint().height() + status_->fontMetrics().height());
    hint_ = new QLabel(area);
    hint_->setObjectName(QStringLiteral("Hint"));
    hint_->setMinimumHeight(hint_->fontMetrics().height());
    progress_ = new QProgressBar(area);
    progress_->setRange(0, 0);
    progress_->setTextVisible(false);
    progress_->setFixedHeight(6);
    QSizePolicy policy = progress_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    progress_->setSizePolicy(policy);
    progress_->hide();
    layout->addWidget(status_);
    layout->addWidget(progress_);
    layout->addWidget(hint_);
    return area;
}

/// Ports that are not there have no buttons; without the driver no port can be reached at all.
void CHWAddress::OfferPorts() {
    const AddressChoices choices = OfferedAddresses(hardware_, state_);
    bool any = false;
    for (std::size_t i = 0; i < ports_.size(); ++i) {
        ports_[i].Button->setVisible(choices.Ports[i]);
        any = any || choices.Ports[i];
    }
    for (const Candidate& mode : modes_) mode.Button->setVisible(any);
    isaGroup_->setVisible(choices.PortGroups);
    parallelGroup_->setVisible(choices.PortGroups && any);
    QString text;
    if (!choices.PortGroups) {
        text = QStringLiteral("The ports of this computer cannot be reached: USB only.");
    } else if (!any) {
        text = QStringLiteral("No parallel port was found.");
    }
    noPorts_->setText(text);
    noPorts_->setVisible(!text.isEmpty());
}

void CHWAddress::CheckOnly(const Candidates& family, int index) {
    for (std::size_t i = 0; i < family.size(); ++i) {
        family[i].Button->setChecked(static_cast<int>(i) == index);
    }
}

int CHWAddress::CheckedOf(const Candidates& family) {
    const auto found = std::find_if(family.begin(), family.end(), [](const Candidate& candidate) {
        return candidate.Button->isChecked() && !candidate.Button->isHidden();
    });
    return found == family.end() ? -1 : static_cast<int>(found - family.begin());
}

/// The buttons show the connection that the state names, as far as an instrument answers on it.
void CHWAddress::CheckInForce() {
    const IdentityRecord& identity = state_.Identity;
    const bool inUse = identity.Emulated == 0;
    const int index = identity.AddressIndex;
    CheckOnly(isa_, inUse && identity.ComMode == kIsaMode ? index : -1);
    const auto mode = std::find_if(modes_.begin(), modes_.end(), [&](const Candidate& candidate) {
        return inUse && candidate.Value == identity.ComMode;
    });
    const bool parallel = mode != modes_.end();
    CheckOnly(modes_, parallel ? static_cast<int>(mode - modes_.begin()) : -1);
    CheckOnly(ports_, parallel ? index - kParallelCandidate : -1);
}

void CHWAddress::PressPort(std::size_t index) {
    CheckOnly(ports_, static_cast<int>(index));
    TryParallel();
}

void CHWAddress::PressMode(std::size_t index) {
    CheckOnly(modes_, static_cast<int>(index));
    TryParallel();
}

void CHWAddress::TryParallel() {
    const int port = CheckedOf(ports_);
    const int mode = CheckedOf(modes_);
    if (port < 0 || mode < 0) {
        hint_->setText(port < 0 ? QStringLiteral("Choose a port as well.")
                                : QStringLiteral("Choose a mode as well."));
        return;
    }
    CheckOnly(isa_, -1);
    const auto comMode = static_cast<std::uint8_t>(modes_[static_cast<std::size_t>(mode)].Value);
    Run([this, port, comMode] { return search_.TryParallel(static_cast<std::uint16_t>(port), comMode); });
}

void CHWAddress::TryIsa(std::size_t index) {
    CheckOnly(isa_, static_cast<int>(index));
    CheckOnly(ports_, -1);
    CheckOnly(modes_, -1);
    Run([this, index] { return search_.TryIsa(static_cast<std::uint16_t>(index)); });
}

void CHWAddress::SearchIsa() {
    const SearchEnd end = Run([this] { return search_.SearchIsa(); });
    if (end == SearchEnd::NotFound) {
        hint_->setText(QStringLiteral("All %1 addresses were tried.").arg(isa_.size()));
    }
    CheckInForce();
}

void CHWAddress::SearchParallel() {
    Run([this] { return search_.SearchParallel(); });
    if (search_.ClearsButtons()) {
        CheckOnly(ports_, -1);
        CheckOnly(modes_, -1);
    } else {
        CheckInForce();
    }
}

template <typename Work>
SearchEnd CHWAddress::Run(Work work) {
    hint_->clear();
    stopped_ = false;
    SetSearching(true);
    const SearchEnd end = work();
    SetSearching(false);
    ShowResult();
    if (end == SearchEnd::Cancelled) hint_->setText(QStringLiteral("The search was stopped."));
    return end;
}

bool CHWAddress::ShowProgress(std::string_view status) {
    status_->setText(FromState(status));
    // Keeps the window alive and takes the press of Stop.
    if (searching_) QCoreApplication::processEvents();
    return !stopped_;
}

void CHWAddress::SetSearching(bool searching) {
    QWidget* focus = focusWidget();
    searching_ = searching;
    for (QWidget* widget : pressable_) widget->setEnabled(!searching);
    if (searching) ok_->setEnabled(false);
    cancel_->setText(searching ? QStringLiteral("Stop") : QStringLiteral("Cancel"));
    progress_->setVisible(searching);
    if (searching) {
        focused_ = focus;
        cancel_->setFocus();
    } else if (focused_ != nullptr) {
        focused_->setFocus();
    }
}

void CHWAddress::ShowResult() {
    status_->setText(FromState(search_.Status()));
    MarkFound(isa_, 0);
    MarkFound(ports_, kParallelCandidate);
    ok_->setEnabled(search_.CanAccept());
    if (!search_.CanAccept()) return;
    ok_->setDefault(true);
    ok_->setFocus();
}

/// A tick and the model on every candidate where an instrument answered last.
void CHWAddress::MarkFound(const Candidates& family, std::size_t firstCandidate) {
    const bool usb = state_.Identity.ComMode == kUsbMode;
    for (const Candidate& candidate : family) {
        const std::size_t index = firstCandidate + candidate.Value;
        // The first parallel candidate is that of USB as well.
        const int row = usb && index == kParallelCandidate ? 0 : state_.Identity.FoundTable[index];
        candidate.Button->setIcon(row == 0 ? QIcon() : style()->standardIcon(QStyle::SP_DialogApplyButton));
        candidate.Button->setToolTip(row == 0 ? QString() : FromState(DialogModelName(row)));
    }
}

void CHWAddress::reject() {
    if (!searching_) return QDialog::reject();
    stopped_ = true;
}

}  // namespace zu
