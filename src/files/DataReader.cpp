#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

#include "files/DataFile.h"
#include "files/Decimal.h"
#include "files/Ini.h"
#include "files/RecordScanner.h"
#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {
namespace {

/// Up to the format before this one a D record of a pattern pod holds pattern data.
constexpr std::int32_t kSeparatePatternVersion = 190;

enum class RecordKind : std::uint8_t { Sample, Pattern, Direction };

struct RecordTarget {
    RecordKind Kind = RecordKind::Sample;
    int Index = 0;
};

/// Target of a record header's first word: "D0" to "D19", "PG0" to "PG19", "IO".
std::optional<RecordTarget> TargetOf(std::string_view word) {
    if (word == "IO") return RecordTarget{RecordKind::Direction, 0};
    for (int index = 0; index < kMaxPods; ++index) {
        const std::string number = std::to_string(index);
        if (word == "D" + number) return RecordTarget{RecordKind::Sample, index};
        if (word == "PG" + number) return RecordTarget{RecordKind::Pattern, index};
    }
    return std::nullopt;
}

/// Reads the records of one data file into the live state.
class RecordReader {
  public:
    RecordReader(InstrumentState& state, Host& host, const DataFileHooks& hooks, const ReadableFile& file)
        : state_(state), host_(host), hooks_(hooks), source_(file) {}

    void Run() {
        while (keepGoing_ && source_.TakeUntil('[')) ReadHeader();
    }

  private:
    void ReadHeader();
    void ReadModel(bool endedByBlank);
    void ApplyModelLine(const HeaderWords& words);
    void ReadData(bool endedByBlank);
    void ReadRecord(const HeaderWords& words);
    void ReadBuffer(const RecordTarget& target, std::int32_t first, std::int32_t count);
    void ReadDirection(std::int32_t first, std::int32_t count);
    void ReportRange(std::int64_t first, std::int64_t count, int index);

    void Stop(std::string_view text, std::string_view caption) {
        host_.Message(text, caption);
        keepGoing_ = false;
    }

    InstrumentState& state_;
    Host& host_;
    const DataFileHooks& hooks_;
    ByteSource source_;
    bool keepGoing_ = true;
    bool rangeReported_ = false;
};

void RecordReader::ReadHeader() {
    const auto keyword = TakeKeyword(source_);
    if (!keyword || keyword->Word == "SETTINGS") {
        keepGoing_ = false;
    } else if (keyword->Word == "DATA") {
        ReadData(keyword->EndedByBlank);
    } else if (keyword->Word == "COMMENT" && keyword->EndedByBlank) {
        SkipComment(source_);
    } else if (keyword->Word == "MODEL") {
        ReadModel(keyword->EndedByBlank);
    }
}

void RecordReader::ReadModel(bool endedByBlank) {
    if (!endedByBlank) return Stop("", "File Load Error(1)");
    if (const auto words = TakeWords(source_, HeaderEnd::Text)) {
        ApplyModelLine(*words);
    } else {
        keepGoing_ = false;
    }
}

void RecordReader::ApplyModelLine(const HeaderWords& words) {
    const int row = RowOfFileLabel(words[1].View()).value_or(0);
    if (row == state_.Identity.HardwareType) {
        state_.Memory.HardwareMode = static_cast<std::int8_t>(ParseDecimal(words[2].View()));
        state_.Memory.HardwareMux = static_cast<std::int8_t>(ParseDecimal(words[3].View()));
        if (hooks_.ApplyMemoryMode) {
            hooks_.ApplyMemoryMode(state_.Memory.HardwareMux, state_.Memory.HardwareMode);
        }
    } else if (state_.Identity.HardwareType == 0 || state_.Identity.Emulated == 1) {
        host_.Message("", "Software running in Demo mode");
        state_.Identity.Emulated = 1;
    }
}

void RecordReader::ReadData(bool endedByBlank) {
    if (!endedByBlank) {
        Stop("", "File Load Error(4)");
        return ReadRecord({});
    }
    if (const auto words = TakeWords(source_, HeaderEnd::Payload)) {
        ReadRecord(*words);
    } else {
        keepGoing_ = false;
    }
}

void RecordReader::ReadRecord(const HeaderWords& words) {
    auto target = TargetOf(words[1].View());
    if (!target) return Stop("Bad data record header.", "File Load Error(3)");
    const std::int8_t podMode = state_.Pods.HardwarePod[static_cast<std::size_t>(target->Index)];
    const bool oldPattern = state_.Files.FileVersion < kSeparatePatternVersion && IsPatternMode(podMode);
    if (target->Kind == RecordKind::Sample && oldPattern) target->Kind = RecordKind::Pattern;
    if (target->Index >= state_.Shape.BufStep * state_.Shape.WordsPerTrig) {
        return Stop("Data buffer not available with this hardware.", "File Load Error(10)");
    }
    const std::int32_t first = ParseDecimalClamped(words[2].View());
    const std::int32_t count = ParseDecimalClamped(words[3].View());
    if (target->Kind == RecordKind::Direction) return ReadDirection(first, count);
    ReadBuffer(*target, first, count);
}

void RecordReader::ReadBuffer(const RecordTarget& target, std::int32_t first, std::int32_t count) {
    const auto buffer = target.Kind == RecordKind::Sample ? state_.Buffer.Samples(target.Index)
                                                          : state_.Buffer.Pattern(target.Index);
    const auto room = static_cast<std::int64_t>(buffer.size());
    if (first < 0 || count < 0 || std::int64_t{first} + count > room) {
        ReportRange(first, count, target.Index);
        source_.Skip(std::max(count, 0));
        return;
    }
    source_.Read(buffer.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
}

void RecordReader::ReadDirection(std::int32_t first, std::int32_t count) {
    // A range that is too long is not passed over: its payload is scanned as text.
    if (first < 0 || count < 0 || std::int64_t{first} + count > state_.Memory.BufferLen) return;
    std::vector<std::uint8_t>& buffer = state_.Pattern.DirectionBuffer;
    const std::size_t begin = std::min(static_cast<std::size_t>(first), buffer.size());
    const std::size_t kept = std::min(static_cast<std::size_t>(count), buffer.size() - begin);
    source_.Read(std::span(buffer).subspan(begin, kept));
    source_.Skip(count - static_cast<std::int64_t>(kept));
}

void RecordReader::ReportRange(std::int64_t first, std::int64_t count, int index) {
    if (rangeReported_) return;
    rangeReported_ = true;
    const long long last = first + count;
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), "Address range[%lld..%lld] to long for buffer[%d]",
                  static_cast<long long>(first), last, index);
    host_.Message(text.data(), "File Load Error(2)");
}

