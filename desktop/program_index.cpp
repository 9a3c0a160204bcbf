#include "desktop/program_index.h"

#include <algorithm>
#include <set>

#include "desktop/program_files.h"
#include "desktop/quiet_environment.h"

namespace zentro {

namespace {

/// Keeps what is said about the first file that cannot be read.
class MissingFiles : public OutputSink {
  public:
    void Write(std::string_view, LogColour, const PostedMessage* message) override {
        const bool isAboutFile =
            message != nullptr && (message->code == MessageCode::FileNotOpened ||
                                   message->code == MessageCode::IncludedTooDeep);
        if (isAboutFile && first_.isEmpty()) first_ = QString::fromStdString(message->text);
    }
    const QString& First() const { return first_; }

  private:
    QString first_;
};

}  // namespace

std::size_t IndexedName::FileCount() const {
    std::set<QString> files;
    for (const Place& place : places)
        files.insert(place.file);
    return files.size();
}

ProgramIndex::ProgramIndex(const InstructionConfiguration& configuration, const OpenFile& root,
                           const SettingsStore& settings, const Programs& programs)
    : root_(root.key) {
    MissingFiles output;
    QuietPrompts prompts;
    OpenTextReader reader(programs, Patience::Short);
    NoProgress progress;
    Compilation compilation(configuration, {output, prompts, reader, progress});
    const NameUses found = FindNameUses(compilation, ProgramFilesOf(root, settings));
    Keys keys;
    for (const SourceFile& file : compilation.files)
        keys[&file] = programs.KeyOf(QString::fromStdString(file.directory),
                                     QString::fromStdString(file.name));
    TakeFiles(compilation, keys);
    TakeNames(compilation, found, std::move(keys));
    lineCount_ = compilation.sourceLines.size();
    gap_ = output.First();
    if (gap_.isEmpty() && !found.wasReadToTheEnd)
        gap_ = tr("A mistake keeps the rest of the program from being read. F4 leads to it.");
    for (const auto& [key, revision] : OpenTexts(programs)) {
        if (texts_.contains(key)) texts_[key] = revision;
    }
}

void ProgramIndex::TakeFiles(const Compilation& compilation, const Keys& keys) {
    for (const SourceFile& file : compilation.files) {
        const QString& key = keys.at(&file);
        texts_[key] = kTextOnDisk;
        if (file.includingLineNo == 0) continue;
        const SourceLine& line = compilation.GetSourceLine(file.includingLineNo);
        includes_[{keys.at(line.file), line.fileLineNo}] = key;
    }
}

void ProgramIndex::TakeNames(const Compilation& compilation, const NameUses& found, Keys keys) {
    // A file that is included twice is read twice; its places count once.
    std::set<QString> seen;
    for (const SourceFile& file : compilation.files) {
        if (!seen.insert(keys.at(&file)).second) keys.erase(&file);
    }
    for (const UsedName& used : found.names) {
        IndexedName name;
        name.name = QString::fromLatin1(used.name.data(), static_cast<qsizetype>(used.name.size()));
        name.kind = used.kind;
        name.parent = used.parent;
        for (const NameUse& use : used.uses) {
            const SourceLine& line = compilation.GetSourceLine(use.lineNo);
            const auto key = keys.find(line.file);
            if (key == keys.end()) continue;
            const TextPlace place{key->second, line.fileLineNo, static_cast<int>(use.begin),
                                  static_cast<int>(use.length)};
            if (&use == &used.Declaration()) name.declaration = place;
            name.places.push_back({place, use.seenFrom});
            entries_[place.file].push_back({place.line, place.column, place.length, names_.size()});
        }
        if (name.places.empty()) continue;
        if (name.declaration.line == 0) name.declaration = name.places.front();
        names_.push_back(std::move(name));
    }
    for (auto& [file, entries] : entries_)
        std::ranges::sort(entries, {}, [](const Entry& e) { return std::pair(e.line, e.column); });
}

const IndexedName* ProgramIndex::NameAt(const QString& file, int line, int column) const {
    const auto entries = entries_.find(file);
    if (entries == entries_.end()) return nullptr;
    const auto after =
        std::ranges::upper_bound(entries->second, std::pair(line, column), {},
                                 [](const Entry& e) { return std::pair(e.line, e.column); });
    if (after == entries->second.begin()) return nullptr;
    const Entry& entry = *std::prev(after);
    const bool isHere = entry.line == line && column <= entry.column + entry.length;
    return isHere ? &names_[entry.name] : nullptr;
}

QString ProgramIndex::IncludedAt(const QString& file, int line) const {
    const auto found = includes_.find({file, line});
    return found == includes_.end() ? QString() : found->second;
}

bool ProgramIndex::IsFresh(const Programs& programs) const {
    return std::ranges::all_of(programs.Files(), [&](const OpenFile& file) {
        const auto read = texts_.find(file.key);
        return read == texts_.end() || read->second == file.revision;
    });
}

}  // namespace zentro
