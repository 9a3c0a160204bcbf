#include "ui/dialogs/options_state.h"

#include <QDir>
#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <variant>

namespace zentro {

namespace {

using enum SettingNumber;

constexpr double kLargestFont = 400;  // points

/// A text of the state that is the path of a folder.
struct FolderField {
    QString OptionsState::*path;
};
/// A text of the state that has its default where it is empty.
struct FontNameField {
    QString OptionsState::*name;
};

using Field =
    std::variant<bool OptionsState::*, QString OptionsState::*, std::int32_t OptionsState::*,
                 double OptionsState::*, FolderField, FontNameField>;

struct Option {
    SettingNumber number;
    const char* name;  ///< in the message when it cannot be loaded
    Field field;
};

/// In the order in which they are saved.
constexpr std::array kOptions{
    Option{ColourSource, "Loading Flags", &OptionsState::colourSource},
    Option{ReopenLastSource, "Loading Flags", &OptionsState::loadLastSource},
    Option{ShowObjectCode, "Loading Flags", &OptionsState::showObjectCode},
    Option{SaveWithoutAsking, "Loading Flags", &OptionsState::saveWithoutAsking},
    Option{SerialPort, "Comm Port Number or Name", &OptionsState::portName},
    Option{InstructionFile, "Instructions Filename (ZentroCompiler.cfg)",
           &OptionsState::instructionFile},
    Option{SourceFolder, "Source Directory", FolderField{&OptionsState::sourceFolder}},
    Option{HelpFile, "Help File Name", &OptionsState::helpFile},
    Option{MakerWebSite, "Cogwright Website Name", &OptionsState::makerSite},
    Option{SourcesWebPage, "Source Website Name", &OptionsState::sourceSite},
    Option{EditorPageColour, "Edit Page Colour", &OptionsState::editPage},
    Option{EditorTextColour, "Edit Text Colour", &OptionsState::editText},
    Option{EditorFontName, "Font Name", FontNameField{&OptionsState::fontName}},
    Option{EditorFontSize, "Font Size", &OptionsState::fontSize},
    Option{TerminalBackColour, "Terminal Back Colour", &OptionsState::terminalBack},
    Option{TerminalTextColour, "Terminal Text Colour", &OptionsState::terminalText},
    Option{CheckWhileTyping, "Loading Flags", &OptionsState::checkWhileTyping},
    Option{ShowAdvice, "Loading Flags", &OptionsState::showAdvice},
    Option{ReopenPortWhenBack, "Loading Flags", &OptionsState::reopenPortWhenBack},
    Option{ObjectFolder, "Object Directory", FolderField{&OptionsState::objectFolder}},
};

const Setting& SettingOf(SettingNumber number) {
    return *std::ranges::find(Settings(), number, &Setting::number);
}

QString Text(const SettingValue& value) {
    return QString::fromStdString(AsText(value));
}

/// Why it is no folder; empty: it is one.
QString ProblemOfFolder(const QString& folder) {
    std::error_code failure;
    const std::filesystem::path path = folder.toStdU16String();
    if (!std::filesystem::is_directory(path, failure) && !failure)
        failure = std::make_error_code(std::errc::not_a_directory);
    return failure ? QString::fromStdString(failure.message()) : QString();
}

/// Puts one setting into its field; `error` says why that was not possible.
class Loader {
  public:
    Loader(const SettingsStore& settings, Disk& disk, SettingNumber number, OptionsState& state)
        : settings_(settings),
          disk_(disk),
          setting_(SettingOf(number)),
          value_(settings.GetSetting(number)),
          state_(state) {}

    QString error;

