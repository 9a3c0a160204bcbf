#pragma once

#include <QListWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "comms/debug_variables.h"
#include "config/command_catalogue.h"

namespace zentro {

/// The list of variables with their values. Lines whose value is another than before are bold and
/// bear a mark.
class VariableList : public QListWidget {
    Q_OBJECT

  public:
    /// What becomes of the marks of values that have stayed the same.
    enum class Marks : std::uint8_t {
        Fade,   ///< they go after some looks
        Renew,  ///< they go: the program has been stepped
        Keep,   ///< they stay: the program is held where it was
    };

    /// The commands give the words for values and outlive the list.
    VariableList(const CommandCatalogue& commands, QWidget* parent);

    /// Lists other variables.
    void Load(const std::vector<DebugVariable>& variables);
    /// Shows the values of the variables that are listed, and marks those that have changed; marks
    /// that fade go when a value has stayed the same this many times.
    void ShowValues(const std::vector<DebugVariable>& variables, int markedTimes = 1,
                    Marks marks = Marks::Fade);
    /// Shows the variables that have this in their names, whatever its case.
    void ShowOnly(const QString& part);
    /// Whether the variables that the compiler needs for itself are shown too; at first, no.
    void ShowCompilersOwn(bool shows);

    int MarkedCount() const;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void MakeIcons();
    void Mark(QListWidgetItem& item, int times);
    QString LineOf(const std::string& line, const DebugVariable& variable) const;
    void HideRows();

    const CommandCatalogue& commands_;
    QString part_;
    bool showsCompilersOwn_ = false;

    QIcon mark_;
    QIcon noMark_;
};

/// The text with its tabs filled up with blanks to the next place that is a multiple of eight.
QString ExpandTabs(const QString& text);

}  // namespace zentro
