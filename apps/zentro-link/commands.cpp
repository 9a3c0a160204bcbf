#include "apps/zentro-link/commands.h"

#include <array>
#include <cstdio>
#include <iostream>

#include "apps/zentro-link/answers.h"
#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/download_command.h"
#include "apps/zentro-link/failures.h"
#include "apps/zentro-link/print_variables.h"
#include "comms/manual_controls.h"
#include "comms/port_list.h"
#include "config/file.h"

namespace zentro {

namespace {

/// The connection to a board that has answered its greeting.
struct Conversation {
    BoardLine& line;
    const Options& options;
    std::string brokenOffLoad;  ///< how the board ended a load that somebody had left; may be empty
};

constexpr std::string_view kBrokenOff = "A download was broken off, so send the program again";

/// Half a program may do anything with the motors. True when the board holds one, which is told.
bool HoldsPart(const Conversation& talk) {
    const std::string& verdict = talk.brokenOffLoad;
    if (!verdict.starts_with("Loaded") || verdict == "Loaded 0 bytes") return false;
    TellFailure("the board holds only a part of a program: " + verdict + ". " +
                std::string(kBrokenOff));
    return true;
}

ExitStatus RefuseToStart(const Conversation& talk, const std::string& words) {
    if (talk.brokenOffLoad.empty()) return TellRefusal(words);
    return TellRefusal(words + ". " + std::string(kBrokenOff));
}

/// A board that starts a program says nothing, so the whole time for a refusal has to pass.
ExitStatus Run(const Conversation& talk) {
    using Clock = std::chrono::steady_clock;
    if (HoldsPart(talk)) return ExitStatus::Refused;
    BoardLine& line = talk.line;
    line.Send("G\r");
    const Clock::time_point end = Clock::now() + kAnswerLimit;
    Answer answer;
    bool isEchoed = false;
    const bool isAnswered = line.WaitForAnswer([&] {
        answer = StartAnswer(line.Received());
        isEchoed = isEchoed || IsStartEchoed(line.Received());
        return answer.state != Answer::State::Unfinished || (isEchoed && Clock::now() >= end);
    });
    if (answer.state == Answer::State::Refused) return RefuseToStart(talk, answer.words);
    if (line.IsLost() || !isAnswered) return TellNoAnswer(line, talk.options);
    return ExitStatus::Done;
}

ExitStatus Debug(const Conversation& talk) {
    if (HoldsPart(talk)) return ExitStatus::Refused;
    BoardLine& line = talk.line;
    line.Send("X\rD\r");  // out of what runs, in debug mode or not
    Answer answer;
    line.WaitForAnswer([&] {
        answer = DebugAnswer(line.Received());
        return answer.state != Answer::State::Unfinished;
    });
    if (answer.state == Answer::State::Refused) return RefuseToStart(talk, answer.words);
    if (answer.state == Answer::State::Done) {
        if (!talk.options.quiet) std::cout << answer.words << '\n';
        return ExitStatus::Done;
    }
    if (line.IsLost() || line.Received().empty()) return TellNoAnswer(line, talk.options);
    TellFailure("the board on " + talk.options.port + " shows no debug prompt");
    return ExitStatus::Refused;
}

ExitStatus Stop(const Conversation& talk) {
    BoardLine& line = talk.line;
    ManualControls(line.Session()).Stop();
    Answer answer;
    line.WaitForAnswer([&] {
        answer = StopAnswer(line.Received());
        return answer.state != Answer::State::Unfinished;
    });
    switch (answer.state) {
        case Answer::State::Done: return ExitStatus::Done;
        case Answer::State::Refused: return TellRefusal(answer.words);
        case Answer::State::Unfinished: break;
    }
    return TellNoAnswer(line, talk.options);
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

ExitStatus Do(const Conversation& talk, std::vector<DebugVariable> variables, int& signal) {
    switch (talk.options.command) {
        case LinkCommand::Download: return Download(talk.line, talk.options, signal);
        case LinkCommand::Run: return Run(talk);
        case LinkCommand::Debug: return Debug(talk);
        case LinkCommand::Stop: return Stop(talk);
        case LinkCommand::Variables:
            return PrintVariables(talk.line, talk.options, std::move(variables));
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

ExitStatus CarryOut(const Options& options, int& signal) {
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
    // Motors stop at once, however long the board takes to say its name.
    const bool isUrgent = options.command == LinkCommand::Stop;
    const bool isNamed =
        isUrgent || line.WaitForAnswer([&] { return HasSaidItsName(line.Received()); });
    // One that says something else may understand its command all the same, and has to show it.
    if (!isNamed && (line.IsLost() || line.Received().empty())) return TellNoAnswer(line, options);
    return Do({line, options, BrokenOffLoad(line.Received())}, std::move(variables), signal);
}

}  // namespace zentro
