#include "HistoryStatements.h"

#include <algorithm>
#include <utility>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;

namespace {

/// The value in a column of the table, or what refuses it.
QVariant storedIn(const ModelTable& table, size_t place, const Said& said)
{
    if (said.refusal) {
        throw Refusal(*said.refusal);
    }
    const dialect::Column& column = table.definition.columns[place];
    QVariant kept = keptBy(column.kind, said.value);
    if (column.kind == dialect::ColumnKind::Text && column.width > 0 && kept.toString().size() > column.width) {
        constexpr int textTooLong = 3163;
        throw Refusal{databaseError, textTooLong};
    }
    return kept;
}

RowTest testOf(const ModelTable& table, const Condition& which)
{
    return [&table, &which](const Row& row) { return which.holds(table, row); };
}

QString joined(const std::vector<Assignment>& values, const std::function<QString(const Assignment&)>& text)
{
    QStringList texts;
    for (const Assignment& value : values) {
        texts << text(value);
    }
    return texts.join(u',');
}

QString affected(qint64 rows)
{
    return u"affected %1"_s.arg(rows);
}

QString refusal(int number, int nativeNumber)
{
    return u"refused %1 %2"_s.arg(number).arg(nativeNumber);
}

QString found(const QStringList& rows)
{
    return u"found %1:\n%2"_s.arg(rows.size()).arg(rows.join(u'\n'));
}

class Insert final : public Statement
{
public:
    Insert(QString table, std::vector<Assignment> values) : m_table(std::move(table)), m_values(std::move(values)) {}

    [[nodiscard]] QString text() const override
    {
        return u"insert into "_s + m_table + u" (" + joined(m_values, [](const auto& value) { return value.column; }) +
               u") values (" + joined(m_values, [](const auto& value) { return value.said.text; }) + u')';
    }

private:
    [[nodiscard]] QString run(ReferenceModel& model) const override
    {
        const ModelTable& table = model.table(m_table);
        Row row(table.definition.columns.size());
        for (const Assignment& value : m_values) {
            const size_t place = table.place(value.column);
            row[place] = storedIn(table, place, value.said);
        }
        return affected(model.insert(m_table, std::move(row)));
    }

    QString m_table;
    std::vector<Assignment> m_values;
};

class Update final : public Statement
{
public:
    Update(QString table, std::vector<Assignment> values, Condition which)
        : m_table(std::move(table)), m_values(std::move(values)), m_which(std::move(which))
    {}

    [[nodiscard]] QString text() const override
    {
        return u"update "_s + m_table + u" set " +
               joined(m_values, [](const auto& value) { return QString(value.column + u" = " + value.said.text); }) +
               u" where " + m_which.text;
    }

private:
    [[nodiscard]] QString run(ReferenceModel& model) const override
    {
        const ModelTable& table = model.table(m_table);
        std::vector<Write> writes;
        for (const Assignment& value : m_values) {
            const size_t place = table.place(value.column);
            if (value.change) {
                writes.push_back({place, [&value, place](const Row& row) { return value.change(row[place]); }});
            } else {
                writes.push_back({place, [stored = storedIn(table, place, value.said)](const Row&) { return stored; }});
            }
        }
        return affected(model.update(m_table, testOf(table, m_which), writes));
    }

    QString m_table;
    std::vector<Assignment> m_values;
    Condition m_which;
};

class Delete final : public Statement
{
public:
    Delete(QString table, Condition which) : m_table(std::move(table)), m_which(std::move(which)) {}

    [[nodiscard]] QString text() const override { return u"delete from "_s + m_table + u" where " + m_which.text; }

private:
    [[nodiscard]] QString run(ReferenceModel& model) const override
    {
        return affected(model.remove(m_table, testOf(model.table(m_table), m_which)));
    }

    QString m_table;
    Condition m_which;
};

class Select final : public Statement
{
public:
    explicit Select(SelectParts parts) : m_parts(std::move(parts)) {}

    [[nodiscard]] QString text() const override
    {
        QStringList items;
        for (const Item& item : m_parts.items) {
            items << item.text;
        }
        return u"select "_s + (m_parts.distinct ? u"distinct "_s : QString()) +
               (items.isEmpty() ? u"*"_s : items.join(u',')) + u" from " + m_parts.table +
               (m_parts.which ? QString(u" where " + m_parts.which->text) : QString()) +
               (m_parts.order.isEmpty() ? QString() : QString(u" order by " + m_parts.order.join(u',')));
    }

    [[nodiscard]] QStringList resultColumns(const ReferenceModel& model) const override
    {
        QStringList names;
        for (const Item& item : itemsOf(model.table(m_parts.table))) {
            names << item.name;
        }
        return names;
    }

private:
    [[nodiscard]] std::vector<Item> itemsOf(const ModelTable& table) const
    {
        std::vector<Item> items = m_parts.items;
        if (items.empty()) {
            for (const dialect::Column& each : table.definition.columns) {
                items.push_back(column(each.name));
            }
        }
        return items;
    }

    [[nodiscard]] QString run(ReferenceModel& model) const override
    {
        const ModelTable& table = model.table(m_parts.table);
        std::vector<Row> rows = m_parts.which ? model.rowsOf(m_parts.table, testOf(table, *m_parts.which)) : table.rows;
        if (m_parts.distinct) {
            keepFirstOfEach(table, rows);
        }
        std::stable_sort(rows.begin(), rows.end(),
                         [&](const Row& a, const Row& b) { return comesBefore(table, a, b); });
        QStringList texts;
        for (const Row& row : rows) {
            texts << rowText(resultOf(table, row));
        }
        return found(texts);
    }

