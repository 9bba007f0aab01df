#pragma once

#include <QLocale>
#include <QObject>
#include <QString>

namespace oVELDRA::catalog {

/// The base of the suites of the catalogs' forms: numbers as in Argentina, unless a function sets others.
class CatalogFormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(QStringLiteral("es_AR"))); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }
};

} // namespace oVELDRA::catalog
