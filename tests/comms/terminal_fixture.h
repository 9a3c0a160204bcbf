#pragma once

#include <QObject>
#include <string>
#include <utility>
#include <vector>

#include "comms/terminal_session.h"
#include "tests/comms/board_fixture.h"

namespace zentro {

inline constexpr const char* kWriteError = "CommPort Write Error. Operating System returned 0";

/// A session, what it tells, and how often it raised what.
struct Terminal {
    explicit Terminal(
        Link& link, PortLister listPorts = [] { return std::vector<PortDescription>(); },
        std::chrono::milliseconds verdictLimit = kVerdictLimit)
        : session(
              link, [this](const std::string& text) { told.push_back(text); }, std::move(listPorts),
              verdictLimit) {
        const auto count = [](int& counter) { return [&counter] { ++counter; }; };
        QObject::connect(&session, &TerminalSession::ConnectionInitOK, count(opened));
        QObject::connect(&session, &TerminalSession::ConnectionLost, count(lost));
        QObject::connect(&session, &TerminalSession::PortIsBack, count(back));
        QObject::connect(&session, &TerminalSession::FormClosing, count(closing));
        QObject::connect(&session, &TerminalSession::DownloadFinished,
                         [this](const DownloadResult& result) {
                             ++finished;
                             outcome = result.outcome;
                         });
        QObject::connect(&session, &TerminalSession::CharsReceived,
                         [this](const std::string& text) { received += text; });
        QObject::connect(&session, &TerminalSession::SyncToCodeLine,
                         [this](std::uint16_t address) { addresses.push_back(address); });
    }

    const std::string& Shown() const { return session.Screen().Text(); }
    bool Shows(const std::string& text) {
        return WaitUntil([&] { return Shown().find(text) != std::string::npos; });
    }

    std::vector<std::string> told;
    std::vector<std::uint16_t> addresses;
    std::string received;
    int opened = 0;
    int lost = 0;
    int back = 0;
    int closing = 0;
    int finished = 0;
    DownloadOutcome outcome = DownloadOutcome::None;  ///< of the last that finished
    TerminalSession session;
};

}  // namespace zentro
