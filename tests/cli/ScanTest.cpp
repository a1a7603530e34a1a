// zu-cli scan: the list of what is attached, and the trace of how it was found.
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "CliSupport.h"
#include "support/TempFolder.h"

namespace zu::test {
namespace {

TEST(Scan, FindsTheSimulatedInstrumentOnUsb) {
    const CliRun run = RunZuCli({"scan", "--simulate=Roach160L@usb"});
    EXPECT_EQ(run.Code, 0) << run.Err;
    EXPECT_EQ(run.Out,
              "Attached        simulated Roach160LB on usb\n"
              "USB             Roach160LB (row 15)\n"
              "Ports           cannot be reached: Failed opening WinDriver device\n");
    EXPECT_EQ(run.Err, "");
}

TEST(Scan, ListsEveryIsaAddress) {
    const CliRun run = RunZuCli({"scan", "--simulate=Roach80L@isa"});
    EXPECT_EQ(run.Code, 0);
    EXPECT_EQ(run.Out,
              "Attached        simulated Roach80LB on isa\n"
              "USB             Ostrand Labs USB device not connected\n"
              "ISA 0x210       Roach80LB (row 14)\n"
              "ISA 0x230       No Logic Analyzer found at address=0x230\n"
              "ISA 0x280       No Logic Analyzer found at address=0x280\n"
              "ISA 0x2A0       No Logic Analyzer found at address=0x2A0\n"
              "ISA 0x300       No Logic Analyzer found at address=0x300\n"
              "ISA 0x320       No Logic Analyzer found at address=0x320\n"
              "ISA 0x380       No Logic Analyzer found at address=0x380\n");
}

TEST(Scan, TakesTheFastestModeOfAParallelPort) {
    EXPECT_NE(RunZuCli({"scan", "--simulate=Roach40S@epp"})
                  .Out.find("parallel 0x378  Roach40SB (row 11), EPP (byte mode)\n"),
              std::string::npos);
    EXPECT_NE(RunZuCli({"scan", "--simulate=3@byte"}).Out.find("parallel 0x378  Pike40L (row 3), 8 bit\n"),
              std::string::npos);
}

TEST(Scan, FindsEveryModelOnEveryCable) {
    for (const int row : {1, 2, 3, 4, 5, 11, 12, 13, 14, 15}) {
        for (const char* cable : {"usb", "isa", "byte", "epp", "epp16", "epp32"}) {
            const CliRun run =
                RunZuCli({"scan", "--json", "--simulate=" + std::to_string(row) + "@" + cable});
            EXPECT_EQ(run.Code, 0) << row << cable;
            const auto report = nlohmann::json::parse(run.Out);
            int found = 0;
            for (const auto& place : report["places"]) {
                if (!place["found"].get<bool>()) continue;
                ++found;
                EXPECT_EQ(place["row"], row) << cable;
            }
            EXPECT_EQ(found, 1) << row << cable;
        }
    }
}

TEST(Scan, TellsByItsExitCodeWhetherAnInstrumentIsThere) {
    const CliRun run = RunZuCli({"scan", "--json"});  // whatever hangs on this machine
    const auto report = nlohmann::json::parse(run.Out);
    EXPECT_EQ(report["attached"], "this machine");
    EXPECT_EQ(run.Code, report["found"].get<bool>() ? 0 : 4);
}

TEST(Scan, JsonTellsAddressModeAndProblem) {
    const auto report = nlohmann::json::parse(RunZuCli({"scan", "--json", "--simulate=15@epp"}).Out);
    EXPECT_EQ(report["attached"], "simulated Roach160LB on epp");
    EXPECT_EQ(report["found"], true);
    EXPECT_EQ(report["portsReachable"], true);
    const auto& usb = report["places"].front();
    EXPECT_EQ(usb["cable"], "USB");
    EXPECT_TRUE(usb["address"].is_null());
    EXPECT_EQ(usb["problem"], "Ostrand Labs USB device not connected");
    const auto& parallel = report["places"].back();
    EXPECT_EQ(parallel["cable"], "parallel");
    EXPECT_EQ(parallel["address"], 0x378);
    EXPECT_EQ(parallel["comMode"], 4);
    EXPECT_EQ(parallel["mode"], "EPP (byte mode)");
    EXPECT_EQ(parallel["model"], "Roach160LB");

    const auto ports = nlohmann::json::parse(RunZuCli({"scan", "--json", "--simulate=15@usb"}).Out);
    EXPECT_EQ(ports["portsReachable"], false);
    EXPECT_EQ(ports["portProblem"], "Failed opening WinDriver device");
}

TEST(Scan, TraceHoldsEveryRegisterAccess) {
    const TempFolder folder;
    const std::string plain = folder.File("plain");
    const std::string wire = folder.File("wire");
    EXPECT_EQ(RunZuCli({"scan", "--simulate=15@usb", "--trace", plain}).Code, 0);
    EXPECT_EQ(RunZuCli({"scan", "--simulate=15@usb", "--trace", wire, "--wire"}).Code, 0);
    const std::string registers = ReadBytes(plain);
    EXPECT_EQ(registers.rfind("W 0001 00\nFLUSH 2\nR 0001 ", 0), 0U) << registers.substr(0, 40);
    EXPECT_EQ(registers.find("UOUT"), std::string::npos);
    const std::string both = ReadBytes(wire);
    EXPECT_EQ(both.rfind("  UOPEN 0\n  UIDS scan : 95 31 20 00", 0), 0U) << both.substr(0, 60);
    EXPECT_NE(both.find("  UOUT 8c 1 10 : 04\n"), std::string::npos);
    std::string kept;
    std::istringstream lines(both);
    for (std::string line; std::getline(lines, line);) {
        if (line[0] != ' ') kept += line + "\n";
    }
    EXPECT_EQ(kept, registers) << "the wire's lines come between those of the registers";
}

TEST(Scan, TellsMisuseByItsExitCode) {
    const TempFolder folder;
    const CliRun unknown = RunZuCli({"scan", "--simulate=Nothing"});
    EXPECT_EQ(unknown.Code, 2);
    EXPECT_EQ(unknown.Err,
              "zu-cli: no instrument to simulate Nothing: MODEL[@CABLE] with a model of Pike40S, Pike80S, "
              "Pike40L, Pike80L, Pike160L, Roach40S, Roach80S, Roach40L, Roach80L, Roach160L and a cable of "
              "usb, isa, byte, epp, epp16, epp32\n");
    EXPECT_EQ(RunZuCli({"scan", "--simulate=15", "--wire"}).Code, 2) << "no file for it";
    EXPECT_EQ(RunZuCli({"scan", "surplus"}).Code, 2);
    const std::string lost = folder.File("missing") + "/trace";
    const CliRun unwritable = RunZuCli({"scan", "--simulate=15", "--trace", lost});
    EXPECT_EQ(unwritable.Code, 1);
    EXPECT_EQ(unwritable.Err, "zu-cli: " + lost + ": cannot be written\n");
    EXPECT_EQ(RunZuCli({"scan", "--simulate=15", "--trace", "/dev/full"}).Code, 1);
}

}  // namespace
}  // namespace zu::test
