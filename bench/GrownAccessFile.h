#pragma once

#include <QByteArray>
#include <QString>

namespace bench {

/// Writes to `target` a Jet 4 file like `sample`, but whose table, defined by page `definition`, has exactly `rows`
/// rows: its own pages with rows over and over. There is no library that writes such files. Ends the program when the
/// sample is not as expected.
void growAccessFile(const QString& sample, quint32 definition, quint32 rows, const QString& target);

} // namespace bench
