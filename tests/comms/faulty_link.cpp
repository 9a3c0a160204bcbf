#include "tests/comms/faulty_link.h"

#include <system_error>

namespace zentro {

bool FaultyLink::Fails(LinkStep step) {
    ++calls_[step];
    const auto fault = failing_.find(step);
    if (fault == failing_.end()) return false;
    // The number of an input or output error, for the texts that tell it.
    if (fault->second) {
        throw std::system_error(std::make_error_code(std::errc::io_error), *fault->second);
    }
    return true;
}

std::string FaultyLink::Pass(Way& way, std::string_view bytes) {
    std::string passing;
    if (way.delayCalls > 0 && --way.delayCalls == 0) {
        way.delay.reset();
        passing = std::move(way.held);
        way.held.clear();
    }
    for (const char byte : bytes) {
        const std::size_t at = way.passed;
        if (way.cut && at >= *way.cut) {
            way.lost = true;
            break;
        }
        ++way.passed;
        if (way.drop == at) continue;
        const char arriving = way.garble == at ? static_cast<char>(byte ^ 0x55) : byte;
        (way.delay && at >= *way.delay ? way.held : passing) += arriving;
    }
    return passing;
}

void FaultyLink::Mend() {
    opening_.reset();
    setup_.reset();
    failing_.clear();
    fromBoard_ = {};
    toBoard_ = {};
}

LinkOpening FaultyLink::Open(const std::string& portName) {
    if (Fails(LinkStep::Open)) return {-1, {}};
    for (Way* way : {&fromBoard_, &toBoard_}) {
        way->passed = 0;
        way->held.clear();
        way->lost = false;
    }
    if (opening_) return *opening_;
    return inner_ != nullptr ? inner_->Open(portName) : LinkOpening{1, {}};
}

LineSetup FaultyLink::ConfigureLine() {
    if (Fails(LinkStep::ConfigureLine)) return LineSetup::SettingsRefused;
    if (setup_) return *setup_;
    return inner_ != nullptr ? inner_->ConfigureLine() : LineSetup::Done;
}

bool FaultyLink::SaveTimeouts() {
    return !Fails(LinkStep::SaveTimeouts) && (inner_ == nullptr || inner_->SaveTimeouts());
}

bool FaultyLink::MakeReadsReturnAtOnce() {
    return !Fails(LinkStep::MakeReadsReturnAtOnce) &&
           (inner_ == nullptr || inner_->MakeReadsReturnAtOnce());
}

bool FaultyLink::RestoreTimeouts() {
    return !Fails(LinkStep::RestoreTimeouts) && (inner_ == nullptr || inner_->RestoreTimeouts());
}

std::optional<std::string> FaultyLink::Read(std::size_t limit) {
    if (Fails(LinkStep::Read) || fromBoard_.lost) return std::nullopt;
    const std::optional<std::string> bytes = inner_ != nullptr ? inner_->Read(limit) : "";
    if (!bytes) return std::nullopt;
    return Pass(fromBoard_, *bytes);
}

std::size_t FaultyLink::Write(std::string_view bytes) {
    if (Fails(LinkStep::Write) || toBoard_.lost) return 0;
    const std::string passing = Pass(toBoard_, bytes);
    if (inner_ != nullptr && !passing.empty() && inner_->Write(passing) == 0) return 0;
    return toBoard_.lost ? passing.size() : bytes.size();
}

void FaultyLink::Flush() {
    if (!Fails(LinkStep::Flush) && inner_ != nullptr) inner_->Flush();
}

bool FaultyLink::Close() {
    const bool fails = Fails(LinkStep::Close);
    return (inner_ == nullptr || inner_->Close()) && !fails;
}

}  // namespace zentro
