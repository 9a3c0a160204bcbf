#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

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

/// Whether the page has a place of that name.
bool HasAnchor(const QTextDocument& page, const QString& name);

}  // namespace zentro
