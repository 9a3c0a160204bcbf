#include "ui/dialogs/text_history.h"

namespace zentro {

void TextHistory::Add(const QString& text) {
    if (text.isEmpty()) return;
    texts_.removeAll(text);
    texts_.prepend(text);
    if (texts_.size() > kMost) texts_.removeLast();
}

}  // namespace zentro
