#include "cli/Cli.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

#include "cli/InfoCommand.h"
#include "cli/RenderCommand.h"
#include "core/CommandLine.h"

namespace zu {
namespace {

constexpr const char* kDescription =
    "Looks into the files of zu from a script or a machine without a screen.\n"
    "Exit codes: 0 done; 1 the file could not be read or written, or told of problems; 2 wrong usage; "
    "3 not available in this build.";

/// "1280x800"; nothing for any other form.
std::optional<PictureRequest> ParseSize(const std::string& text) {
    PictureRequest size;
    int end = 0;
    // Five digits are more than the largest side; longer numbers cannot overflow a field that they never
    // reach.
    if (std::sscanf(text.c_str(), "%5dx%5d%n", &size.Width, &size.Height, &end) != 2) return std::nullopt;
    if (static_cast<std::size_t>(end) != text.size() || size.Width < 1 || size.Height < 1)
        return std::nullopt;
    return size;
}

const CLI::Validator kSize(
    [](std::string& text) {
        return ParseSize(text) ? std::string{} : "no size of the form 1280x800: " + text;
    },
    "WxH", "size");

const CLI::Validator kZoom(
    [](std::string& text) { return text == "0" ? std::string("there is no zoom 0") : std::string{}; }, "");

/// The commands with their options; what was given lands in the two requests.
class CommandLine {
  public:
    CommandLine() : app_(kDescription, "zu-cli") {
        const std::string version = VersionLine("zu-cli");
        app_.set_version_flag("--version", version.substr(0, version.find("\n")));
        app_.require_subcommand(1);
        AddInfo();
        AddRender();
    }

    CLI::App& Parser() { return app_; }
    int Run(std::ostream& out, std::ostream& err) {
        if (info_->parsed()) return static_cast<int>(ShowInfo(infoRequest_, out, err));
        if (const auto size = ParseSize(size_)) {
            renderRequest_.Picture.Width = size->Width;
            renderRequest_.Picture.Height = size->Height;
        }
        return static_cast<int>(RenderPicture(renderRequest_, out, err));
    }

  private:
    void AddInfo() {
        info_ = app_.add_subcommand("info", "Tell what a data or settings file holds");
        info_->add_option("FILE", infoRequest_.File, "data file (.zu) or settings file (.ini)")->required();
        info_->add_flag("--json", infoRequest_.Json, "as one JSON object, for programs");
    }
    void AddRender() {
        render_ = app_.add_subcommand("render", "Paint the Timing view of a data file as a picture");
        render_->add_option("FILE", renderRequest_.File, "data file (.zu)")->required();
        render_->add_option("-o,--output", renderRequest_.Output, "picture to write, .png or .svg")
            ->required();
        render_
            ->add_option("--zoom", renderRequest_.Zoom,
                         "pixels per sample, or as a negative number samples per pixel (default: the file's)")
            ->check(kZoom);
        render_->add_option("--pos", renderRequest_.Position,
                            "first sample at the left edge (default: the file's)");
        render_->add_option("--size", size_, "width and height in pixels")->check(kSize)->default_str(size_);
        render_->add_option("--scale", renderRequest_.Picture.Scale, "device pixels per pixel, PNG only")
            ->check(CLI::Range(0.1, 8.0))
            ->capture_default_str();
    }

    CLI::App app_;
    CLI::App* info_ = nullptr;
    CLI::App* render_ = nullptr;
    InfoRequest infoRequest_;
    RenderRequest renderRequest_;
    std::string size_ = "1280x800";
};

}  // namespace

int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    CommandLine line;
    try {
        line.Parser().parse(argc, argv);
    } catch (const CLI::ParseError& end) {
        // --help and --version end the parse too, with code 0.
        return line.Parser().exit(end, out, err) == 0 ? static_cast<int>(CliExit::Ok)
                                                      : static_cast<int>(CliExit::Usage);
    }
    return line.Run(out, err);
}

}  // namespace zu
