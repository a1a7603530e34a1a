// Loading and saving a full data file of 160 channels, against plain reads and writes of the same bytes. The
// files lie in the folder for temporary files; TMPDIR chooses another.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <unistd.h>
#include <vector>

#include "files/DataFile.h"
#include "files/SettingsReader.h"
#include "state/Model.h"
#include "support/ScriptedHost.h"

namespace zu {
namespace {

constexpr int kRow = 15;  // 160 channels in 20 pods, with room for 2097152 samples in each

std::string FilePath(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

std::unique_ptr<InstrumentState> Filled(std::int32_t length) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, kRow);
    ResetChannelNames(*state);
    for (int pod = 0; pod < state->Shape.BufCount; ++pod) SetBufLenFull(state->Buffer.BufLen, pod, length);
    for (int pod = 0; pod < state->Shape.BufCount; ++pod) {
        std::uint32_t at = 0;
        for (auto& byte : state->Buffer.Samples(pod)) byte = static_cast<std::uint8_t>(at++ * 7);
        for (auto& byte : state->Buffer.Pattern(pod)) byte = static_cast<std::uint8_t>(at++ * 11);
    }
    return state;
}

/// A full data file on disk and its bytes.
struct FullFile {
    std::unique_ptr<InstrumentState> State;
    test::ScriptedHost Host;
    std::string Path = FilePath("zu-bench.zu");
    std::vector<char> Bytes;

    explicit FullFile(std::int64_t length) : State(Filled(static_cast<std::int32_t>(length))) {
        WriteDataFile(*State, Host, Path);
        Bytes.resize(std::filesystem::file_size(Path));
    }
    ~FullFile() { std::filesystem::remove(Path); }
    FullFile(const FullFile&) = delete;
    FullFile& operator=(const FullFile&) = delete;

    bool ReadPlainly() {
        const int fd = ::open(Path.c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t got = ::read(fd, Bytes.data(), Bytes.size());
        ::close(fd);
        return got == static_cast<ssize_t>(Bytes.size());
    }
    /// Beside the target, flushed and renamed, as a careful writer of one block would.
    bool WritePlainly(const std::string& path) {
        const int fd = ::open((path + ".tmp").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        const ssize_t put = ::write(fd, Bytes.data(), Bytes.size());
        ::fsync(fd);
        ::close(fd);
        return put == static_cast<ssize_t>(Bytes.size()) &&
               std::rename((path + ".tmp").c_str(), path.c_str()) == 0;
    }
};

void Count(benchmark::State& run, const FullFile& file) {
    run.SetBytesProcessed(run.iterations() * static_cast<std::int64_t>(file.Bytes.size()));
}

void BM_PlainRead(benchmark::State& run) {
    FullFile file(run.range(0));
    for (auto _ : run) benchmark::DoNotOptimize(file.ReadPlainly());
    Count(run, file);
}

void BM_LoadDataFile(benchmark::State& run) {
    FullFile file(run.range(0));
    for (auto _ : run) {
        ReadSettings(*file.State, file.Host, file.Path);
        benchmark::DoNotOptimize(ReadDataFile(*file.State, file.Host, file.Path, "ZU", false, {}));
    }
    if (!file.Host.Boxes.empty()) run.SkipWithError("the file did not load cleanly");
    Count(run, file);
}

void BM_PlainWrite(benchmark::State& run) {
    FullFile file(run.range(0));
    file.ReadPlainly();
    const std::string path = FilePath("zu-bench-plain.zu");
    for (auto _ : run) benchmark::DoNotOptimize(file.WritePlainly(path));
    std::filesystem::remove(path);
    Count(run, file);
}

void BM_SaveDataFile(benchmark::State& run) {
    FullFile file(run.range(0));
    for (auto _ : run) benchmark::DoNotOptimize(WriteDataFile(*file.State, file.Host, file.Path));
    if (!file.Host.Remarks.empty()) run.SkipWithError(file.Host.Remarks[0].c_str());
    Count(run, file);
}

void Lengths(benchmark::internal::Benchmark* bench) {
    bench->Arg(524288)->Arg(2097152);
}

BENCHMARK(BM_PlainRead)->Apply(Lengths)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LoadDataFile)->Apply(Lengths)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_PlainWrite)->Apply(Lengths)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_SaveDataFile)->Apply(Lengths)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace zu
