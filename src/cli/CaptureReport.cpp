#include "cli/CaptureReport.h"

#include "cli/Json.h"
#include "cli/TerminalText.h"
#include "state/Catalogue.h"
#include "state/Rates.h"

namespace zu {
namespace {

void WriteInstrument(JsonWriter& json, const CaptureReport& report) {
    json.Key("instrument");
    if (report.Model.empty()) return json.Null();
    json.BeginObject();
    json.Integer("row", report.Row);
    json.String("name", report.Model);
    json.Integer("channels", report.Channels);
    json.Integer("boards", report.Boards);
    json.Boolean("simulated", !report.Simulated.empty());
    json.Key("scene");
    report.Scene.empty() ? json.Null() : json.String(report.Scene);
    json.EndObject();
}

void WriteSettings(JsonWriter& json, const CaptureReport& report) {
    json.Key("clock");
    json.BeginObject();
    json.Integer("type", report.ClockType);
    json.Integer("rateCode", report.RateCode);
    json.Key("periodNs");
    report.PeriodNs > 0 ? json.Number(report.PeriodNs) : json.Null();
    json.EndObject();
    json.Key("memory");
    json.BeginObject();
    json.Integer("mode", report.MemoryMode);
    json.Integer("samplesPerChannel", report.Samples);
    json.EndObject();
    json.Integer("position", report.Position);
}

void WriteCaptures(JsonWriter& json, const CaptureReport& report) {
    json.Key("captures");
    json.BeginArray();
    for (const CaptureReport::Saved& saved : report.Captures) {
        json.BeginObject();
        json.Key("file");
        json.Path(saved.File);
        json.Key("seconds");
        json.Number(saved.Seconds);
        json.Integer("alignment", saved.Alignment);
        json.EndObject();
    }
    json.EndArray();
}

void WriteProblems(JsonWriter& json, const CaptureReport& report) {
    json.Key("problems");
    json.BeginArray();
    for (const Problem& problem : report.Problems) {
        json.BeginObject();
        json.String("caption", problem.Caption);
        json.String("text", problem.Text);
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace

void CaptureReport::Describe(const InstrumentState& state, const std::string& simulated) {
    Row = state.Identity.HardwareType;
    Model = zu::Model(Row).ShortName;
    Channels = state.Shape.TotalChannels;
    Boards = state.Shape.WordsPerTrig;
    Simulated = simulated;
    ClockType = state.Clock.ClockType;
    RateCode = state.Clock.ClockRate;
    PeriodNs = GetRateNS(ClockType, RateCode);
    MemoryMode = state.Memory.HardwareMode;
    Samples = state.Memory.DisplayLen;
    Position = state.Cursors.Cur[kCursorT];
}

std::string CaptureReport::Headline() const {
    std::string line = Model;
    if (!Simulated.empty()) line += ", simulated, scene " + Scene;
    line += ": " + std::to_string(Channels) + " channels, " + std::to_string(Samples) + " samples at ";
    const std::string rate = ForTerminal(Squeezed(RateStatusText(ClockType, RateCode)));
    line += rate.empty() ? "an external clock" : rate;
    return line + ", trigger at sample " + std::to_string(Position);
}

std::string CaptureJson(const CaptureReport& report) {
    JsonWriter json;
    json.BeginObject();
    WriteInstrument(json, report);
    if (!report.Model.empty()) WriteSettings(json, report);
    WriteCaptures(json, report);
    json.Key("result");
    json.Path(report.Result);
    json.Integer("exit", report.Exit);
    WriteProblems(json, report);
    json.EndObject();
    return json.Text();
}

}  // namespace zu
