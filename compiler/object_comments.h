#pragma once

#include <string>
#include <unordered_map>

#include "model/compilation.h"

namespace zentro {

/// Puts what the listing says about object lines into words.
class ObjectComments {
  public:
    explicit ObjectComments(const Compilation& compilation);

    /// The comment of a line of the compilation, without the leading ";"; of a very long one what a
    /// listing shows, and more.
    std::string TextOf(const ObjectLine& line) const;

  private:
    std::string TextOfLocation(const ObjectLine& line) const;

    const Compilation& compilation_;
    std::unordered_map<const Label*, const Symbol*> symbols_;
    std::unordered_map<const Label*, const Constant*> constants_;
};

}  // namespace zentro
