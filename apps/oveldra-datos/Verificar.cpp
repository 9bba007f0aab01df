#include "Command.h"
#include "ReportWriter.h"
#include "verification/StockVerification.h"

#include <QJsonArray>

#include <cmath>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

// Columns of the report: what kind of finding and in which table, the findings' fields, and the sentence.
constexpr size_t codeColumn = 0;
constexpr size_t titleColumn = 1;
constexpr size_t tableColumn = 2;
constexpr size_t firstField = 3;
constexpr size_t textColumn = firstField + fields;

size_t columnOf(Field field)
{
    return firstField + static_cast<size_t>(field);
}

std::vector<ReportColumn> reportColumns()
{
    std::vector<ReportColumn> columns = {{u"tipo"_s, u"Tipo"_s}, {u"titulo"_s, u"Título"_s}, {u"tabla"_s, u"Tabla"_s}};
    for (size_t place = 0; place < fields; ++place) {
        const auto field = static_cast<Field>(place);
        const QString name = fieldName(field);
        const bool figure = field >= Field::Declared;
        const bool number = figure || field == Field::ARTITM || field == Field::ARTSBT || field == Field::EXTSBT;
        columns.push_back({name, figure ? QString(name.front().toUpper() + name.mid(1)) : name, number});
    }
    columns.push_back({u"detalle"_s, u"Detalle"_s});
    return columns;
}

std::vector<size_t> columnsOf(FindingKind kind)
{
    std::vector<size_t> columns = {tableColumn};
    for (const Field field : textsOf(kind).fields) {
        columns.push_back(columnOf(field));
    }
    columns.push_back(textColumn);
    return columns;
}

ReportWriter::Row rowOf(const Finding& finding)
{
    const KindTexts& kind = textsOf(finding.kind);
    ReportWriter::Row row = {{codeColumn, Value::ofText(kind.code)},
                             {titleColumn, Value::ofText(kind.title)},
                             {tableColumn, Value::ofText(finding.table)}};
    for (const Finding::Entry& entry : finding.entries) {
        row.push_back({columnOf(entry.field), entry.value});
    }
    row.push_back({textColumn, Value::ofText(finding.text)});
    return row;
}

double toleranceOf(const Arguments& arguments)
{
    const QString name = u"tolerancia"_s;
    if (!arguments.has(name)) {
        return Tolerance().amount;
    }
    QString text = arguments.options[name];
    bool number = false;
    const double amount = text.replace(u',', u'.').toDouble(&number);
    if (!number || !(amount >= 0) || !std::isfinite(amount)) {
        throw BadUsageError(u"--tolerancia es una cantidad que no puede ser negativa, como 0.01; no '%1'."_s.arg(
            arguments.options[name]));
    }
    return amount;
}

std::vector<FindingKind> allKinds()
{
    std::vector<FindingKind> kinds;
    for (size_t kind = 0; kind < findingKinds; ++kind) {
        kinds.push_back(static_cast<FindingKind>(kind));
    }
    return kinds;
}

class VerificationReport
{
public:
    VerificationReport(FindingSpool& spool, const RowTally& tally, QStringList leftOut)
        : m_spool(spool), m_tally(tally), m_leftOut(std::move(leftOut))
    {
        for (const FindingKind kind : allKinds()) {
            m_findings += spool.count(kind);
        }
    }

    [[nodiscard]] qint64 findings() const { return m_findings; }

    void write(ReportWriter& writer, double tolerance) const
    {
        for (const FindingKind kind : allKinds()) {
            if (m_spool.count(kind) > 0) {
                writer.begin(u"%1 (%2): %3"_s.arg(textsOf(kind).title, textsOf(kind).code).arg(m_spool.count(kind)),
                             columnsOf(kind));
                m_spool.forEach(kind, [&writer](const Finding& finding) { writer.row(rowOf(finding)); });
            }
        }
        writer.end(lines(), members(tolerance));
    }

private:
    [[nodiscard]] QStringList lines() const
    {
        QStringList tables;
        for (const auto& [table, rows] : m_tally.rows()) {
            tables.append(u"%1 %2"_s.arg(table).arg(rows));
        }
        QStringList lines = {u"Filas leídas: "_s + tables.join(u" · "_s)};
        lines += m_leftOut;
        lines.append(m_findings == 0   ? u"No se encontró nada fuera de lugar."_s
                     : m_findings == 1 ? u"Se encontró 1 hallazgo."_s
                                       : u"Se encontraron %1 hallazgos."_s.arg(m_findings));
        return lines;
    }

