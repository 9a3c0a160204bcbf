#include "apps/zentro-link/commands.h"

#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <iostream>

#include "apps/zentro-board/text_file.h"
#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/print_variables.h"
#include "comms/manual_controls.h"
#include "comms/port_list.h"
#include "config/file.h"

namespace zentro {

namespace {

ExitStatus Lost(const Options& options) {
    TellFailure("the connection to " + options.port + " was lost");
    return ExitStatus::NoConnection;
}

/// The board said nothing to what was asked: because it is gone, or because it would not.
ExitStatus NoAnswer(const BoardLine& line, const Options& options) {
    if (line.IsLost()) return Lost(options);
    TellFailure("the board on " + options.port + " does not answer");
    return ExitStatus::Refused;
}

/// The line with which the board refuses a command; empty when it does not.
std::string RefusalIn(std::string_view answer) {
    for (const std::string_view line : SplitLines(answer)) {
        if (line == "?" || line == "No program") return std::string(line);
    }
    return {};
}

ExitStatus Refuse(std::string_view words) {
    TellFailure("the board answers: " + std::string(words));
    return ExitStatus::Refused;
}

/// Asks for something that the board does or refuses.
ExitStatus Command(BoardLine& line, const Options& options, std::string_view command) {
    const std::optional<std::string> answer = line.Ask(command);
    if (!answer) return NoAnswer(line, options);
    const std::string refusal = RefusalIn(*answer);
    return refusal.empty() ? ExitStatus::Done : Refuse(refusal);
}

/// Sends the program and waits for what the board says about it.
DownloadResult SendProgram(BoardLine& line, const Options& options) {
    std::optional<DownloadResult> result;
    ProgressLine progress(options.quiet);
    TerminalSession& session = line.Session();
    const auto showing = QObject::connect(&session, &TerminalSession::DownloadProgress,
                                          [&](double fraction, int) { progress.Show(fraction); });
    const auto finishing =
        QObject::connect(&session, &TerminalSession::DownloadFinished,
                         [&](const DownloadResult& finished) { result = finished; });
    session.DownloadSource(options.objectFile);
    while (!result)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(showing);
    QObject::disconnect(finishing);
    return *result;
}

ExitStatus Download(BoardLine& line, const Options& options) {
    const DownloadResult result = SendProgram(line, options);
    switch (result.outcome) {
        case DownloadOutcome::Whole:
            if (!options.quiet) std::cout << result.verdict << '\n';
            return ExitStatus::Done;
        case DownloadOutcome::WrongCount:
            return Refuse(result.verdict + ", but the program has " +
                          std::to_string(result.bytesInFile.value_or(0)));
        case DownloadOutcome::Refused: return Refuse(result.verdict);
        case DownloadOutcome::LineLost: return Lost(options);
        case DownloadOutcome::FileUnreadable: return ExitStatus::BadUsage;
        case DownloadOutcome::None:
        case DownloadOutcome::NoVerdict:
        case DownloadOutcome::Cancelled: break;
    }
    return NoAnswer(line, options);
}

ExitStatus Debug(BoardLine& line, const Options& options) {
    if (line.Session().IsDebugging()) line.Ask("X\r");
    const std::optional<std::string> answer = line.Ask("D\r");
    if (!answer) return NoAnswer(line, options);
    if (!line.Session().IsDebugging()) {
        const std::string refusal = RefusalIn(*answer);
        return Refuse(refusal.empty() ? "no debug prompt" : refusal);
    }
    // Its echo, the line of the instruction, the prompt.
    const std::vector<std::string_view> lines = SplitLines(*answer);
    if (!options.quiet && lines.size() >= 2) std::cout << lines[lines.size() - 2] << '\n';
    return ExitStatus::Done;
}

ExitStatus Stop(BoardLine& line, const Options& options) {
    line.Forget();
    ManualControls(line.Session()).Stop();
    return line.Listen() ? ExitStatus::Done : NoAnswer(line, options);
}

ExitStatus List() {
    const std::vector<PortDescription> ports = ListPorts();
    if (ports.empty()) std::cout << "No serial port is there.\n";
    for (const PortDescription& port : ports) {
        std::cout << port.name << '\t' << port.description << '\t';
        if (port.usb) {
            std::array<char, 16> identity{};
            std::snprintf(identity.data(), identity.size(), "%04x:%04x", unsigned{port.usb->vendor},
                          unsigned{port.usb->product});
            std::cout << identity.data();
            if (!port.usb->serialNumber.empty()) std::cout << ' ' << port.usb->serialNumber;
        }
        std::cout << '\n';
    }
    return ExitStatus::Done;
}

ExitStatus Do(BoardLine& line, const Options& options, std::vector<DebugVariable> variables) {
    switch (options.command) {
        case LinkCommand::Download: return Download(line, options);
        case LinkCommand::Run: return Command(line, options, "G\r");
        case LinkCommand::Debug: return Debug(line, options);
        case LinkCommand::Stop: return Stop(line, options);
        case LinkCommand::Variables: return PrintVariables(line, std::move(variables));
        case LinkCommand::List:
        case LinkCommand::Terminal: break;
    }
    return ExitStatus::BadUsage;
}

/// The text of a file that the command needs. False when it cannot be read, which has been told.
bool ReadNeeded(const std::string& path, std::string& text) {
    if (path.empty()) return true;
    FileContent file = ReadWholeFile(path);
    text = std::move(file.bytes);
    if (file.status == FileContent::Status::Read) return true;
    TellFailure("cannot read '" + path + "': " + file.problem);
    return false;
}

}  // namespace

ExitStatus CarryOut(const Options& options) {
    if (options.command == LinkCommand::List) return List();
    std::string text;
    std::vector<DebugVariable> variables;
    if (!ReadNeeded(options.objectFile, text) || !ReadNeeded(options.symbolFile, text) ||
        (options.command == LinkCommand::Variables &&
         !ReadVariables(options.symbolFile, text, variables))) {
        return ExitStatus::BadUsage;
    }
    BoardLine line;
    if (!line.Open(options.port)) return ExitStatus::NoConnection;
    if (!line.Listen()) return NoAnswer(line, options);
    const ExitStatus status = Do(line, options, std::move(variables));
    return status == ExitStatus::Refused && line.IsLost() ? Lost(options) : status;
}

}  // namespace zentro
