#pragma once

#include <string>
#include <utility>

#include "model/environment.h"

namespace zentro {

/// Names the files of a log's messages: a line number alone does not say which of several files is
/// meant.
class FileHeadings {
  public:
    /// The log begins with the main file. Without a name, that is the first file with a message.
    explicit FileHeadings(std::string mainFileName = {})
        : currentFileName_(std::move(mainFileName)) {}

    /// The line to write before the message, without a line break: "In 'part.txt':". Empty when the
    /// message is no mistake, or is about the same file as the one before.
    std::string Before(const PostedMessage& message);

  private:
    std::string currentFileName_;
};

}  // namespace zentro
