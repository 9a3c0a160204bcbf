#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "compiler/compile.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

/// Runs the compiler on real files, asks the user what it asks, and keeps the last run. The windows
/// stay alive meanwhile but take no input.
class CompileService : public QObject {
    Q_OBJECT

  public:
    /// The dialogs' parent may be null; otherwise it outlives the service.
    explicit CompileService(const Workbench& workbench, QWidget* dialogParent = nullptr,
                            QObject* parent = nullptr);
    ~CompileService() override;

    /// Compiles a program. The listing is filled when the settings want one. True when every stage
    /// succeeded and no error was counted, also by the stages that an error does not end. While
    /// another run is on, or when the object file would replace the source file,
    /// nothing happens but a message. The sinks are used during the call only.
    bool Compile(const ProgramFiles& files, OutputSink& output, ListingSink* listing);
    /// Reads and parses a program. True when it has no errors.
    bool Check(const ProgramFiles& files, OutputSink& output);

    bool IsRunning() const { return isRunning_; }
    /// The last run; nothing before the first one and during a run. It lives until the next one.
    const Compilation* Last() const { return last_.get(); }

  signals:
    /// Last() has changed: a run has begun, which ended the life of the one before, or is over.
    void LastChanged();

  private:
    struct Outside;

    bool Run(OutputSink& output, const std::function<bool(Compilation&)>& run);

    const Workbench& workbench_;
    QWidget* dialogParent_;
    std::unique_ptr<Outside> outside_;
    std::unique_ptr<Compilation> last_;  ///< refers to `outside_`
    bool isRunning_ = false;
};

}  // namespace zentro
