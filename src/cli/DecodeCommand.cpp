#include "cli/DecodeCommand.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <variant>
#include <vector>

#include "cli/CaptureSession.h"
#include "cli/Json.h"
#include "cli/TerminalText.h"
#include "display/TimeText.h"
#include "serial/I2cDecoder.h"
#include "serial/MicrowireDecoder.h"
#include "serial/SelectTransfers.h"
#include "serial/SpiDecoder.h"
#include "serial/Transfers.h"
#include "state/Model.h"

namespace zu {
namespace {

enum class Bus : std::uint8_t { None, I2c, Microwire, Spi };

struct FoundTransfer {
    int Group = 0;
    Bus Kind = Bus::None;
    std::int32_t Start = 0;
    std::variant<I2cTransfer, SelectTransfer> Content;
};

constexpr std::int32_t kSpiChannels = 4;

Bus BusOf(const GroupRecord& group) {
    if (group.Mode == kGroupModeI2C) return Bus::I2c;
    if (group.Mode == kGroupModeMicrowire) return Bus::Microwire;
    return IsSpiMode(group.Mode) && group.Size == kSpiChannels ? Bus::Spi : Bus::None;
}

std::string_view NameOf(Bus bus) {
    constexpr std::array<std::string_view, 4> kNames{"", "i2c", "microwire", "spi"};
    return kNames[static_cast<std::size_t>(bus)];
}

template <typename Transfer>
void Append(std::vector<FoundTransfer>& found, int group, Bus bus, std::vector<Transfer> transfers) {
    for (Transfer& transfer : transfers) {
        const std::int32_t start = transfer.Start;
        found.push_back({group, bus, start, std::move(transfer)});
    }
}

/// Decodes one group as if it were the only bus, so that it is the first of its kind and takes slot 0. The
/// arrays are empty before: a decoder leaves what lies behind its own samples.
void DecodeAlone(InstrumentState& state, int group, std::vector<FoundTransfer>& found) {
    const Bus bus = BusOf(state.Groups[static_cast<std::size_t>(group)]);
    if (bus == Bus::None) return;
    ResizeDecodeBuffers(state);
    std::array<std::int8_t, kGroupCount> modes{};
    for (std::size_t g = 0; g < modes.size(); ++g) {
        modes[g] = state.Groups[g].Mode;
        if (static_cast<int>(g) != group) state.Groups[g].Mode = 0;
    }
    if (bus == Bus::I2c) {
        DecodeI2C(state);
        Append(found, group, bus, I2cTransfers(state));
    } else if (bus == Bus::Microwire) {
        state.Serial.SerialGroup = group;
        Append(found, group, bus, MicrowireTransfers(state));
    } else if (bus == Bus::Spi) {
        DecodeSPI(state);
        Append(found, group, bus, SpiTransfers(state, 0));
    }
    for (std::size_t g = 0; g < modes.size(); ++g) state.Groups[g].Mode = modes[g];
}

std::vector<FoundTransfer> Decode(InstrumentState& state, std::optional<int> wanted) {
    std::vector<FoundTransfer> found;
    for (int group = 0; group < kGroupCount; ++group) {
        if (!wanted || *wanted == group) DecodeAlone(state, group, found);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& left, const auto& right) { return left.Start < right.Start; });
    return found;
}

std::string TextOf(const FoundTransfer& transfer) {
    if (transfer.Kind == Bus::I2c) return TransferText(std::get<I2cTransfer>(transfer.Content));
    const auto& content = std::get<SelectTransfer>(transfer.Content);
    return transfer.Kind == Bus::Spi ? SpiTransferText(content) : MicrowireTransferText(content);
}

void PrintText(const InstrumentState& state, const std::vector<FoundTransfer>& found, std::ostream& out) {
    const double period = RateOf(state);
    for (const FoundTransfer& transfer : found) {
        const std::string time =
            period > 0 ? std::string(Trimmed(TimeText(std::int64_t{transfer.Start}, period, kTimeFull)))
                       : std::string("-");
        std::array<char, 64> head{};
        std::snprintf(head.data(), head.size(), "%9d  %16.24s  %2d  ", static_cast<int>(transfer.Start),
                      time.c_str(), transfer.Group);
        out << ToUtf8(head.data()) << TextOf(transfer) << '\n';
    }
    out << std::flush;
}

void WriteEnd(JsonWriter& json, std::int32_t end) {
    json.Key("end");
    if (end < 0) {
        json.Null();
    } else {
        json.Integer(end);
    }
}

void WriteI2c(JsonWriter& json, const I2cTransfer& transfer) {
    WriteEnd(json, transfer.Stop);
    json.Boolean("repeated", transfer.Repeated);
    json.Key("bytes");
    json.BeginArray();
    for (const I2cByte& byte : transfer.Bytes) {
        json.BeginObject();
        json.Integer("sample", byte.First);
        json.Integer("ackSample", byte.Mark);
        json.Integer("value", byte.Value);
        json.Boolean("ack", byte.Acked);
        json.EndObject();
    }
    json.EndArray();
}

void WriteSelect(JsonWriter& json, const SelectTransfer& transfer, Bus bus) {
    WriteEnd(json, transfer.End);
    if (bus == Bus::Microwire) {
        json.String("dataIn", transfer.In);
        json.String("dataOut", transfer.Out);
        return;
    }
    json.Key("bytes");
    json.BeginArray();
    for (const SpiByte& byte : transfer.Bytes) {
        json.BeginObject();
        json.Integer("sample", byte.Start);
        json.Integer("lastSample", byte.End);
        json.Integer("si", byte.Si);
        json.Integer("so", byte.So);
        json.EndObject();
    }
    json.EndArray();
}

void WriteTransfer(JsonWriter& json, const FoundTransfer& transfer, double period) {
    json.BeginObject();
    json.Integer("group", transfer.Group);
    json.String("bus", NameOf(transfer.Kind));
    json.Integer("start", transfer.Start);
    json.Key("timeNs");
    if (period > 0) {
        json.Number(transfer.Start * period);
    } else {
        json.Null();
    }
    json.String("text", TextOf(transfer));
    if (transfer.Kind == Bus::I2c) {
        WriteI2c(json, std::get<I2cTransfer>(transfer.Content));
    } else {
        WriteSelect(json, std::get<SelectTransfer>(transfer.Content), transfer.Kind);
    }
    json.EndObject();
}

void PrintJson(const DecodeRequest& request, const InstrumentState& state,
               const std::vector<FoundTransfer>& found, std::ostream& out) {
    JsonWriter json;
    json.BeginObject();
    json.Key("file");
    json.Path(request.File);
    json.Key("transfers");
    json.BeginArray();
    for (const FoundTransfer& transfer : found) WriteTransfer(json, transfer, RateOf(state));
    json.EndArray();
    json.EndObject();
    out << json.Text() << std::flush;
}

Bus BusOf(const InstrumentState& state, int group) {
    if (group < 0 || group >= kGroupCount) return Bus::None;
    return BusOf(state.Groups[static_cast<std::size_t>(group)]);
}

/// The groups that can be decoded, as "0 (spi, FLASH), 3 (i2c)"; empty for none.
std::string ListOfBuses(const InstrumentState& state) {
    std::string list;
    for (int group = 0; group < kGroupCount; ++group) {
        const Bus bus = BusOf(state, group);
        if (bus == Bus::None) continue;
        if (!list.empty()) list += ", ";
        list += std::to_string(group) + " (" + std::string(NameOf(bus));
        const std::string_view name = state.Groups[static_cast<std::size_t>(group)].Name.View();
        if (!name.empty()) list += ", " + ToUtf8(name);
        list += ')';
    }
    return list;
}

constexpr std::string_view kNotABus = "set up as I2C, Microwire or SPI";
constexpr std::string_view kSetOneUp = ": set one up in the Group setup of zu\n";

/// Tells why a group cannot be decoded, and which can.
void RefuseGroup(const InstrumentState& state, int number, std::ostream& err) {
    const GroupRecord& group = state.Groups[static_cast<std::size_t>(std::clamp(number, 0, kGroupCount - 1))];
    err << "zu-cli: group " << number << " is ";
    if (IsSpiMode(group.Mode)) {
        err << "an SPI group of " << group.Size << " channels and needs 4: clock, SI, SO, chip select\n";
        return;
    }
    const std::string buses = ListOfBuses(state);
    err << "not " << kNotABus;
    if (buses.empty()) {
        err << "; no group of this file is" << kSetOneUp;
    } else {
        err << "; groups that are: " << buses << '\n';
    }
}

}  // namespace

CliExit ShowTransfers(const DecodeRequest& request, std::ostream& out, std::ostream& err) {
    if (LoadTypeOf(request.File) != "ZU") {
        err << "zu-cli: " << request.File << ": no data file (.zu)\n";
        return CliExit::Usage;
    }
    CaptureSession session(out, err);
    if (!session.Load(request.File)) return CliExit::Problems;
    InstrumentState& state = session.State();
    if (request.Group && BusOf(state, *request.Group) == Bus::None) {
        RefuseGroup(state, *request.Group, err);
        return CliExit::Usage;
    }
    if (ListOfBuses(state).empty()) err << "zu-cli: no group of this file is " << kNotABus << kSetOneUp;
    const auto found = Decode(state, request.Group);
    if (request.Json) {
        PrintJson(request, state, found, out);
    } else {
        PrintText(state, found, out);
    }
    return session.Host().Problems().empty() && out ? CliExit::Ok : CliExit::Problems;
}

}  // namespace zu
