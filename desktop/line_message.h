#pragma once

#include <QString>

#include "config/message_catalogue.h"

namespace zentro {

/// What the compiler has to say about a line of one file.
struct LineMessage {
    int line = 0;  ///< from 1
    Severity severity = Severity::Error;
    QString text;
};

}  // namespace zentro
