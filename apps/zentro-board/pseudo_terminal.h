#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zentro {

/// A pseudo-terminal in raw mode: the board's end of it, which stays when clients come and go.
class PseudoTerminal {
  public:
    /// Makes one. On failure nothing is returned and `error` says why.
    static std::optional<PseudoTerminal> Open(std::string& error);

    PseudoTerminal(PseudoTerminal&& other) noexcept;
    PseudoTerminal& operator=(PseudoTerminal&&) = delete;
    ~PseudoTerminal();

    /// What a client opens, "/dev/pts/4".
    const std::string& Name() const { return name_; }

    /// To wait for characters with poll.
    int Descriptor() const { return descriptor_; }

    /// Whether a client holds the other end open.
    bool HasClient() const;

    /// What has arrived, at most `limit` characters; empty if nothing has. Never waits.
    std::string Read(std::size_t limit);

    /// Sends as much as the client has room for. Returns how many characters. Never waits.
    std::size_t Write(std::string_view text);

    /// Throws away what the last client did not read.
    void DiscardUnread();

  private:
    PseudoTerminal(int descriptor, std::string name);

    int descriptor_;
    std::string name_;
};

}  // namespace zentro
