#include "ui/output/object_code_window.h"

#include <QTextBlock>
#include <QVBoxLayout>
#include <utility>

#include "model/address.h"

namespace zentro {

namespace {

/// Arguments of usual length end before the first stop, so that the comments, three tabs behind
/// them, stand in one column.
const QList<int> kTabColumns{100, 101, 102};

}  // namespace

ObjectCodeWindow::ObjectCodeWindow(const Workbench& workbench, QWidget* parent)
    : CompilerTextWindow(workbench, kTabColumns, parent) {
    setObjectName("frmObjectCode");
    setWindowTitle("Object Code");
    setFocusProxy(&View());
    View().setObjectName("txtObjectCode");
    View().setAccessibleName("Object code listing");
    View().setAccessibleDescription("Enter shows the source line of an instruction");
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&View());
    showTimer_.setSingleShot(true);
    showTimer_.setInterval(0);
    connect(&showTimer_, &QTimer::timeout, this, &ObjectCodeWindow::ShowPending);
    connect(&View(), &CompilerTextView::LineActivated, this, &ObjectCodeWindow::RaiseAddressOf);
    SetFormColours();
}

void ObjectCodeWindow::AddCodeLine(std::string_view text) {
    pending_ += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    pending_ += '\n';
    if (!showTimer_.isActive()) showTimer_.start();
}

bool ObjectCodeWindow::IsEmpty() const {
    return pending_.isEmpty() && View().document()->isEmpty();
}

/// The listing comes at once or in a few large pieces: line by line would take as long as the rest
/// of a compile many times over.
void ObjectCodeWindow::ShowPending() {
    showTimer_.stop();
    if (pending_.isEmpty()) return;
    const QString text = std::exchange(pending_, {});
    if (View().document()->isEmpty()) {
        View().setPlainText(text);
        return;
    }
    QTextCursor cursor(View().document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
}

bool ObjectCodeWindow::SelectLineByAddresss(std::uint16_t address) {
    ShowPending();
    const QString shown = QString::fromStdString(FormatAddress(address));
    for (QTextBlock line = View().document()->begin(); line.isValid(); line = line.next()) {
        if (!line.text().startsWith(shown)) continue;
        View().SelectLine(line.blockNumber());
        return true;
    }
    return false;
}

void ObjectCodeWindow::RaiseAddressOf(int line) {
    const QString text = View().document()->findBlockByNumber(line).text();
    if (!text.startsWith('[')) return;
    const auto address = ParseAddress(text.mid(1, kAddressDigits).toStdString());
    if (address) emit AddressActivated(*address);
}

}  // namespace zentro
