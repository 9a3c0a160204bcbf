#include "comms/terminal_session.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "model/address.h"

namespace zentro {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr char kEnter = '\r';
constexpr char kBackspace = 8;
constexpr char kDelete = 127;
constexpr std::size_t kLongestLine = 256;  // of those sent; what is longer is no command
constexpr milliseconds kReopenInterval{1000};

/// Lines of a download that are later than this are not made up for: a burst of them would leave
/// the board no pauses.
constexpr milliseconds kLongestDelay{50};

/// So long a download over a link that takes no time works before it lets events run.
constexpr milliseconds kLongestTurn{8};

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Upper(a) == Upper(b); });
}

/// The address in brackets at this position; nothing when there is none.
std::optional<std::uint16_t> AddressAt(std::string_view text, std::size_t position) {
    for (std::size_t back = 0; back <= kAddressDigits + 1 && back <= position; ++back) {
        const std::size_t bracket = position - back;
        if (bracket >= text.size() || text[bracket] != '[') continue;
        if (const auto address = ParseAddress(text.substr(bracket + 1, kAddressDigits)))
            return address;
    }
    return std::nullopt;
}

}  // namespace

TerminalSession::TerminalSession(Link& link, MessageSink showMessage, PortLister listPorts,
                                 milliseconds verdictLimit)
    : link_(link),
      showMessage_(std::move(showMessage)),
      listPorts_(std::move(listPorts)),
      comms_(link, showMessage_),
      log_(showMessage_),
      screen_([this](std::string_view text) { log_.Write(text); }) {
    readTimer_.setInterval(kPollInterval);
    connect(&readTimer_, &QTimer::timeout, this, &TerminalSession::Poll);
    downloadTimer_.setSingleShot(true);
    downloadTimer_.setTimerType(Qt::PreciseTimer);
    connect(&downloadTimer_, &QTimer::timeout, this, &TerminalSession::StepDownload);
    verdictTimer_.setSingleShot(true);
    verdictTimer_.setInterval(verdictLimit);
    connect(&verdictTimer_, &QTimer::timeout, this, &TerminalSession::GiveUpDownload);
    reopenTimer_.setInterval(kReopenInterval);
    connect(&reopenTimer_, &QTimer::timeout, this, &TerminalSession::LookForPort);
}

TerminalSession::~TerminalSession() {
    blockSignals(true);  // who listens may be gone
    CloseConnection();
}

void TerminalSession::OpenConnection(const std::string& portName, std::string_view greeting) {
    GiveUpDownload();
    ClosePort();
    lastDownload_ = {};
    if (OpenPort(DevicePath(portName, listPorts_()))) {
        GreetBoard(greeting);
    } else {
        emit FormClosing();
    }
}

void TerminalSession::Reopen() {
    if (!reopenDevice_) return;
    GiveUpDownload();
    const std::string device = *reopenDevice_;
    if (OpenPort(device)) GreetBoard(kAttention);
}

bool TerminalSession::OpenPort(const std::string& device) {
    commHandle_ = comms_.OpenCommPort(device);
    const bool ready = commHandle_ >= 1 && comms_.ConfigCommPorts(commHandle_) != 0 &&
                       comms_.ConfigCommTimeouts(commHandle_, false, !linkFailed_) != 0;
    linkFailed_ = !ready;
    if (!ready) {
        ClosePort();
        return false;
    }
    portIdentity_ = IdentityOf(device, listPorts_());
    lineBeingSent_.clear();
    reopenDevice_.reset();
    reopenTimer_.stop();
    readTimer_.start();
    return true;
}

void TerminalSession::GreetBoard(std::string_view greeting) {
    for (const char character : greeting) {
        if (IsConnected()) SendKeyStroke(character);
    }
    // The greeting ends a load that was left, and the board stores what it has of it.
    brokenLoadLine_.emplace();
    if (IsConnected()) emit ConnectionInitOK();
}

void TerminalSession::CloseConnection() {
    GiveUpDownload();
    ClosePort();
    reopenTimer_.stop();
    reopenDevice_.reset();
    // The terminal is closing: what the log could not take has been told, or nobody could act on
    // it.
    static_cast<void>(log_.End(screen_.Text()));
}

