#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

#include "model/environment.h"
#include "ui/output/compile_flow.h"
#include "ui/output/compile_service.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

class CompilerOutputWindow;
class ObjectCodeWindow;
class SourceFiles;
class SourceWindow;

/// Compile and Syntax Check with their two windows, and the ways from a message or an address to
/// its source line.
class CompileCommands : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;
        std::function<void(QWidget*)> bringToFront;
        QWidget* dialogParent = nullptr;
    };

    CompileCommands(Workbench& workbench, SourceFiles& files, Surroundings surroundings,
                    QObject* parent);
    ~CompileCommands() override;

    void CompileSource();
    void SyntaxCheck();

    /// The last run; null before the first one.
    const Compilation* Last() const { return service_.Last(); }
    /// The object file of the main file; empty when none is chosen.
    QString ObjectFile() const;

    CompilerOutputWindow* Output() const;
    ObjectCodeWindow* ObjectCode() const;

    /// Selects an address (four hexadecimal digits) in the listing and shows its source line.
    void ShowAddress(const QString& address);
    /// Marks the source line of an address at which the program was stopped, and shows it.
    void ShowFault(const QString& address, const QString& text);
    /// Marks the source line of the address at which the program is held, without taking the focus
    /// from where it is stepped.
    void MarkAddress(const QString& address, const QString& text);
    void ClearMark();

    /// Colours and fonts were changed.
    void ApplySettings();

  signals:
    void CompileFinished(bool succeeded);

  private:
    void Run(CompileCommand command);
    void OpenWindows(CompileCommand command, const QString& folder, const QString& name);
    void ShowMessages();
    SourceWindow* ShowLine(const LineXref& line);
    SourceWindow* ShowSourceOf(const QString& address);

    Workbench& workbench_;
    SourceFiles& files_;
    Surroundings surroundings_;
    CompileService service_;
    QPointer<CompilerOutputWindow> output_;
    QPointer<ObjectCodeWindow> objectCode_;
};

}  // namespace zentro
