#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "cli/FileReport.h"
#include "cli/TerminalText.h"

namespace zu {
namespace {

/// One line: a title in a column of its own, then the text.
void Line(std::string& out, std::string_view title, std::string_view text) {
    constexpr std::size_t kTitleWidth = 10;
    out += title;
    out.append(title.size() < kTitleWidth ? kTitleWidth - title.size() : 1, ' ');
    out += text;
    out += '\n';
}

std::string Period(double ns) {
    struct Unit {
        double Ns;
        const char* Text;
    };
    constexpr std::array<Unit, 4> kUnits{{{1e9, "s"}, {1e6, "ms"}, {1e3, "us"}, {1, "ns"}}};
    for (const Unit& unit : kUnits) {
        if (ns < unit.Ns) continue;
        std::array<char, 32> text{};
        std::snprintf(text.data(), text.size(), "%g %s", ns / unit.Ns, unit.Text);
        return text.data();
    }
    return "unknown";
}

void AddHead(std::string& out, const FileReport& report) {
    Line(out, "File", report.File);
    if (!report.Saved.empty()) Line(out, "Saved", ForTerminal(report.Saved));
    Line(out, "Version", std::to_string(report.FileVersion));
    Line(out, "Model",
         report.Model.Name + " (" + report.Model.Label + ", row " + std::to_string(report.Model.Row) + "), " +
             std::to_string(report.Model.Channels) + " channels");
    Line(out, "Clock", report.Clock.Rate + ", a sample every " + Period(report.Clock.PeriodNs));
    Line(out, "Memory",
         report.Memory.ModeText + " (mode " + std::to_string(report.Memory.Mode) + ", mux " +
             std::to_string(report.Memory.Mux) + "), " + std::to_string(report.Memory.SamplesPerChannel) +
             " samples a channel, " + std::to_string(report.Memory.DisplayLength) + " shown at most");
}

/// "0", or "0-4" for the first and last of a run.
std::string Run(std::size_t first, std::size_t last) {
    return first == last ? std::to_string(first) : std::to_string(first) + "-" + std::to_string(last);
}

std::string PodText(const FileReport::PodPart& pod) {
    std::string text = pod.ModeText + ", " + std::to_string(pod.Samples) + " samples";
    if (pod.Alignment != 0) text += ", shown from " + std::to_string(pod.Alignment) + " on";
    return text;
}

/// Neighbours that agree share a line.
void AddPods(std::string& out, const FileReport& report) {
    std::size_t next = 0;
    for (std::size_t first = 0; first < report.Pods.size(); first = next) {
        const std::string text = PodText(report.Pods[first]);
        next = first + 1;
        while (next < report.Pods.size() && PodText(report.Pods[next]) == text) ++next;
        Line(out, first == 0 ? "Pods" : "", Run(first, next - 1) + ": " + text);
    }
}

/// Only the channels that somebody named or inverted; a list of 160 default names tells nothing.
void AddChannels(std::string& out, const FileReport& report) {
    bool first = true;
    for (std::size_t i = 0; i < report.Channels.size(); ++i) {
        const FileReport::ChannelPart& channel = report.Channels[i];
        if (!channel.Renamed && !channel.Inverted) continue;
        Line(out, first ? "Channels" : "",
             std::to_string(i) + ": " + ForTerminal(channel.Name) + (channel.Inverted ? " (inverted)" : ""));
        first = false;
    }
    if (first) Line(out, "Channels", "all with the model's own names");
}

void AddGroups(std::string& out, const FileReport& report) {
    bool first = true;
    for (const FileReport::GroupPart& group : report.Groups) {
        std::string text = std::to_string(group.Number) + ": " + ForTerminal(group.Name) + ", " +
                           group.ModeText + ", channels";
        for (const int channel : group.Channels) text += " " + std::to_string(channel);
        Line(out, first ? "Groups" : "", text);
        first = false;
    }
    if (first) Line(out, "Groups", "none");
}

/// The letters of a target and its number; -1 without one.
std::pair<std::string, int> SplitTarget(const std::string& target) {
    const std::size_t digits = target.find_first_of("0123456789");
    if (digits == std::string::npos || target.size() > digits + 2) return {target, -1};
    return {target.substr(0, digits), std::atoi(target.c_str() + digits)};
}

/// Whether `next` says of the following pod what `range` says of its own.
bool Follows(const FileRecordInfo& range, const FileRecordInfo& next) {
    const auto [kind, number] = SplitTarget(range.Target);
    const auto [nextKind, nextNumber] = SplitTarget(next.Target);
    return number >= 0 && nextKind == kind && nextNumber == number + 1 && next.First == range.First &&
           next.Count == range.Count;
}

/// Samples first, then pattern data, each by pod; runs of pods with the same range share a line.
void AddRecords(std::string& out, const FileReport& report) {
    Line(out, "Records", std::to_string(report.Records.size()));
    std::vector<FileRecordInfo> ranges = report.Ranges;
    std::ranges::stable_sort(ranges, {}, [](const auto& range) { return SplitTarget(range.Target); });
    std::size_t next = 0;
    for (std::size_t first = 0; first < ranges.size(); first = next) {
        next = first + 1;
        while (next < ranges.size() && Follows(ranges[next - 1], ranges[next])) ++next;
        std::string targets = ForTerminal(ranges[first].Target);
        if (next - first > 1) targets += "-" + ForTerminal(ranges[next - 1].Target);
        Line(out, first == 0 ? "Ranges" : "",
             targets + ": " + std::to_string(ranges[first].Count) + " bytes from " +
                 std::to_string(ranges[first].First) + " on");
    }
}

void AddProblems(std::string& out, const FileReport& report) {
    bool first = true;
    for (const Problem& problem : report.Problems) {
        Line(out, first ? "Problems" : "", OneLine(problem));
        first = false;
    }
    if (first) Line(out, "Problems", "none");
}

}  // namespace

std::string ReportText(const FileReport& report) {
    std::string out;
    AddHead(out, report);
    AddPods(out, report);
    AddChannels(out, report);
    AddGroups(out, report);
    AddRecords(out, report);
    AddProblems(out, report);
    return out;
}

}  // namespace zu
