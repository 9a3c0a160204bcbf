#pragma once

#include <QString>
#include <QTimer>

#include "compiler/compile.h"
#include "ui/output/compiler_text_window.h"

namespace zentro {

/// Shows the listing of the object code.
class ObjectCodeWindow final : public CompilerTextWindow, public ListingSink {
    Q_OBJECT

  public:
    explicit ObjectCodeWindow(const Workbench& workbench, QWidget* parent = nullptr);

    void AddCodeLine(std::string_view text) override;
    bool IsEmpty() const;

    /// Selects the line of the address and brings it into view. False, and nothing changes, when
    /// the listing has no such line.
    bool SelectLineByAddresss(std::uint16_t address);

  signals:
    /// The user points at the line of an address.
    void AddressActivated(std::uint16_t address);

  private:
    void ShowPending();
    void RaiseAddressOf(int line);

    QString pending_;  ///< lines that are not shown yet
    QTimer showTimer_;
};

}  // namespace zentro
