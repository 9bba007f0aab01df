#include "ReportWriter.h"

#include "TableReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;
using dialect::ValueType;

namespace {

// Digits of a double that are its decimal value; those behind are the binary fraction's.
constexpr int significantDigits = 15;

QString numberText(double number)
{
    return QString::number(number, 'g', significantDigits);
}

bool isSpecial(QChar c)
{
    return c == u',' || c == u'"' || c == u'\r' || c == u'\n';
}

QString csvText(QString text)
{
    const bool plain = !text.isEmpty() && std::none_of(text.begin(), text.end(), isSpecial) &&
                       !text.front().isSpace() && !text.back().isSpace();
    return plain ? text : QString(u'"' + text.replace(u'"', u"\"\""_s) + u'"');
}

QString csvField(const Value& value)
{
    switch (value.type) {
    case ValueType::Null:
        return {};
    case ValueType::Text:
        return csvText(value.text);
    case ValueType::Date:
        return dialect::isoDate(value.date);
    default:
        return numberText(value.number);
    }
}

QJsonValue jsonValue(const Value& value)
{
    switch (value.type) {
    case ValueType::Null:
        return {};
    case ValueType::Text:
        return value.text;
    case ValueType::Date:
        return dialect::isoDate(value.date);
    default:
        return numberText(value.number).toDouble();
    }
}

class CsvReport final : public ReportWriter
{
public:
    CsvReport(Console& console, const std::vector<ReportColumn>& columns)
        : m_console(console), m_columns(columns.size())
    {
        QStringList names;
        for (const ReportColumn& column : columns) {
            names.append(column.name);
        }
        write(names);
    }

    void begin(const QString& /*title*/, std::vector<size_t> /*columns*/) override {}

    void row(const Row& row) override
    {
        QStringList fields(static_cast<qsizetype>(m_columns));
        for (const Cell& cell : row) {
            fields[static_cast<qsizetype>(cell.column)] = csvField(cell.value);
        }
        write(fields);
    }

    void end(const QStringList& /*lines*/, const QJsonObject& /*members*/) override {}

private:
    void write(const QStringList& fields) { m_console.write(fields.join(u',') + u"\r\n"_s); }

    Console& m_console;
    size_t m_columns;
};

class JsonReport final : public ReportWriter
{
public:
    JsonReport(Console& console, const QString& list, std::vector<ReportColumn> columns)
        : m_console(console), m_columns(std::move(columns))
    {
        m_console.write(u"{\n\""_s + list + u"\": ["_s);
    }

    void begin(const QString& /*title*/, std::vector<size_t> /*columns*/) override {}

    void row(const Row& row) override
    {
        QJsonObject object;
        for (const Cell& cell : row) {
            object.insert(m_columns[cell.column].name, jsonValue(cell.value));
        }
        m_console.write((m_first ? u"\n"_s : u",\n"_s) + compact(object));
        m_first = false;
    }

    void end(const QStringList& /*lines*/, const QJsonObject& members) override
    {
        // The list is a member like the others: theirs are put behind it, without the brace that opens them.
        const QString others = compact(members).mid(1);
        m_console.write((m_first ? u"]"_s : u"\n]"_s) + (members.isEmpty() ? u"\n"_s : u",\n"_s) + others + u'\n');
    }

private:
    static QString compact(const QJsonObject& object)
    {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }

    Console& m_console;
    std::vector<ReportColumn> m_columns;
    bool m_first = true;
};

} // namespace

Option formatOption()
{
    return {u"formato"_s, u"FORMATO"_s, u"tabla (por omisión), csv o json; --json es lo mismo que --formato json."_s};
}

ReportFormat formatOf(const Arguments& arguments, const Console& console)
{
    const QString usual = console.wantsJson() ? u"json"_s : u"tabla"_s;
    const QString format = arguments.options.value(u"formato"_s, usual);
    if (console.wantsJson() && format != u"json"_s) {
        throw BadUsageError(u"--json y --formato %1 se contradicen."_s.arg(format));
    }
    if (format == u"tabla"_s) {
        return ReportFormat::Table;
    }
    if (format == u"csv"_s) {
        return ReportFormat::Csv;
    }
    if (format == u"json"_s) {
        return ReportFormat::Json;
    }
    throw BadUsageError(u"--formato es tabla, csv o json; no '%1'."_s.arg(format));
}

std::unique_ptr<ReportWriter> makeReportWriter(ReportFormat format, Console& console, const QString& list,
                                               std::vector<ReportColumn> columns)
{
    switch (format) {
    case ReportFormat::Csv:
        return std::make_unique<CsvReport>(console, columns);
    case ReportFormat::Json:
        return std::make_unique<JsonReport>(console, list, std::move(columns));
    case ReportFormat::Table:
        break;
    }
    return std::make_unique<TableReport>(console, std::move(columns));
}

} // namespace oVELDRA::data
