#pragma once

#include <string>
#include <vector>

#include "cli/CaptureSession.h"
#include "cli/Records.h"

namespace zu {

/// What a file holds, apart from the samples themselves; texts are Latin-1 bytes of the state.
struct FileReport {
    std::string File;
    std::string Saved;             ///< time of saving as the file has it; empty if it has none
    std::int32_t FileVersion = 0;  ///< 0 = the file names none

    struct ModelPart {
        int Row = 0;
        std::string Name;
        std::string Label;
        std::int32_t Channels = 0;
        int Boards = 0;
    } Model;
    struct ClockPart {
        int Type = 0;
        int RateCode = 0;
        std::string Rate;     ///< "ext." with an external clock
        double PeriodNs = 0;  ///< 0 = unknown
    } Clock;
    struct MemoryPart {
        int Mode = 0;
        std::string ModeText;
        int Mux = 0;
        std::int32_t SamplesPerChannel = 0;
        std::int32_t DisplayLength = 0;
    } Memory;
    struct PodPart {
        int Mode = 0;
        std::string ModeText;
        std::int32_t Samples = 0;    ///< stored; 0 = no samples in this memory mode
        std::int32_t Alignment = 0;  ///< stored samples before the first one shown
        std::int32_t Shown = 0;
    };
    struct ChannelPart {
        std::string Name;
        bool Renamed = false;  ///< differs from the model's own name
        bool Inverted = false;
    };
    struct GroupPart {
        int Number = 0;
        std::string Name;
        int Mode = 0;
        std::string ModeText;
        std::vector<int> Channels;  ///< least significant bit first
    };
    std::vector<PodPart> Pods;
    std::vector<ChannelPart> Channels;
    std::vector<GroupPart> Groups;  ///< those with channels
    std::vector<FileRecordInfo> Records;
    std::vector<FileRecordInfo> Ranges;  ///< the records joined
    std::vector<Problem> Problems;
};

/// Collects what a loaded session and its file tell.
FileReport MakeReport(CaptureSession& session, const std::string& path);

/// The report for people.
std::string ReportText(const FileReport& report);
/// The report for programs: one JSON object.
std::string ReportJson(const FileReport& report);

}  // namespace zu
