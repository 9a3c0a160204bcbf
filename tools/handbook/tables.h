#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "tools/handbook/html.h"
#include "tools/handbook/word_index.h"

namespace zentro {

using Rows = std::vector<std::vector<std::string>>;

/// A table of cells that are HTML; the first row is the heading.
std::string TableHtml(const Rows& rows);

/// What the configuration says of an entry.
std::string DescriptionHtml(const Command& entry);

/// Every single word of the language and where it is explained. It has the places of the words that
/// no page has.
std::string WordIndexHtml(std::span<const WordPlace> places, const References& references);

/// The messages from one code to another.
std::string MessageTableHtml(const MessageCatalogue& messages, std::string_view first,
                             std::string_view last);

/// The instructions of the board that programs are made of.
std::string InstructionTableHtml();

}  // namespace zentro
