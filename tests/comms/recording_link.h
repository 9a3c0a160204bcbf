#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "comms/link.h"

namespace zentro {

/// A line whose other end is the test: it sees what was written and says what is to be read.
class RecordingLink : public Link {
  public:
    std::string written;
    std::string toRead;
    bool lost = false;  ///< nothing can be read or written any more

    LinkOpening Open(const std::string&) override { return {1, {}}; }
    LineSetup ConfigureLine() override { return LineSetup::Done; }
    bool SaveTimeouts() override { return true; }
    bool MakeReadsReturnAtOnce() override { return true; }
    bool RestoreTimeouts() override { return true; }
    std::optional<std::string> Read(std::size_t) override {
        if (lost) return std::nullopt;
        return std::exchange(toRead, {});
    }
    std::size_t Write(std::string_view bytes) override {
        if (lost) return 0;
        written += bytes;
        return bytes.size();
    }
    void Flush() override {}
    bool Close() override { return true; }
};

/// The debug prompt as a board sends it.
inline constexpr std::string_view kSentPrompt =
    "*Debug Mode*  Go,eXit,Mem,Reset,Alter,Jump or <CR> to Step -> \x1b[D";

}  // namespace zentro
