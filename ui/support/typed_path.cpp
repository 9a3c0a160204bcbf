#include "ui/support/typed_path.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QToolTip>
#include <QValidator>
#include <algorithm>

#include "desktop/disk.h"

namespace zentro {

namespace {

/// A dialog that opens several files takes their names in quotes.
constexpr QChar kQuote = '"';

struct TypedPathTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::TypedPath)
};

QString PathOf(const QString& typed, const QString& folder) {
    const bool isInHome = typed == "~" || typed.startsWith("~/");
    return isInHome ? QDir::homePath() + typed.mid(1) : QDir(folder).filePath(typed);
}

/// Asked before the text changes, so that nobody sees a text that it refuses.
class AnsweringPaths : public QValidator {
  public:
    AnsweringPaths(QFileDialog& dialog, Disk& disk)
        : QValidator(&dialog), dialog_(dialog), disk_(disk) {}

    State validate(QString& input, int& /*position*/) const override {
        const QStringList names = input.split(kQuote, Qt::SkipEmptyParts);
        const QString folder = dialog_.directory().path();
        const bool answer = std::ranges::all_of(
            names, [&](const QString& name) { return Answers(PathOf(name, folder)); });
        return answer ? Acceptable : Invalid;
    }

  private:
    /// Asked as a folder of its own: beside a path that hangs others can be typed.
    bool Answers(const QString& path) const {
        const auto look = [path] { return QFileInfo::exists(path); };
        return disk_.Ask(QDir(path).filePath("."), Patience::Short, look).has_value();
    }

    QFileDialog& dialog_;
    Disk& disk_;
};

}  // namespace

void TakeOnlyPathsThatAnswer(QFileDialog& dialog, Disk& disk) {
    auto* const edit = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (edit == nullptr) return;
    edit->setValidator(new AnsweringPaths(dialog, disk));
    QObject::connect(edit, &QLineEdit::inputRejected, edit, [edit] {
        QToolTip::showText(edit->mapToGlobal(edit->rect().bottomLeft()),
                           TypedPathTexts::tr("The disk or network of this path does not answer."),
                           edit);
    });
}

}  // namespace zentro
