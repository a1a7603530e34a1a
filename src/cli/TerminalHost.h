#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "state/Host.h"

namespace zu {

/// A message that stood on the screen where there is one.
struct Problem {
    std::string Caption;
    std::string Text;
    friend bool operator==(const Problem&, const Problem&) = default;
};

/// The surroundings of a program in a terminal: messages go to standard error and are kept, nobody answers
/// questions, nothing runs by itself.
class TerminalHost final : public Host {
  public:
    TerminalHost(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

    /// Cuts a wait short when it answers true; asked every few milliseconds.
    std::function<bool()> Interrupted;

    /// All messages and questions so far, in order.
    [[nodiscard]] const std::vector<Problem>& Problems() const { return problems_; }

    void Message(std::string_view text, std::string_view caption) override;
    /// Always No: a load goes on, nothing is overwritten.
    bool Ask(std::string_view text, std::string_view caption) override;
    void Remark(std::string_view text) override;
    void Beep() override {}
    void StartTimer(int /*id*/, int /*milliseconds*/) override {}
    void KillTimer(int /*id*/) override {}
    Turn RunWaitingMessage() override { return Turn::Idle; }
    std::uint32_t TickCount() override;
    void WaitNanoseconds(double ns) override;
    LocalTime Now() override;
    std::optional<std::string> ChooseFile(const FileRequest& /*request*/) override { return std::nullopt; }
    void SetWindowTitle(std::string_view /*title*/) override {}
    void PrintLine(std::string_view text) override;
    void CloseMainWindow() override {}
    [[noreturn]] void EndProcess(int code) override;

  private:
    std::ostream& out_;
    std::ostream& err_;
    std::vector<Problem> problems_;
};

/// A problem as one line: caption and text, whichever there are.
std::string OneLine(const Problem& problem);

}  // namespace zu
