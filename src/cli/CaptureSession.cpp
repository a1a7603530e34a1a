#include "cli/CaptureSession.h"

#include "core/Defaults.h"
#include "core/FileCommands.h"
#include "files/DataFile.h"
#include "files/Paths.h"
#include "files/ReadableFile.h"
#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {

CaptureSession::CaptureSession(std::ostream& out, std::ostream& err)
    : state_(std::make_unique<InstrumentState>()),
      host_(out, err),
      hardware_(host_),
      app_{*state_, host_, windows_, hardware_} {}

bool CaptureSession::Load(const std::string& path) {
    if (!ReadableFile::Open(path)) {
        host_.Message("cannot be read", path);
        return false;
    }
    const int row = HardwareTypeOfFile(path).value_or(SeriesDefaultRow(*state_));
    // A row without a shape of its own cannot be emulated.
    state_->Command.ModelRow = HasShape(row) ? row : SeriesDefaultRow(*state_);
    InitDefaults(app_);
    return LoadFile(app_, LoadTypeOf(path), path, true) == LoadStatus::Loaded;
}

std::string LoadTypeOf(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    return extension == "ZU" || extension == "INI" ? extension : std::string{};
}

}  // namespace zu
