#pragma once

#include <cstdint>

#include <QAbstractTableModel>
#include <QDialog>
#include <QTimer>

#include "core/App.h"
#include "hw/TraceRecorder.h"

class QLabel;
class QPushButton;
class QTableView;

namespace zu {

/// The recorded lines as rows: the access, and the register that it meant.
class TraceModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    TraceModel(const TraceRecorder& recorder, const PortTable& ports, QObject* parent);
    /// Takes over what was recorded since the last call; true if there was anything.
    bool Update();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    const TraceRecorder& recorder_;
    const PortTable& ports_;
    std::uint64_t seen_ = 0;
    int rows_ = 0;
};

/// Shows what the program writes to the instrument and reads from it, for people who bring up hardware.
/// Records while it is told to; closing it ends a recording and keeps the lines.
class CRegisterTrace final : public QDialog {
    Q_OBJECT

  public:
    explicit CRegisterTrace(App& app, QWidget* parent = nullptr);

    [[nodiscard]] TraceRecorder& Recorder() { return recorder_; }
    /// Brings the list up to date; runs by itself while recording.
    void Refresh();

  protected:
    void done(int result) override;

  private:
    void Record(bool on);
    void Clear();
    void Save();
    void ShowState();

    App& app_;
    TraceRecorder recorder_;
    TraceModel* model_;
    QTableView* list_;
    QLabel* state_;
    QPushButton* record_;
    QPushButton* save_;
    QPushButton* clear_;
    QTimer refresh_;
};

}  // namespace zu
