#include "Moving.h"

#include "Bases.h"
#include "Destination.h"
#include "Interruption.h"
#include "RejectionFile.h"
#include "Transfer.h"
#include "TransferText.h"

#include <store/DatabaseName.h>

#include <optional>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

const QString& acceptOption()
{
    static const QString name = u"aceptar-rechazos"_s;
    return name;
}

const QString& fileOption()
{
    static const QString name = u"rechazos"_s;
    return name;
}

const QString& baseOption()
{
    static const QString name = u"base"_s;
    return name;
}

ExitCode exitCodeOf(const TransferReport& report)
{
    if (report.committed) {
        return Success;
    }
    return report.failures.isEmpty() ? Findings : Failed;
}

} // namespace

std::vector<Option> movingOptions()
{
    return {{acceptOption(), {}, u"Guarda lo demás aunque haya filas que no se pueden guardar."_s},
            {fileOption(), u"ARCHIVO"_s, u"Deja en un archivo CSV nuevo todas las filas rechazadas, con su motivo."_s},
            {baseOption(), u"NOMBRE"_s,
             u"Qué base es: insumos, ncm o tornel. Hace falta si el origen tiene más de una."_s}};
}

int moveBase(Source& source, const Arguments& arguments, Console& console)
{
    const Database database =
        arguments.has(baseOption()) ? baseOf(arguments.options.value(baseOption())) : baseWithTables(source.tables());
    const Interruption interruption;
    std::optional<RejectionFile> rejections;
    if (arguments.has(fileOption())) {
        rejections.emplace(arguments.options.value(fileOption()));
    }
    const QString& url = arguments.operands[1];
    Destination destination(url);
    Transfer transfer(source, destination.engine(), database, console);
    transfer.setListener(rejections ? &*rejections : nullptr);
    const TransferReport report = transfer.run(arguments.has(acceptOption()));
    if (report.committed) {
        destination.keep();
    }
    if (rejections) {
        rejections->keep();
    }
    console.say(u"Base %1, de %2 a %3"_s.arg(store::nameOf(database), arguments.operands[0], url));
    say(report, console);
    QJsonObject result = jsonOf(report);
    result.insert(u"source"_s, arguments.operands[0]);
    result.insert(u"destination"_s, url);
    result.insert(u"database"_s, store::nameOf(database));
    console.result(result);
    if (!report.failures.isEmpty()) {
        console.complain(u"La prueba no cierra: lo escrito no es lo leído. No se guardó nada."_s);
    }
    return exitCodeOf(report);
}

} // namespace oVELDRA::data