/// Runs on every path out of the reader.
void Close(InstrumentState& state, const DataFileHooks& hooks) {
    const bool decode = state.Serial.SerialMode != 0 && state.Windows.SerialStat != 0;
    if (decode && hooks.DecodeSerial) hooks.DecodeSerial();
    ComputeGroupWidths(state);
    if (hooks.RedrawWindows) hooks.RedrawWindows();
}

LoadStatus ReadRecords(InstrumentState& state, Host& host, const std::string& path,
                       const std::string& extension, bool quiet, const DataFileHooks& hooks) {
    const auto file = ReadableFile::Open(path);
    if (!file && quiet) return LoadStatus::FailedSilently;
    if (!file) {
        host.Message("File could not be opened", "File Error(9):");
        return LoadStatus::Failed;
    }
    if (extension == "ZU") RecordReader(state, host, hooks, *file).Run();
    if (extension == "CSV" && hooks.LoadCsv) hooks.LoadCsv(path);
    return LoadStatus::Loaded;
}

/// Label of a data file's model line; nothing if a record or the end comes first.
std::optional<std::string> ModelLabel(const std::string& path) {
    const auto file = ReadableFile::Open(path);
    if (!file) return std::nullopt;
    ByteSource source(*file);
    while (source.TakeUntil('[')) {
        const auto keyword = TakeKeyword(source);
        if (!keyword || keyword->Word == "DATA" || keyword->Word == "SETTINGS") break;
        if (keyword->Word == "COMMENT" && keyword->EndedByBlank) SkipComment(source);
        if (keyword->Word != "MODEL") continue;
        const auto words = keyword->EndedByBlank ? TakeWords(source, HeaderEnd::Text) : std::nullopt;
        return words ? std::optional(std::string((*words)[1].View())) : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

LoadStatus ReadDataFile(InstrumentState& state, Host& host, const std::string& path,
                        const std::string& extension, bool quiet, const DataFileHooks& hooks) {
    const LoadStatus status = ReadRecords(state, host, path, extension, quiet, hooks);
    Close(state, hooks);
    return status;
}

std::optional<int> HardwareTypeOfFile(const std::string& path) {
    const auto ini = IniText::Load(path);
    if (!ini) return std::nullopt;
    const auto type = ini->Number("Hardware", "Type");
    if (type && static_cast<std::uint8_t>(*type) < kModelRows) return static_cast<std::uint8_t>(*type);
    const auto label = ModelLabel(path);
    return label ? RowOfFileLabel(*label) : std::nullopt;
}

}  // namespace zu
