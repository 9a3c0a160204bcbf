#include "desktop/fixes.h"

#include <algorithm>

namespace zentro {

namespace {

bool Covers(const Fix& fix, int column) {
    return fix.column - 1 <= column && column <= fix.column - 1 + fix.length;
}

bool Overlap(const Fix& one, const Fix& other) {
    return one.line == other.line && one.column <= other.column + other.length &&
           other.column <= one.column + one.length;
}

}  // namespace

const Fix* FixAt(const std::vector<LineMessage>& messages, int line, int column) {
    const Fix* first = nullptr;
    for (const LineMessage& message : messages) {
        if (message.line != line || !message.fix) continue;
        if (Covers(*message.fix, column)) return &*message.fix;
        if (first == nullptr) first = &*message.fix;
    }
    return first;
}

const Fix* SameFix(const std::vector<LineMessage>& messages, int line, const Fix& fix) {
    for (const LineMessage& message : messages) {
        const bool isSame = message.line == line && message.fix && message.fix->text == fix.text &&
                            message.fix->column == fix.column && message.fix->length == fix.length;
        if (isSame) return &*message.fix;
    }
    return nullptr;
}

std::vector<Fix> FixesOfKind(const std::vector<LineMessage>& messages, const Fix& fix) {
    std::vector<Fix> fixes{fix};
    for (const LineMessage& message : messages) {
        if (!message.fix || message.fix->kind != fix.kind) continue;
        const bool isFree = std::ranges::none_of(
            fixes, [&](const Fix& taken) { return Overlap(taken, *message.fix); });
        if (isFree) fixes.push_back(*message.fix);
    }
    return fixes;
}

QString FixedLine(const QString& line, const Fix& fix) {
    std::u32string text = line.toStdU32String();  // a fix counts whole characters
    const auto begin = std::min(static_cast<std::size_t>(fix.column) - 1, text.size());
    text.replace(begin, static_cast<std::size_t>(fix.length),
                 QString::fromStdString(fix.text).toStdU32String());
    return QString::fromStdU32String(text);
}

}  // namespace zentro
