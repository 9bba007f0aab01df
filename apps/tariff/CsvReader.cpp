#include "CsvReader.h"

namespace tariff {

CsvReader::CsvReader(QStringView text) : m_text(text)
{
    if (m_text.startsWith(QChar::ByteOrderMark)) {
        m_text = m_text.mid(1);
    }
}

bool CsvReader::atLineEnd() const
{
    return m_at >= m_text.size() || m_text.at(m_at) == u'\n' || m_text.at(m_at) == u'\r';
}

QString CsvReader::quotedCell()
{
    QString cell;
    ++m_at;
    while (m_at < m_text.size()) {
        const QChar c = m_text.at(m_at++);
        if (c != u'"') {
            cell += c;
        } else if (m_at < m_text.size() && m_text.at(m_at) == u'"') {
            cell += c;
            ++m_at;
        } else {
            break;
        }
    }
    return cell;
}

QString CsvReader::plainCell()
{
    const qsizetype from = m_at;
    while (!atLineEnd() && m_text.at(m_at) != u',') {
        ++m_at;
    }
    return m_text.sliced(from, m_at - from).toString();
}

std::optional<QStringList> CsvReader::next()
{
    while (m_at < m_text.size() && atLineEnd()) {
        ++m_at;
    }
    if (m_at >= m_text.size()) {
        return std::nullopt;
    }
    QStringList row;
    for (;;) {
        const bool quoted = !atLineEnd() && m_text.at(m_at) == u'"';
        QString cell = quoted ? quotedCell() : QString();
        cell += plainCell(); // what follows a closing quote up to the comma, and an unquoted cell
        row.append(cell);
        if (atLineEnd()) {
            return row;
        }
        ++m_at;
    }
}

} // namespace tariff
