#include "ui/output/object_code_window.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QVBoxLayout>
#include <utility>

namespace zentro {

namespace {

/// Arguments of usual length end before the first stop, so that the comments, three tabs behind
/// them, stand in one column.
const QList<int> kTabColumns{100, 101, 102};

/// How the listing shows an address.
QString ShownAddress(const QString& hexAddress) {
    return '[' + hexAddress.toUpper() + ']';
}

}  // namespace

ObjectCodeWindow::ObjectCodeWindow(const Workbench& workbench, QWidget* parent)
    : CompilerTextWindow(workbench, kObjectWindowPlace, kTabColumns, parent) {
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

bool ObjectCodeWindow::SelectLineByAddresss(const QString& hexAddress) {
    ShowPending();
    const QString shown = ShownAddress(hexAddress);
    for (QTextBlock line = View().document()->begin(); line.isValid(); line = line.next()) {
        if (!line.text().startsWith(shown)) continue;
        View().SelectLine(line.blockNumber());
        return true;
    }
    return false;
}

void ObjectCodeWindow::RaiseAddressOf(int line) {
    static const QRegularExpression kAddress("^\\[([0-9A-F]{4})\\]");
    const QString text = View().document()->findBlockByNumber(line).text();
    const QRegularExpressionMatch match = kAddress.match(text);
    if (match.hasMatch()) emit AddressActivated(match.captured(1));
}

}  // namespace zentro
