#include "apps/zentro-link/download_command.h"

#include <QSocketNotifier>
#include <iostream>
#include <optional>

#include "apps/zentro-link/answers.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/ending_signals.h"
#include "apps/zentro-link/failures.h"

namespace zentro {

namespace {

constexpr auto kNoLimit = std::chrono::hours(24);  // a download that makes progress has none

/// What the board holds after a load that was ended before its last line.
std::string WhatIsLeft(const std::string& verdict) {
    if (verdict.empty())
        return "the board has not said what it holds. Download the program again before you run it";
    if (verdict.starts_with("Not loaded") || verdict == "Loaded 0 bytes")
        return "the board holds no program now";
    return "the board holds only a part of the program: " + verdict +
           ". Download it again before you run it";
}

/// A download and the signals that may end it.
class InterruptibleDownload {
  public:
    InterruptibleDownload(BoardLine& line, const Options& options)
        : line_(line), progress_(options.quiet) {
        TerminalSession& session = line.Session();
        QObject::connect(&session, &TerminalSession::DownloadProgress, &asked_,
                         [this](double fraction, int) { progress_.Show(fraction); });
        QObject::connect(&session, &TerminalSession::DownloadFinished, &asked_,
                         [this](const DownloadResult& finished) { result_ = finished; });
        QObject::connect(&asked_, &QSocketNotifier::activated, [this] {
            if (const int signal = signals_.Take(); signal != 0) signal_ = signal;
        });
        session.DownloadSource(options.objectFile);
    }

    /// Until it is over, a signal comes, or the line is lost.
    void Wait() {
        line_.WaitUntil([this] { return result_ || signal_ != 0; }, kNoLimit);
    }

    int Signal() const { return signal_; }
    /// Without an outcome when the line is lost: what is left of the file is then of no use.
    DownloadResult Result() const { return result_.value_or(DownloadResult()); }

    /// Ends it at once, and says in which state it was.
    std::string Interrupt() {
        if (!line_.Session().IsDownloading())
            return "ended before the board had said whether it holds the program";
        line_.Forget();
        line_.Session().CancelDownload();
        if (result_ && !result_->replacedProgram)
            return "cancelled before the program was sent; the board holds what it held before";
        const int before = std::exchange(signal_, 0);
        line_.WaitForAnswer(
            [this] { return signal_ != 0 || !BrokenOffLoad(line_.Received()).empty(); });
        signal_ = before;
        return "cancelled; " + WhatIsLeft(BrokenOffLoad(line_.Received()));
    }

  private:
    BoardLine& line_;
    ProgressLine progress_;
    EndingSignals signals_;
    QSocketNotifier asked_{signals_.Descriptor(), QSocketNotifier::Read};
    std::optional<DownloadResult> result_;
    int signal_ = 0;
};

ExitStatus Judge(const DownloadResult& result, const BoardLine& line, const Options& options) {
    switch (result.outcome) {
        case DownloadOutcome::Whole:
            if (!options.quiet) std::cout << result.verdict << '\n';
            return ExitStatus::Done;
        case DownloadOutcome::WrongCount:
            return TellRefusal(result.verdict + ", but the program has " +
                               std::to_string(result.bytesInFile.value_or(0)));
        case DownloadOutcome::Refused: return TellRefusal(result.verdict);
        case DownloadOutcome::LineLost: return TellLost(options);
        case DownloadOutcome::FileUnreadable: return ExitStatus::BadUsage;
        case DownloadOutcome::NoVerdict:
        case DownloadOutcome::None:
        case DownloadOutcome::Cancelled: break;
    }
    if (line.IsLost()) return TellLost(options);
    TellFailure("the board on " + options.port +
                " does not answer whether it holds the program. Download it again before you run "
                "it");
    return ExitStatus::Refused;
}

}  // namespace

ExitStatus Download(BoardLine& line, const Options& options, int& signal) {
    std::string interruption;
    DownloadResult result;
    {
        InterruptibleDownload download(line, options);
        download.Wait();
        signal = download.Signal();
        if (signal != 0) {
            interruption = download.Interrupt();
        } else {
            result = download.Result();
        }
    }
    if (signal == 0) return Judge(result, line, options);
    if (line.IsLost()) return TellLost(options);
    TellFailure(interruption);
    return ExitStatus::Refused;
}

}  // namespace zentro
