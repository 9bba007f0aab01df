#include "Destination.h"

#include "Command.h"

#include <oVELDRA/Store.h>

#include <store/Engines.h>

#include <QFileInfo>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

Destination::Destination(const QString& url)
{
    const QString scheme = u"sqlite:"_s;
    const QString file = url.startsWith(scheme, Qt::CaseInsensitive) ? url.mid(scheme.size()) : QString();
    if (file == u":memory:") {
        throw BadUsageError(u"Una base de datos en memoria se perdería al terminar: indique un archivo."_s);
    }
    QString place = url;
    if (!file.isEmpty() && !QFileInfo::exists(file)) {
        m_part.emplace(file, ExistingFile::Keep);
        place = scheme + m_part->path();
    }
    m_engine = store::openEngine(place, Access::ReadWrite, store::Opening::Create);
}

void Destination::keep()
{
    m_engine.reset();
    if (m_part) {
        m_part->complete();
    }
}

} // namespace oVELDRA::data
