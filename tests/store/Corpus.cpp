#include "Corpus.h"

#include <store/StaticRecordset.h>

#include <QDate>
#include <QFile>
#include <QTest>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QStringList linesOf(const QString& fileName)
{
    QFile file(QStringLiteral(OVELDRA_TEST_DATA "/statements/") + fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(file.fileName()));
    }
    return QString::fromUtf8(file.readAll()).split(u'\n');
}

QString shown(const QVariant& value)
{
    if (!value.isValid()) {
        return u"(Null)"_s;
    }
    if (value.typeId() == QMetaType::Double) {
        return QString::number(value.toDouble(), 'g', 15);
    }
    return value.typeId() == QMetaType::QDate ? value.toDate().toString(Qt::ISODate) : value.toString();
}

QString errorLine(const oVELDRA::RuntimeError& error)
{
    const QString native = error.nativeNumber() == 0 ? QString() : u'/' + QString::number(error.nativeNumber());
    return u"error "_s + QString::number(error.number()) + native + u' ' + error.description();
}

} // namespace

std::vector<Record> readCorpus(const QString& fileName)
{
    std::vector<Record> records;
    const QStringList lines = linesOf(fileName);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || lines[i].startsWith(u'#')) {
            continue;
        }
        Record record;
        record.place = fileName + u':' + QString::number(i + 1);
        record.database = lines[i];
        record.statement = lines.value(i + 1);
        if (lines.value(i + 2) != u"----"_s) {
            qFatal("%s: no line of dashes", qPrintable(record.place));
        }
        for (i += 3; i < lines.size() && !lines[i].isEmpty(); ++i) {
            record.expected.append(lines[i]);
        }
        records.push_back(record);
    }
    return records;
}

void loadSample(const Databases& databases)
{
    for (const QString& line : linesOf(u"sample.txt"_s)) {
        if (line.isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        const qsizetype blank = line.indexOf(u' ');
        oVELDRA::ConexionDB& database = *databases.at(line.left(blank));
        database.setSql(line.mid(blank + 1));
        QCOMPARE(database.execute(), 1);
    }
}

QStringList runStatement(oVELDRA::ConexionDB& database, const QString& statement)
{
    database.setSql(statement);
    try {
        if (!statement.startsWith(u"select"_s, Qt::CaseInsensitive)) {
            return {u"affected "_s + QString::number(database.execute())};
        }
        bool ok = false;
        const std::unique_ptr<oVELDRA::Recordset> rows = database.openRecordset(ok);
        if (!ok) {
            return {errorLine(database.lastError())};
        }
        const auto& names = dynamic_cast<const oVELDRA::store::StaticRecordset&>(*rows).columns();
        QStringList result{QStringList(names.begin(), names.end()).join(u'|')};
        for (; !rows->atEof(); rows->moveNext()) {
            QStringList cells;
            for (const QString& name : names) {
                cells.append(shown(rows->value(name)));
            }
            result.append(cells.join(u'|'));
        }
        return result;
    } catch (const oVELDRA::RuntimeError& error) {
        return {errorLine(error)};
    }
}

bool sameResult(const QStringList& actual, const QStringList& expected)
{
    if (expected.size() == 1 && expected.first().startsWith(u"error "_s)) {
        const QString numbers = expected.first().section(u' ', 0, 1);
        const QString text = expected.first().section(u' ', 2);
        return actual.size() == 1 && actual.first().section(u' ', 0, 1) == numbers && actual.first().contains(text);
    }
    return actual == expected;
}
