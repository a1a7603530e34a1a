#include <algorithm>
#include <array>
#include <cstdio>
#include <deque>

#include "files/AtomicFile.h"
#include "files/DataFile.h"
#include "files/SettingsWriter.h"
#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::size_t kChunk = 32768;

template <typename... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), format, args...);
    return text.data();
}

std::string CommentLine(const LocalTime& now) {
    return Format("\r\n[Comment File saved %d/%d/%d at %d:%d:%d]", now.Month, now.Day, now.Year, now.Hour,
                  now.Minute, now.Second);
}

std::string ModelLine(const InstrumentState& state) {
    const std::string label(Model(state.Identity.HardwareType).FileLabel);
    return Format("\r\n[Model %s %d %d]", label.c_str(), state.Memory.HardwareMode, state.Memory.HardwareMux);
}

/// Hands header texts and payloads to the file; the texts live until the file has taken them.
class RecordWriter {
  public:
    explicit RecordWriter(AtomicFile& file) : file_(file) {}

    void Add(std::string text) { file_.Append(texts_.emplace_back(std::move(text))); }

    void AddBuffer(int index, bool withSamples, std::span<const std::uint8_t> samples,
                   std::span<const std::uint8_t> pattern) {
        for (std::size_t first = 0; first < pattern.size(); first += kChunk) {
            const std::size_t count = std::min(kChunk, pattern.size() - first);
            if (withSamples) AddRecord("D", index, first, samples.subspan(first, count));
            AddRecord("PG", index, first, pattern.subspan(first, count));
        }
    }

  private:
    void AddRecord(const char* kind, int index, std::size_t first, std::span<const std::uint8_t> payload) {
        Add(Format("\r\n[Data %s%d %zu %zu]\r\n", kind, index, first, payload.size()));
        file_.Append(payload);
    }

    AtomicFile& file_;
    std::deque<std::string> texts_;
};

}  // namespace

bool WriteDataFile(InstrumentState& state, Host& host, const std::string& path) {
    AtomicFile file(path);
    if (!file.Error().empty()) return FinishSave(file, host);
    RecordWriter writer(file);
    writer.Add(SettingsText(state, host));
    writer.Add(CommentLine(host.Now()));
    writer.Add(ModelLine(state));
    for (int index = 0; index < kMaxPods; ++index) {
        const std::int8_t podMode = state.Pods.HardwarePod[static_cast<std::size_t>(index)];
        writer.AddBuffer(index, IsCaptureMode(podMode), state.Buffer.Samples(index),
                         state.Buffer.Pattern(index));
    }
    writer.Add("\r\n[Settings]\r\n");
    return FinishSave(file, host);
}

}  // namespace zu
