#include "ui/dialogs/system_details.h"

#include <QGuiApplication>
#include <QLocale>
#include <QScreen>
#include <QStringList>
#include <QSysInfo>
#include <QThread>

namespace zentro {

namespace {

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
