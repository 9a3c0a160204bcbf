#pragma once

#include <QFont>
#include <QString>

namespace zentro {

/// The font in which programs and what is made of them are written: the one of the name, or, where
/// this computer does not have it, the first of a list of monospaced fonts that it has. A font that
/// it has is taken as it is. `points` has to be over 0.
QFont SourceFont(const QString& name, double points);

/// The same, but always of one pitch, for what stands in columns.
QFont ColumnFont(const QString& name, double points);

/// The desktop's font of one pitch, or, where what it names has several, one that this computer
/// has.
QFont FixedFont();

}  // namespace zentro
