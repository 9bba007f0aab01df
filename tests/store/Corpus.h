#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <vector>

/// The three databases by the names that the statement files use.
using Databases = std::map<QString, std::shared_ptr<oVELDRA::ConexionDB>>;

/// One record of a statement file.
struct Record
{
    QString place; ///< file:line, for messages
    QString database;
    QString statement;
    QStringList expected;
};

/// Reads a statement file of tests/data/statements. Fails the test on a file that cannot be read.
[[nodiscard]] std::vector<Record> readCorpus(const QString& fileName);

/// Runs the statements that the files of the folder rely on.
void loadSample(const Databases& databases);

/// What a statement gives, in the words of the files: columns and rows, "affected N" or "error N/native text".
[[nodiscard]] QStringList runStatement(oVELDRA::ConexionDB& database, const QString& statement);

/// Whether a result is the expected one; an expected error's text need only be part of the real one.
[[nodiscard]] bool sameResult(const QStringList& actual, const QStringList& expected);
