// Measures what a press of F10 and Shift+F10 takes on the virtual board, after a run of 25 million
// instructions, and how fast a program is watched for a breakpoint. bench/follow builds and runs
// it.
#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <string>

#include "compiler/compile.h"
#include "config/file.h"
#include "desktop/program_lines.h"
#include "desktop/program_report.h"
#include "desktop/virtual_board_host.h"

namespace {

using zentro::LineStep;
using zentro::VirtualBoardHost;

constexpr int kPresses = 200;
constexpr std::uint64_t kInstructions = 25'000'000;

constexpr const char* kProgram =
    "DEFINE WORD Count = 0\nDEFINE WORD Sum = 0\nDEFINE ROUTINE Add(Number WORD)\n"
    "    Sum = Sum + Number\nEND ROUTINE\nBEGIN PROGRAM\n    LOOP\n        Count = Count + 1\n"
    "        CALL Add(Count)\n    END LOOP\nEND PROGRAM\n";

struct NoOutput : zentro::OutputSink {
    void Write(std::string_view, zentro::LogColour, const zentro::PostedMessage*) override {}
};
struct NoPrompts : zentro::Prompts {
    void ShowMessage(std::string_view) override {}
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};
struct OneFile : zentro::FileReader {
    zentro::FileContent Read(const std::string&) override {
        return {zentro::FileContent::Status::Read, kProgram, {}};
    }
};
struct NoProgress : zentro::Progress {
    void LetEventsRun() override {}
};
struct ToMemory : zentro::FileWriter {
    std::string text;
    std::string Write(const std::string&, std::string_view bytes) override {
        text = bytes;
        return {};
    }
};

/// What the work used of the processor, which others on the machine disturb least.
double Milliseconds(const std::function<void()>& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) * 1e3 / CLOCKS_PER_SEC;
}

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "%s\n", what);
    std::exit(1);
}

/// The slowest of many presses.
double Slowest(const std::function<bool()>& press) {
    double slowest = 0;
    for (int i = 0; i < kPresses; ++i) {
        bool moved = false;
        slowest = std::max(slowest, Milliseconds([&] { moved = press(); }));
        if (!moved) Fail("a press did nothing");
    }
    return slowest;
}

void Measure(VirtualBoardHost& host, std::uint16_t breakpoint) {
    host.SetBreakpoints({{breakpoint, [](const zentro::Board&) { return false; }}});
    host.Run();
    const double watched = Milliseconds([&] {
        while (host.State().processor.steps < kInstructions)
            host.Advance(1000);
    });
    host.SetBreakpoints({});
    host.Pause();
    const double first = Milliseconds([&] {
        if (!host.StepLineBack()) Fail("nothing could be taken back");
    });
    const double back = Slowest([&] { return host.StepLineBack(); });
    const double forward = Slowest([&] {
        const std::uint64_t before = host.State().processor.steps;
        host.StepLine(LineStep::Over);
        return host.State().processor.steps > before && host.IsPaused();
    });
    std::printf(
        "result\tfollowing, million instructions a second before a breakpoint\t\t\t%.1f\t"
        ">= 1\n",
        static_cast<double>(kInstructions) / watched / 1e3);
    std::printf("result\tfollowing, slowest F10 in ms\t\t\t%.3f\t<= 20\n", forward);
    std::printf(
        "result\tfollowing, first Shift+F10 after 25 million instructions in ms\t\t\t%.1f\t"
        "<= 100\n",
        first);
    std::printf("result\tfollowing, slowest Shift+F10 after that in ms\t\t\t%.1f\t<= 100\n", back);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    zentro::InstructionConfiguration language;
    if (argc != 2 || !zentro::LoadInstructionConfig(argv[1], language).empty())
        Fail("usage: follow_speed CONFIGURATION");
    NoOutput output;
    NoPrompts prompts;
    OneFile files;
    NoProgress progress;
    ToMemory object;
    zentro::Compilation compilation(language, {output, prompts, files, progress});
    zentro::ProgramFiles paths;
    paths.sourceFileName = "main.txt";
    paths.objectFileName = "main.obj";
    if (!zentro::CompileSource(compilation, paths, object, nullptr)) Fail("it does not compile");
    const zentro::ProgramLines lines(compilation, &zentro::FileKey);
    const auto breakpoint = lines.StartOf(zentro::FileKey({}, "main.txt"), 10);
    const auto host = std::make_unique<VirtualBoardHost>();
    host->SetLines(lines.Starts());
    if (!host->LoadProgram(object.text).empty() || !breakpoint) Fail("it cannot be loaded");
    Measure(*host, *breakpoint);
}
