#include "ReferenceModel.h"

#include <store/Schema.h>

#include <QDate>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;
using dialect::ColumnKind;

namespace {

/// What of a text counts when it is compared.
QString comparedForm(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ') {
        --end;
    }
    return text.first(end).toLower();
}

/// A letter without its accent. The Ñ is a letter of its own.
QChar plainLetter(QChar c)
{
    static const QString accented = u"áéíóúü"_s;
    const qsizetype at = accented.indexOf(c);
    return at < 0 ? c : u"aeiouu"_s.at(at);
}

/// Where a character of a text in lower case stands in the alphabet.
qsizetype placeInAlphabet(QChar c)
{
    static const QString alphabet = u" _-,;:!?.'\"()[]{}@*/\\&#%^+<=>|~$0123456789abcdefghijklmnñopqrstuvwxyz"_s;
    const qsizetype place = alphabet.indexOf(plainLetter(c));
    if (place < 0) {
        qFatal("the model knows no place for '%lc'", static_cast<wint_t>(c.unicode()));
    }
    return place;
}

template <typename Value>
int threeWay(const Value& a, const Value& b)
{
    return a < b ? -1 : static_cast<int>(b < a);
}

/// A text that is equal for keys that are the same; none for a key with a Null in it, which is like no other.
std::optional<QString> keyOf(const ModelTable& table, const Row& row)
{
    QString result;
    for (const int column : table.definition.key) {
        const QVariant& cell = row[static_cast<size_t>(column)];
        if (!cell.isValid()) {
            return std::nullopt;
        }
        result += comparedForm(cell.toString()) + u'\n';
    }
    return result;
}

/// Whether a character matches a list, such as [a-f] or [!a-f], given without its brackets.
bool isListed(QChar c, QStringView list)
{
    const bool excluded = list.startsWith(u'!');
    bool listed = false;
    for (qsizetype i = excluded ? 1 : 0; i < list.size(); ++i) {
        if (i + 2 < list.size() && list[i + 1] == u'-') {
            listed = listed || (c >= list[i] && c <= list[i + 2]);
            i += 2;
        } else {
            listed = listed || c == list[i];
        }
    }
    return listed != excluded;
}

bool matches(QStringView text, QStringView pattern)
{
    if (pattern.isEmpty()) {
        return text.isEmpty();
    }
    if (pattern[0] == u'%') {
        return matches(text, pattern.mid(1)) || (!text.isEmpty() && matches(text.mid(1), pattern));
    }
    if (text.isEmpty()) {
        return false;
    }
    const qsizetype close = pattern[0] == u'[' ? pattern.indexOf(u']', 1) : -1;
    if (close > 0) {
        return isListed(text[0], pattern.mid(1, close - 1)) && matches(text.mid(1), pattern.mid(close + 1));
    }
    return (pattern[0] == u'_' || pattern[0] == text[0]) && matches(text.mid(1), pattern.mid(1));
}

} // namespace

size_t ModelTable::place(QStringView column) const
{
    const int found = definition.find(column);
    if (found < 0) {
        qFatal("%ls has no column %ls", qUtf16Printable(definition.name), qUtf16Printable(column.toString()));
    }
    return static_cast<size_t>(found);
}

ReferenceModel::ReferenceModel()
{
    for (const store::TableSchema& schema : store::schemaOf(Database::Inputs)) {
        m_tables.push_back({schema.table, {}});
    }
}

const ModelTable& ReferenceModel::table(QStringView name) const
{
    const auto found = std::find_if(m_tables.begin(), m_tables.end(),
                                    [name](const ModelTable& table) { return table.definition.name == name; });
    if (found == m_tables.end()) {
        qFatal("no table %ls", qUtf16Printable(name.toString()));
    }
    return *found;
}

ModelTable& ReferenceModel::changing(QStringView name)
{
    return m_tables[static_cast<size_t>(&table(name) - m_tables.data())];
}

