#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "hw/HardwareSession.h"
#include "hw/Trace.h"

namespace zu {

/// Keeps the last lines of the register trace for as long as it records. Stopped, it costs nothing: no access
/// passes through it.
class TraceRecorder {
  public:
    static constexpr std::size_t kKeptLines = 200000;  ///< more than the arming of four boards

    /// The session must outlive it.
    explicit TraceRecorder(HardwareSession& hardware, std::size_t keptLines = kKeptLines);
    ~TraceRecorder();
    TraceRecorder(const TraceRecorder&) = delete;
    TraceRecorder& operator=(const TraceRecorder&) = delete;

    void Start();
    /// What was recorded stays.
    void Stop();
    [[nodiscard]] bool Recording() const;
    void Clear();

    [[nodiscard]] const std::deque<std::string>& Lines() const { return lines_; }
    /// Lines since the last Clear, and those of them that had to go for later ones.
    [[nodiscard]] std::uint64_t Total() const { return total_; }
    [[nodiscard]] std::uint64_t Dropped() const { return total_ - lines_.size(); }
    /// All lines that are kept, one a row.
    [[nodiscard]] std::string Text() const;

  private:
    void Take(std::string_view line);

    HardwareSession& hardware_;
    std::size_t keptLines_;
    TraceLog log_;
    std::deque<std::string> lines_;
    std::uint64_t total_ = 0;
};

/// Which register a line of the trace speaks of, as "R4[0]" (register, board); "S10[1]" for a pod register at
/// its own address. Empty for a line or a port that belongs to none of the table's.
std::string RegisterOfLine(const PortTable& ports, std::string_view line);

}  // namespace zu
