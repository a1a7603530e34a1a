#include "cli/Cli.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

#include "cli/CaptureCommand.h"
#include "cli/DecodeCommand.h"
#include "cli/InfoCommand.h"
#include "cli/RenderCommand.h"
#include "cli/ScanCommand.h"
#include "core/CommandLine.h"
#include "state/Limits.h"

namespace zu {
namespace {

constexpr const char* kDescription =
    "Finds the logic analyzer, captures with it and looks into its files, from a script or a machine without "
    "a screen.\n"
    "Exit codes: 0 done; 1 a file could not be read or written, or told of problems; 2 wrong usage; "
    "3 not available in this build; 4 no instrument answers; 5 no trigger in time; 130 interrupted.";

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

/// A value that begins as an option does is one: the option's own value was forgotten.
const CLI::Validator kNoOption(
    [](std::string& text) {
        return text.starts_with('-') ? "a value is missing ahead of " + text : std::string{};
    },
    "");

/// The commands with their options; what was given lands in the requests.
class CommandLine {
  public:
    CommandLine() : app_(kDescription, "zu-cli") {
        const std::string version = VersionLine("zu-cli");
        app_.set_version_flag("--version", version.substr(0, version.find('\n')));
        app_.require_subcommand(1);
        AddInfo();
        AddRender();
        AddCapture();
        AddScan();
        AddDecode();
    }

    CLI::App& Parser() { return app_; }
    int Run(std::ostream& out, std::ostream& err) {
        if (info_->parsed()) return static_cast<int>(ShowInfo(infoRequest_, out, err));
        if (capture_->parsed()) return static_cast<int>(TakeCaptures(captureRequest_, out, err));
        if (scan_->parsed()) return static_cast<int>(ScanInstruments(scanRequest_, out, err));
        if (decode_->parsed()) return static_cast<int>(ShowTransfers(decodeRequest_, out, err));
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

    void AddCapture() {
        capture_ = app_.add_subcommand("capture", "Take captures with the instrument and save them");
        CaptureRequest& request = captureRequest_;
        AddSource(request);
        AddTrigger(request);
        capture_->add_option("--count", request.Count, "captures to take; more than one get numbered names")
            ->type_name("N")
            ->check(CLI::Range(1, kMostCaptures).description(""));
        capture_
            ->add_option("--timeout", request.TimeoutS,
                         "seconds for the trigger of each capture to come, 0 without end")
            ->type_name("SECONDS")
            ->check(CLI::Range(0.0, kLongestTimeoutS).description(""))
            ->capture_default_str();
        capture_->add_flag("--force", request.Force,
                           "when the time is over, or at Ctrl+C, save what the memory holds by then");
        capture_->add_flag("--json", request.Json, "a summary as one JSON object, for programs");
    }
    /// Where the captures come from and how they are sampled.
    void AddSource(CaptureRequest& request) {
        capture_->add_option("-o,--output", request.Output, "data file to write (.zu)")
            ->type_name("FILE")
            ->required();
        capture_
            ->add_option("--simulate", request.Simulate,
                         "the simulated instrument instead of the connected one, as Roach40L or Pike80S@epp")
            ->type_name("MODEL[@CABLE]")
            ->check(kNoOption);
        capture_->add_option("--scene", request.Scene, "signals of the simulated instrument: " + SceneNames())
            ->type_name("NAME")
            ->check(kNoOption);
        capture_
            ->add_option("--settings", request.Settings,
                         "settings file (.ini) or data file (.zu) to start from")
            ->type_name("FILE");
        capture_->add_option("--rate", request.Rate, "sample rate, as 100MHz or 10ns")
            ->type_name("RATE")
            ->check(kNoOption);
        capture_->add_option("--mode", request.Mode, "memory mode by its number")->type_name("N");
    }
    void AddTrigger(CaptureRequest& request) {
        capture_
            ->add_option(
                "--trigger", request.Trigger,
                "CHANNELS=VALUE,... as 0-7=0x40 or CLK=1, with rising, falling, all, any, count=N, "
                "lasts=N, within=N; again for the next level (default: that of the settings, else none)")
            ->type_name("TERMS")
            ->expected(1)
            ->take_all();
        capture_->add_option("--position", request.Position, "sample at which the trigger stands")
            ->type_name("N")
            ->check(CLI::Range(0, INT32_MAX).description(""));
    }

    void AddScan() {
        scan_ = app_.add_subcommand("scan", "List the instruments that are attached");
        scan_->add_option("--simulate", scanRequest_.Simulate,
                          "attach the simulated instrument, MODEL[@CABLE], instead of this machine's cables");
        CLI::Option* trace = scan_->add_option("--trace", scanRequest_.TraceFile,
                                               "file that takes every register access, a line each");
        scan_->add_flag("--wire", scanRequest_.Wire, "put port accesses and USB transfers into the trace too")
            ->needs(trace);
        scan_->add_flag("--json", scanRequest_.Json, "as one JSON object, for programs");
    }

    static constexpr int kMostCaptures = 1000000;
    static constexpr double kLongestTimeoutS = 1e6;

    void AddDecode() {
        decode_ = app_.add_subcommand("decode", "Print the bus transfers of a data file in time order");
        decode_->add_option("FILE", decodeRequest_.File, "data file (.zu)")->required();
        decode_->add_option("--group", decodeRequest_.Group, "one group only, by its number")
            ->check(CLI::Range(0, kGroupCount - 1));
        decode_->add_flag("--json", decodeRequest_.Json, "as one JSON object, for programs");
    }

    CLI::App app_;
    CLI::App* capture_ = nullptr;
    CLI::App* info_ = nullptr;
    CLI::App* render_ = nullptr;
    CLI::App* scan_ = nullptr;
    InfoRequest infoRequest_;
    CaptureRequest captureRequest_;
    RenderRequest renderRequest_;
    ScanRequest scanRequest_;
    CLI::App* decode_ = nullptr;
    DecodeRequest decodeRequest_;
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
