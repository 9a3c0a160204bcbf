#include "desktop/programs.h"

#include <QDir>
#include <algorithm>

#include "desktop/compile_service.h"

namespace zentro {

namespace {

/// Whether a text that was read with this revision is the one that the file holds now. A file that
/// was not open then was read from the disk.
bool IsText(const OpenFile& file, Revision read) {
    return read == kTextOnDisk ? !file.IsChanged() : read == file.revision;
}

}  // namespace

QString OpenFile::Path() const {
    return folder.isEmpty() ? name : QDir(folder).filePath(name);
}

Programs::Programs(Disk& disk, QObject* parent) : QObject(parent), disk_(disk) {
    later_.setSingleShot(true);
    later_.setInterval(0);
    connect(&later_, &QTimer::timeout, this, &Programs::Changed);
    connect(&disk_, &Disk::Answered, this, &Programs::AskForKeys);
}

Programs::~Programs() = default;

QString Programs::KeyOf(const QString& folder, const QString& name) const {
    const QString path = folder.isEmpty() ? name : QDir(folder).filePath(name);
    if (!QDir::isAbsolutePath(path)) return FileKey(folder, name);
    const auto key =
        disk_.Ask(path, Patience::Short, [folder, name] { return FileKey(folder, name); });
    if (!key) return keys_.try_emplace(path, QDir::cleanPath(path)).first->second;
    keys_[path] = *key;
    return *key;
}

/// Links may lead to files that did not answer when they were opened.
void Programs::AskForKeys() {
    bool areOthers = false;
    for (OpenFile& file : files_) {
        QString key = KeyOf(file.folder, file.name);
        areOthers = areOthers || key != file.key;
        file.key = std::move(key);
    }
    if (areOthers) emit Changed();
}

FileId Programs::Add(const QString& folder, const QString& name, TextOf text) {
    OpenFile file;
    file.id = FileId{++lastId_};
    file.folder = folder;
    file.name = name;
    file.key = KeyOf(folder, name);
    file.revision = file.savedRevision = ++lastRevision_;
    files_.push_back(file);
    texts_[file.id] = std::move(text);
    front_ = file.id;
    emit Changed();
    return file.id;
}

void Programs::Remove(FileId id) {
    const auto found = std::ranges::find(files_, id, &OpenFile::id);
    if (found == files_.end()) return;
    emit Closing(id);
    // The tab that comes to the front is the next one, or else the one before.
    const auto index = static_cast<std::size_t>(found - files_.begin());
    const QString key = found->key;
    files_.erase(found);
    texts_.erase(id);
    moves_.erase(id);
    reports_.erase(key);
    if (main_ == id) main_.reset();
    if (front_ == id) {
        front_.reset();
        if (!files_.empty()) front_ = files_[std::min(index, files_.size() - 1)].id;
    }
    emit Changed();
}

OpenFile* Programs::Find(FileId id) {
    const auto found = std::ranges::find(files_, id, &OpenFile::id);
    return found == files_.end() ? nullptr : &*found;
}

const OpenFile* Programs::File(FileId id) const {
    const auto found = std::ranges::find(files_, id, &OpenFile::id);
    return found == files_.end() ? nullptr : &*found;
}

const OpenFile* Programs::Find(const QString& path) const {
    const QString key = KeyOf({}, path);
    const auto found = std::ranges::find(files_, key, &OpenFile::key);
    return found == files_.end() ? nullptr : &*found;
}

QString Programs::Text(FileId id) const {
    const auto found = texts_.find(id);
    return found == texts_.end() ? QString() : found->second();
}

const OpenFile* Programs::OpenedAs(const QString& keyThen, Revision read) const {
    const auto later = std::ranges::find_if(savedAs_, [&](const SavedAs& saved) {
        return saved.keyBefore == keyThen && read != kTextOnDisk && read <= saved.last &&
               File(saved.id) != nullptr;
    });
    if (later != savedAs_.end()) return File(later->id);
    const auto found = std::ranges::find(files_, keyThen, &OpenFile::key);
    return found == files_.end() ? nullptr : &*found;
}

Programs::ReadTexts::const_iterator Programs::ReadOf(const ReadTexts& texts,
                                                     const OpenFile& file) const {
    return std::ranges::find_if(texts, [&](const auto& text) {
        const OpenFile* open = OpenedAs(text.first, text.second);
        return open != nullptr && open->id == file.id;
    });
}

QString Programs::NameNow(const CompiledProgram& program) const {
    const auto read = program.texts.find(program.root);
    if (read == program.texts.end()) return program.name;
    const OpenFile* open = OpenedAs(read->first, read->second);
    return open == nullptr ? program.name : open->name;
}

std::optional<QString> Programs::OpenText(const QString& pathOrName) const {
    const OpenFile* file = Find(pathOrName);
    if (file == nullptr) return std::nullopt;
    return Text(file->id);
}

const OpenFile* Programs::Front() const {
    return front_ ? File(*front_) : nullptr;
}

void Programs::SetFront(FileId id) {
    if (front_ == id || File(id) == nullptr) return;
    front_ = id;
    emit Changed();
}

const OpenFile* Programs::Main() const {
    return main_ ? File(*main_) : nullptr;
}

void Programs::SetMain(std::optional<FileId> id) {
    if (main_ == id) return;
    main_ = id;
    emit Changed();
}

void Programs::NoteEdited(FileId id) {
    OpenFile* file = Find(id);
    if (file == nullptr) return;
    file->revision = ++lastRevision_;
    moves_[id].lastEdit = file->revision;
    // An editor is in the middle of its work, and many edits may follow.
    later_.start();
}

void Programs::NoteAtSavedText(FileId id) {
    OpenFile* file = Find(id);
    if (file == nullptr || file->revision == file->savedRevision) return;
    file->revision = file->savedRevision;
    later_.start();
}

std::size_t Programs::TextHash(FileId id) const {
    return qHash(Text(id));
}

void Programs::NoteLinesGoing(FileId id) {
    const OpenFile* file = File(id);
    if (file == nullptr) return;
    moves_[id].texts[TextHash(id)] = file->revision;
    emit LinesGoing(id);
}

void Programs::NoteUndone(FileId id) {
    OpenFile* file = Find(id);
    if (file == nullptr) return;
    Moves& moves = moves_[id];
    if (moves.texts.empty()) return;
    const auto known = moves.texts.find(TextHash(id));
    if (known == moves.texts.end()) return;
    const Revision revision = known->second;
    // The saved text keeps the revision that says so.
    if (file->revision != file->savedRevision) file->revision = revision;
    moves.movesThen[revision] = moves.movesThen[file->revision] = moves.moves.size();
    emit TextIsBack(id, revision);
    later_.start();
}

void Programs::NoteLinesMoved(FileId id, const LineMove& move) {
    if (File(id) == nullptr) return;
    Moves& moves = moves_[id];
    moves.moves.emplace_back(moves.lastEdit, move);
    emit LinesMoved(id, move);
}

std::size_t Programs::Moves::FirstAfter(Revision read) const {
    if (const auto then = movesThen.find(read); then != movesThen.end()) return then->second;
    const auto first =
        std::ranges::find_if(moves, [&](const auto& each) { return each.first > read; });
    return static_cast<std::size_t>(first - moves.begin());
}

std::optional<int> Programs::LineNow(const OpenFile& file, int line, Revision read) const {
    std::optional<int> now = line;
    const auto found = moves_.find(file.id);
    if (found == moves_.end()) return now;
    const auto& all = found->second.moves;
    for (std::size_t i = found->second.FirstAfter(read); i < all.size() && now; ++i)
        now = LineAfter(all[i].second, *now);
    return now;
}

std::optional<int> Programs::LineThen(const OpenFile& file, int line, Revision read) const {
    std::optional<int> then = line;
    const auto found = moves_.find(file.id);
    if (found == moves_.end()) return then;
    const auto& all = found->second.moves;
    for (std::size_t i = all.size(); i > found->second.FirstAfter(read) && then; --i)
        then = LineBefore(all[i - 1].second, *then);
    return then;
}

void Programs::NoteSaved(FileId id, const QString& folder, const QString& name) {
    OpenFile* file = Find(id);
    if (file == nullptr) return;
    const QString key = KeyOf(folder, name);
    if (key != file->key) {
        reports_.erase(file->key);
        savedAs_.push_back({file->key, id, lastRevision_});
    }
    file->folder = folder;
    file->name = name;
    file->key = key;
    file->savedRevision = file->revision;
    file->disk = DiskState::Same;
    emit Changed();
}

void Programs::SetDisk(FileId id, DiskState state) {
    OpenFile* file = Find(id);
    if (file == nullptr || file->disk == state) return;
    file->disk = state;
    emit Changed();
}

QString Programs::RootOf(const OpenFile& file) const {
    const auto includes = [&](const OpenFile& other) {
        const ProgramReport* report = ReportOf(other.key);
        return other.id != file.id && report != nullptr && report->texts.contains(file.key);
    };
    const OpenFile* main = Main();
    if (main != nullptr && includes(*main)) return main->key;
    const auto found = std::ranges::find_if(files_, includes);
    return found == files_.end() ? file.key : found->key;
}

void Programs::SetReport(ProgramReport report) {
    if (const ProgramReport* before = ReportOf(report.root); before != nullptr && !report.succeeded)
        report.names = MergeNames(report.names, before->names);
    report.serial = ++lastSerial_;
    reports_[report.root] = std::move(report);
    emit Changed();
}

const ProgramReport* Programs::ReportOf(const QString& root) const {
    const auto found = reports_.find(root);
    return found == reports_.end() ? nullptr : &found->second;
}

bool Programs::IsFresh(const OpenFile& root) const {
    const ProgramReport* report = ReportOf(root.key);
    if (report == nullptr) return false;
    return std::ranges::all_of(files_, [&](const OpenFile& file) {
        const auto read = report->texts.find(file.key);
        return read == report->texts.end() || read->second == file.revision;
    });
}

void Programs::ForgetReports() {
    if (reports_.empty()) return;
    reports_.clear();
    emit Changed();
}

std::optional<std::vector<LineMessage>> Programs::MessagesOf(const OpenFile& file) const {
    const ProgramReport* report = ReportOf(RootOf(file));
    if (report == nullptr) return std::nullopt;
    const auto read = report->texts.find(file.key);
    if (read == report->texts.end() || !IsText(file, read->second)) return std::nullopt;
    const auto messages = report->messages.find(file.key);
    if (messages == report->messages.end()) return std::vector<LineMessage>{};
    return messages->second;
}

std::optional<int> Programs::LineWithCode(const OpenFile& file, int line) const {
    const ProgramReport* report = ReportOf(RootOf(file));
    if (report == nullptr) return line;
    const auto read = report->texts.find(file.key);
    const auto lines = report->codeLines.find(file.key);
    if (read == report->texts.end() || lines == report->codeLines.end()) return line;
    for (const int then : lines->second) {
        const std::optional<int> now = LineNow(file, then, read->second);
        if (now && *now >= line) return now;
    }
    // The last lines may have been typed since.
    return IsText(file, read->second) ? std::nullopt : std::optional(line);
}

std::vector<ProgramName> Programs::NamesFor(const OpenFile& file) const {
    const ProgramReport* report = ReportOf(RootOf(file));
    return report == nullptr ? std::vector<ProgramName>{} : report->names;
}

void Programs::SetCompiled(std::shared_ptr<const CompiledProgram> program) {
    if (program->succeeded) compiled_[program->root] = program;
    last_ = std::move(program);
    emit Changed();
}

std::shared_ptr<const CompiledProgram> Programs::CompiledFrom(const QString& root) const {
    const auto found = compiled_.find(root);
    return found == compiled_.end() ? nullptr : found->second;
}

std::shared_ptr<const CompiledProgram> Programs::CompiledAs(const std::string& objectText) const {
    for (const auto& [root, program] : compiled_) {
        if (program->objectText == objectText) return program;
    }
    return nullptr;
}

bool Programs::IsUpToDate(const CompiledProgram& program) const {
    return std::ranges::all_of(files_, [&](const OpenFile& file) {
        const auto read = ReadOf(program.texts, file);
        return read == program.texts.end() || IsText(file, read->second);
    });
}

}  // namespace zentro
