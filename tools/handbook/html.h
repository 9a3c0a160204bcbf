#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "tools/handbook/manuscript.h"

namespace zentro {

/// The word in capitals; letters beyond A to Z stay.
std::string InCapitals(std::string_view word);

/// A text with the characters that mean something in HTML written as entities.
std::string EscapeHtml(std::string_view text);

/// A place that links lead to.
std::string AnchorHtml(std::string_view name);

/// A word as it may be asked for: in capitals, in small letters, and with a capital.
std::string WordAnchorsHtml(std::string_view word);

/// The name of the place of a title: "The number display" is "the-number-display".
std::string PlaceOfTitle(std::string_view title);

/// The entry of the configuration with the token, or nothing.
const Command* EntryOf(const CommandCatalogue& commands, std::string_view token);

std::string CodeHtml(std::string_view text);

/// What the texts of the handbook may refer to, and what each reference looks like.
class References {
  public:
    References(const InstructionConfiguration& language, const Manuscript& manuscript);

    /// A text of the manuscript: `code` and the references {s19}, {E24} and {#place-of-title}.
    /// What is wrong with it is appended to the problems.
    std::string TextHtml(std::string_view text, const std::string& place,
                         std::vector<std::string>& problems) const;

    /// A link to the page of a token or message code; only its words when it has none.
    std::string LinkHtml(std::string_view token) const;

    /// Whether a title has that place.
    bool HasPlace(std::string_view place) const {
        return shown_.contains("#" + std::string(place));
    }

    /// The words of the language that a token stands for, UTF-8.
    std::string Words(std::string_view token) const;

  private:
    std::string ReferenceHtml(std::string_view reference) const;

    const InstructionConfiguration& language_;
    std::map<std::string, std::string, std::less<>> shown_;  ///< by token, code or "#place"
};

}  // namespace zentro
