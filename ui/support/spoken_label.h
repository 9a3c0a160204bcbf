#pragma once

#include <QString>

class QLabel;

namespace zentro {

/// Lets a screen reader say what a label shows together with what that is, which the eye sees from
/// its place: "State of the board: Paused". A name alone would hide the text.
void SayWithCaption(QLabel& label, const QString& caption);

/// The same for a label that shows only the beginning of the text.
void SayWithCaption(QLabel& label, const QString& caption, const QString& text);

}  // namespace zentro
