#pragma once

#include <QFlags>

namespace zentro {

/// How a text is looked for; without any: in any letter case, also within words.
enum class FindOption { WholeWord = 2, MatchCase = 4 };
Q_DECLARE_FLAGS(FindOptions, FindOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(FindOptions)

}  // namespace zentro
