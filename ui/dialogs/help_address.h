#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

class QTextDocument;

namespace zentro {

enum class AddressKind {
    LocalPage,   ///< shown in the help window
    WebAddress,  ///< handed to the desktop, which opens it in its web browser
    Unknown,     ///< neither: it is not opened
};

AddressKind KindOf(const QUrl& address);

/// The address that a user or a setting means: the path of a file, with "#" and a name within the
/// page where wanted, or an address with its scheme. "www." stands for a web address.
QUrl AddressFromText(const QString& text);

/// The address as the user reads it: a path for a file.
QString AddressText(const QUrl& address);

/// A page that says that `address` could not be read, why and what to do.
QString MissingPage(const QUrl& address, const QString& reason);
/// A page that says that `address` is shown elsewhere, with a link to it.
QString WebAddressPage(const QUrl& address);

/// A place of a page that links lead to.
struct PagePlace {
    QString name;      ///< as the page spells it
    int position = 0;  ///< in its text
};

/// The place of that name, whose letter case does not matter unless two places differ by it.
std::optional<PagePlace> FindPlace(const QTextDocument& page, const QString& name);

}  // namespace zentro
