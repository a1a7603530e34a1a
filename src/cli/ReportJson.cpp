#include "cli/FileReport.h"
#include "cli/Json.h"

namespace zu {
namespace {

void WriteModel(JsonWriter& json, const FileReport::ModelPart& model) {
    json.Key("model");
    json.BeginObject();
    json.Integer("row", model.Row);
    json.String("name", model.Name);
    json.String("label", model.Label);
    json.Integer("channels", model.Channels);
    json.Integer("boards", model.Boards);
    json.EndObject();
}

void WriteClock(JsonWriter& json, const FileReport::ClockPart& clock) {
    json.Key("clock");
    json.BeginObject();
    json.Integer("type", clock.Type);
    json.Integer("rateCode", clock.RateCode);
    json.String("rate", clock.Rate);
    json.Key("periodNs");
    if (clock.PeriodNs > 0) {
        json.Number(clock.PeriodNs);
    } else {
        json.Null();
    }
    json.EndObject();
}

void WriteMemory(JsonWriter& json, const FileReport::MemoryPart& memory) {
    json.Key("memory");
    json.BeginObject();
    json.Integer("mode", memory.Mode);
    json.String("modeText", memory.ModeText);
    json.Integer("mux", memory.Mux);
    json.Integer("samplesPerChannel", memory.SamplesPerChannel);
    json.Integer("displayLength", memory.DisplayLength);
    json.EndObject();
}

void WritePods(JsonWriter& json, const std::vector<FileReport::PodPart>& pods) {
    json.Key("pods");
    json.BeginArray();
    for (std::size_t i = 0; i < pods.size(); ++i) {
        json.BeginObject();
        json.Integer("pod", static_cast<std::int64_t>(i));
        json.Integer("mode", pods[i].Mode);
        json.String("modeText", pods[i].ModeText);
        json.Integer("samples", pods[i].Samples);
        json.Integer("alignment", pods[i].Alignment);
        json.Integer("shown", pods[i].Shown);
        json.EndObject();
    }
    json.EndArray();
}

void WriteChannels(JsonWriter& json, const std::vector<FileReport::ChannelPart>& channels) {
    json.Key("channels");
    json.BeginArray();
    for (std::size_t i = 0; i < channels.size(); ++i) {
        json.BeginObject();
        json.Integer("channel", static_cast<std::int64_t>(i));
        json.String("name", channels[i].Name);
        json.Boolean("renamed", channels[i].Renamed);
        json.Boolean("inverted", channels[i].Inverted);
        json.EndObject();
    }
    json.EndArray();
}

void WriteGroups(JsonWriter& json, const std::vector<FileReport::GroupPart>& groups) {
    json.Key("groups");
    json.BeginArray();
    for (const auto& group : groups) {
        json.BeginObject();
        json.Integer("group", group.Number);
        json.String("name", group.Name);
        json.Integer("mode", group.Mode);
        json.String("modeText", group.ModeText);
        json.Key("channels");
        json.BeginArray();
        for (const int channel : group.Channels) json.Integer(channel);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void WriteRecords(JsonWriter& json, std::string_view key, const std::vector<FileRecordInfo>& records) {
    json.Key(key);
    json.BeginArray();
    for (const FileRecordInfo& record : records) {
        json.BeginObject();
        json.String("target", record.Target);
        json.Integer("first", record.First);
        json.Integer("count", record.Count);
        json.EndObject();
    }
    json.EndArray();
}

void WriteProblems(JsonWriter& json, const std::vector<Problem>& problems) {
    json.Key("problems");
    json.BeginArray();
    for (const Problem& problem : problems) {
        json.BeginObject();
        json.String("caption", problem.Caption);
        json.String("text", problem.Text);
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

std::string ReportJson(const FileReport& report) {
    JsonWriter json;
    json.BeginObject();
    json.Key("file");
    json.Path(report.File);
    json.String("saved", report.Saved);
    json.Integer("version", report.FileVersion);
    WriteModel(json, report.Model);
    WriteClock(json, report.Clock);
    WriteMemory(json, report.Memory);
    WritePods(json, report.Pods);
    WriteChannels(json, report.Channels);
    WriteGroups(json, report.Groups);
    WriteRecords(json, "records", report.Records);
    WriteRecords(json, "ranges", report.Ranges);
    WriteProblems(json, report.Problems);
    json.EndObject();
    return json.Text();
}

}  // namespace zu
