#include "Position.h"

namespace oVELDRA::nomenclature {

PositionParts splitPosition(const QString& position)
{
    return {position.left(10), position.mid(11, 3), position.mid(14, 1)};
}

PositionParts splitTypedPosition(const QString& position)
{
    return {position.left(10), position.mid(11, 3), position.right(1)};
}

QString joinedPosition(const PositionParts& parts)
{
    return parts.subheading + u'.' + parts.opening + parts.control;
}

bool isPositionLength(qsizetype length)
{
    return length == 14 || length == 15;
}

QString commasToPoints(const QString& position)
{
    QString pointed = position;
    return pointed.replace(u',', u'.');
}

QString searchPattern(const QString& prefix)
{
    QString pattern = prefix;
    return pattern.replace(u'.', u'%') + u'%';
}

} // namespace oVELDRA::nomenclature
