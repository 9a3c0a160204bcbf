#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zentro {

/// What a data table holds. Room that is only reserved takes no room here, since one short line can
/// reserve more than the board has.
class TableData {
  public:
    void Add(std::uint8_t byte) {
        bytes_.push_back(byte);
        ++size_;
    }
    void Add(std::string_view text) {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        size_ += text.size();
    }
    void AddZeros(std::size_t count) {
        zeros_.push_back({bytes_.size(), count});
        size_ += count;
    }

    /// In bytes.
    std::size_t Size() const { return size_; }

    /// Visits the bytes in order until `visit(byte)` is false.
    template <typename Visit>
    void ForEach(Visit visit) const {
        std::size_t next = 0;
        for (const Zeros& zeros : zeros_) {
            for (; next < zeros.position; ++next) {
                if (!visit(bytes_[next])) return;
            }
            for (std::size_t i = 0; i < zeros.count; ++i) {
                if (!visit(std::uint8_t{0})) return;
            }
        }
        for (; next < bytes_.size(); ++next) {
            if (!visit(bytes_[next])) return;
        }
    }

  private:
    /// They stand before the byte at the position.
    struct Zeros {
        std::size_t position;
        std::size_t count;
    };

    std::vector<std::uint8_t> bytes_;
    std::vector<Zeros> zeros_;
    std::size_t size_ = 0;
};

}  // namespace zentro
