#include "cli/ScanCommand.h"

#include <fstream>
#include <memory>
#include <ostream>

#include "cli/ScanReport.h"
#include "cli/TerminalHost.h"
#include "hw/Attachment.h"
#include "hw/Trace.h"
#include "hw/sim/SimSpec.h"
#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::uint8_t kDriverFamily = 0;  // ports through the driver, as the program itself has them

/// The trace in a file: registers at the left edge, what they became on the wire behind two blanks.
class TraceFile {
  public:
    explicit TraceFile(const std::string& path)
        : file_(path, std::ios::binary),
          registers_([this](std::string_view line) { file_ << line << '\n'; }),
          wire_([this](std::string_view line) { file_ << "  " << line << '\n'; }) {}

    void AttachTo(HardwareSession& hardware, bool wire) {
        if (wire) {
            seams_ = std::make_unique<TracedSeams>(hardware.Seams, wire_);
            hardware.Seams = seams_->Seams();
        }
        hardware.Trace = &registers_;
    }
    /// Flushes; false if anything failed since it was opened.
    bool Finish() { return static_cast<bool>(file_.flush()); }

  private:
    std::ofstream file_;
    TraceLog registers_;
    TraceLog wire_;
    std::unique_ptr<TracedSeams> seams_;
};

std::string AttachedText(const std::string& simulate) {
    const auto spec = ParseSimulate(simulate);
    if (!spec) return "this machine";
    return "simulated " + std::string(Model(spec->Row).ShortName) + " on " +
           std::string(SimCableName(spec->Cable));
}

CliExit CannotWrite(const std::string& file, std::ostream& err) {
    err << "zu-cli: " << file << ": cannot be written\n";
    return CliExit::Problems;
}

}  // namespace

CliExit ScanInstruments(const ScanRequest& request, std::ostream& out, std::ostream& err) {
    if (!request.Simulate.empty() && !ParseSimulate(request.Simulate)) {
        err << "zu-cli: no instrument to simulate " << request.Simulate << ": " << SimulateChoices() << '\n';
        return CliExit::Usage;
    }
    std::unique_ptr<TraceFile> trace;
    if (!request.TraceFile.empty()) {
        trace = std::make_unique<TraceFile>(request.TraceFile);
        if (!trace->Finish()) return CannotWrite(request.TraceFile, err);
    }
    TerminalHost host(out, err);
    Attachment attachment(request.Simulate);
    HardwareSession hardware(host);
    attachment.AttachTo(hardware);
    if (trace != nullptr) trace->AttachTo(hardware, request.Wire);
    SetupOSFunctions(hardware, kDriverFamily);
    ScanReport report = Scan(hardware);
    report.Attached = AttachedText(request.Simulate);
    out << (request.Json ? ScanJson(report) : ScanText(report)) << std::flush;
    if (trace != nullptr && !trace->Finish()) return CannotWrite(request.TraceFile, err);
    if (!out) return CliExit::Problems;
    return report.FoundAny() ? CliExit::Ok : CliExit::NoInstrument;
}

}  // namespace zu
