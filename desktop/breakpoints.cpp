#include "desktop/breakpoints.h"

#include <algorithm>
#include <optional>

namespace zentro {

Breakpoints::Breakpoints(Programs& programs, QObject* parent)
    : QObject(parent), programs_(programs) {
    connect(&programs, &Programs::Changed, this, &Breakpoints::FollowNames);
    connect(&programs, &Programs::LinesMoved, this, &Breakpoints::MoveLines);
    connect(&programs, &Programs::Closing, this, &Breakpoints::Forget);
}

const Breakpoint* Breakpoints::At(const QString& file, int line) const {
    const auto found = std::ranges::find_if(all_, [&](const Breakpoint& breakpoint) {
        return breakpoint.file == file && breakpoint.line == line;
    });
    return found == all_.end() ? nullptr : &*found;
}

Breakpoints::Toggled Breakpoints::Toggle(const OpenFile& file, int line) {
    using What = Toggled::What;
    if (const Breakpoint* present = At(file.key, line)) {
        all_.erase(all_.begin() + (present - all_.data()));
        emit Changed();
        return {What::Removed, line};
    }
    const std::optional<int> withCode = programs_.LineWithCode(file, line);
    if (!withCode) return {What::NoCode, line};
    if (At(file.key, *withCode) != nullptr) return {What::Set, *withCode};
    all_.push_back({file.key, *withCode, {}});
    emit Changed();
    return {What::Set, *withCode};
}

void Breakpoints::SetCondition(const QString& file, int line, const QString& condition) {
    for (Breakpoint& breakpoint : all_) {
        if (breakpoint.file == file && breakpoint.line == line) breakpoint.condition = condition;
    }
    emit Changed();
}

void Breakpoints::Move(const QString& file, int from, int to) {
    const bool isTaken = At(file, to) != nullptr;
    const auto isIt = [&](const Breakpoint& breakpoint) {
        return breakpoint.file == file && breakpoint.line == from;
    };
    if (isTaken) {
        std::erase_if(all_, isIt);
    } else if (const auto found = std::ranges::find_if(all_, isIt); found != all_.end()) {
        found->line = to;
    }
    emit Changed();
}

void Breakpoints::Clear() {
    all_.clear();
    emit Changed();
}

/// A file that was saved under another name takes its breakpoints along.
void Breakpoints::FollowNames() {
    std::map<QString, QString> renamed;
    for (const OpenFile& file : programs_.Files()) {
        const auto [known, isNew] = keys_.try_emplace(file.id, file.key);
        if (known->second != file.key) renamed[known->second] = file.key;
        known->second = file.key;
    }
    bool changed = false;
    for (Breakpoint& breakpoint : all_) {
        const auto found = renamed.find(breakpoint.file);
        if (found == renamed.end()) continue;
        breakpoint.file = found->second;
        changed = true;
    }
    if (changed) emit Changed();
}

void Breakpoints::MoveLines(FileId id, const LineMove& move) {
    const OpenFile* file = programs_.File(id);
    if (file == nullptr) return;
    const auto isTakenOut = [&](const Breakpoint& breakpoint) {
        return breakpoint.file == file->key && !LineAfter(move, breakpoint.line);
    };
    bool changed = std::erase_if(all_, isTakenOut) > 0;
    for (Breakpoint& breakpoint : all_) {
        if (breakpoint.file != file->key) continue;
        const int line = *LineAfter(move, breakpoint.line);
        changed = changed || line != breakpoint.line;
        breakpoint.line = line;
    }
    if (changed) emit Changed();
}

/// A text that was never saved is gone when it is closed.
void Breakpoints::Forget(FileId id) {
    keys_.erase(id);
    const OpenFile* file = programs_.File(id);
    if (file == nullptr || !file->NeverSaved()) return;
    const QString key = file->key;
    if (std::erase_if(all_, [&](const Breakpoint& b) { return b.file == key; }) > 0) emit Changed();
}

}  // namespace zentro
