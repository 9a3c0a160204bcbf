#include "desktop/rename.h"

#include <QFileInfo>
#include <algorithm>
#include <functional>

#include "config/encoding.h"
#include "config/text.h"
#include "desktop/program_files.h"
#include "desktop/quiet_environment.h"
#include "frontend/names.h"
#include "frontend/words.h"

namespace zentro {

namespace {

/// Puts the new name into the lines of a text, from its end on.
std::string WithNewName(std::string text, const QString& file, const IndexedName& name,
                        const std::string& newName) {
    std::vector<std::size_t> begins{0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == '\r' && text.substr(i, 2) == "\r\n";
        if ((text[i] == '\n' || text[i] == '\r') && !isPair) begins.push_back(i + 1);
    }
    std::vector<TextPlace> places;
    for (const IndexedName::Place& place : name.places) {
        if (place.file == file) places.push_back(place);
    }
    std::ranges::sort(places, std::greater(),
                      [](const TextPlace& place) { return std::pair(place.line, place.column); });
    for (const TextPlace& place : places) {
        const auto line = static_cast<std::size_t>(place.line) - 1;
        if (line >= begins.size()) continue;  // the text is another by now
        const std::size_t begin = begins[line] + static_cast<std::size_t>(place.column);
        if (begin <= text.size())
            text.replace(begin, static_cast<std::size_t>(place.length), newName);
    }
    return text;
}

/// Reads the program as it would be.
class RenamedTexts : public FileReader {
  public:
    RenamedTexts(const Programs& programs, const IndexedName& name, std::string newName)
        : programs_(programs),
          reader_(programs, Patience::Short),
          name_(name),
          newName_(std::move(newName)) {}

    FileContent Read(const std::string& path) override {
        FileContent content = reader_.Read(path);
        if (content.status != FileContent::Status::Read) return content;
        const QString key = programs_.KeyOf({}, QString::fromStdString(path));
        content.bytes =
            ToUtf8(WithNewName(DecodeText(std::move(content.bytes)), key, name_, newName_));
        return content;
    }

  private:
    const Programs& programs_;
    OpenTextReader reader_;
    const IndexedName& name_;
    std::string newName_;
};

class FirstErrorOutput : public OutputSink {
  public:
    void Write(std::string_view, LogColour, const PostedMessage* message) override {
        if (message != nullptr && message->severity == Severity::Error && text.isEmpty())
            text = QString::fromStdString(message->text);
    }
    QString text;
};

class NoFiles : public FileWriter {
  public:
    std::string Write(const std::string&, std::string_view) override { return {}; }
};

bool IsSame(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool IsSeenFrom(const IndexedName& name, ParentId parent) {
    return std::ranges::any_of(
        name.places, [&](const IndexedName::Place& place) { return place.seenFrom == parent; });
}

/// Whether the other name could not be told from the name if both were the same.
bool Collide(const IndexedName& name, const IndexedName& other) {
    if (name.kind == NameKind::Constant || other.kind == NameKind::Constant) return true;
    if (name.parent == other.parent) return true;
    // A routine's own name comes before the program's wherever the routine uses it.
    if (name.parent == ParentId::Program) return IsSeenFrom(name, other.parent);
    return other.parent == ParentId::Program && IsSeenFrom(other, name.parent);
}

}  // namespace

Rename::Rename(const InstructionConfiguration& configuration, const SettingsStore& settings,
               const Programs& programs, const OpenFile& root, const ProgramIndex& index,
               const IndexedName& name)
    : configuration_(configuration),
      settings_(settings),
      programs_(programs),
      root_(root),
      index_(index),
      name_(name) {
    compiles_ = FirstError(name.name).isEmpty();
}

QString Rename::ProblemWith(const QString& newName) const {
    if (!index_.Gap().isEmpty()) return index_.Gap();
    const std::string name = newName.toStdString();
    const std::vector<PlacedWord> words = WordsInLine(configuration_.commands, name);
    const bool isWord = words.size() == 1 && words[0].length == name.size();
    std::optional<MessageCode> fault = FindNameFault(configuration_.commands, name);
    if (!fault && !isWord) fault = MessageCode::InvalidName;
    if (fault) {
        const std::string_view text = configuration_.messages.GetMessageText(*fault);
        return QString::fromStdString(text.empty() ? TextNotFound(*fault) : std::string(text));
    }
    const QString conflict = ConflictWith(newName);
    return conflict.isEmpty() ? ProblemOfTexts(newName) : conflict;
}

QString Rename::ConflictWith(const QString& newName) const {
    for (const IndexedName& other : index_.Names()) {
        if (&other == &name_ || !IsSame(other.name, newName) || !Collide(name_, other)) continue;
        return tr("%1 is declared already, in line %2 of %3. Choose another name.")
            .arg(other.name, QString::number(other.declaration.line),
                 QFileInfo(other.declaration.file).fileName());
    }
    return {};
}

/// Two names can become one on the board; only the compiler knows.
QString Rename::ProblemOfTexts(const QString& newName) const {
    if (!compiles_ || IsSame(newName, name_.name)) return {};
    const QString error = FirstError(newName);
    if (error.isEmpty()) return {};
    return tr("The program could not be compiled with this name. %1").arg(error);
}

/// What a compile with the name says; empty without errors.
QString Rename::FirstError(const QString& newName) const {
    FirstErrorOutput output;
    QuietPrompts prompts;
    RenamedTexts reader(programs_, name_, newName.toStdString());
    NoProgress progress;
    NoFiles writer;
    Compilation compilation(configuration_, {output, prompts, reader, progress});
    CompileSource(compilation, ProgramFilesOf(root_, settings_), writer, nullptr);
    return output.text;
}

}  // namespace zentro
