#pragma once

#include <QList>
#include <QString>

namespace zentro {

struct SystemDetail {
    QString name;
    QString value;
};

/// What can be found out about this computer. What is not known is left out.
QList<SystemDetail> CollectSystemDetails();

/// The details, one a line, or that there are none.
QString SystemDetailsText(const QList<SystemDetail>& details);

}  // namespace zentro
