#include "ui/dialogs/about_dialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStringList>
#include <QSysInfo>
#include <QThread>
#include <QVBoxLayout>

#include "ui/support/icons.h"
#include "ui/support/source_font.h"
#include "ui/support/workbench.h"

namespace zentro {

namespace {

constexpr auto kAboutText =
    "<p>A development environment for the Kinetron robot-controller board.</p>"
    "<p>Copyright \u00A9 2026 The ZentroCompiler authors.<br>"
    "Free software under the MIT License: use, copy, change and pass it on as you like, as long "
    "as its notice stays with it. It comes without any warranty.</p>"
    "<p>Uses Qt under the GNU Lesser General Public License and QScintilla under the GNU General "
    "Public License.</p>";

QPushButton* MakeButton(const char* name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleName(QString(text).remove('&'));
    return button;
}

QString ScreenText(const QScreen& screen) {
    const QSize size = screen.size();
    const QString name = screen.name().isEmpty() ? QString() : screen.name() + ", ";
    return name + QString("%1 x %2 at %3 %, %4 Hz")
                      .arg(size.width())
                      .arg(size.height())
                      .arg(qRound(screen.devicePixelRatio() * 100))
                      .arg(qRound(screen.refreshRate()));
}

}  // namespace

AboutDialog::AboutDialog(Dialogs& dialogs, QWidget* parent) : QDialog(parent), dialogs_(dialogs) {
    setObjectName("frmAbout");
    setWindowTitle(QString("About ") + kProgramTitle);
    auto* picture = new ProgramPicture;
    picture->setFixedSize(72, 72);
    auto* title = new QLabel(kProgramTitle);
    title->setObjectName("lblTitle");
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    title->setFont(large);
    auto* version = new QLabel(QString("Version ") + ZENTRO_VERSION);
    version->setObjectName("lblVersion");
    auto* text = new QLabel(kAboutText);
    text->setObjectName("lblDescription");
    text->setWordWrap(true);
    text->setMinimumWidth(380);

    auto* words = new QVBoxLayout;
    for (QLabel* label : {title, version, text})
        words->addWidget(label);
    words->addStretch();
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addLayout(words, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(8);
    layout->addWidget(MakeButtons());
    layout->setSizeConstraint(QLayout::SetFixedSize);
    findChild<QPushButton*>("cmdOK")->setFocus();
}

QWidget* AboutDialog::MakeButtons() {
    auto* row = new QWidget;
    auto* info = MakeButton("cmdSysInfo", "&System Info...");
    auto* ok = MakeButton("cmdOK", "OK");
    ok->setDefault(true);
    connect(info, &QPushButton::clicked, this, &AboutDialog::ShowSystemInfo);
    connect(ok, &QPushButton::clicked, this, &AboutDialog::accept);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(info);
    layout->addStretch();
    layout->addWidget(ok);
    return row;
}

void AboutDialog::ShowSystemInfo() {
    SystemInfoDialog dialog(SystemDetailsText(CollectSystemDetails()), this);
    dialogs_.Run(dialog);
}

SystemInfoDialog::SystemInfoDialog(const QString& text, QWidget* parent) : QDialog(parent) {
    setObjectName("frmSystemInfo");
    setWindowTitle("System Information");
    auto* details = new QPlainTextEdit(text);
    details->setObjectName("txtSystemInfo");
    details->setAccessibleName("System information");
    details->setReadOnly(true);
    details->setTabChangesFocus(true);
    details->setFont(FixedFont());
    auto* copy = MakeButton("cmdCopy", "&Copy");
    auto* ok = MakeButton("cmdOK", "OK");
    ok->setDefault(true);
    connect(copy, &QPushButton::clicked, this,
            [text] { QGuiApplication::clipboard()->setText(text); });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(details);
    layout->addLayout(buttons);
    resize(520, 280);
}

QList<SystemDetail> CollectSystemDetails() {
    QList<SystemDetail> details{
        {"Program", QString("ZentroCompiler ") + ZENTRO_VERSION},
        {"Operating system", QSysInfo::prettyProductName()},
        {"Kernel", QSysInfo::kernelType() + ' ' + QSysInfo::kernelVersion()},
        {"Processor", QSysInfo::currentCpuArchitecture()},
        {"Processor cores", QString::number(QThread::idealThreadCount())},
        {"Language", QLocale::system().name()},
        {"Qt", QString(qVersion()) + ", built as " + QSysInfo::buildAbi()},
        {"Windows through", QGuiApplication::platformName()},
    };
    const auto screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        details += {"Screen", ScreenText(*screen)};
    details.removeIf([](const SystemDetail& detail) { return detail.value.trimmed().isEmpty(); });
    return details;
}

QString SystemDetailsText(const QList<SystemDetail>& details) {
    if (details.isEmpty()) return "System Information Is Unavailable At This Time";
    QStringList lines;
    for (const auto& [name, value] : details)
        lines += name + ": " + value;
    return lines.join('\n');
}

}  // namespace zentro
