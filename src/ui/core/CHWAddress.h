#pragma once

#include <vector>

#include <QDialog>
#include <QPointer>

#include "hw/AddressSearch.h"

class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace zu {

/// Where the user finds the instrument or chooses to work without one. What is found is in the state at once;
/// whoever runs the dialog puts back what was there if it is rejected.
class CHWAddress final : public QDialog {
    Q_OBJECT

  public:
    CHWAddress(HardwareSession& hardware, InstrumentState& state, QWidget* parent = nullptr);

    /// While a search runs, stops the search.
    void reject() override;
    [[nodiscard]] bool Searching() const { return searching_; }

  private:
    /// A button that stands for a candidate: a port, an address, a mode.
    struct Candidate {
        QPushButton* Button;
        QString Text;
        std::uint16_t Value;  ///< port index, candidate or communication mode
    };
    using Candidates = std::vector<Candidate>;

    QPushButton* MakeButton(const QString& text, const char* name, const char* hint);
    void AddCandidate(Candidates& family, const QString& text, std::uint16_t value, const char* name);
    QWidget* MakeUsb();
    QWidget* MakeIsa();
    QWidget* MakeParallel();
    QWidget* MakeStatus();
    void OfferPorts();

    void PressPort(std::size_t index);
    void PressMode(std::size_t index);
    void TryParallel();
    void TryIsa(std::size_t index);
    void SearchIsa();
    void SearchParallel();

    template <typename Work>
    SearchEnd Run(Work work);
    bool ShowProgress(std::string_view status);
    void SetSearching(bool searching);
    void ShowResult();
    void MarkFound(const Candidates& family, std::size_t firstCandidate);
    void CheckInForce();
    static void CheckOnly(const Candidates& family, int index);
    static int CheckedOf(const Candidates& family);

    InstrumentState& state_;
    HardwareSession& hardware_;
    AddressSearch search_;
    Candidates isa_;
    Candidates ports_;
    Candidates modes_;
    std::vector<QWidget*> pressable_;  ///< everything that rests while a search runs
    QGroupBox* isaGroup_ = nullptr;
    QGroupBox* parallelGroup_ = nullptr;
    QPushButton* parallelSearch_ = nullptr;
    QLabel* noPorts_ = nullptr;
    QLabel* status_ = nullptr;
    QLabel* hint_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPointer<QWidget> focused_;  ///< before the search began
    bool searching_ = false;
    bool stopped_ = false;
};

}  // namespace zu
