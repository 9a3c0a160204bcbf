#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace zentro {

/// How many single mistakes (a letter too many, too few, another one, two that changed places)
/// make one word of the other, whatever their letter case; nothing when it is more than are
/// forgiven in a word of that length, or when the words differ in their digits.
std::optional<std::size_t> SpellingDistance(std::string_view typed, std::string_view meant);

/// The same where so many mistakes are forgiven, in words of any length.
std::optional<std::size_t> SpellingDistance(std::string_view typed, std::string_view meant,
                                            std::size_t forgiven);

/// Keeps the nearest of the words that it is offered.
class NearestWord {
  public:
    explicit NearestWord(std::string_view typed) : typed_(typed) {}

    /// The same word may be offered again.
    void Offer(std::string_view word);

    /// Nothing when no word is near, or when two are as near.
    std::optional<std::string_view> Found() const;

  private:
    std::string_view typed_;
    std::string_view nearest_;
    std::size_t distance_ = 0;  ///< of the nearest; 0: there is none
    bool isOnly_ = true;
};

}  // namespace zentro
