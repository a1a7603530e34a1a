#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zu {

/// Local time as the files print it.
struct LocalTime {
    int Year = 0;
    int Month = 0;  ///< 1..12
    int Day = 0;
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
};

/// What a file dialog is asked. Filters are pairs as in "Data File (*.ZU)|*.zu|Settings File
/// (*.INI)|*.INI||".
struct FileRequest {
    bool Save = false;
    std::string InitialName;  ///< name or folder to start at
    std::string_view Filters;
    std::string DefaultExtension;  ///< without a dot; appended to a name that has none
};

/// All that the logic asks of its surroundings. The windows implement it with Qt, the command line with the
/// terminal, tests with a scripted recorder. Everything runs on one thread.
class Host {
  public:
    virtual ~Host() = default;

    /// Shows a text and waits for Ok. An empty text with a caption is legal.
    virtual void Message(std::string_view text, std::string_view caption) = 0;
    /// Asks Yes or No; true for Yes.
    virtual bool Ask(std::string_view text, std::string_view caption) = 0;
    /// Asks OK or Cancel; true for OK. Where only Yes and No are at hand they stand for the two.
    virtual bool Confirm(std::string_view text, std::string_view caption) { return Ask(text, caption); }
    /// A passing remark in the status bar: what went wrong where the system shows no message box.
    virtual void Remark(std::string_view text) = 0;
    virtual void Beep() = 0;

    virtual void StartTimer(int id, int milliseconds) = 0;
    virtual void KillTimer(int id) = 0;
    /// What became of one turn of the message queue.
    enum class Turn { Idle, Handled, Quit };
    /// Runs one waiting message; Idle if none waits.
    virtual Turn RunWaitingMessage() = 0;

    /// Milliseconds of a steady clock; wraps.
    virtual std::uint32_t TickCount() = 0;
    /// Returns after at least this many nanoseconds.
    virtual void WaitNanoseconds(double ns) = 0;
    virtual LocalTime Now() = 0;

    /// Path chosen by the user; nothing if the choice was cancelled.
    virtual std::optional<std::string> ChooseFile(const FileRequest& request) = 0;
    virtual void SetWindowTitle(std::string_view title) = 0;
    /// One line on standard output, flushed.
    virtual void PrintLine(std::string_view text) = 0;
    /// Closes the main window, which takes the ordinary exit path.
    virtual void CloseMainWindow() = 0;
    /// Ends the process at once, without the exit path.
    [[noreturn]] virtual void EndProcess(int code) = 0;
};

}  // namespace zu