std::vector<Row> ReferenceModel::rowsOf(QStringView name, const RowTest& which) const
{
    std::vector<Row> found;
    for (const Row& row : table(name).rows) {
        if (which(row).value_or(false)) {
            found.push_back(row);
        }
    }
    return found;
}

qint64 ReferenceModel::insert(QStringView name, Row row)
{
    ModelTable changed = table(name);
    changed.rows.push_back(std::move(row));
    requireUniqueKeys(changed);
    changing(name) = std::move(changed);
    return 1;
}

qint64 ReferenceModel::update(QStringView name, const RowTest& which, const std::vector<Write>& writes)
{
    ModelTable changed = table(name);
    qint64 affected = 0;
    for (Row& row : changed.rows) {
        if (!which(row).value_or(false)) {
            continue;
        }
        ++affected;
        const Row before = row;
        for (const Write& write : writes) {
            row[write.place] = write.value(before);
        }
    }
    requireUniqueKeys(changed);
    changing(name) = std::move(changed);
    return affected;
}

qint64 ReferenceModel::remove(QStringView name, const RowTest& which)
{
    return static_cast<qint64>(
        std::erase_if(changing(name).rows, [&which](const Row& row) { return which(row).value_or(false); }));
}

void ReferenceModel::requireUniqueKeys(const ModelTable& table)
{
    QSet<QString> keys;
    for (const Row& row : table.rows) {
        const std::optional<QString> key = keyOf(table, row);
        if (!key || table.definition.key.empty()) {
            continue;
        }
        if (keys.contains(*key)) {
            constexpr int duplicateKey = 3022;
            throw Refusal{databaseError, duplicateKey};
        }
        keys.insert(*key);
    }
}

QVariant keptBy(ColumnKind kind, const QVariant& value)
{
    if (!value.isValid()) {
        return value;
    }
    switch (kind) {
    case ColumnKind::Double:
        return value.toDouble();
    case ColumnKind::Integer:
        return static_cast<qlonglong>(std::nearbyint(value.toDouble()));
    case ColumnKind::SmallInteger:
        return static_cast<int>(std::nearbyint(value.toDouble()));
    case ColumnKind::Boolean:
        return value.toDouble() != 0 ? -1 : 0;
    default:
        return value;
    }
}

QString cellText(const QVariant& cell)
{
    constexpr int allDigits = 17;
    switch (cell.typeId()) {
    case QMetaType::UnknownType:
        return u"Null"_s;
    case QMetaType::QString:
        return u'\'' + cell.toString() + u'\'';
    case QMetaType::Double:
        return u"double "_s + QString::number(cell.toDouble(), 'g', allDigits);
    case QMetaType::QDate:
        return cell.toDate().toString(Qt::ISODate);
    default:
        return QLatin1StringView(cell.typeName()) + u' ' + cell.toString();
    }
}

bool sameText(const QString& a, const QString& b)
{
    return comparedForm(a) == comparedForm(b);
}

int spanishOrder(const QString& a, const QString& b)
{
    const QString left = comparedForm(a);
    const QString right = comparedForm(b);
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        if (const int order = threeWay(placeInAlphabet(left[i]), placeInAlphabet(right[i]))) {
            return order;
        }
    }
    if (left.size() != right.size()) {
        return threeWay(left.size(), right.size());
    }
    // Accents tell apart what is otherwise equal: none, acute, diaeresis; which is the order of the characters.
    return threeWay(left, right);
}

int cellOrder(const QVariant& a, const QVariant& b)
{
    if (!a.isValid() || !b.isValid()) {
        return threeWay(a.isValid(), b.isValid());
    }
    if (a.typeId() == QMetaType::QString) {
        return spanishOrder(a.toString(), b.toString());
    }
    return a.typeId() == QMetaType::QDate ? threeWay(a.toDate(), b.toDate()) : threeWay(a.toDouble(), b.toDouble());
}

bool isLike(QStringView text, QStringView pattern)
{
    return matches(text.toString().toLower(), pattern.toString().toLower());
}

} // namespace oVELDRA::histories
