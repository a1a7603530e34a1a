#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "state/Host.h"

namespace zu::test {

/// Thrown where the program would end.
struct ProcessEnded {
    int Code;
};

/// A host that writes down what is asked of it and answers from scripts.
class ScriptedHost : public Host {
  public:
    struct Box {
        std::string Text;
        std::string Caption;
        friend bool operator==(const Box&, const Box&) = default;
    };

    std::vector<Box> Boxes;         ///< messages and questions in order
    std::deque<bool> Answers;       ///< to Ask, then false
    std::deque<std::string> Files;  ///< to ChooseFile, then nothing; an empty one is a cancel
    std::vector<FileRequest> Requests;
    std::vector<std::string> Remarks;
    std::vector<std::string> Lines;  ///< standard output
    std::string Title;
    std::set<int> Timers;               ///< running
    std::vector<std::string> TimerLog;  ///< "start 2 30", "kill 1"
    std::uint32_t Ticks = 0;
    LocalTime Clock{2024, 3, 14, 12, 9, 10};
    int Beeps = 0;
    bool Closed = false;

    void Message(std::string_view text, std::string_view caption) override {
        Boxes.push_back({std::string(text), std::string(caption)});
    }
    bool Ask(std::string_view text, std::string_view caption) override {
        Message(text, caption);
        if (Answers.empty()) return false;
        const bool answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    void Remark(std::string_view text) override { Remarks.emplace_back(text); }
    void Beep() override { ++Beeps; }
    void StartTimer(int id, int milliseconds) override {
        Timers.insert(id);
        TimerLog.push_back("start " + std::to_string(id) + " " + std::to_string(milliseconds));
    }
    void KillTimer(int id) override {
        Timers.erase(id);
        TimerLog.push_back("kill " + std::to_string(id));
    }
    Turn RunWaitingMessage() override { return Turn::Idle; }
    std::uint32_t TickCount() override { return Ticks++; }
    void WaitNanoseconds(double ns) override { Ticks += static_cast<std::uint32_t>(ns / 1e6); }
    LocalTime Now() override { return Clock; }
    std::optional<std::string> ChooseFile(const FileRequest& request) override {
        Requests.push_back(request);
        if (Files.empty()) return std::nullopt;
        std::string name = Files.front();
        Files.pop_front();
        return name.empty() ? std::nullopt : std::optional(name);
    }
    void SetWindowTitle(std::string_view title) override { Title = title; }
    void PrintLine(std::string_view text) override { Lines.emplace_back(text); }
    void CloseMainWindow() override { Closed = true; }
    [[noreturn]] void EndProcess(int code) override { throw ProcessEnded{code}; }
};

}  // namespace zu::test
