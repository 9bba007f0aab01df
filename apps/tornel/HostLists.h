#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QDate>
#include <QString>

#include <vector>

/// What the host's window lists, read from the databases.
namespace tornel::lists {

struct Declaration
{
    QString interno;
    qint64 items = 0;
    qint64 subitems = 0;
    double fobTotal = 0;
    double fobFactor = 0;
    double freightFactor = 0;
    double insuranceFactor = 0;
    QString imported; ///< its declaration number in the stock of inputs, empty when it is not there
};

struct ExportSubitem
{
    QString interno;
    qint64 subitem = 0;
    QString number;
    QDate date;
    QString invoice;
    qint64 inputs = 0; ///< discharges made for it
};

/// The rows of a query's answer are gone through with this. Throws the connection's error when it cannot be opened.
[[nodiscard]] std::unique_ptr<oVELDRA::Recordset> open(oVELDRA::ConexionDB& connection, const QString& statement);

/// The declarations of the host, by interno. Throws oVELDRA::RuntimeError.
[[nodiscard]] std::vector<Declaration> declarations(oVELDRA::ConexionDB& host, oVELDRA::ConexionDB& inputs);

/// The export subitems that discharged inputs, by interno and number. Throws oVELDRA::RuntimeError.
[[nodiscard]] std::vector<ExportSubitem> exportSubitems(oVELDRA::ConexionDB& inputs);

} // namespace tornel::lists