    [[nodiscard]] QJsonObject members(double tolerance) const
    {
        QJsonObject counts;
        for (const FindingKind kind : allKinds()) {
            counts.insert(textsOf(kind).code, m_spool.count(kind));
        }
        QJsonObject rows;
        for (const auto& [table, count] : m_tally.rows()) {
            rows.insert(table, count);
        }
        return {{u"cantidades"_s, counts},
                {u"total"_s, m_findings},
                {u"filas"_s, rows},
                {u"tolerancia"_s, tolerance},
                {u"omitido"_s, QJsonArray::fromStringList(m_leftOut)}};
    }

    FindingSpool& m_spool;
    const RowTally& m_tally;
    QStringList m_leftOut;
    qint64 m_findings = 0;
};

int run(const Arguments& arguments, Console& console)
{
    const ReportFormat format = formatOf(arguments, console);
    VerificationWish wish;
    wish.inputs = arguments.operands.front();
    wish.tolerance.amount = toleranceOf(arguments);
    if (arguments.has(u"ncm"_s)) {
        wish.nomenclature = arguments.options[u"ncm"_s];
    }
    FindingSpool spool;
    RowTally tally([&console](qint64 rows) { console.progress(u"Verificando filas"_s, rows, 0); });
    const QStringList leftOut = verifyStock(wish, spool, tally);
    const VerificationReport report(spool, tally, leftOut);
    report.write(*makeReportWriter(format, console, u"hallazgos"_s, reportColumns()), wish.tolerance.amount);
    return report.findings() == 0 ? Success : Findings;
}

constexpr QStringView help = uR"(Controla una base de insumos y muestra lo que no cierra. Solo lee: no cambia
nada, y otros pueden trabajar mientras tanto.

Qué controla, con el código que lleva cada hallazgo:
  saldo-incorrecto        el saldo (ARTDSC) no es lo declarado (ARTCAT) menos
                          lo descargado (RALCAN de la misma declaración, ítem
                          y subítem), con la tolerancia de --tolerancia
  saldo-negativo          el saldo es menor que cero, por más que la tolerancia
  descarga-sin-articulo   la declaración está, pero no el artículo
  descarga-sin-cabecera   la declaración de la descarga no está en INTINS
  articulo-sin-cabecera   la declaración del artículo no está en INTINS
  renumeracion-a-medias   las descargas, o las descargas y los artículos, ya
                          tienen otro número que la cabecera: INTDCL dice el
                          de la cabecera, ARTDCL el otro
  articulo-repetido       la misma declaración, ítem y subítem dos veces
  clave-duplicada         en CAT, PRD, RIP o INTINS, también si solo cambian
                          mayúsculas o blancos finales
  relacion-sin-producto   la relación (RIP) es de un producto que no está;
                          pasa también al borrar un catálogo entero
  posicion-fuera-del-nomenclador, producto-sin-posicion
                          solo con --ncm

Cada fila se informa una sola vez por lo que le falta: lo que explica una
renumeración a medias no se repite como descarga, artículo o saldo. Las
descargas solas se reconocen si son justo lo que falta en los saldos de una
única declaración; las descargas con sus artículos, si hay un único número
sin cabecera y una única cabecera sin nada.

Los textos se comparan como en el programa: sin distinguir mayúsculas ni
blancos finales. Una clave sin valor no es igual a ninguna otra; una cantidad
sin valor cuenta como cero. Una cabecera sin artículos no es un error.

Códigos de salida: 0 no encontró nada, 1 encontró algo, 2 la orden está mal
escrita, 3 no se pudo verificar.

Ejemplos:
  oveldra-datos verificar sqlite:insumos.sqlite
  oveldra-datos verificar sqlite:insumos.sqlite --ncm sqlite:ncm.sqlite
  oveldra-datos verificar sqlite:insumos.sqlite --formato csv > hallazgos.csv
)";

} // namespace

Command verificar()
{
    return {u"verificar"_s,
            u"Controla que el stock de insumos cierre."_s,
            {u"STOCK"_s},
            help.toString(),
            {{u"ncm"_s, u"URL"_s,
              u"Base del nomenclador, para controlar las posiciones de los productos; sin ella no se controlan."_s},
             formatOption(),
             {u"tolerancia"_s, u"N"_s, u"Diferencia de cantidad que se acepta, por redondeos (por omisión, 0.01)."_s}},
            run};
}

} // namespace oVELDRA::data
