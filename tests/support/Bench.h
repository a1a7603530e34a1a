#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>

#include "core/App.h"
#include "core/Paths.h"
#include "state/Model.h"
#include "support/RecordingShell.h"
#include "support/ScriptedHost.h"

namespace zu::test {

/// A folder of its own that goes with the object.
class TempFolder {
  public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zu-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(File(name), std::ios::binary) << bytes;
        return File(name);
    }
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ifstream file(File(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] bool Has(const std::string& name) const { return std::filesystem::exists(File(name)); }

  private:
    std::string path_;
};

/// A whole program without windows: state, scripted host, recorded shell, and nothing at the cables. Its
/// files lie in a folder of its own.
struct Bench {
    Bench() {
        State->Files.AppDir = Folder.Path();
        BuildFileNames(*State);
    }

    TempFolder Folder;
    std::unique_ptr<InstrumentState> State = std::make_unique<InstrumentState>();
    ScriptedHost Host;
    RecordingShell Shell{*State};
    HardwareSession Hardware{Host};
    zu::App App{*State, Host, Shell, Hardware};

    /// Emulates a row of the catalogue with its plain memory.
    void UseRow(int row) { ChangeModel(*State, row); }
    [[nodiscard]] std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& box : Host.Boxes) texts.push_back(box.Caption + "|" + box.Text);
        return texts;
    }
    void Forget() {
        Host.Boxes.clear();
        Host.TimerLog.clear();
        Shell.Log.clear();
    }
};

}  // namespace zu::test
