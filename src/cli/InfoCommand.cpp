#include "cli/InfoCommand.h"

#include <ostream>

#include "cli/CaptureSession.h"
#include "cli/FileReport.h"

namespace zu {

CliExit ShowInfo(const InfoRequest& request, std::ostream& out, std::ostream& err) {
    if (LoadTypeOf(request.File).empty()) {
        err << "zu-cli: " << request.File << ": neither a data file (.zu) nor a settings file (.ini)\n";
        return CliExit::Usage;
    }
    CaptureSession session(out, err);
    if (!session.Load(request.File)) return CliExit::Problems;
    const FileReport report = MakeReport(session, request.File);
    out << (request.Json ? ReportJson(report) : ReportText(report)) << std::flush;
    return report.Problems.empty() && out ? CliExit::Ok : CliExit::Problems;
}

}  // namespace zu
