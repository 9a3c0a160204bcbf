#include "desktop/breakpoints.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

namespace zentro {

Breakpoints::Breakpoints(Programs& programs, QObject* parent)
    : QObject(parent), programs_(programs) {
    connect(&programs, &Programs::Changed, this, &Breakpoints::FollowNames);
    connect(&programs, &Programs::LinesMoved, this, &Breakpoints::MoveLines);
    connect(&programs, &Programs::LinesGoing, this, &Breakpoints::KeepPlaces);
    connect(&programs, &Programs::TextIsBack, this, &Breakpoints::BringBack);
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
    all_.push_back({file.key, *withCode, {}, ++lastId_});
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
    past_.clear();
    emit Changed();
}

/// A file that was saved under another name takes its breakpoints along. Those of a file that it
/// was saved over are gone with that file's text.
void Breakpoints::FollowNames() {
    std::map<QString, QString> renamed;
    for (const OpenFile& file : programs_.Files()) {
        const auto [known, isNew] = keys_.try_emplace(file.id, file.key);
        if (known->second != file.key) renamed[known->second] = file.key;
        known->second = file.key;
    }
    const auto isSavedOver = [&](const Breakpoint& breakpoint) {
        return !renamed.contains(breakpoint.file) &&
               std::ranges::any_of(
                   renamed, [&](const auto& names) { return names.second == breakpoint.file; });
    };
    bool changed = std::erase_if(all_, isSavedOver) > 0;
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
    const auto stays = [&](const Breakpoint& breakpoint) {
        return breakpoint.file != file->key || LineAfter(move, breakpoint.line).has_value();
    };
    const auto taken = std::ranges::stable_partition(all_, stays);
    bool changed = !taken.empty();
    if (changed) std::ranges::copy(taken, std::back_inserter(past_[id].gone));
    all_.erase(taken.begin(), taken.end());
    for (Breakpoint& breakpoint : all_) {
        if (breakpoint.file != file->key) continue;
        const int line = *LineAfter(move, breakpoint.line);
        changed = changed || line != breakpoint.line;
        breakpoint.line = line;
    }
    if (changed) emit Changed();
}

void Breakpoints::KeepPlaces(FileId id) {
    const OpenFile* file = programs_.File(id);
    if (file == nullptr) return;
    std::map<std::uint32_t, int> places;
    for (const Breakpoint& breakpoint : all_) {
        if (breakpoint.file == file->key) places[breakpoint.id] = breakpoint.line;
    }
    if (!places.empty()) past_[id].places[file->revision] = std::move(places);
}

/// Those that stood in the text, and that nobody took away since, stand where they stood.
void Breakpoints::BringBack(FileId id, Revision revision) {
    const OpenFile* file = programs_.File(id);
    const auto past = past_.find(id);
    if (file == nullptr || past == past_.end()) return;
    const auto kept = past->second.places.find(revision);
    if (kept == past->second.places.end()) return;
    const std::map<std::uint32_t, int>& places = kept->second;
    const auto stood = [&](const Breakpoint& breakpoint) { return places.contains(breakpoint.id); };
    const auto back = std::ranges::stable_partition(past->second.gone, std::not_fn(stood));
    std::ranges::copy(back, std::back_inserter(all_));
    past->second.gone.erase(back.begin(), back.end());
    for (Breakpoint& breakpoint : all_) {
        if (!stood(breakpoint)) continue;
        breakpoint.file = file->key;
        breakpoint.line = places.at(breakpoint.id);
    }
    // A line that got another breakpoint meanwhile has one all the same.
    std::ranges::stable_sort(all_, {},
                             [](const Breakpoint& b) { return std::pair(b.file, b.line); });
    const auto isSameLine = [](const Breakpoint& a, const Breakpoint& b) {
        return a.file == b.file && a.line == b.line;
    };
    const auto doubled = std::ranges::unique(all_, isSameLine);
    all_.erase(doubled.begin(), doubled.end());
    emit Changed();
}

/// A text that was never saved is gone when it is closed.
void Breakpoints::Forget(FileId id) {
    keys_.erase(id);
    past_.erase(id);
    const OpenFile* file = programs_.File(id);
    if (file == nullptr || !file->NeverSaved()) return;
    const QString key = file->key;
    if (std::erase_if(all_, [&](const Breakpoint& b) { return b.file == key; }) > 0) emit Changed();
}

}  // namespace zentro
