#include "desktop/program_index.h"

#include <algorithm>
#include <limits>
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
    OpenTextReader reader(programs);
    NoProgress progress;
    Compilation compilation(configuration, {output, prompts, reader, progress});
    const NameUses found = FindNameUses(compilation, ProgramFilesOf(root, settings));
    Take(compilation, found);
    lineCount_ = compilation.sourceLines.size();
    gap_ = output.First();
    if (gap_.isEmpty() && !found.wasReadToTheEnd)
        gap_ = tr("A mistake keeps the rest of the program from being read. F4 leads to it.");
    for (const auto& [key, revision] : OpenTexts(programs)) {
        if (texts_.contains(key)) texts_[key] = revision;
    }
}

void ProgramIndex::Take(const Compilation& compilation, const NameUses& found) {
    std::map<const SourceFile*, QString> keys;
    for (const SourceFile& file : compilation.files) {
        keys[&file] =
            FileKey(QString::fromStdString(file.directory), QString::fromStdString(file.name));
        texts_[keys[&file]] = kTextOnDisk;
        if (file.includingLineNo == 0) continue;
        const SourceLine& line = compilation.GetSourceLine(file.includingLineNo);
        includes_[{keys[line.file], line.fileLineNo}] = keys[&file];
    }
    const auto placeOf = [&](const NameUse& use) {
        const SourceLine& line = compilation.GetSourceLine(use.lineNo);
        return TextPlace{keys[line.file], line.fileLineNo, static_cast<int>(use.begin),
                         static_cast<int>(use.length)};
    };
    for (const UsedName& used : found.names) {
        IndexedName name{
            QString::fromLatin1(used.name.data(), static_cast<qsizetype>(used.name.size())),
            used.kind,
            used.parent,
            placeOf(used.Declaration()),
            {}};
        for (const NameUse& use : used.uses) {
            const TextPlace place = placeOf(use);
            // A file that is included twice is read twice.
            if (byPlace_.emplace(place, names_.size()).second)
                name.places.push_back({place, use.seenFrom});
        }
        if (!name.places.empty()) names_.push_back(std::move(name));
    }
}

const IndexedName* ProgramIndex::NameAt(const QString& file, int line, int column) const {
    const auto after = byPlace_.upper_bound({file, line, column, std::numeric_limits<int>::max()});
    if (after == byPlace_.begin()) return nullptr;
    const auto& [place, name] = *std::prev(after);
    const bool isHere =
        place.file == file && place.line == line && column <= place.column + place.length;
    return isHere ? &names_[name] : nullptr;
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
