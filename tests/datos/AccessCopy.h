#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <stdexcept>

namespace oVELDRA::data {

/// A sample Access file in a folder of its own, whose bytes a test may change.
class AccessCopy
{
public:
    static constexpr qsizetype pageSize = 4096;

    explicit AccessCopy(const QString& sample)
    {
        QFile file(QStringLiteral(OVELDRA_TEST_DATA "/access/") + sample);
        if (!file.open(QIODevice::ReadOnly)) {
            throw std::runtime_error("no sample");
        }
        m_bytes = file.readAll();
    }

    /// Writes the bytes as they are now and answers the file's path.
    [[nodiscard]] QString path()
    {
        QString path = m_folder.filePath(QStringLiteral("copia.mdb"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(m_bytes) != m_bytes.size()) {
            throw std::runtime_error("cannot write");
        }
        return path;
    }

    [[nodiscard]] QByteArray& bytes() { return m_bytes; }

    /// Where the first row of a table's first page with such bytes has them; rows fill a page from its end. What is not
    /// found ends the test.
    [[nodiscard]] qsizetype find(quint32 definition, const QByteArray& wanted) const
    {
        const qsizetype page = firstDataPage(definition);
        const qsizetype found = m_bytes.mid(page, pageSize).lastIndexOf(wanted);
        if (found < 0) {
            throw std::runtime_error("not in the table's first page");
        }
        return page + found;
    }

    /// Puts other bytes over those; answers where.
    qsizetype replace(quint32 definition, const QByteArray& old, const QByteArray& fresh)
    {
        const qsizetype place = find(definition, old);
        m_bytes.replace(place, fresh.size(), fresh);
        return place;
    }

    /// The same for a text, which must keep its length.
    qsizetype replaceText(quint32 definition, const QString& old, const QString& fresh)
    {
        return replace(definition, utf16(old), utf16(fresh));
    }

    /// The first byte of a table's first page with rows, given the page of its definition.
    [[nodiscard]] qsizetype firstDataPage(quint32 definition) const
    {
        for (qsizetype place = 0; place < m_bytes.size(); place += pageSize) {
            if (m_bytes[place] == 1 && qFromLittleEndian<quint32>(m_bytes.constData() + place + 4) == definition) {
                return place;
            }
        }
        throw std::runtime_error("no such table");
    }

    [[nodiscard]] static QByteArray utf16(const QString& text)
    {
        QByteArray bytes;
        for (const QChar character : text) {
            bytes.append(static_cast<char>(character.cell()));
            bytes.append(static_cast<char>(character.row()));
        }
        return bytes;
    }

    template <typename Number>
    [[nodiscard]] static QByteArray littleEndian(Number number)
    {
        QByteArray bytes(sizeof number, '\0');
        qToLittleEndian(number, bytes.data());
        return bytes;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_bytes;
};

/// The pages that define the tables of insumos.mdb.
namespace insumos {
inline constexpr quint32 cat = 50;
inline constexpr quint32 prd = 53;
inline constexpr quint32 rip = 57;
inline constexpr quint32 intins = 61;
inline constexpr quint32 ins = 64;
inline constexpr quint32 dip = 67;
} // namespace insumos

} // namespace oVELDRA::data