    void operator()(bool OptionsState::*flag) {
        state_.*flag =
            IsNumber() ? FlagIsOn(settings_, setting_.number) : setting_.defaultNumber != 0;
    }
    void operator()(QString OptionsState::*text) { state_.*text = Text(value_); }
    void operator()(std::int32_t OptionsState::*colour) {
        state_.*colour =
            IsNumber() ? AsInteger(value_) : static_cast<std::int32_t>(setting_.defaultNumber);
    }
    void operator()(double OptionsState::*size) {
        const double number = IsNumber() ? AsNumber(value_) : 0;
        const bool usable = number > 0 && number <= kLargestFont;
        state_.*size = usable ? number : setting_.defaultNumber;
        if (!usable && !IsEmpty() && error.isEmpty())
            error = "the size " + Text(value_) + " is not between 1 and 400 points";
    }
    void operator()(FolderField folder) {
        state_.*folder.path = FolderPath(Text(value_));
        if (IsEmpty()) return;
        const QString path = state_.*folder.path;
        const auto problem =
            disk_.Ask(path + "/.", Patience::Short, [path] { return ProblemOfFolder(path); });
        error = problem.value_or(kNoAnswer);
    }
    void operator()(FontNameField font) {
        state_.*font.name = Text(value_);
        if (!(state_.*font.name).isEmpty()) return;
        state_.*font.name = QString::fromUtf8(setting_.defaultText.data(),
                                              static_cast<qsizetype>(setting_.defaultText.size()));
    }

  private:
    bool IsEmpty() const { return AsText(value_).empty(); }

    bool IsNumber() {
        const auto* text = std::get_if<std::string>(&value_);
        if (text == nullptr || !std::holds_alternative<std::monostate>(NumberFromText(*text)))
            return true;
        error = '"' + Text(value_) + "\" is not a number";
        return false;
    }

    const SettingsStore& settings_;
    Disk& disk_;
    const Setting& setting_;
    SettingValue value_;
    OptionsState& state_;
};

struct Saver {
    const OptionsState& state;

    SettingValue operator()(bool OptionsState::*flag) const {
        return static_cast<std::int16_t>(state.*flag ? 1 : 0);
    }
    SettingValue operator()(QString OptionsState::*text) const {
        return (state.*text).toStdString();
    }
    SettingValue operator()(std::int32_t OptionsState::*colour) const { return state.*colour; }
    SettingValue operator()(double OptionsState::*size) const { return state.*size; }
    SettingValue operator()(FolderField folder) const {
        return SavedFolder(FolderPath(state.*folder.path)).toStdString();
    }
    SettingValue operator()(FontNameField font) const { return (state.*font.name).toStdString(); }
};

bool IsSeparator(QChar character) {
    return character == '/' || character == QDir::separator();
}

}  // namespace

OptionsState LoadOptions(const SettingsStore& settings, Disk& disk, QStringList& failures) {
    OptionsState state;
    for (const Option& option : kOptions) {
        Loader loader(settings, disk, option.number, state);
        std::visit(loader, option.field);
        if (loader.error.isEmpty()) continue;
        failures +=
            QString("Error Loading config information for : %1, %2").arg(option.name, loader.error);
    }
    return state;
}

std::int32_t DefaultColour(SettingNumber colour) {
    return static_cast<std::int32_t>(SettingOf(colour).defaultNumber);
}

void SaveOptions(const OptionsState& options, SettingsStore& settings) {
    for (const Option& option : kOptions) {
        settings.SaveSetting(option.number, std::visit(Saver{options}, option.field));
    }
}

QString FixedPortName(int number) {
    return "COM" + QString::number(number);
}

int FixedPort(const QString& portName) {
    for (int number = 1; number <= kFixedPorts; ++number) {
        if (portName.compare(FixedPortName(number), Qt::CaseInsensitive) == 0) return number;
    }
    return 0;
}

QString TypedPortName(const QString& typed) {
    return typed.contains('/') ? typed : typed.toUpper();
}

QString FolderPath(const QString& folder) {
    qsizetype length = folder.size();
    while (length > 1 && IsSeparator(folder[length - 1]))
        --length;
    const bool drive = QDir::separator() == '\\' && length == 2 && folder[1] == ':';
    return folder.left(drive ? 3 : length);
}

QString SavedFolder(const QString& folderPath) {
    if (folderPath.isEmpty()) return {};
    return folderPath + QDir::separator();
}

}  // namespace zentro
