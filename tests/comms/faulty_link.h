#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "comms/link.h"

namespace zentro {

enum class LinkStep : std::uint8_t {
    Open,
    ConfigureLine,
    SaveTimeouts,
    MakeReadsReturnAtOnce,
    RestoreTimeouts,
    Read,
    Write,
    Flush,
    Close,
};

enum class Direction : std::uint8_t { FromBoard, ToBoard };

/// A link that passes everything on to another one, except for the faults that a test orders.
/// Bytes are counted from 0, for each direction on its own, since the last Open.
class FaultyLink : public Link {
  public:
    /// The inner link outlives this one. Null: a link on which every step succeeds, nothing arrives
    /// and everything is taken.
    explicit FaultyLink(Link* inner = nullptr) : inner_(inner) {}

    void FailToOpen(std::int32_t code, std::string advice = {}) {
        opening_ = {code, std::move(advice)};
    }
    void FailToConfigure(LineSetup outcome) { setup_ = outcome; }
    /// Read and Write fail as on a lost line, the others return false.
    void FailAt(LinkStep step) { failing_.insert_or_assign(step, std::nullopt); }
    /// An error that nobody expected.
    void ThrowAt(LinkStep step, std::string text) {
        failing_.insert_or_assign(step, std::move(text));
    }

    void DropByte(Direction direction, std::size_t at) { Of(direction).drop = at; }
    void GarbleByte(Direction direction, std::size_t at) { Of(direction).garble = at; }
    /// The byte and all behind it stay on the way for so many reads or writes.
    void DelayByte(Direction direction, std::size_t at, std::size_t calls) {
        Of(direction).delay = at;
        Of(direction).delayCalls = calls;
    }
    /// The line is lost before this byte; what came before it still passes.
    void CutAt(Direction direction, std::size_t at) { Of(direction).cut = at; }
    /// Ends all faults that were ordered.
    void Mend();

    std::size_t Calls(LinkStep step) const { return calls_.count(step) ? calls_.at(step) : 0; }

    LinkOpening Open(const std::string& portName) override;
    LineSetup ConfigureLine() override;
    bool SaveTimeouts() override;
    bool MakeReadsReturnAtOnce() override;
    bool RestoreTimeouts() override;
    std::optional<std::string> Read(std::size_t limit) override;
    std::size_t Write(std::string_view bytes) override;
    void Flush() override;
    bool Close() override;

  private:
    struct Way {
        std::optional<std::size_t> drop;
        std::optional<std::size_t> garble;
        std::optional<std::size_t> delay;
        std::optional<std::size_t> cut;
        std::size_t delayCalls = 0;
        std::size_t passed = 0;
        std::string held;
        bool lost = false;
    };

    Way& Of(Direction direction) {
        return direction == Direction::FromBoard ? fromBoard_ : toBoard_;
    }
    /// Counts the call. True when it is to fail.
    bool Fails(LinkStep step);
    static std::string Pass(Way& way, std::string_view bytes);

    Link* inner_;
    std::optional<LinkOpening> opening_;
    std::optional<LineSetup> setup_;
    std::map<LinkStep, std::optional<std::string>> failing_;  ///< with a text: it throws
    std::map<LinkStep, std::size_t> calls_;
    Way fromBoard_;
    Way toBoard_;
};

}  // namespace zentro
