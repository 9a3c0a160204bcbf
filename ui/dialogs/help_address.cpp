#include "ui/dialogs/help_address.h"

#include <QDir>
#include <QFileInfo>
#include <QTextBlock>
#include <QTextDocument>

namespace zentro {

namespace {

/// A scheme of one letter is a drive.
bool HasScheme(const QUrl& url) {
    return url.isValid() && url.scheme().size() > 1;
}

QString Page(const QString& title, const QString& body) {
    return QString("<html><head><title>%1</title></head><body><h2>%1</h2>%2</body></html>")
        .arg(title, body);
}

}  // namespace

AddressKind KindOf(const QUrl& address) {
    const QString scheme = address.scheme();
    if (scheme == "file") return AddressKind::LocalPage;
    if (scheme == "http" || scheme == "https" || scheme == "mailto") return AddressKind::WebAddress;
    return AddressKind::Unknown;
}

QUrl AddressFromText(const QString& text) {
    const QString address = text.trimmed();
    if (address.startsWith("www.", Qt::CaseInsensitive)) return QUrl("https://" + address);
    if (QUrl url(address); HasScheme(url)) return url;
    if (address.isEmpty()) return {};
    qsizetype hash = address.lastIndexOf('#');
    if (hash >= 0 && QFileInfo::exists(address)) hash = -1;
    QUrl url = QUrl::fromLocalFile(QDir::fromNativeSeparators(address.left(hash)));
    if (hash >= 0) url.setFragment(address.mid(hash + 1), QUrl::DecodedMode);
    return url;
}

QString AddressText(const QUrl& address) {
    if (!address.isLocalFile()) return address.toDisplayString();
    QString file = QDir::toNativeSeparators(address.toLocalFile());
    if (!address.hasFragment()) return file;
    return file + '#' + address.fragment(QUrl::FullyDecoded);
}

QString MissingPage(const QUrl& address, const QString& reason) {
    const QString text = AddressText(address).toHtmlEscaped();
    return Page("This page cannot be shown",
                QString("<p>%1</p><p>%2</p><p>Check the address above. The help file of this "
                        "program is chosen with View, Options, on the page Advanced.</p>")
                    .arg(text, reason.toHtmlEscaped()));
}

QString WebAddressPage(const QUrl& address) {
    const QString link = address.toString(QUrl::FullyEncoded).toHtmlEscaped();
    return Page(
        "Shown in your web browser",
        QString("<p><a href=\"%1\">%2</a></p>").arg(link, AddressText(address).toHtmlEscaped()));
}

std::optional<PagePlace> FindPlace(const QTextDocument& page, const QString& name) {
    std::optional<PagePlace> found;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            for (const QString& anchor : it.fragment().charFormat().anchorNames()) {
                if (anchor == name) return PagePlace{anchor, it.fragment().position()};
                if (!found && anchor.compare(name, Qt::CaseInsensitive) == 0)
                    found = PagePlace{anchor, it.fragment().position()};
            }
        }
    }
    return found;
}

}  // namespace zentro