void TerminalSession::ClosePort() {
    readTimer_.stop();
    if (commHandle_ >= 1) {
        comms_.CloseCommPort(std::exchange(commHandle_, -1), !linkFailed_);
    }
    commHandle_ = -1;
}

/// The dead handle is closed: while it is open the system keeps the device's name taken.
void TerminalSession::LoseLink() {
    const bool wasOpen = commHandle_ >= 1;
    linkFailed_ = true;
    ClosePort();
    if (wasOpen) reopenTimer_.start();
    WorkOnDownload([](Download& download) { download.LoseLine(); });
    emit ConnectionLost();
}

void TerminalSession::Poll() {
    std::string text;
    std::int32_t count = 0;
    if (comms_.ReadCommPort(commHandle_, text, count) == 0) {
        LoseLink();
        return;
    }
    if (count == 0) return;
    if (screenOff_) {
        emit CharsReceived(text);
    } else {
        WriteToScreen(text);
    }
    HearBrokenLoad(text);
    WorkOnDownload([&text](Download& download) { download.Hear(text); });
}

/// The newest verdict counts: an earlier one may be that of a load before.
void TerminalSession::HearBrokenLoad(std::string_view text) {
    if (!brokenLoadLine_ || download_ != nullptr) return;
    for (const char character : text) {
        std::string& line = *brokenLoadLine_;
        if (character != '\r' && character != '\n') {
            if (line.size() < kLongestLine) line += character;
            continue;
        }
        const std::string ended = std::exchange(line, {});
        if (!IsVerdict(ended)) continue;
        const bool wasCancelled = lastDownload_.outcome != DownloadOutcome::None;
        if (!wasCancelled) lastDownload_.outcome = DownloadOutcome::Cancelled;
        lastDownload_.replacedProgram = true;
        lastDownload_.holdsNothing = HoldsNothing(ended);
        if (!wasCancelled && lastDownload_.MayLeavePart())
            WriteToScreen(
                "\r\nA download was broken off, and KineTron holds only a part of a "
                "program.\r\nPlease download it again before you run it.\r\n");
        emit BrokenLoadEnded(lastDownload_);
        if (!brokenLoadLine_) return;  // who listens may have gone on
    }
}

void TerminalSession::HearArrived() {
    if (IsConnected()) Poll();
}

void TerminalSession::LookForPort() {
    const bool wasPresent = CanReopen();
    reopenDevice_ = PresentPort();
    if (!wasPresent && CanReopen()) emit PortIsBack();
}

std::optional<std::string> TerminalSession::PresentPort() const {
    if (std::optional<std::string> device = FindPort(portIdentity_, listPorts_())) return device;
    // A pseudo-terminal or a name that somebody gave is in no list.
    if (portIdentity_.usb) return {};
    const QFileInfo node(QFile::decodeName(portIdentity_.device.c_str()));
    if (!node.exists() || !node.isWritable()) return {};
    return portIdentity_.device;
}

bool TerminalSession::WriteToPort(std::string_view text) {
    if (comms_.WriteCommPort(commHandle_, text) == 0) {
        LoseLink();
        return false;
    }
    TellLinesSent(text);
    return true;
}

/// Lines are put together from single keys as well.
void TerminalSession::TellLinesSent(std::string_view text) {
    for (const char character : text) {
        if (character == kEnter) {
            emit LineSent(std::exchange(lineBeingSent_, {}));
        } else if (character == kBackspace || character == kDelete) {
            if (!lineBeingSent_.empty()) lineBeingSent_.pop_back();
        } else if (character != '\n' && lineBeingSent_.size() < kLongestLine) {
            lineBeingSent_ += Upper(character);
        }
    }
}

bool TerminalSession::IsDebugging() const {
    const std::string_view text = screen_.Text();
    return text.size() >= kDebugPrompt.size() &&
           EqualIgnoringCase(text.substr(text.size() - kDebugPrompt.size()), kDebugPrompt);
}

bool TerminalSession::SendCmd(std::string_view command) {
    return WriteToPort(command);
}

