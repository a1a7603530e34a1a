#include "cli/RenderCommand.h"

#include <ostream>

#include "cli/CaptureSession.h"
#include "files/Paths.h"
#ifdef ZU_HAVE_PAINT
#include "paint/RenderFile.h"
#endif

namespace zu {
namespace {

bool IsPictureName(const std::string& name) {
    const std::string extension = ExtensionOf(name);
    return extension == "PNG" || extension == "SVG";
}

#ifdef ZU_HAVE_PAINT
CliExit Paint(const RenderRequest& request, std::ostream& out, std::ostream& err) {
    CaptureSession session(out, err);
    if (!session.Load(request.File)) return CliExit::Problems;
    TimingRecord& timing = session.State().Timing;
    timing.ScreenZoom = request.Zoom.value_or(timing.ScreenZoom);
    timing.TimingDataPos = request.Position.value_or(timing.TimingDataPos);
    const PictureSize size{request.Picture.Width, request.Picture.Height, request.Picture.Scale};
    std::string error;
    if (!RenderTimingToFile(session.State(), size, request.Output, error)) {
        err << "zu-cli: " << request.Output << ": " << error << '\n';
        return CliExit::Problems;
    }
    return session.Host().Problems().empty() ? CliExit::Ok : CliExit::Problems;
}
#else
CliExit Paint(const RenderRequest& /*request*/, std::ostream& /*out*/, std::ostream& err) {
    err << "zu-cli: this build paints no pictures: it was made without Qt\n";
    return CliExit::NotAvailable;
}
#endif

}  // namespace

CliExit RenderPicture(const RenderRequest& request, std::ostream& out, std::ostream& err) {
    if (LoadTypeOf(request.File) != "ZU") {
        err << "zu-cli: " << request.File << ": no data file (.zu)\n";
        return CliExit::Usage;
    }
    if (!IsPictureName(request.Output)) {
        err << "zu-cli: " << request.Output << ": the name of a picture ends in .png or .svg\n";
        return CliExit::Usage;
    }
    return Paint(request, out, err);
}

}  // namespace zu
