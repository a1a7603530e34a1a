#include "cli/TerminalHost.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <ostream>
#include <thread>

#include "cli/TerminalText.h"

namespace zu {

void TerminalHost::Message(std::string_view text, std::string_view caption) {
    problems_.push_back({std::string(caption), std::string(text)});
    err_ << "zu-cli: " << OneLine(problems_.back()) << '\n';
}

bool TerminalHost::Ask(std::string_view text, std::string_view caption) {
    Message(text, caption);
    return false;
}

void TerminalHost::Remark(std::string_view text) {
    Message(text, "");
}

std::uint32_t TerminalHost::TickCount() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

void TerminalHost::WaitNanoseconds(double ns) {
    using Nanoseconds = std::chrono::duration<double, std::nano>;
    constexpr double kSliceNs = 20e6;
    for (; ns > kSliceNs; ns -= kSliceNs) {
        if (Interrupted && Interrupted()) return;
        std::this_thread::sleep_for(Nanoseconds(kSliceNs));
    }
    std::this_thread::sleep_for(Nanoseconds(ns));
}

LocalTime TerminalHost::Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

void TerminalHost::PrintLine(std::string_view text) {
    out_ << text << '\n' << std::flush;
}

void TerminalHost::EndProcess(int code) {
    out_ << std::flush;
    std::exit(code);
}

std::string OneLine(const Problem& problem) {
    std::string_view caption = problem.Caption;
    if (caption.ends_with(':')) caption.remove_suffix(1);
    std::string line = ForTerminal(caption);
    if (!caption.empty() && !problem.Text.empty()) line += ": ";
    return line + ForTerminal(problem.Text);
}

}  // namespace zu