bool TerminalSession::ChkForDebugB4SendCmd(std::string_view command) {
    if (!IsDebugging()) return SendCmd(command);
    showMessage_("KineTron in Debug Mode and cannot alter hardware");
    return false;
}

void TerminalSession::SendKeyStroke(char key) {
    WriteToPort({&key, 1});
}

void TerminalSession::PressKey(char key) {
    if (IsDownloading()) return;
    brokenLoadLine_.reset();  // what is typed may be a load
    if (key == kEnter) {
        screen_.TakePromptLineOff();
        emit ScreenChanged();
    }
    SendKeyStroke(key);
}

void TerminalSession::WriteToScreen(std::string_view text) {
    screen_.ProcessScreenText(text);
    emit ScreenChanged();
}

void TerminalSession::DoubleClickAt(std::size_t position) {
    if (const auto address = AddressAt(screen_.Text(), position)) emit SyncToCodeLine(*address);
}

void TerminalSession::DownloadSource(const std::string& path, std::optional<std::string> text) {
    if (IsDownloading()) {
        showMessage_("A download is already running.");
        return;
    }
    GiveUpDownload();  // one that waits for its verdict
    lastDownload_ = {};
    brokenLoadLine_.reset();
    download_ = std::make_unique<Download>(
        path, std::move(text),
        DownloadTerminal{[this](std::string_view text) { return WriteToPort(text); },
                         [this](std::string_view text) { WriteToScreen(text); }, showMessage_,
                         [this] { HearArrived(); }});
    cancelWanted_ = false;
    downloadDue_ = steady_clock::now();
    StepDownload();
}

void TerminalSession::CancelDownload() {
    if (IsDownloading()) GiveUpDownload();
}

/// Cancels what is being sent, or waits no longer for the board's verdict.
void TerminalSession::GiveUpDownload() {
    cancelWanted_ = true;
    if (!isWorkingOnDownload_) WorkOnDownload([](Download&) {});
}

void TerminalSession::StepDownload() {
    WorkOnDownload([this](Download& download) {
        SendWhatIsDue(download);
        if (download.IsSending()) {
            const auto wait = std::chrono::ceil<milliseconds>(downloadDue_ - steady_clock::now());
            downloadTimer_.start(std::max(wait, milliseconds{0}));
        } else if (!download.IsOver()) {
            verdictTimer_.start();
        }
        emit DownloadProgress(download.Fraction(), static_cast<int>(download.LinesSent()));
    });
}

/// When each thing is due follows from the start, so the timer's roundings do not add up.
void TerminalSession::SendWhatIsDue(Download& download) {
    const auto turnEnd = steady_clock::now() + kLongestTurn;
    downloadDue_ = std::max(downloadDue_, steady_clock::now() - kLongestDelay);
    do {
        const std::chrono::microseconds wait = download.Step();
        if (link_.TakesTime()) downloadDue_ += wait;
    } while (download.IsSending() && !cancelWanted_ && downloadDue_ <= steady_clock::now() &&
             steady_clock::now() < turnEnd);
}

/// Anything can come of the work, also what ends the download: it stays until the work is done.
void TerminalSession::WorkOnDownload(const std::function<void(Download&)>& work) {
    if (download_ == nullptr) return;
    const bool isWithinOther = std::exchange(isWorkingOnDownload_, true);
    work(*download_);
    if (cancelWanted_ && !isWithinOther) download_->Cancel();
    isWorkingOnDownload_ = isWithinOther;
    if (isWithinOther || !download_->IsOver()) return;
    downloadTimer_.stop();
    verdictTimer_.stop();
    const std::unique_ptr<Download> ended = std::move(download_);
    lastDownload_ = ended->Result();
    if (lastDownload_.outcome == DownloadOutcome::Cancelled && lastDownload_.replacedProgram)
        brokenLoadLine_.emplace();
    emit DownloadFinished(lastDownload_);
}

std::string TerminalSession::StartLog(const std::string& path, std::string_view longDate) {
    return log_.Start(path, longDate);
}

void TerminalSession::EndLog() {
    const std::string message = log_.End(screen_.Text());
    if (!message.empty()) showMessage_(message);
}

}  // namespace zentro
