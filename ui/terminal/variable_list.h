#pragma once

#include <QListWidget>
#include <string>
#include <vector>

#include "comms/debug_variables.h"

namespace zentro {

/// The list of variables with their values. Lines whose value is another than before are bold and
/// bear a mark.
class VariableList : public QListWidget {
    Q_OBJECT

  public:
    explicit VariableList(QWidget* parent);

    /// Lists other variables.
    void Load(const std::vector<DebugVariable>& variables);
    /// Shows the values of the variables that are listed, and marks those that have changed until
    /// they have stayed the same this many times.
    void ShowValues(const std::vector<DebugVariable>& variables, int markedTimes = 1);
    /// Shows the variables that have this in their names, whatever its case.
    void ShowOnly(const QString& part);

    int MarkedCount() const;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void MakeIcons();
    void Mark(QListWidgetItem& item, int times);

    QIcon mark_;
    QIcon noMark_;
};

/// The text with its tabs filled up with blanks to the next place that is a multiple of eight.
QString ExpandTabs(const QString& text);

}  // namespace zentro