    [[nodiscard]] std::vector<QVariant> resultOf(const ModelTable& table, const Row& row) const
    {
        std::vector<QVariant> cells;
        for (const Item& item : itemsOf(table)) {
            cells.push_back(item.value(table, row));
        }
        return cells;
    }

    void keepFirstOfEach(const ModelTable& table, std::vector<Row>& rows) const
    {
        std::vector<std::vector<QVariant>> seen;
        std::erase_if(rows, [&](const Row& row) {
            const std::vector<QVariant> cells = resultOf(table, row);
            const bool again = std::any_of(seen.begin(), seen.end(), [&cells](const auto& other) {
                return std::equal(cells.begin(), cells.end(), other.begin(), [](const QVariant& a, const QVariant& b) {
                    return (!a.isValid() && !b.isValid()) || equals(a, b).value_or(false);
                });
            });
            seen.push_back(cells);
            return again;
        });
    }

    [[nodiscard]] bool comesBefore(const ModelTable& table, const Row& a, const Row& b) const
    {
        for (const QString& key : m_parts.order) {
            const QString name = key.section(u' ', 0, 0);
            if (const int order = cellOrder(table.cell(a, name), table.cell(b, name))) {
                return key.endsWith(u" desc") ? order > 0 : order < 0;
            }
        }
        return false;
    }

    SelectParts m_parts;
};

class Count final : public Statement
{
public:
    Count(QString what, QString table, Condition which)
        : m_what(std::move(what)), m_table(std::move(table)), m_which(std::move(which))
    {}

    [[nodiscard]] QString text() const override
    {
        return u"select count("_s + m_what + u") as Total from " + m_table + u" where " + m_which.text;
    }

    [[nodiscard]] QStringList resultColumns(const ReferenceModel& /*model*/) const override { return {u"Total"_s}; }

private:
    [[nodiscard]] QString run(ReferenceModel& model) const override
    {
        const ModelTable& table = model.table(m_table);
        qlonglong total = 0;
        for (const Row& row : model.rowsOf(m_table, testOf(table, m_which))) {
            total += m_what == u"*" || table.cell(row, m_what).isValid() ? 1 : 0;
        }
        return found({rowText({total})});
    }

    QString m_what;
    QString m_table;
    Condition m_which;
};

class Refused final : public Statement
{
public:
    Refused(QString text, int number) : m_text(std::move(text)), m_number(number) {}

    [[nodiscard]] QString text() const override { return m_text; }

private:
    [[nodiscard]] QString run(ReferenceModel& /*model*/) const override { throw Refusal{m_number}; }

    QString m_text;
    int m_number;
};

} // namespace

QString rowText(const Row& cells)
{
    QStringList texts;
    for (const QVariant& cell : cells) {
        texts << cellText(cell);
    }
    return texts.join(u" | ");
}

QString Statement::outcome(ReferenceModel& model) const
{
    try {
        return run(model);
    } catch (const Refusal& refused) {
        return refusal(refused.number, refused.nativeNumber);
    }
}

QString outcomeIn(ConexionDB& store, const Statement& statement, const ReferenceModel& model)
{
    try {
        const QStringList columns = statement.resultColumns(model);
        if (!columns.isEmpty()) {
            return found(rowTexts(store, statement.text(), columns));
        }
        store.setSql(statement.text());
        return affected(store.execute());
    } catch (const RuntimeError& error) {
        return refusal(error.number(), error.nativeNumber());
    }
}

QStringList rowTexts(ConexionDB& store, const QString& query, const QStringList& columns)
{
    bool ok = false;
    store.setSql(query);
    const auto rows = store.openRecordset(ok);
    if (!ok) {
        throw RuntimeError(store.lastError());
    }
    QStringList texts;
    for (; !rows->atEof(); rows->moveNext()) {
        std::vector<QVariant> cells;
        for (const QString& column : columns) {
            cells.push_back(rows->value(column));
        }
        texts << rowText(cells);
    }
    return texts;
}

StatementPtr insertInto(const QString& table, std::vector<Assignment> values)
{
    return std::make_shared<Insert>(table, std::move(values));
}

StatementPtr update(const QString& table, std::vector<Assignment> values, Condition which)
{
    return std::make_shared<Update>(table, std::move(values), std::move(which));
}

StatementPtr deleteFrom(const QString& table, Condition which)
{
    return std::make_shared<Delete>(table, std::move(which));
}

Item column(const QString& name)
{
    return {name, name, [name](const ModelTable& table, const Row& row) { return table.cell(row, name); }};
}

Item threeDigits(const QString& column, const QString& name)
{
    return {u"format("_s + column + u",'000') as " + name, name, [column](const ModelTable& table, const Row& row) {
                constexpr int digits = 3;
                const QVariant cell = table.cell(row, column);
                return QVariant(cell.isValid() ? cell.toString().rightJustified(digits, u'0') : QString());
            }};
}

StatementPtr select(SelectParts parts)
{
    return std::make_shared<Select>(std::move(parts));
}

StatementPtr count(const QString& what, const QString& table, Condition which)
{
    return std::make_shared<Count>(what, table, std::move(which));
}

StatementPtr refused(const QString& text, int number)
{
    return std::make_shared<Refused>(text, number);
}

} // namespace oVELDRA::histories
