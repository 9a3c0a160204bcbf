#pragma once

#include <csignal>

namespace zentro {

/// While it lives, the signals that ask to end are something to read and end nothing by themselves.
class EndingSignals {
  public:
    EndingSignals();
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

    /// Is ready to read when one has come.
    int Descriptor() const { return descriptor_; }
    /// The one that came, 0 if none did.
    int Take() const;

  private:
    sigset_t before_{};
    int descriptor_ = -1;
};

}  // namespace zentro
