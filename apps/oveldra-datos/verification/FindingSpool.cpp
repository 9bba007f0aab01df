#include "FindingSpool.h"

#include <oVELDRA/RuntimeError.h>

#include <QDataStream>
#include <QDir>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;
using dialect::ValueType;

namespace {

[[noreturn]] void throwTrouble(const QString& reason)
{
    constexpr int deviceError = 57;
    throw RuntimeError(deviceError, u"No se pueden guardar los hallazgos en la carpeta temporal (TMPDIR): "_s + reason,
                       u"oVELDRA.datos"_s);
}

std::unique_ptr<QTemporaryFile> openFile()
{
    // Empty when the folder that the user chose is not there. The root of all folders is no substitute.
    const QString folder = QDir::tempPath();
    if (folder.isEmpty()) {
        throwTrouble(u"'%1' no existe"_s.arg(qEnvironmentVariable("TMPDIR")));
    }
    auto file = std::make_unique<QTemporaryFile>(folder + u"/oveldra-datos-XXXXXX"_s);
    if (!file->open()) {
        throwTrouble(file->errorString());
    }
    return file;
}

QDataStream& operator<<(QDataStream& stream, const Value& value)
{
    return stream << static_cast<quint8>(value.type) << value.number << value.text << value.date;
}

QDataStream& operator>>(QDataStream& stream, Value& value)
{
    quint8 type = 0;
    stream >> type >> value.number >> value.text >> value.date;
    value.type = static_cast<ValueType>(type);
    return stream;
}

QByteArray packed(const Finding& finding)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << finding.table << finding.text << static_cast<quint8>(finding.entries.size());
    for (const Finding::Entry& entry : finding.entries) {
        stream << static_cast<quint8>(entry.field) << entry.value;
    }
    return bytes;
}

} // namespace

FindingSpool::FindingSpool() = default;
FindingSpool::~FindingSpool() = default;

void FindingSpool::add(const Finding& finding)
{
    File& to = fileOf(finding.kind);
    if (!to.file) {
        to.file = openFile();
    }
    const QByteArray bytes = packed(finding);
    if (!to.file->seek(to.size) || to.file->write(bytes) != bytes.size()) {
        throwTrouble(to.file->errorString());
    }
    to.size += bytes.size();
    ++to.findings;
}

FindingSpool::Range FindingSpool::place(FindingKind kind) const
{
    const File& file = fileOf(kind);
    return {file.size, file.size, file.findings};
}

FindingSpool::Range FindingSpool::since(FindingKind kind, const Range& place) const
{
    const File& file = fileOf(kind);
    return {place.begin, file.size, file.findings - place.findings};
}

void FindingSpool::leaveOut(FindingKind kind, const Range& range)
{
    std::vector<Range>& ranges = fileOf(kind).leftOut;
    ranges.insert(std::upper_bound(ranges.begin(), ranges.end(), range,
                                   [](const Range& a, const Range& b) { return a.begin < b.begin; }),
                  range);
}

qint64 FindingSpool::count(FindingKind kind) const
{
    const File& file = fileOf(kind);
    qint64 count = file.findings;
    for (const Range& range : file.leftOut) {
        count -= range.findings;
    }
    return count;
}

void FindingSpool::forEach(FindingKind kind, const std::function<void(const Finding&)>& body)
{
    const File& file = fileOf(kind);
    std::vector<Range> ranges;
    qint64 begin = 0;
    for (const Range& out : file.leftOut) {
        ranges.push_back({begin, out.begin, 0});
        begin = out.end;
    }
    ranges.push_back({begin, file.size, 0});
    Finding finding;
    for (const Range& range : ranges) {
        for (Reader reader(*this, kind, range); reader.next(finding);) {
            body(finding);
        }
    }
}

FindingSpool::Reader::Reader(FindingSpool& spool, FindingKind kind, const Range& range)
    : m_file(spool.fileOf(kind).file.get()), m_kind(kind), m_end(range.end)
{
    // This first writes what is still in the buffer, which is where a full disk may show.
    if (m_file && !m_file->seek(range.begin)) {
        throwTrouble(m_file->errorString());
    }
}

bool FindingSpool::Reader::next(Finding& finding)
{
    if (!m_file || m_file->pos() >= m_end) {
        return false;
    }
    QDataStream stream(m_file);
    quint8 entries = 0;
    stream >> finding.table >> finding.text >> entries;
    finding.kind = m_kind;
    finding.entries.resize(entries);
    for (Finding::Entry& entry : finding.entries) {
        quint8 field = 0;
        stream >> field >> entry.value;
        entry.field = static_cast<Field>(field);
    }
    if (stream.status() != QDataStream::Ok) {
        throwTrouble(m_file->errorString());
    }
    return true;
}

} // namespace oVELDRA::data
